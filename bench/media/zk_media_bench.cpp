// Reading frames, against a bare MLT loop over the same file in the same process.
#include "ZkMediaReader.h"
#include "ZkSampleClip.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHash>
#include <QTemporaryDir>

#include <mlt++/Mlt.h>

#include <cstdio>
#include <functional>
#include <random>

using namespace zk::media;

namespace {

constexpr int Rounds = 2;
constexpr int RandomReads = 24;

// Reads one frame; with a hash also tells which picture came.
using ReadFrame = std::function<bool(qint64 frame, uint *hash)>;

// The bare loop: a producer in the source's own profile, and its picture as RGBA.
class MltLoop
{
public:
    MltLoop(const QString &path, const MediaInfo &info)
    {
        m_profile.set_explicit(1);
        m_profile.set_width(info.size.width());
        m_profile.set_height(info.size.height());
        m_profile.set_sample_aspect(1, 1);
        m_profile.set_frame_rate(info.frameRateNum, info.frameRateDen);
        m_size = info.size;
        m_producer =
            std::make_unique<Mlt::Producer>(m_profile, "avformat", path.toUtf8().constData());
    }

    bool read(qint64 frame, uint *hash)
    {
        m_producer->seek(int(frame));
        const std::unique_ptr<Mlt::Frame> picture(m_producer->get_frame());
        mlt_image_format format = mlt_image_rgba;
        int width = m_size.width();
        int height = m_size.height();
        const uint8_t *pixels = picture->get_image(format, width, height);
        if (pixels && hash)
            *hash = qHashBits(pixels, size_t(width) * height * 4);
        return pixels != nullptr;
    }

private:
    Mlt::Profile m_profile;
    QSize m_size;
    std::unique_ptr<Mlt::Producer> m_producer;
};

double millisecondsFor(const QVector<qint64> &frames, const ReadFrame &read)
{
    QElapsedTimer timer;
    timer.start();
    for (const qint64 frame : frames) {
        if (!read(frame, nullptr))
            std::fprintf(stderr, "frame %lld could not be read\n", static_cast<long long>(frame));
    }
    return double(timer.nsecsElapsed()) / 1e6 / frames.size();
}

// The best of some rounds, the two taking turns, so that both meet the same machine.
void compare(const char *title,
             const QVector<qint64> &frames,
             const ReadFrame &ours,
             const ReadFrame &bare)
{
    double best = 1e9;
    double baseline = 1e9;
    for (int round = 0; round < Rounds; ++round) {
        best = qMin(best, millisecondsFor(frames, ours));
        baseline = qMin(baseline, millisecondsFor(frames, bare));
    }
    std::printf("  %-10s reader %7.2f ms   bare MLT %7.2f ms   ratio %.2f\n",
                title,
                best,
                baseline,
                best / baseline);
    std::fflush(stdout);
}

// How many of the frames show another picture than they do when the file is read in order.
int wrongPictures(const QVector<qint64> &inOrder,
                  const QVector<qint64> &anyOrder,
                  const ReadFrame &read)
{
    QHash<qint64, uint> pictures;
    for (const qint64 frame : inOrder)
        read(frame, &pictures[frame]);
    int wrong = 0;
    for (const qint64 frame : anyOrder) {
        uint picture = 0;
        wrong += !read(frame, &picture) || picture != pictures.value(frame);
    }
    return wrong;
}

void benchFile(const QString &path)
{
    QString error;
    const std::unique_ptr<MediaReader> reader = MediaReader::open(path, &error);
    if (!reader) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return;
    }
    const MediaInfo &info = reader->info();
    std::printf("%s: %d x %d, %lld frames\n",
                qPrintable(path),
                info.size.width(),
                info.size.height(),
                static_cast<long long>(info.frameCount));
    MltLoop loop(path, info);
    QVector<qint64> inOrder;
    for (qint64 i = 0; i < qMin<qint64>(info.frameCount, 100); ++i)
        inOrder.append(i);
    std::mt19937 random(1);
    QVector<qint64> anyOrder;
    for (int i = 0; i < RandomReads; ++i)
        anyOrder.append(random() % quint64(inOrder.size()));
    const auto ours = [&reader](qint64 frame, uint *hash) {
        const QImage image = reader->frameAt(frame);
        if (hash && !image.isNull())
            *hash = qHashBits(image.constBits(), size_t(image.sizeInBytes()));
        return !image.isNull();
    };
    const auto bare = [&loop](qint64 frame, uint *hash) { return loop.read(frame, hash); };
    compare("in order", inOrder, ours, bare);
    compare("random", anyOrder, ours, bare);
    std::printf("  other pictures than in order, of %d: reader %d, bare MLT %d\n",
                RandomReads,
                wrongPictures(inOrder, anyOrder, ours),
                wrongPictures(inOrder, anyOrder, bare));
}

// A clip of the sample scene, when no file is given.
QString sampleFile(const QTemporaryDir &folder, const QSize &size)
{
    SampleOptions options;
    options.size = size;
    options.frames = 60;
    const QString path = folder.filePath(QStringLiteral("sample-%1.mp4").arg(size.height()));
    QString error;
    if (!SampleClip(options).write(path, QString(), &error))
        std::fprintf(stderr, "%s\n", qPrintable(error));
    return path;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    Mlt::Factory::init();
    const QTemporaryDir folder;
    QStringList files = QGuiApplication::arguments().mid(1);
    if (files.isEmpty())
        files << sampleFile(folder, {640, 360}) << sampleFile(folder, {1920, 1080});
    for (const QString &file : qAsConst(files))
        benchFile(file);
    return 0;
}
