// Private to the data model: opens the media of a clip again, with the length that the clip knows.
#pragma once

#include "ZkMediaReader.h"

namespace zk::datamodel {

inline std::unique_ptr<zk::media::MediaReader> openMedia(const zk::media::MediaInfo &info,
                                                         QString *error)
{
    return zk::media::MediaReader::open(
        info.path, error, {info.frameCount, info.frameRateNum, info.frameRateDen});
}

} // namespace zk::datamodel
