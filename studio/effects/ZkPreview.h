// The pictures that the player shows in its preview modes.
#pragma once

#include "ZkLookRenderer.h"

namespace zk::effects {

enum class PreviewType {
    Interactive = 1, // the frame, the object under a coloured overlay; looks are left out
    Result = 2, // the cutout on black
    Alpha = 3, // the alpha of the cutout as a grey picture
    Grid = 4 // the cutout on a checkerboard
};

struct PreviewSettings
{
    PreviewType type = PreviewType::Interactive;
    QColor overlayColour = QColor(0xe5, 0x3e, 0x4a); // its own alpha is ignored
    int overlayAlpha = 128; // 0..255
    bool invert = false; // what is not the object is kept
};

// The frame on black, Format_ARGB32_Premultiplied: as it is when no mask lies over it.
ZKEFFECTS_EXPORT QImage opaquePicture(const QImage &frame);

// Such a picture with the colour over it where the matte (Format_Grayscale8) is. A matte of another size is
// interpolated, so that a picture that was made smaller can have the matte of the whole one.
ZKEFFECTS_EXPORT QImage overlaid(QImage picture,
                                 const QImage &matte,
                                 const PreviewSettings &settings);

// look may be null: the plain cutout. Pure, as renderCutout() is. The result is
// Format_ARGB32_Premultiplied and opaque, ready to be painted; null on wrong input. A matte that is
// null counts as empty, so that a frame without one can be shown.
ZKEFFECTS_EXPORT QImage composePreview(const RenderInput &input,
                                       const Look *look,
                                       const PreviewSettings &settings);

} // namespace zk::effects
