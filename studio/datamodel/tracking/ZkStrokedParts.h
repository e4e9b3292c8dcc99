// Private to the data model: how a stroke changes a node that is made of several parts.
#pragma once

#include "../segmentation/ZkSegments.h"

#include <opencv2/core.hpp>

namespace zk::datamodel {

// What the brush has of a mask that a keep stroke has corrected: all of it but what only the areas'
// objects have. `own` is what it had before. Of several objects it has those that the stroke or the
// brush itself touch: the others are tracked here, and stay what they are.
cv::Mat keptByBrush(const SegmentNode &node,
                    const cv::Mat &corrected,
                    const cv::Mat &own,
                    const cv::Mat &painted,
                    bool isSingleObject);

// Takes what the corrected mask no longer has from the objects of the node's areas. An area of which
// nothing is left goes.
void takeFromAreas(SegmentNode *node, const cv::Mat &corrected);

// Makes that the brush's part of the node, and the node's result what it is then.
void assemble(SegmentNode *node, const cv::Mat &brush);

} // namespace zk::datamodel
