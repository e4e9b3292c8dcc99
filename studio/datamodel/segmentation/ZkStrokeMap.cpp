#include "ZkStrokeMap.h"

#include "ZkPixels.h"

#include <algorithm>
#include <vector>

namespace zk::datamodel {

namespace {

// 1 where the stroke image is painted.
cv::Mat1b paintedPixels(const QImage &strokes)
{
    const QImage image = strokes.convertToFormat(strokes.hasAlphaChannel() ? QImage::Format_ARGB32
                                                                           : QImage::Format_RGB32);
    const QRgb relevant = strokes.hasAlphaChannel() ? 0xff000000u : 0x00ffffffu;
    cv::Mat1b painted(image.height(), image.width());
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        std::transform(line, line + image.width(), painted[y], [=](QRgb pixel) {
            return uchar((pixel & relevant) != 0);
        });
    }
    return painted;
}

// How the pixels of one axis cover those of another one of a different resolution. In units of
// 1 / (from * to) of the axis all borders are whole numbers, so nothing is rounded.
struct Overlap
{
    int first = 0; // pixel that begins the run
    std::vector<int> lengths; // of the overlap with it and the pixels after it
};

std::vector<Overlap> overlaps(int from, int to)
{
    std::vector<Overlap> result(static_cast<size_t>(to));
    for (int i = 0; i < to; ++i) {
        const qint64 begin = qint64(i) * from;
        const qint64 end = begin + from;
        Overlap &overlap = result[size_t(i)];
        overlap.first = int(begin / to);
        for (qint64 j = overlap.first; j * to < end; ++j)
            overlap.lengths.push_back(int(std::min(end, (j + 1) * to) - std::max(begin, j * to)));
    }
    return result;
}

// Columns brought to the frame's width: covered length per pixel, 0 .. painted.cols.
cv::Mat1i coverageOfColumns(const cv::Mat1b &painted, int width)
{
    const std::vector<Overlap> columns = overlaps(painted.cols, width);
    cv::Mat1i covered(painted.rows, width, 0);
    for (int y = 0; y < painted.rows; ++y) {
        const uchar *line = painted[y];
        int *out = covered[y];
        for (const Overlap &column : columns) {
            const uchar *pixel = line + column.first;
            for (int length : column.lengths)
                *out += length * *pixel++;
            ++out;
        }
    }
    return covered;
}

// The pixels of the map of which at least that area is covered; a whole pixel has the area
// painted.width * painted.height.
cv::Mat1b thresholded(const cv::Mat1i &covered, int height, qint64 least)
{
    const std::vector<Overlap> rows = overlaps(covered.rows, height);
    cv::Mat1b map(height, covered.cols);
    std::vector<qint64> areas(size_t(covered.cols), 0);
    for (int y = 0; y < height; ++y) {
        std::fill(areas.begin(), areas.end(), 0);
        const Overlap &row = rows[size_t(y)];
        for (size_t i = 0; i < row.lengths.size(); ++i) {
            const int *line = covered[row.first + int(i)];
            for (size_t x = 0; x < areas.size(); ++x)
                areas[x] += qint64(line[x]) * row.lengths[i];
        }
        std::transform(areas.begin(), areas.end(), map[y], [=](qint64 area) {
            return uchar(area >= least ? 255 : 0);
        });
    }
    return map;
}

} // namespace

QImage strokeMap(const QImage &strokes, const QSize &frameSize)
{
    if (strokes.isNull() || frameSize.isEmpty())
        return {};
    const cv::Mat1b painted = paintedPixels(strokes);
    if (strokes.size() == frameSize)
        return greyImage(painted * 255);
    const cv::Mat1i covered = coverageOfColumns(painted, frameSize.width());
    const qint64 wholePixel = qint64(painted.cols) * painted.rows;
    cv::Mat1b map = thresholded(covered, frameSize.height(), (wholePixel + 1) / 2);
    if (cv::countNonZero(map) == 0)
        map = thresholded(covered, frameSize.height(), 1);
    return greyImage(map);
}

} // namespace zk::datamodel
