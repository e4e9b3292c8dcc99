#include "ZkErasePreview.h"

#include "ZkInterrupt.h"
#include "ZkProgressReport.h"

#include "ZkPreview.h"

#include <QCoreApplication>
#include <QSaveFile>

namespace zk::app {

namespace {

const QColor selectionColour(85, 229, 197); // of the workspace

ExportOutcome cannotWrite(const QString &path, const QString &reason)
{
    return {ExitCode::BadOutput, QStringLiteral("%1: %2").arg(path, reason), {}};
}

ExportOutcome savePicture(const QString &path, const QImage &picture)
{
    QSaveFile file(path);
    const bool isPng = path.endsWith(QLatin1String(".png"), Qt::CaseInsensitive);
    if (file.open(QIODevice::WriteOnly) && picture.save(&file, isPng ? "PNG" : "JPG")
        && file.commit())
        return {ExitCode::Success, {}, {path}};
    return cannotWrite(path, file.errorString());
}

} // namespace

QImage withSelection(const QImage &frame, const QImage &mask)
{
    effects::RenderInput input;
    input.frame = frame;
    input.matte = mask;
    effects::PreviewSettings settings;
    settings.overlayColour = selectionColour;
    return mask.isNull() ? frame : effects::composePreview(input, nullptr, settings);
}

ExportOutcome writeErasePreview(const datamodel::RenderSnapshot &snapshot,
                                const erasing::EraseJob &job,
                                ProgressReport *report)
{
    const QString &path = job.output.path;
    datamodel::FrameRenderer renderer;
    if (job.output.isPicture)
        return savePicture(path,
                           withSelection(renderer.source(snapshot, 0), job.masks.at(0).decoded()));
    QString error;
    const auto writer =
        media::MediaWriter::create(path, outputSettings(snapshot, job.output.format), &error);
    if (!writer)
        return {ExitCode::BadOutput, error, {}};
    for (int i = 0; i < job.masks.size(); ++i) {
        const QImage source = renderer.source(snapshot, i);
        if (source.isNull())
            return {ExitCode::BadInput, renderer.errorString(), {}};
        if (!writer->write(withSelection(source, job.masks.at(i).decoded()), &error))
            return cannotWrite(path, error);
        report->setPercent(100 * (i + 1) / job.masks.size());
        QCoreApplication::processEvents();
        if (isInterrupted())
            return {ExitCode::Interrupted, QStringLiteral("interrupted, nothing was written"), {}};
    }
    return writer->finish(&error) ? ExportOutcome {ExitCode::Success, {}, {path}}
                                  : cannotWrite(path, error);
}

} // namespace zk::app
