#include "ZkSampleClip.h"

#include "ZkMediaWriter.h"
#include "ZkSampleScene.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QJsonArray>
#include <QTemporaryFile>

#include <algorithm>
#include <cmath>

namespace zk::media {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double GrainLevel = 5; // of 255, at the most
constexpr double ShutterAngle = 0.5; // of a frame
constexpr int ToneRate = 48000; // samples per second
constexpr double ToneFrequency = 440;
constexpr double basketBegins = 0.77; // of the object's height: below are the ropes and the basket
constexpr double ToneLevel = 6000; // of 32767

int over(int top, int alpha, int bottom)
{
    return top + (bottom * (255 - alpha) + 127) / 255;
}

// One colour channel (0 red, 1 green, 2 blue) of premultiplied layers.
int seenThrough(QRgb front, QRgb middle, QRgb back, int channel)
{
    const int shift = 16 - 8 * channel;
    const auto part = [shift](QRgb colour) { return int(colour >> shift & 0xff); };
    return over(part(front), qAlpha(front), over(part(middle), qAlpha(middle), part(back)));
}

bool savePicture(const QImage &picture, const QString &folder, int index, QString *error)
{
    const QString name = QStringLiteral("%1.png").arg(index, 5, 10, QLatin1Char('0'));
    if (QDir().mkpath(folder) && picture.save(QDir(folder).filePath(name)))
        return true;
    *error = QCoreApplication::translate(
                 "zk::media", "The pictures cannot be written to %1; choose another folder.")
                 .arg(QDir::toNativeSeparators(folder));
    return false;
}

QJsonObject stroke(const char *mode, const QPolygonF &path, double width)
{
    QJsonArray points;
    for (const QPointF &point : path)
        points.append(QJsonArray {std::round(point.x()), std::round(point.y())});
    return {{QStringLiteral("frame"), 0},
            {QStringLiteral("mode"), QLatin1String(mode)},
            {QStringLiteral("width"), std::round(width)},
            {QStringLiteral("points"), points}};
}

// What is opaque of the object below that share of its height, with some room around it.
QJsonObject boxAround(int frame, const QImage &matte, double below)
{
    const auto boundingBox = [&matte](int top) {
        QRect box;
        for (int y = top; y < matte.height(); ++y) {
            for (int x = 0; x < matte.width(); ++x) {
                if (matte.constScanLine(y)[x] > 0)
                    box |= QRect(x, y, 1, 1);
            }
        }
        return box;
    };
    const QRect whole = boundingBox(0);
    const QRect part = boundingBox(whole.top() + int(below * whole.height()));
    const int margin = matte.height() / 50;
    const QRect box = part.adjusted(-margin, -margin, margin, margin) & matte.rect();
    const QJsonArray rect {box.x(), box.y(), box.width(), box.height()};
    return {{QStringLiteral("frame"), frame}, {QStringLiteral("rect"), rect}};
}

// A mono WAV file.
bool writeTone(QIODevice &file, double seconds)
{
    const auto samples = quint32(std::lround(seconds * ToneRate));
    const quint32 bytes = samples * 2;
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + bytes);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << quint16(1) << quint32(ToneRate) << quint32(ToneRate * 2)
           << quint16(2) << quint16(16);
    stream.writeRawData("data", 4);
    stream << bytes;
    for (quint32 i = 0; i < samples; ++i)
        stream << qint16(std::lround(ToneLevel * std::sin(2 * Pi * ToneFrequency * i / ToneRate)));
    return stream.status() == QDataStream::Ok;
}

} // namespace

// What there is to see on one frame, from front to back.
struct SampleClip::Layers
{
    QImage post;
    QImage balloon;
    QImage background;
};

struct SampleClip::Scene
{
    explicit Scene(const SampleOptions &wanted)
        : options(wanted)
        , scene(wanted.size, double(std::max(1, wanted.frames)) / wanted.frameRate)
    { }

    double time(int index) const { return double(index) / options.frameRate; }
    bool has(int index) const { return index >= 0 && index < options.frames; }
    Layers layers(int index, bool withBackground) const;

    SampleOptions options;
    SampleScene scene;
};

SampleClip::Layers SampleClip::Scene::layers(int index, bool withBackground) const
{
    const double shutter = ShutterAngle / options.frameRate;
    const double at = time(index);
    return {scene.post(at, shutter),
            scene.balloon(at, shutter),
            withBackground ? scene.background(at, shutter) : QImage()};
}

SampleClip::SampleClip(const SampleOptions &options)
    : m_scene(std::make_unique<Scene>(options))
{ }

