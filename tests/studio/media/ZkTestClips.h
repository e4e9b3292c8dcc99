// Small clips of every kind, written with libav so that tests need no other program. Every frame of
// them carries its number in a form that survives compression.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QVector>

namespace zk::test {

// Eight blocks across the picture, black for 0 and white for 1, lowest bit first: numbers to 255.
QImage numberedImage(int number, const QSize &size);
// -1 for a null image.
int numberIn(const QImage &image);

struct ClipSpec
{
    QSize size {160, 64};
    int frames = 60;
    int frameRateNum = 25;
    int frameRateDen = 1;
    // From one key frame to the next.
    int keyInterval = 250;
    int reorderedFrames = 2;
    // When each frame is shown, in units of 1 / frame rate; empty for one after the other.
    QVector<int> times;
    // Clockwise degrees that a player has to turn the picture by.
    int rotation = 0;
    int pixelAspectNum = 1;
    int pixelAspectDen = 1;
    // libav's names.
    const char *encoder = "libx264";
    const char *pixelFormat = "yuv420p";
    // libav's names of matrix and range; null: untagged.
    const char *matrix = nullptr;
    const char *range = nullptr;
    // The index of an MP4 before the pictures, so that a broken-off file still has it.
    bool indexFirst = false;
};

// The container follows the path's suffix. False when libav refuses.
bool writeClip(const QString &path, const ClipSpec &spec);

// A mono WAV file with a tone of half the full level from that time on, silence before.
bool writeTone(const QString &path, double seconds, double silence = 0);

struct Sound
{
    double seconds = 0;
    // When it first becomes loud; negative when it never does.
    double onset = -1;
    // libav's name of the codec; empty for a file without sound.
    QString codec;
    // A hash of its packets, as they are in the file.
    QByteArray packets;
};

Sound soundOf(const QString &path);

// "MATRIX/PRIMARIES/TRANSFER/RANGE" of the picture, in libav's names.
QString colourTagsOf(const QString &path);

} // namespace zk::test
