#include "ZkErasingJob.h"

#include "ZkCutoutExport.h"
#include "ZkEraseComparison.h"
#include "ZkErasePreview.h"
#include "ZkEventWait.h"

#include "ZkAIErasingCropSelectorPresenter.h"
#include "ZkAIErasingPresenter.h"
#include "ZkEraseTask.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioClip.h"

#include <QElapsedTimer>

namespace zk::app {

namespace {

// Where the frame's part of the box is on the canvas, which shows the whole frame.
QRect onCanvas(const QRectF &box, const QSize &frame, const QRect &canvas)
{
    const QRectF inside = box & QRectF(QPointF(0, 0), frame);
    const double scaleX = double(canvas.width()) / frame.width();
    const double scaleY = double(canvas.height()) / frame.height();
    return QRectF(canvas.x() + inside.x() * scaleX,
                  canvas.y() + inside.y() * scaleY,
                  inside.width() * scaleX,
                  inside.height() * scaleY)
        .toAlignedRect();
}

ExitCode codeOf(erasing::EraseCause cause)
{
    switch (cause) {
    case erasing::EraseCause::Source:
        return ExitCode::BadInput;
    case erasing::EraseCause::Output:
        return ExitCode::BadOutput;
    case erasing::EraseCause::None:
    case erasing::EraseCause::Worker:
        break;
    }
    return ExitCode::InternalError;
}

} // namespace

ErasingJob::ErasingJob(const EraseOptions &options, ProgressReport *report)
    : ObjectJob(options, report)
    , m_options(options)
{ }

ExitCode ErasingJob::run()
{
    constexpr ExitCode (ErasingJob::*steps[])() = {&ErasingJob::readInputs,
                                                   &ErasingJob::open,
                                                   &ErasingJob::select,
                                                   &ErasingJob::trackAll,
                                                   &ErasingJob::save,
                                                   &ErasingJob::write};
    return runSteps(this, steps);
}

ExitCode ErasingJob::readInputs()
{
    QString error;
    if (!m_options.boxesFile.isEmpty() && !m_boxes.load(m_options.boxesFile, &error))
        return fail(ExitCode::BadStrokes, error);
    using engine::EngineRole;
    const ExitCode code =
        readModels({EngineRole::Segmentation, EngineRole::Tracking, EngineRole::Inpainting});
    return code == ExitCode::Success ? readSelection() : code;
}

ExitCode ErasingJob::open()
{
    m_report->beginStage(QStringLiteral("open"));
    m_job.mediaPath = m_options.input;
    m_job.fingerprint = erasing::Fingerprint::of(m_options.input);
    m_job.modelPath = m_models.path(engine::EngineRole::Inpainting);
    const ExitCode code = openClip();
    if (code != ExitCode::Success)
        return code;
    QString error;
    const qint64 frameCount = m_session.snapshot().frameCount();
    if (!m_boxes.fits(m_session.snapshot().frameSize(), frameCount, &error))
        return fail(ExitCode::BadStrokes, error);
    for (const Box &box : m_boxes.boxes())
        m_markedFrames.append(box.frame);
    if (!m_options.resultFor(frameCount, &m_job.output, &error))
        return fail(ExitCode::Usage, error);
    return openWorkspace(&StudioSession::beginErasing);
}

ExitCode ErasingJob::select()
{
    m_report->beginStage(QStringLiteral("segment"));
    const QVector<Box> &boxes = m_boxes.boxes();
    for (int i = 0; i < boxes.size(); ++i) {
        const ExitCode code = addBox(boxes.at(i));
        if (code != ExitCode::Success)
            return code;
        m_report->setPercent(100 * (i + 1) / boxes.size());
    }
    const ExitCode code = paintSelection();
    if (code != ExitCode::Success)
        return code;
    return requireObject(m_session.presenter()->smartKeyingService()->segmentCount() > 0);
}

ExitCode ErasingJob::addBox(const Box &box)
{
    if (!seek(box.frame))
        return interrupted();
    ZkAIErasingPresenter *presenter = m_session.erasingPresenter();
    presenter->setPlayerEditMode(ZkSmartKeyingPresenter::SelectRectMode);
    presenter->cropSelectorPresenter()->triggerInitialCanvasRectSync();
    const QRect rect =
        onCanvas(box.rect, m_session.snapshot().frameSize(), presenter->canvasRect());
    if (presenter->cropSelectorPresenter()->addCropRect(rect) < 0)
        return fail(ExitCode::NothingFound,
                    QStringLiteral("nothing can be selected in the box at frame %1, see the log")
                        .arg(box.frame));
    return waitUntil([] { return true; }) ? ExitCode::Success : interrupted();
}

ExitCode ErasingJob::trackAll()
{
    QElapsedTimer clock;
    clock.start();
    const ExitCode code = track();
    m_session.erasingPresenter()->setTrackingDuration(clock.elapsed());
    return code;
}

ExitCode ErasingJob::save()
{
    ZkAIErasingPresenter *presenter = m_session.erasingPresenter();
    presenter->setHasTracked(true);
    presenter->save();
    const auto *clip = static_cast<ZkStudioClip *>(presenter->editController()->editClip());
    const datamodel::EraseMasks masks = clip->studioService(ZKSMARTKEYING::AIErasing)->eraseMasks();
    const qint64 frameCount = m_session.snapshot().frameCount();
    for (qint64 frame = 0; frame < frameCount; ++frame)
        m_job.masks.append(masks.at(frame));
    return ExitCode::Success;
}

ExitCode ErasingJob::write()
{
    if (m_options.isPreview) {
        m_report->beginStage(QStringLiteral("export"));
        return reportOutcome(writeErasePreview(m_session.snapshot(), m_job, m_report), m_report);
    }
    const ExitCode code = erase();
    m_session.endWorkspace();
    return code == ExitCode::Success ? compare() : code;
}

ExitCode ErasingJob::erase()
{
    m_report->beginStage(QStringLiteral("erase"));
    erasing::EraseTask task(m_job);
    QString reason;
    QObject::connect(&task, &erasing::EraseTask::progress, [this](int percent) {
        m_report->setPercent(percent);
    });
    QObject::connect(&task, &erasing::EraseTask::finished, [&reason](auto, const QString &text) {
        reason = text;
    });
    QObject::connect(&task, &erasing::EraseTask::noted, [this](const QString &notice) {
        m_report->note(notice);
    });
    task.start();
    if (!waitUntil([&task] { return task.isFinished(); }))
        return interrupted();
    if (task.cause() != erasing::EraseCause::None)
        return fail(codeOf(task.cause()), reason);
    m_report->output(m_job.output.path);
    return ExitCode::Success;
}

ExitCode ErasingJob::compare()
{
    if (m_options.contactSheet.isEmpty() && m_options.truthFolder.isEmpty())
        return ExitCode::Success;
    m_report->beginStage(QStringLiteral("compare"));
    EraseComparison comparison(m_job);
    ExitCode code = ExitCode::Success;
    if (!m_options.truthFolder.isEmpty()) {
        ErasePsnr psnr;
        code = reportOutcome(comparison.measure(m_options.truthFolder, &psnr), m_report);
        if (code != ExitCode::Success)
            return code;
        m_report->result(QStringLiteral("psnr"), psnr.erased);
        m_report->result(QStringLiteral("psnr_unerased"), psnr.unerased);
    }
    if (!m_options.contactSheet.isEmpty())
        code = reportOutcome(comparison.saveSheet(m_options.contactSheet), m_report);
    return code;
}

} // namespace zk::app
