#include "ZkStrokeMap.h"

#include "ZkPixels.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <vector>

namespace zk::datamodel {

namespace {

// 1 where the stroke image is painted. Where colours are multiplied by alpha makes no difference to it.
cv::Mat1b paintedPixels(const QImage &strokes)
{
    const bool isPremultiplied = strokes.format() == QImage::Format_ARGB32_Premultiplied;
    const QImage image = isPremultiplied
        ? strokes
        : strokes.convertToFormat(strokes.hasAlphaChannel() ? QImage::Format_ARGB32
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

// The pixels of an axis that those of a stretch of the other one reach.
cv::Range reached(const cv::Range &stretch, int from, int to)
{
    const qint64 end = (qint64(stretch.end) * to + from - 1) / from;
    return {int(qint64(stretch.start) * to / from), int(std::min<qint64>(end, to))};
}

// Columns brought to the frame's width: covered length per pixel, 0 .. painted.cols. Strokes are small: of
// the rows only those of the box around them, of the columns what the box reaches.
cv::Mat1i coverageOfColumns(const cv::Mat1b &painted, const cv::Rect &box, int width)
{
    const std::vector<Overlap> columns = overlaps(painted.cols, width);
    const cv::Range reach = reached({box.x, box.x + box.width}, painted.cols, width);
    cv::Mat1i covered(box.height, width, 0);
    for (int y = 0; y < box.height; ++y) {
        const uchar *line = painted[box.y + y];
        int *out = covered[y];
        for (int x = reach.start; x < reach.end; ++x) {
            const Overlap &column = columns[size_t(x)];
            const uchar *pixel = line + column.first;
            for (int length : column.lengths)
                out[x] += length * *pixel++;
        }
    }
    return covered;
}

// The map that covered rows of the painted picture, from the first one on, make: its pixels of which at
// least that area is covered. A whole pixel has the area painted.cols * painted.rows.
cv::Mat1b
thresholded(const cv::Mat1i &covered, int firstRow, int paintedRows, int height, qint64 least)
{
    const std::vector<Overlap> rows = overlaps(paintedRows, height);
    const cv::Range reach = reached({firstRow, firstRow + covered.rows}, paintedRows, height);
    cv::Mat1b map(height, covered.cols, uchar(0));
    std::vector<qint64> areas(size_t(covered.cols), 0);
    for (int y = reach.start; y < reach.end; ++y) {
        std::fill(areas.begin(), areas.end(), 0);
        const Overlap &row = rows[size_t(y)];
        for (size_t i = 0; i < row.lengths.size(); ++i) {
            const int painted = row.first + int(i) - firstRow;
            if (painted < 0 || painted >= covered.rows)
                continue;
            const int *line = covered[painted];
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
    const cv::Rect box = cv::boundingRect(painted);
    const cv::Mat1i covered = coverageOfColumns(painted, box, frameSize.width());
    const qint64 wholePixel = qint64(painted.cols) * painted.rows;
    const auto mapOf = [&](qint64 least) {
        return thresholded(covered, box.y, painted.rows, frameSize.height(), least);
    };
    const cv::Mat1b map = mapOf((wholePixel + 1) / 2);
    return greyImage(cv::countNonZero(map) > 0 ? map : mapOf(1));
}

} // namespace zk::datamodel
