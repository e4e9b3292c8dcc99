#include "ZkObjectJob.h"

#include "ZkEventWait.h"

#include "ZkAIErasingPresenter.h"
#include "ZkDataModel.h"
#include "ZkMediaPlayer.h"
#include "ZkModelTexts.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioTimeline.h"

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

ObjectJob::ObjectJob(const ObjectOptions &options, ProgressReport *report)
    : m_report(report)
    , m_object(options)
{
    QObject::connect(&m_models, &models::ModelChoice::failed, [report](const QString &notice) {
        report->note(notice);
    });
}

ExitCode ObjectJob::fail(ExitCode code, const QString &message)
{
    m_report->error(code, message);
    return code;
}

ExitCode ObjectJob::interrupted()
{
    return fail(ExitCode::Interrupted, QStringLiteral("interrupted, nothing was written"));
}

ExitCode ObjectJob::readSelection()
{
    QString error;
    if (!m_object.strokesFile.isEmpty() && !m_strokes.load(m_object.strokesFile, &error))
        return fail(ExitCode::BadStrokes, error);
    if (!m_object.matteFile.isEmpty() && !m_matte.load(m_object.matteFile))
        return fail(ExitCode::BadStrokes,
                    QStringLiteral("%1 is missing or not a picture, give a PNG file")
                        .arg(m_object.matteFile));
    return ExitCode::Success;
}

ExitCode ObjectJob::readModels(const QVector<engine::EngineRole> &roles)
{
    for (const QString &path : m_object.models) {
        QString error;
        if (!m_models.add(path, &error))
            return fail(ExitCode::BadModel, error);
    }
    for (const engine::EngineRole role : engine::engineRoles) {
        if (!roles.contains(role) && !m_models.path(role).isEmpty())
            return fail(ExitCode::BadModel,
                        QStringLiteral("%1 is a network for another purpose (%2), leave it out")
                            .arg(m_models.path(role), models::ModelTexts::role(role)));
    }
    return ExitCode::Success;
}

ExitCode ObjectJob::openClip()
{
    QString error;
    if (!m_session.openClip(m_object.input, &error))
        return fail(ExitCode::BadInput, error);
    m_session.timeline()->setEngine(m_models.engine());
    const QSize size = m_session.snapshot().frameSize();
    const qint64 frameCount = m_session.snapshot().frameCount();
    if (m_object.centred)
        m_strokes.setCentred(size);
    if (!m_matte.isNull()) {
        m_markedFrames.append(m_object.matteFrame);
        return checkMatte(size, frameCount);
    }
    for (const Stroke &stroke : m_strokes.strokes())
        m_markedFrames.append(stroke.frame);
    return m_strokes.fits(size, frameCount, &error) ? ExitCode::Success
                                                    : fail(ExitCode::BadStrokes, error);
}

ExitCode ObjectJob::checkMatte(const QSize &size, qint64 frameCount)
{
    if (m_object.matteFrame >= frameCount)
        return fail(ExitCode::BadStrokes,
                    QStringLiteral("--mask: frame %1 is past the end, the clip has frames 0 to %2")
                        .arg(m_object.matteFrame)
                        .arg(frameCount - 1));
    if (m_matte.size() != size)
        return fail(ExitCode::BadStrokes,
                    QStringLiteral("%1 has %2x%3 pixels, it must have the clip's %4x%5")
                        .arg(m_object.matteFile)
                        .arg(m_matte.width())
                        .arg(m_matte.height())
                        .arg(size.width())
                        .arg(size.height()));
    return ExitCode::Success;
}

ExitCode ObjectJob::openWorkspace(bool (StudioSession::*begin)(QString *error))
{
    QString error;
    if (!(m_session.*begin)(&error))
        return fail(ExitCode::BadInput, error);
    return waitForPicture([this] { m_session.presenter()->openEditTimeline(); }) ? ExitCode::Success
                                                                                 : interrupted();
}

// False: interrupted before.
bool ObjectJob::waitForPicture(const std::function<void()> &request)
{
    QObject scope;
    bool isShown = false;
    QObject::connect(m_session.presenter()->playerPresenter(),
                     &ZkMediaPlayerPresenter::sigSeekFinished,
                     &scope,
                     [&isShown] { isShown = true; });
    request();
    return waitUntil([&isShown] { return isShown; });
}

