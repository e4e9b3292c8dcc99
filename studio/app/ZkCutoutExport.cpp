#include "ZkCutoutExport.h"

#include "ZkInterrupt.h"
#include "ZkPreview.h"
#include "ZkProgressReport.h"

#include <QCoreApplication>
#include <QDir>

namespace zk::app {

namespace {

constexpr int halfOpaque = 128;

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
    , m_sheet({QStringLiteral("source"),
               QStringLiteral("overlay"),
               QStringLiteral("matte"),
               QStringLiteral("result")})
{ }

ExitCode CutoutExport::run(const datamodel::RenderSnapshot &snapshot)
{
    m_report->beginStage(QStringLiteral("export"));
    if (!m_options.contactSheet.isEmpty())
        m_sheetFrames = ContactSheet::framesOf(snapshot.frameCount());
    Exporter::Hooks hooks;
    hooks.isCancelled = isInterrupted;
    hooks.progress = [this](qint64 done, qint64 count) {
        m_report->setPercent(int(100 * done / count));
        QCoreApplication::processEvents();
    };
    hooks.frame = [&](const Exporter::Frame &frame, datamodel::FrameRenderer &renderer) {
        return take(snapshot, frame, renderer);
    };
    hooks.wantsCutout = !m_sheetFrames.isEmpty();
    ExitCode code = reportOutcome(Exporter(m_options, hooks).run(snapshot), m_report);
    if (code == ExitCode::Success && !m_sheetFrames.isEmpty())
        code = reportOutcome(saveSheet(), m_report);
    if (code == ExitCode::Success && m_comparedFrames > 0)
        m_report->result(QStringLiteral("iou"), m_overlapSum / m_comparedFrames);
    return code;
}

ExportOutcome CutoutExport::take(const datamodel::RenderSnapshot &snapshot,
                                 const Exporter::Frame &frame,
                                 datamodel::FrameRenderer &renderer)
{
    if (m_sheetFrames.contains(frame.index))
        addToSheet(frame, renderer.source(snapshot, frame.index));
    return m_options.truthFolder.isEmpty() ? ExportOutcome() : compare(frame.index, frame.matte);
}

void CutoutExport::addToSheet(const Exporter::Frame &frame, const QImage &source)
{
    effects::RenderInput input;
    input.frame = source;
    input.matte = frame.matte;
    m_sheet.add({frame.index,
                 {source, effects::composePreview(input, nullptr, {}), frame.matte, frame.cutout}});
}

ExportOutcome CutoutExport::compare(qint64 frame, const QImage &matte)
{
    const QString name = QStringLiteral("%1.png").arg(frame, 5, 10, QLatin1Char('0'));
    const QString path = QDir(m_options.truthFolder).filePath(name);
    const QImage truth = QImage(path).convertToFormat(QImage::Format_Grayscale8);
    if (truth.size() != matte.size())
        return {ExitCode::BadInput,
                QStringLiteral("%1 is missing or not a picture of %2x%3 pixels")
                    .arg(path)
                    .arg(matte.width())
                    .arg(matte.height()),
                {}};
    const double value = overlap(matte, truth);
    if (value >= 0) {
        m_overlapSum += value;
        ++m_comparedFrames;
    }
    return {};
}

ExportOutcome CutoutExport::saveSheet()
{
    ExportOutcome outcome;
    if (m_sheet.save(m_options.contactSheet, &outcome.message))
        outcome.written.append(m_options.contactSheet);
    else
        outcome.code = ExitCode::BadOutput;
    return outcome;
}

ExitCode reportOutcome(const ExportOutcome &outcome, ProgressReport *report)
{
    for (const QString &path : outcome.written)
        report->output(path);
    if (outcome.code != ExitCode::Success)
        report->error(outcome.code, outcome.message);
    return outcome.code;
}

} // namespace zk::app
