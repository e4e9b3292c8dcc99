// Compares with what is known of the sample clip:
//   zk_sample_truth overlap CLIP DIR           mean intersection over union of what is at least half opaque
//                                              in the frames of a clip, and in the true mattes DIR/00000.png
//   zk_sample_truth erased SOURCE RESULT DIR   PSNR against DIR/backgrounds where DIR/mattes has the object
//   zk_sample_truth still CLIP PICTURE         writes the first frame
#include "ZkEraseComparison.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <cstdio>

namespace {

using zk::media::MediaReader;

QImage alphaOf(const QImage &frame)
{
    return frame.hasAlphaChannel() ? frame.convertToFormat(QImage::Format_Alpha8) : QImage();
}

double overlap(const QImage &alpha, const QImage &truth)
{
    qint64 both = 0;
    qint64 either = 0;
    for (int y = 0; y < truth.height(); ++y) {
        const uchar *a = alpha.constScanLine(y);
        const uchar *b = truth.constScanLine(y);
        for (int x = 0; x < truth.width(); ++x) {
            both += a[x] > 127 && b[x] > 127;
            either += a[x] > 127 || b[x] > 127;
        }
    }
    return either == 0 ? 1 : double(both) / double(either);
}

int fail(const QString &message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    return 1;
}

int compareMattes(MediaReader &clip, const QString &mattesFolder)
{
    const QDir folder(mattesFolder);
    const QStringList mattes = folder.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    if (mattes.isEmpty() || mattes.size() != clip.info().frameCount)
        return fail(QStringLiteral("%1 frames, but %2 mattes")
                        .arg(clip.info().frameCount)
                        .arg(mattes.size()));
    double sum = 0;
    for (int i = 0; i < mattes.size(); ++i) {
        const QImage truth =
            QImage(folder.filePath(mattes.at(i))).convertToFormat(QImage::Format_Grayscale8);
        const QImage alpha = alphaOf(clip.frameAt(i));
        if (alpha.size() != truth.size())
            return fail(QStringLiteral("frame %1 has no alpha of the matte's size").arg(i));
        sum += overlap(alpha, truth);
    }
    std::printf("%.4f\n", sum / mattes.size());
    return 0;
}

int compareBackgrounds(const QString &source,
                       const QString &result,
                       const zk::media::MediaInfo &resultInfo,
                       const QString &folder)
{
    zk::erasing::EraseJob job;
    job.mediaPath = source;
    job.output.path = result;
    job.masks.resize(resultInfo.isStill ? 1 : int(resultInfo.frameCount));
    zk::app::ErasePsnr psnr;
    const zk::app::ExportOutcome outcome = zk::app::EraseComparison(job).measure(folder, &psnr);
    if (outcome.code != zk::app::ExitCode::Success)
        return fail(outcome.message);
    std::printf("%.2f %.2f\n", psnr.erased, psnr.unerased);
    return 0;
}

int writeStill(MediaReader &clip, const QString &picture)
{
    return clip.frameAt(0).save(picture) ? 0 : fail(picture);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    const QString source = arguments.value(2);
    const bool isErased = what == QLatin1String("erased");
    const QString clip = isErased ? arguments.value(3) : source;
    QString error;
    const auto reader = MediaReader::open(clip, &error);
    if (!reader)
        return fail(error);
    if (isErased)
        return compareBackgrounds(source, clip, reader->info(), arguments.value(4));
    if (what == QLatin1String("overlap"))
        return compareMattes(*reader, arguments.value(3));
    if (what == QLatin1String("still"))
        return writeStill(*reader, arguments.value(3));
    return fail(QStringLiteral("nothing to do"));
}
