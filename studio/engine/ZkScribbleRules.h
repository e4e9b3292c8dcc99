// What every segmenter makes of strokes alike, whatever finds the object. Not public.
#pragma once

#include "ZkInteractiveSegmenter.h"

namespace zk::engine {

// Whether there is anything to segment: a frame with masks of its size, and a keep stroke or a matte to correct.
bool isSegmentable(const cv::Mat &frame, const Scribbles &scribbles, const cv::Mat &previous);

// Strokes are the user's word: keep pixels become 255, remove pixels 0, and both remove.
void obeyScribbles(cv::Mat *matte, const Scribbles &scribbles);

} // namespace zk::engine
