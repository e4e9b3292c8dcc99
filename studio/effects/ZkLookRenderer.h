// From a frame, its matte and a look to the finished cutout.
//
// Everything here is a pure function: any thread may call it, and the same input gives the same
// picture. Wrong input (null pictures, sizes that differ) gives a null QImage.
#pragma once

#include "ZkLook.h"

#include <QImage>

namespace zk::effects {

struct RenderInput
{
    QImage frame; // best Format_RGBA8888 (straight alpha); others are converted
    QImage matte; // of the frame's size, best Format_Grayscale8; 255 is the object
    qint64 frameIndex = 0; // with frameRate the time that animated layers go by
    double frameRate = 25; // frames per second; 0 or less: time stands still
};

// The finished cutout: Format_RGBA8888, straight alpha, of the frame's size. The frame's own alpha
// multiplies the matte. Pixels that nothing covers are 0,0,0,0, so nothing of the removed
// background is left in the file.
ZKEFFECTS_EXPORT QImage renderCutout(const RenderInput &input, const Look &look = {});

// The matte with feather and shift applied (decontamination concerns colours only), Format_Grayscale8.
// frameHeight is the height of the whole frame, which lengths scale with; 0: the matte's own.
ZKEFFECTS_EXPORT QImage applyMatteSettings(const QImage &matte,
                                           const MatteSettings &settings,
                                           int frameHeight = 0);

ZKEFFECTS_EXPORT QImage invertedMatte(const QImage &matte);

// A straight-alpha cutout over a colour, or over a picture that is scaled to cover it and cropped
// about its middle. Format_RGBA8888; a translucent colour stays translucent.
ZKEFFECTS_EXPORT QImage compositeOver(const QImage &cutout, const QColor &colour);
ZKEFFECTS_EXPORT QImage compositeOver(const QImage &cutout, const QImage &background);

} // namespace zk::effects
