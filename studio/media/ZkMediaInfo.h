#pragma once

#include <QSize>
#include <QString>

namespace zk::media {

// What is known about a source before its first picture is decoded. Frames are counted at the constant
// rate frameRateNum / frameRateDen, whatever the file itself does.
struct MediaInfo
{
    QString path;
    // As it is shown: upright after rotation, with square pixels. May be odd.
    QSize size;
    int frameRateNum = 25;
    int frameRateDen = 1;
    qint64 frameCount = 0;
    bool hasAudio = false;
    // One picture, repeated for the length that the caller of MediaReader::open() chose.
    bool isStill = false;
    bool isAnimatedGif = false;
    bool hasAlpha = false;
    // The file's own frames are unevenly spaced; they are conformed to the constant rate.
    bool isVariableRate = false;
    // Clockwise turn in degrees that made the picture upright: 0, 90, 180 or 270.
    int rotation = 0;
    // Lower case, without the dot.
    QString formatSuffix;

    double frameRate() const { return double(frameRateNum) / frameRateDen; }
};

} // namespace zk::media
