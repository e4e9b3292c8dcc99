#include "ZkEraseComparison.h"

#include "ZkContactSheet.h"
#include "ZkErasePreview.h"

#include <QDir>
#include <QRegularExpression>

#include <cmath>

namespace zk::app {

namespace {

QString numbered(const QString &folder, int frame)
{
    return QStringLiteral("%1/%2.png").arg(folder).arg(frame, 5, 10, QLatin1Char('0'));
}

// The mean squared error of pictures as far as a mask reaches.
class SquaredError
{
public:
    void add(const QImage &picture, const QImage &truth, const QImage &mask)
    {
        for (int y = 0; y < mask.height(); ++y) {
            const uchar *inside = mask.constScanLine(y);
            for (int x = 0; x < mask.width(); ++x) {
                if (inside[x] > 0)
                    add(picture.pixel(x, y), truth.pixel(x, y));
            }
        }
    }
    double psnr() const
    {
        constexpr double peak = 255;
        constexpr double perfect = 99;
        return m_sum > 0 ? 10 * std::log10(peak * peak * m_count / m_sum) : perfect;
    }

private:
    void add(QRgb a, QRgb b)
    {
        for (const int difference :
             {qRed(a) - qRed(b), qGreen(a) - qGreen(b), qBlue(a) - qBlue(b)}) {
            m_sum += difference * difference;
            m_count += 1;
        }
    }

    double m_sum = 0;
    double m_count = 0;
};

} // namespace

EraseComparison::EraseComparison(const erasing::EraseJob &job)
    : m_job(job)
{ }

bool EraseComparison::open()
{
    m_source = media::MediaReader::open(m_job.mediaPath, &m_error);
    const bool isPictures =
        m_job.output.isPicture || m_job.output.format == media::OutputFormat::PngSequence;
    if (m_source && !isPictures)
        m_result = media::MediaReader::open(m_job.output.path, &m_error);
    return m_source && (m_result || isPictures);
}

QImage EraseComparison::before(int frame)
{
    return m_source->frameAt(m_job.inFrame + frame);
}

QImage EraseComparison::after(int frame)
{
    if (m_result)
        return m_result->frameAt(frame).copy(QRect(QPoint(0, 0), m_source->info().size));
    static const QRegularExpression pattern(QStringLiteral("%0?(\\d*)d"));
    QString path = m_job.output.path;
    const QRegularExpressionMatch match = pattern.match(path);
    if (match.hasMatch())
        path.replace(
            match.captured(0),
            QStringLiteral("%1").arg(frame, match.captured(1).toInt(), 10, QLatin1Char('0')));
    return QImage(path);
}

ExportOutcome EraseComparison::measure(const QString &folder, ErasePsnr *psnr)
{
    if (!open())
        return {ExitCode::BadInput, m_error, {}};
    SquaredError erased;
    SquaredError unerased;
    for (int i = 0; i < m_job.masks.size(); ++i) {
        const QImage source = before(i);
        const QImage truth(numbered(QDir(folder).filePath(QStringLiteral("backgrounds")), i));
        const QImage matte = QImage(numbered(QDir(folder).filePath(QStringLiteral("mattes")), i))
                                 .convertToFormat(QImage::Format_Grayscale8);
        if (truth.size() != source.size() || matte.size() != source.size())
            return {ExitCode::BadInput,
                    QStringLiteral("%1 has no pictures of %2x%3 pixels for frame %4")
                        .arg(folder)
                        .arg(source.width())
                        .arg(source.height())
                        .arg(i),
                    {}};
        erased.add(after(i), truth, matte);
        unerased.add(source, truth, matte);
    }
    *psnr = {erased.psnr(), unerased.psnr()};
    return {};
}

ExportOutcome EraseComparison::saveSheet(const QString &path)
{
    if (!open())
        return {ExitCode::BadInput, m_error, {}};
    ContactSheet sheet(
        {QStringLiteral("before"), QStringLiteral("selection"), QStringLiteral("after")});
    for (const qint64 frame : ContactSheet::framesOf(m_job.masks.size())) {
        const QImage source = before(int(frame));
        const QImage mask = m_job.masks.at(int(frame)).decoded();
        sheet.add({frame, {source, withSelection(source, mask), after(int(frame))}});
    }
    QString error;
    if (!sheet.save(path, &error))
        return {ExitCode::BadOutput, error, {}};
    return {ExitCode::Success, {}, {path}};
}

} // namespace zk::app
