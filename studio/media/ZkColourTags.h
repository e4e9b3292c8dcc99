// Private to this folder.
#pragma once

#include "ZkAvHandles.h"

namespace zk::media {

// How the colours of a video stream are coded, as its tags say it.
struct ColourTags
{
    AVColorPrimaries primaries = AVCOL_PRI_BT709;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_BT709;
    AVColorSpace matrix = AVCOL_SPC_BT709;
    AVColorRange range = AVCOL_RANGE_MPEG;
    bool isHalved = false; // colour has half the resolution, both ways

    // Those of a file's picture; the initial ones where its pictures are no YCbCr or cannot be read.
    static ColourTags ofFile(const QString &path);
};

// The matrix that a picture of that height is converted with: libswscale's SWS_CS_ value.
int matrixFor(AVColorSpace tag, int height);

} // namespace zk::media