SampleClip::~SampleClip() = default;

const SampleOptions &SampleClip::options() const
{
    return m_scene->options;
}

QImage SampleClip::frame(int index) const
{
    return m_scene->has(index) ? pictureOf(m_scene->layers(index, true), index) : QImage();
}

QImage SampleClip::background(int index) const
{
    if (!m_scene->has(index))
        return QImage();
    Layers layers = m_scene->layers(index, true);
    layers.balloon.fill(Qt::transparent);
    return pictureOf(layers, index);
}

QImage SampleClip::matte(int index) const
{
    return m_scene->has(index) ? matteOf(m_scene->layers(index, false)) : QImage();
}

QImage SampleClip::pictureOf(const Layers &layers, int index)
{
    QImage result(layers.background.size(), QImage::Format_RGBA8888);
    for (int y = 0; y < result.height(); ++y) {
        const auto *back = reinterpret_cast<const QRgb *>(layers.background.constScanLine(y));
        const auto *middle = reinterpret_cast<const QRgb *>(layers.balloon.constScanLine(y));
        const auto *front = reinterpret_cast<const QRgb *>(layers.post.constScanLine(y));
        uchar *pixel = result.scanLine(y);
        for (int x = 0; x < result.width(); ++x, pixel += 4) {
            for (int channel = 0; channel < 3; ++channel) {
                const double grain = GrainLevel * SampleScene::grain(index, x, y, channel);
                const int seen = seenThrough(front[x], middle[x], back[x], channel);
                pixel[channel] = uchar(std::clamp(int(std::lround(seen + grain)), 0, 255));
            }
            pixel[3] = 255;
        }
    }
    return result;
}

QImage SampleClip::matteOf(const Layers &layers)
{
    QImage result(layers.balloon.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < result.height(); ++y) {
        const auto *middle = reinterpret_cast<const QRgb *>(layers.balloon.constScanLine(y));
        const auto *front = reinterpret_cast<const QRgb *>(layers.post.constScanLine(y));
        uchar *pixel = result.scanLine(y);
        for (int x = 0; x < result.width(); ++x)
            pixel[x] = uchar(over(0, qAlpha(front[x]), qAlpha(middle[x])));
    }
    return result;
}

QJsonObject SampleClip::strokes() const
{
    const double width = 14.0 * options().size.height() / 360;
    const SampleScene &scene = m_scene->scene;
    const QJsonArray strokes {stroke("keep", scene.envelopeStroke(0), width),
                              stroke("keep", scene.basketStroke(0), width / 2),
                              stroke("remove", scene.backgroundStroke(0), width)};
    return {{QStringLiteral("strokes"), strokes}};
}

QJsonObject SampleClip::boxes() const
{
    const int late = options().frames * 3 / 4;
    const QJsonArray boxes {boxAround(late, matte(late), 0), boxAround(0, matte(0), basketBegins)};
    return {{QStringLiteral("boxes"), boxes}};
}

bool SampleClip::writeBackgrounds(const QString &folder, QString *error) const
{
    for (int i = 0; i < options().frames; ++i) {
        if (!savePicture(background(i), folder, i, error))
            return false;
    }
    return true;
}

bool SampleClip::write(const QString &clipPath,
                       const QString &matteDir,
                       QString *error,
                       bool withAudioTone) const
{
    OutputSettings settings;
    if (!formatFor(clipPath, &settings.format, error))
        return false;
    settings.size = options().size;
    settings.frameRateNum = options().frameRate;
    settings.frameCount = options().frames;
    QTemporaryFile tone(QDir::temp().filePath(QStringLiteral("zk-tone-XXXXXX.wav")));
    if (withAudioTone) {
        if (!tone.open() || !writeTone(tone, m_scene->time(options().frames)) || !tone.flush()) {
            *error = tone.errorString();
            return false;
        }
        settings.audioSourcePath = tone.fileName();
    }
    const std::unique_ptr<MediaWriter> writer = MediaWriter::create(clipPath, settings, error);
    return writer && writeFrames(*writer, matteDir, error) && writer->finish(error);
}

bool SampleClip::writeFrames(MediaWriter &writer, const QString &matteDir, QString *error) const
{
    for (int i = 0; i < options().frames; ++i) {
        const Layers layers = m_scene->layers(i, true);
        if (!writer.write(pictureOf(layers, i), error))
            return false;
        if (!matteDir.isEmpty() && !savePicture(matteOf(layers), matteDir, i, error))
            return false;
    }
    return true;
}

} // namespace zk::media
