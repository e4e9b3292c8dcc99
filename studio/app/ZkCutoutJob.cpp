#include "ZkCutoutJob.h"

#include "ZkCutoutExport.h"
#include "ZkEventWait.h"

#include "ZCutoutPresetItemManager.h"
#include "ZCutoutPresetItemModel.h"
#include "ZkDataModel.h"
#include "ZkSmartKeyingPresenter.h"

#include <algorithm>

namespace zk::app {

CutoutJob::CutoutJob(const CutoutOptions &options, ProgressReport *report)
    : ObjectJob(options, report)
    , m_options(options)
{ }

ExitCode CutoutJob::run()
{
    constexpr ExitCode (CutoutJob::*steps[])() = {&CutoutJob::readInputs,
                                                  &CutoutJob::open,
                                                  &CutoutJob::segment,
                                                  &CutoutJob::track,
                                                  &CutoutJob::dress,
                                                  &CutoutJob::save,
                                                  &CutoutJob::write};
    return runSteps(this, steps);
}

ExitCode CutoutJob::readInputs()
{
    const ExitCode code =
        readModels({engine::EngineRole::Segmentation, engine::EngineRole::Tracking});
    return code == ExitCode::Success ? readSelection() : code;
}

ExitCode CutoutJob::open()
{
    m_report->beginStage(QStringLiteral("open"));
    QString error;
    if (!m_session.openLibrary(m_options.libraryFolder, m_options.presetServer, &error))
        return fail(ExitCode::BadPreset, error);
    const ExitCode code = openClip();
    return code == ExitCode::Success ? openWorkspace(&StudioSession::beginSmartCutout) : code;
}

ExitCode CutoutJob::segment()
{
    m_report->beginStage(QStringLiteral("segment"));
    const ExitCode code = paintSelection();
    if (code != ExitCode::Success)
        return code;
    const IZkSmartKeyingService *service = m_session.presenter()->smartKeyingService();
    return requireObject(
        std::any_of(m_markedFrames.begin(), m_markedFrames.end(), [service](qint64 frame) {
            return service->isEraseEnabled(frame);
        }));
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
    m_session.endWorkspace();
    return result == ZKSMARTKEYING::SaveSucceeded
        ? ExitCode::Success
        : fail(ExitCode::InternalError,
               QStringLiteral("the result could not be written to the clip"));
}

ExitCode CutoutJob::write()
{
    return CutoutExport(m_options, m_report).run(m_session.snapshot());
}

} // namespace zk::app
