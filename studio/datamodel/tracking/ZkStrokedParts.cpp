#include "ZkStrokedParts.h"

#include "../segmentation/ZkMatteUnion.h"
#include "../segmentation/ZkPixels.h"

#include <opencv2/imgproc.hpp>

#include <vector>

namespace zk::datamodel {

namespace {

QVector<EncodedMatte> objectsOf(const SegmentNode &node)
{
    QVector<EncodedMatte> objects;
    for (const AreaPtr &area : node.areas)
        objects.append(area->object);
    return objects;
}

// The connected parts of the mask that touch the anchors.
cv::Mat partsAt(const cv::Mat &mask, const cv::Mat &anchors)
{
    cv::Mat labels;
    const int count = cv::connectedComponents(mask != 0, labels, 8, CV_32S);
    std::vector<bool> isTouched(size_t(count), false);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (anchors.at<uchar>(y, x) != 0)
                isTouched[size_t(labels.at<int>(y, x))] = true;
        }
    }
    cv::Mat parts = mask.clone();
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (!isTouched[size_t(labels.at<int>(y, x))])
                parts.at<uchar>(y, x) = 0;
        }
    }
    return parts;
}

} // namespace

cv::Mat keptByBrush(const SegmentNode &node,
                    const cv::Mat &corrected,
                    const cv::Mat &own,
                    const cv::Mat &painted,
                    bool isSingleObject)
{
    cv::Mat brush = isSingleObject ? corrected.clone() : partsAt(corrected, own | painted);
    const QImage objects = unionOf(objectsOf(node));
    if (!objects.isNull())
        brush.setTo(0, (brush <= pixelsOf(objects)) & (painted == 0) & (own == 0));
    return brush;
}

void takeFromAreas(SegmentNode *node, const cv::Mat &corrected)
{
    Areas areas;
    for (const AreaPtr &area : qAsConst(node->areas)) {
        const QImage object = area->object.decoded();
        const cv::Mat left = cv::min(pixelsOf(object), corrected);
        const bool isWhole = cv::countNonZero(left != pixelsOf(object)) == 0;
        if (isWhole)
            areas.append(area);
        else if (cv::countNonZero(left) > 0)
            areas.append(QSharedPointer<Area>::create(
                Area {area->id, area->rect, EncodedMatte(greyImage(left))}));
    }
    node->areas = areas;
}

void assemble(SegmentNode *node, const cv::Mat &brush)
{
    const EncodedMatte encoded(greyImage(brush));
    node->brush = node->areas.isEmpty() ? EncodedMatte() : encoded;
    node->result = node->areas.isEmpty()
        ? encoded
        : EncodedMatte(unionOf(objectsOf(*node) + QVector<EncodedMatte> {encoded}));
}

} // namespace zk::datamodel
