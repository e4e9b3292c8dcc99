#include "ZkStrokeMap.h"

#include "ZkPixels.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <functional>
#include <numeric>
#include <vector>

namespace zk::datamodel {

namespace {

// The part of a stroke image that has something on it. Strokes are small beside the picture.
struct Painted
{
    cv::Mat1b pixels; // of the box: 1 where it is painted
    cv::Rect box;
    QSize size; // of the whole image
};

// The first and the one after the last row with a painted pixel.
cv::Range paintedRows(const QImage &image, QRgb relevant)
{
    cv::Range rows(image.height(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        const QRgb any =
            std::accumulate(line, line + image.width(), QRgb(0), std::bit_or<QRgb>()) & relevant;
        if (any == 0)
            continue;
        rows.start = std::min(rows.start, y);
        rows.end = y + 1;
    }
    return rows.start < image.height() ? rows : cv::Range(0, 0);
}

// Where colours are multiplied by alpha makes no difference to it.
Painted paintedPart(const QImage &strokes)
{
    const bool isPremultiplied = strokes.format() == QImage::Format_ARGB32_Premultiplied;
    const QImage image = isPremultiplied
        ? strokes
        : strokes.convertToFormat(strokes.hasAlphaChannel() ? QImage::Format_ARGB32
                                                            : QImage::Format_RGB32);
    const QRgb relevant = strokes.hasAlphaChannel() ? 0xff000000u : 0x00ffffffu;
    const cv::Range rows = paintedRows(image, relevant);
    cv::Mat1b pixels(rows.size(), image.width());
    for (int y = 0; y < pixels.rows; ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(rows.start + y));
        std::transform(line, line + image.width(), pixels[y], [=](QRgb pixel) {
            return uchar((pixel & relevant) != 0);
        });
    }
    const cv::Rect box = pixels.empty() ? cv::Rect() : cv::boundingRect(pixels);
    return {pixels(box), box + cv::Point(0, rows.start), image.size()};
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

// The box of the frame that the painted part reaches.
cv::Rect reached(const Painted &painted, const QSize &frame)
{
    const cv::Rect &box = painted.box;
    const cv::Range x = reached({box.x, box.x + box.width}, painted.size.width(), frame.width());
    const cv::Range y = reached({box.y, box.y + box.height}, painted.size.height(), frame.height());
    return {x.start, y.start, x.size(), y.size()};
}

// Columns brought to the frame's: per pixel the length that is covered, 0 .. width of the stroke image.
// As many rows as the painted part has, columns of the stretch that it reaches.
cv::Mat1i coverageOfColumns(const Painted &painted,
                            const cv::Range &stretch,
                            const std::vector<Overlap> &columns)
{
    cv::Mat1i covered(painted.pixels.rows, stretch.size(), 0);
    for (int y = 0; y < covered.rows; ++y) {
        const uchar *line = painted.pixels[y];
        for (int x = 0; x < covered.cols; ++x) {
            const Overlap &column = columns[size_t(stretch.start + x)];
            int left = column.first - painted.box.x;
            for (int length : column.lengths) {
                if (left >= 0 && left < painted.pixels.cols)
                    covered(y, x) += length * line[left];
                ++left;
            }
        }
    }
    return covered;
}

// Per pixel of the reached box the covered area; a whole pixel has that of the stroke image, in pixels.
cv::Mat_<double> coveredAreas(const Painted &painted, const cv::Rect &box, const QSize &frame)
{
    const cv::Mat1i columns = coverageOfColumns(
        painted, {box.x, box.x + box.width}, overlaps(painted.size.width(), frame.width()));
    const std::vector<Overlap> rows = overlaps(painted.size.height(), frame.height());
    cv::Mat_<double> areas(box.height, box.width, 0.0); // whole numbers, far below 2^53
    for (int y = 0; y < box.height; ++y) {
        const Overlap &row = rows[size_t(box.y + y)];
        int above = row.first - painted.box.y;
        for (int length : row.lengths) {
            if (above >= 0 && above < columns.rows) {
                const int *line = columns[above];
                std::transform(
                    line, line + box.width, areas[y], areas[y], [=](int width, double area) {
                        return area + double(width) * length;
                    });
            }
            ++above;
        }
    }
    return areas;
}

} // namespace

StrokeMap strokeMap(const QImage &strokes, const QSize &frameSize)
{
    if (strokes.isNull() || frameSize.isEmpty())
        return {};
    const Painted painted = paintedPart(strokes);
    QImage map(frameSize, QImage::Format_Grayscale8);
    map.fill(0);
    if (painted.box.empty())
        return {map, QRect()};
    const cv::Rect box = reached(painted, frameSize);
    cv::Mat target = writablePixelsOf(map)(box);
    if (strokes.size() == frameSize) {
        cv::Mat(painted.pixels * 255).copyTo(target);
        return {map, QRect(box.x, box.y, box.width, box.height)};
    }
    const cv::Mat_<double> areas = coveredAreas(painted, box, frameSize);
    const double half = 0.5 * painted.size.width() * painted.size.height();
    const cv::Mat mostly = areas >= half;
    cv::Mat(cv::countNonZero(mostly) > 0 ? mostly : cv::Mat(areas > 0)).copyTo(target);
    return {map, QRect(box.x, box.y, box.width, box.height)};
}

} // namespace zk::datamodel
