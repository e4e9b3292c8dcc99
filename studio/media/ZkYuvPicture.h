// Private to this folder.
#pragma once

#include "ZkAvHandles.h"

#include <QImage>

namespace zk::media {

// How 8 bit luma and colour differences become red, green and blue.
struct YuvColours
{
    // coefficients as sws_getCoefficients() gives them.
    YuvColours(const int *coefficients, bool isFullRange);

    // Of the level of black, and factors with a value of 1 for 1 << 13.
    qint16 black;
    qint16 luma;
    qint16 redOfV;
    qint16 greenOfU;
    qint16 greenOfV;
    qint16 blueOfU;
};

// Whether convertYuv() takes the picture: planes of 8 bits with a colour for every two by two pixels,
// which is what most files hold.
bool isPlainYuv(const AVFrame &picture);

// Writes the picture into a Format_RGBA8888 image of its size, to within 1 of 255 of the exact result.
// Colours are interpolated between their places, in the middle of their pixels: a cutout's edge shows
// where they are only repeated. It is several times as fast as libswscale with the same interpolation.
void convertYuv(const AVFrame &picture, const YuvColours &colours, QImage *image);

} // namespace zk::media
