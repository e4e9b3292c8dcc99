#include "ZkCutoutJob.h"

#include "ZkCutoutExport.h"
#include "ZkEventWait.h"
#include "ZkProgressReport.h"

#include "ZCutoutPresetItemManager.h"
#include "ZCutoutPresetItemModel.h"
#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkSmartKeyingPresenter.h"

#include <QFileInfo>

#include <algorithm>

namespace zk::app {

namespace {

ZkSmartKeyingPresenter::PlayerEditMode editModeOf(Stroke::Mode mode)
{
    switch (mode) {
    case Stroke::Mode::Remove:
        return ZkSmartKeyingPresenter::RemoveMode;
    case Stroke::Mode::Erase:
        return ZkSmartKeyingPresenter::EraseMode;
    case Stroke::Mode::Keep:
        break;
    }
    return ZkSmartKeyingPresenter::KeepMode;
}

} // namespace

CutoutJob::CutoutJob(const CutoutOptions &options, ProgressReport *report)
    : m_options(options)
    , m_report(report)
{ }

ExitCode CutoutJob::fail(ExitCode code, const QString &message)
{
    m_report->error(code, message);
    return code;
}

ExitCode CutoutJob::interrupted()
{
    return fail(ExitCode::Interrupted, QStringLiteral("interrupted, nothing was written"));
}

ExitCode CutoutJob::run()
{
    using Step = ExitCode (CutoutJob::*)();
    constexpr Step steps[] = {&CutoutJob::readInputs,
                              &CutoutJob::open,
                              &CutoutJob::segment,
                              &CutoutJob::track,
                              &CutoutJob::dress,
                              &CutoutJob::save};
    for (const Step step : steps) {
        const ExitCode code = (this->*step)();
        if (code != ExitCode::Success)
            return code;
    }
    CutoutExport output(m_options, m_report);
    const ExitCode code = output.run(m_session.snapshot());
    if (code == ExitCode::Success)
        m_report->summary();
    return code;
}

ExitCode CutoutJob::readInputs()
{
    QString error;
    if (!m_options.strokesFile.isEmpty()) {
        return m_strokes.load(m_options.strokesFile, &error) ? ExitCode::Success
                                                             : fail(ExitCode::BadStrokes, error);
    }
    if (m_options.centred)
        return ExitCode::Success;
    if (!m_matte.load(m_options.matteFile))
        return fail(ExitCode::BadStrokes,
                    QStringLiteral("%1 is missing or not a picture, give a PNG file")
                        .arg(m_options.matteFile));
    return ExitCode::Success;
}

ExitCode CutoutJob::open()
{
    m_report->beginStage(QStringLiteral("open"));
    QString error;
    if (!m_session.openLibrary(m_options.libraryFolder, m_options.presetServer, &error))
        return fail(ExitCode::BadPreset, error);
    if (!m_session.openClip(m_options.input, &error))
        return fail(ExitCode::BadInput, error);
    const QSize size = m_session.snapshot().frameSize();
    const qint64 frameCount = m_session.snapshot().frameCount();
    if (m_options.centred)
        m_strokes.setCentred(size);
    if (m_matte.isNull() && !m_strokes.fits(size, frameCount, &error))
        return fail(ExitCode::BadStrokes, error);
    if (!m_matte.isNull() && m_options.matteFrame >= frameCount)
        return fail(ExitCode::BadStrokes,
                    QStringLiteral("--mask: frame %1 is past the end, the clip has frames 0 to %2")
                        .arg(m_options.matteFrame)
                        .arg(frameCount - 1));
    if (!m_matte.isNull() && m_matte.size() != size)
        return fail(ExitCode::BadStrokes,
                    QStringLiteral("%1 has %2x%3 pixels, it must have the clip's %4x%5")
                        .arg(m_options.matteFile)
                        .arg(m_matte.width())
                        .arg(m_matte.height())
                        .arg(size.width())
                        .arg(size.height()));
    if (!m_session.beginSmartCutout(&error))
        return fail(ExitCode::BadInput, error);
    bool shown = false;
    const auto connection = QObject::connect(m_session.presenter()->playerPresenter(),
                                             &ZkMediaPlayerPresenter::sigSeekFinished,
                                             [&shown] { shown = true; });
    m_session.presenter()->openEditTimeline();
    const bool ready = waitUntil([&shown] { return shown; });
    QObject::disconnect(connection);
    return ready ? ExitCode::Success : interrupted();
}

bool CutoutJob::seek(qint64 frame)
{
    ZkMediaPlayerPresenter *player = m_session.presenter()->playerPresenter();
    if (player->currentFrame() == frame)
        return true;
    bool shown = false;
    const auto connection = QObject::connect(
        player, &ZkMediaPlayerPresenter::sigSeekFinished, [&shown] { shown = true; });
    player->playhead()->setPosition(frame);
    const bool ready = waitUntil([&shown] { return shown; });
    QObject::disconnect(connection);
    return ready;
}

ExitCode CutoutJob::segment()
{
    m_report->beginStage(QStringLiteral("segment"));
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (!m_matte.isNull()) {
        if (!seek(m_options.matteFrame))
            return interrupted();
        presenter->editController()->setMatte(m_options.matteFrame, m_matte);
    }
    const QVector<Stroke> &strokes = m_strokes.strokes();
    for (int i = 0; i < strokes.size(); ++i) {
        const ExitCode code = paint(strokes.at(i));
        if (code != ExitCode::Success)
            return code;
        m_report->setPercent(100 * (i + 1) / strokes.size());
    }
    bool hasObject = presenter->smartKeyingService()->isEraseEnabled(m_options.matteFrame);
    for (const Stroke &stroke : strokes)
        hasObject = hasObject || presenter->smartKeyingService()->isEraseEnabled(stroke.frame);
    return hasObject
        ? ExitCode::Success
        : fail(ExitCode::NothingFound,
               QStringLiteral("no object was found, paint a keep stroke over more of it"));
}

ExitCode CutoutJob::paint(const Stroke &stroke)
{
    if (!seek(stroke.frame))
        return interrupted();
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (stroke.mode == Stroke::Mode::Erase && !presenter->isEraseMaskEnable())
        return fail(
            ExitCode::BadStrokes,
            QStringLiteral("%1: frame %2 has no mask to erase from, keep something there first")
                .arg(m_options.strokesFile)
                .arg(stroke.frame));
    presenter->setPlayerEditMode(editModeOf(stroke.mode));
    presenter->setMask(
        stroke.paint(m_session.snapshot().frameSize(), presenter->canvasRect().size()));
    return waitUntil([] { return true; }) ? ExitCode::Success : interrupted();
}

qint64 CutoutJob::firstFrame() const
{
    const QVector<Stroke> &strokes = m_strokes.strokes();
    const auto earlier = [](const Stroke &a, const Stroke &b) { return a.frame < b.frame; };
    return strokes.isEmpty() ? m_options.matteFrame
                             : std::min_element(strokes.begin(), strokes.end(), earlier)->frame;
}

qint64 CutoutJob::lastFrame() const
{
    const QVector<Stroke> &strokes = m_strokes.strokes();
    const auto earlier = [](const Stroke &a, const Stroke &b) { return a.frame < b.frame; };
    return strokes.isEmpty() ? m_options.matteFrame
                             : std::max_element(strokes.begin(), strokes.end(), earlier)->frame;
}

ExitCode CutoutJob::track()
{
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (m_session.snapshot().frameCount() < 2)
        return ExitCode::Success;
    m_report->beginStage(QStringLiteral("track"));
    const bool backward = m_options.direction == CutoutOptions::Direction::Backward;
    if (!seek(backward ? lastFrame() : firstFrame()))
        return interrupted();

    using namespace ZKSMARTKEYING;
    const bool both = m_options.direction == CutoutOptions::Direction::Both;
    QObject scope;
    int prompt = -1;
    QObject::connect(presenter, &ZkSmartKeyingPresenter::sigPrompt, &scope, [&prompt](auto type) {
        prompt = int(type);
    });
    QObject::connect(presenter,
                     &ZkSmartKeyingPresenter::sigTrackingProgress,
                     &scope,
                     [this](int percent) { m_report->setPercent(percent); });
    presenter->beginTrackingMode(both           ? TrackBoth
                                     : backward ? TrackBackward
                                                : TrackForward,
                                 both ? TrackWholeClip : TrackToClipEnd);
    if (!waitUntil([presenter] { return !presenter->isTrackingMode(); })) {
        presenter->stopTrackingMode();
        return interrupted();
    }
    if (prompt == ZkSmartKeyingPresenter::NothingToTrackPrompt)
        m_report->note(QStringLiteral("there is nothing to track in that direction"));
    else if (prompt >= 0)
        return fail(ExitCode::NothingFound, QStringLiteral("tracking failed, see the log"));
    return ExitCode::Success;
}

ExitCode CutoutJob::dress()
{
    if (m_options.preset.isEmpty())
        return ExitCode::Success;
    m_report->beginStage(QStringLiteral("preset"));
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (!waitUntil([this] { return m_session.arePresetsLoaded(); }))
        return interrupted();
    const QModelIndex index = m_session.findPreset(m_options.preset);
    if (!index.isValid())
        return fail(ExitCode::BadPreset,
                    QStringLiteral("there is no preset \"%1\", zkstudio presets lists them")
                        .arg(m_options.preset));
    QObject scope;
    bool failed = false;
    bool added = false;
    QObject::connect(presenter,
                     &ZkSmartKeyingPresenter::sigEffectPresetItemDownloadFailed,
                     &scope,
                     [&failed] { failed = true; });
    QObject::connect(
        presenter, &ZkSmartKeyingPresenter::sigEffectAdded, &scope, [&added] { added = true; });
    presenter->selectPresetAtIndex(index);
    if (!waitUntil([&] { return failed || added || index.row() == 0; }))
        return interrupted();
    return failed
        ? fail(ExitCode::BadPreset,
               QStringLiteral("the preset \"%1\" could not be fetched, check the network and "
                              "the preset server")
                   .arg(m_options.preset))
        : ExitCode::Success;
}

ExitCode CutoutJob::save()
{
    m_report->beginStage(QStringLiteral("save"));
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    QObject scope;
    int result = -1;
    QObject::connect(presenter,
                     &ZkSmartKeyingPresenter::sigSavingProgress,
                     &scope,
                     [this](int percent) { m_report->setPercent(percent); });
    QObject::connect(
        presenter, &ZkSmartKeyingPresenter::sigSaveFinished, &scope, [&](bool success) {
            result = success ? ZKSMARTKEYING::SaveSucceeded : ZKSMARTKEYING::SaveFailed;
        });
    QObject::connect(presenter, &ZkSmartKeyingPresenter::sigSaveCancel, &scope, [&result] {
        result = ZKSMARTKEYING::SaveCancelled;
    });
    presenter->applyModify();
    if (!waitUntil([&result] { return result >= 0; })) {
        presenter->cancelApply();
        return interrupted();
    }
    m_session.endSmartCutout();
    return result == ZKSMARTKEYING::SaveSucceeded
        ? ExitCode::Success
        : fail(ExitCode::InternalError,
               QStringLiteral("the result could not be written to the clip"));
}

} // namespace zk::app
