// zk_matte_overlap CLIP DIR: mean intersection over union of what is at least half opaque in the frames of
// a clip, and in the true mattes DIR/00000.png, ... Fails when they are not as many.
#include "ZkMediaReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <cstdio>

namespace {

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

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QString error;
    const auto reader = zk::media::MediaReader::open(arguments.value(1), &error);
    if (!reader)
        return fail(error);
    const QDir folder(arguments.value(2));
    const QStringList mattes = folder.entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    if (mattes.isEmpty() || mattes.size() != reader->info().frameCount)
        return fail(QStringLiteral("%1 frames, but %2 mattes")
                        .arg(reader->info().frameCount)
                        .arg(mattes.size()));
    double sum = 0;
    for (int i = 0; i < mattes.size(); ++i) {
        const QImage truth =
            QImage(folder.filePath(mattes.at(i))).convertToFormat(QImage::Format_Grayscale8);
        const QImage alpha = alphaOf(reader->frameAt(i));
        if (alpha.size() != truth.size())
            return fail(QStringLiteral("frame %1 has no alpha of the matte's size").arg(i));
        sum += overlap(alpha, truth);
    }
    std::printf("%.4f\n", sum / mattes.size());
    return 0;
}