bool ObjectJob::seek(qint64 frame)
{
    ZkMediaPlayerPresenter *player = m_session.presenter()->playerPresenter();
    return player->currentFrame() == frame
        || waitForPicture([=] { player->playhead()->setPosition(frame); });
}

ExitCode ObjectJob::paintSelection()
{
    if (!m_matte.isNull()) {
        if (!seek(m_object.matteFrame))
            return interrupted();
        m_session.presenter()->editController()->setMatte(m_object.matteFrame, m_matte);
    }
    const QVector<Stroke> &all = m_strokes.strokes();
    for (int i = 0; i < all.size(); ++i) {
        const ExitCode code = paint(all.at(i));
        if (code != ExitCode::Success)
            return code;
        m_report->setPercent(100 * (i + 1) / all.size());
    }
    return ExitCode::Success;
}

ExitCode ObjectJob::requireObject(bool hasObject)
{
    return hasObject
        ? ExitCode::Success
        : fail(ExitCode::NothingFound,
               QStringLiteral("no object was found, paint a keep stroke over more of it"));
}

ExitCode ObjectJob::paint(const Stroke &stroke)
{
    if (!seek(stroke.frame))
        return interrupted();
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (stroke.mode == Stroke::Mode::Erase && !presenter->isEraseMaskEnable())
        return fail(
            ExitCode::BadStrokes,
            QStringLiteral("%1: frame %2 has no mask to erase from, keep something there first")
                .arg(m_object.strokesFile)
                .arg(stroke.frame));
    presenter->setPlayerEditMode(editModeOf(stroke.mode));
    presenter->setMask(
        stroke.paint(m_session.snapshot().frameSize(), presenter->canvasRect().size()));
    return waitUntil([] { return true; }) ? ExitCode::Success : interrupted();
}

void ObjectJob::beginTracking()
{
    using namespace ZKSMARTKEYING;
    using Direction = ObjectOptions::Direction;
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (m_object.direction != Direction::Both)
        presenter->beginTrackingMode(m_object.direction == Direction::Backward ? TrackBackward
                                                                               : TrackForward,
                                     TrackToClipEnd);
    else if (m_session.erasingPresenter())
        m_session.erasingPresenter()->beginTracking();
    else
        presenter->beginTrackingMode(TrackBoth, TrackWholeClip);
}

ExitCode ObjectJob::track()
{
    ZkSmartKeyingPresenter *presenter = m_session.presenter();
    if (m_session.snapshot().frameCount() < 2)
        return ExitCode::Success;
    m_report->beginStage(QStringLiteral("track"));
    const bool backward = m_object.direction == ObjectOptions::Direction::Backward;
    const auto ends = std::minmax_element(m_markedFrames.begin(), m_markedFrames.end());
    if (!seek(backward ? *ends.second : *ends.first))
        return interrupted();

    QObject scope;
    int prompt = -1;
    QObject::connect(presenter, &ZkSmartKeyingPresenter::sigPrompt, &scope, [&prompt](auto type) {
        prompt = int(type);
    });
    QObject::connect(presenter,
                     &ZkSmartKeyingPresenter::sigTrackingProgress,
                     &scope,
                     [this](int percent) { m_report->setPercent(percent); });
    beginTracking();
    if (!waitUntil([presenter] { return !presenter->isTrackingMode(); })) {
        presenter->stopTrackingMode();
        return interrupted();
    }
    if (prompt == ZkSmartKeyingPresenter::NothingToTrackPrompt)
        m_report->note(QStringLiteral("there is nothing to track in that direction"));
    else if (prompt >= 0)
        return fail(ExitCode::NothingFound, QStringLiteral("tracking failed, see the log"));
    noteSceneCuts();
    return ExitCode::Success;
}

void ObjectJob::noteSceneCuts()
{
    const auto *timeline = static_cast<ZkStudioTimeline *>(m_session.presenter()->editTimeline());
    const ZkStudioSmartKeyingService *service = timeline->shownService();
    const QVector<qint64> cuts = service->sceneCuts();
    for (const qint64 cut : cuts)
        m_report->note(QStringLiteral("the scene changes at frame %1: tracking stopped there, mark "
                                      "the object on that frame, too, to go on")
                           .arg(cut));
    if (!cuts.isEmpty())
        m_report->note(QStringLiteral("%1 of %2 frames were tracked")
                           .arg(service->segments().tracked().size())
                           .arg(timeline->frameCount()));
}

} // namespace zk::app
