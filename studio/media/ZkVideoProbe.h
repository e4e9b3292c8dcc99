// Private to this folder.
#pragma once

#include "ZkMediaInfo.h"
#include "ZkVideoFile.h"

namespace zk::media {

// Finds the length, rate, size and orientation of an open file from its packets, without decoding, and
// leaves it at its start. False, with a sentence for the user, when the file breaks off before its end.
bool probeVideo(VideoFile &file, MediaInfo *info, FrameClock *clock, QString *error);

// The picture's size in square pixels, before rotation.
QSize squarePixelSize(const VideoFile &file);

} // namespace zk::media
