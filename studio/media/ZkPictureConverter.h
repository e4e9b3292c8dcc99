// Private to this folder.
#pragma once

#include "ZkAvHandles.h"

#include <QImage>

namespace zk::media {

// Turns decoded pictures into upright RGBA images with square pixels.
class PictureConverter
{
public:
    // squareSize is the size before the clockwise rotation of that many degrees.
    PictureConverter(const QSize &squareSize, int rotation);

    // Null when the picture's pixels cannot be converted.
    QImage convert(const AVFrame &picture);

private:
    bool convertInto(const AVFrame &picture, QImage *image);
    bool prepare(const AVFrame &picture);

    QSize m_size;
    int m_rotation;
    ScalerPtr m_scaler;
    int m_sourceFormat = AV_PIX_FMT_NONE;
    QSize m_sourceSize;
};

} // namespace zk::media
