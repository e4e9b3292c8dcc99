#include "ZkCutoutExport.h"

#include "ZkInterrupt.h"
#include "ZkPreview.h"
#include "ZkProgressReport.h"

#include <QCoreApplication>
#include <QDir>

namespace zk::app {

namespace {

constexpr int halfOpaque = 128;

QImage greyPicture(const QImage &matte)
{
    return matte.convertToFormat(QImage::Format_RGBA8888);
}

// Intersection over union of what is at least half opaque; -1 when the truth has no such pixel.
double overlap(const QImage &matte, const QImage &truth)
{
    qint64 both = 0;
    qint64 either = 0;
    qint64 inTruth = 0;
    for (int y = 0; y < truth.height(); ++y) {
        const uchar *a = matte.constScanLine(y);
        const uchar *b = truth.constScanLine(y);
        for (int x = 0; x < truth.width(); ++x) {
            const bool inA = a[x] >= halfOpaque;
            const bool inB = b[x] >= halfOpaque;
            both += inA && inB;
            either += inA || inB;
            inTruth += inB;
        }
    }
    return inTruth == 0 ? -1 : double(both) / either;
}

} // namespace

CutoutExport::CutoutExport(const CutoutOptions &options, ProgressReport *report)
    : m_options(options)
    , m_report(report)
{ }

CutoutExport::~CutoutExport() = default;

ExitCode CutoutExport::fail(ExitCode code, const QString &message)
{
    m_outputs.clear(); // a writer that is not finished leaves nothing
    m_report->error(code, message);
    return code;
}

ExitCode CutoutExport::run(const datamodel::RenderSnapshot &snapshot)
{
    m_report->beginStage(QStringLiteral("export"));
    ExitCode code = open(snapshot);
    for (qint64 frame = 0; code == ExitCode::Success && frame < snapshot.frameCount(); ++frame) {
        code = writeFrame(snapshot, frame);
        m_report->setPercent(int(100 * (frame + 1) / snapshot.frameCount()));
        QCoreApplication::processEvents();
        if (code == ExitCode::Success && isInterrupted())
            return fail(ExitCode::Interrupted, QStringLiteral("interrupted, nothing was written"));
    }
    return code == ExitCode::Success ? finish() : code;
}

ExitCode CutoutExport::open(const datamodel::RenderSnapshot &snapshot)
{
    if (!m_options.backgroundPicture.isEmpty()) {
        m_background.load(m_options.backgroundPicture);
        if (m_background.isNull())
            return fail(ExitCode::BadInput,
                        QStringLiteral("%1 is not a picture, choose a PNG or JPEG file")
                            .arg(m_options.backgroundPicture));
    }
    if (!m_options.contactSheet.isEmpty())
        m_sheetFrames = ContactSheet::framesOf(snapshot.frameCount());
    for (const QString &path : m_options.outputs) {
        QString error;
        media::OutputSettings settings;
        media::formatFor(path, &settings.format, &error);
        settings.size = snapshot.frameSize();
        settings.frameRateNum = snapshot.frameRateNum();
        settings.frameRateDen = snapshot.frameRateDen();
        settings.frameCount = snapshot.frameCount();
        settings.audioSourcePath = snapshot.mediaPath();
        Output output {path,
                       media::supportsAlpha(settings.format),
                       media::MediaWriter::create(path, settings, &error)};
        if (!output.writer)
            return fail(ExitCode::BadOutput, error);
        m_outputs.push_back(std::move(output));
    }
    return ExitCode::Success;
}

ExitCode CutoutExport::writeFrame(const datamodel::RenderSnapshot &snapshot, qint64 frame)
{
    const bool isInSheet = m_sheetFrames.contains(frame);
    const bool needsCutout = !m_options.matteOnly || isInSheet;
    const QImage cutout = needsCutout ? m_renderer.cutout(snapshot, frame) : QImage();
    const QImage matte = m_renderer.matte(snapshot, frame);
    if (matte.isNull() || (needsCutout && cutout.isNull()))
        return fail(
            ExitCode::BadInput,
            QStringLiteral("frame %1 cannot be read: %2").arg(frame).arg(m_renderer.errorString()));
    for (const Output &output : m_outputs) {
        QString error;
        if (!output.writer->write(pictureFor(output, cutout, matte), &error))
            return fail(ExitCode::BadOutput, QStringLiteral("%1: %2").arg(output.path, error));
    }
    if (isInSheet)
        addToSheet(snapshot, frame, matte, cutout);
    return m_options.truthFolder.isEmpty() ? ExitCode::Success : compare(frame, matte);
}

QImage
CutoutExport::pictureFor(const Output &output, const QImage &cutout, const QImage &matte) const
{
    if (m_options.matteOnly)
        return greyPicture(matte);
    if (output.hasAlpha)
        return cutout;
    if (!m_background.isNull())
        return effects::compositeOver(cutout, m_background);
    const QColor colour = m_options.backgroundColour;
    return effects::compositeOver(cutout, colour.isValid() ? colour : QColor(Qt::black));
}

void CutoutExport::addToSheet(const datamodel::RenderSnapshot &snapshot,
                              qint64 frame,
                              const QImage &matte,
                              const QImage &cutout)
{
    ContactSheet::Row row;
    row.frame = frame;
    row.source = m_renderer.source(snapshot, frame);
    effects::RenderInput input;
    input.frame = row.source;
    input.matte = matte;
    row.overlay = effects::composePreview(input, nullptr, {});
    row.matte = matte;
    row.result = cutout;
    m_sheet.add(row);
}

ExitCode CutoutExport::compare(qint64 frame, const QImage &matte)
{
    const QString name = QStringLiteral("%1.png").arg(frame, 5, 10, QLatin1Char('0'));
    const QString path = QDir(m_options.truthFolder).filePath(name);
    const QImage truth = QImage(path).convertToFormat(QImage::Format_Grayscale8);
    if (truth.size() != matte.size())
        return fail(ExitCode::BadInput,
                    QStringLiteral("%1 is missing or not a picture of %2x%3 pixels")
                        .arg(path)
                        .arg(matte.width())
                        .arg(matte.height()));
    const double value = overlap(matte, truth);
    if (value >= 0) {
        m_overlapSum += value;
        ++m_comparedFrames;
    }
    return ExitCode::Success;
}

ExitCode CutoutExport::finish()
{
    QString error;
    for (Output &output : m_outputs) {
        if (!output.writer->finish(&error))
            return fail(ExitCode::BadOutput, QStringLiteral("%1: %2").arg(output.path, error));
        m_report->output(output.path);
    }
    if (!m_options.contactSheet.isEmpty()) {
        if (!m_sheet.save(m_options.contactSheet, &error))
            return fail(ExitCode::BadOutput, error);
        m_report->output(m_options.contactSheet);
    }
    if (m_comparedFrames > 0)
        m_report->result(QStringLiteral("iou"), m_overlapSum / m_comparedFrames);
    return ExitCode::Success;
}

} // namespace zk::app
