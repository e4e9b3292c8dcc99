#include "ZkAreaOutlines.h"

#include "ZkPixels.h"

#include <opencv2/imgproc.hpp>

#include <vector>

namespace zk::datamodel {

namespace {

constexpr int linesAt1080 = 2;

void drawOutline(cv::Mat pixels, const EncodedMatte &object, const cv::Scalar &colour)
{
    const QImage mask = object.decoded();
    if (mask.isNull() || mask.width() != pixels.cols || mask.height() != pixels.rows)
        return;
    std::vector<std::vector<cv::Point>> outlines;
    cv::findContours(pixelsOf(mask) >= 128, outlines, cv::RETR_LIST, cv::CHAIN_APPROX_NONE);
    const int width = qMax(1, qRound(linesAt1080 * pixels.rows / 1080.0));
    cv::drawContours(pixels, outlines, -1, colour, width);
}

} // namespace

void drawAreaOutlines(QImage *picture, const SegmentNodePtr &node, const QColor &colour)
{
    if (!node || picture->isNull())
        return;
    // The bytes of a pixel are those of the colour's QRgb, in the machine's order.
    const QRgb value = qRgb(colour.red(), colour.green(), colour.blue());
    const auto *bytes = reinterpret_cast<const uchar *>(&value);
    const cv::Scalar scalar(bytes[0], bytes[1], bytes[2], bytes[3]);
    for (const AreaPtr &area : node->areas)
        drawOutline(writablePixelsOf(*picture), area->object, scalar);
}

} // namespace zk::datamodel
