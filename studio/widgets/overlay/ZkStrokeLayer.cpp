#include "ZkStrokeLayer_p.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace zk::widgets {

namespace {

// Long lines are drawn in pieces of so many pixels: the work is that of the pieces' bounding boxes,
// which together are a fraction of that of a long slanted line.
constexpr double pieceLength = 128;

constexpr int bytesPerPixel = 4;

// Transparent. The system hands the zeroed memory of a large picture out page by page when it is first
// written to, so that a stroke on a 4K canvas does not begin with clearing 33 MB.
QImage blankImage(const QSize &size)
{
    if (size.isEmpty())
        return {};
    void *pixels = std::calloc(size_t(size.width()) * size_t(size.height()), bytesPerPixel);
    if (!pixels)
        return {};
    return QImage(
        static_cast<uchar *>(pixels),
        size.width(),
        size.height(),
        size.width() * bytesPerPixel,
        QImage::Format_ARGB32_Premultiplied,
        [](void *memory) { std::free(memory); },
        pixels);
}

// Whether there was anything to take. One pen: all channels of a pixel grow together.
bool takeMaximum(uchar *to, const uchar *from, int bytes)
{
    uchar any = 0;
    for (int i = 0; i < bytes; ++i) {
        any = uchar(any | from[i]);
        to[i] = std::max(to[i], from[i]);
    }
    return any != 0;
}

} // namespace

StrokeLayer::StrokeLayer(const QSize &size, const QTransform &strokeToPixels, const QRect &clip)
    : m_image(blankImage(size))
    , m_strokeToPixels(strokeToPixels)
    , m_clip(clip & m_image.rect())
{ }

QRect StrokeLayer::draw(const QPen &pen, const QLineF &line)
{
    const double pieces =
        std::max(1.0, std::ceil(m_strokeToPixels.map(line).length() / pieceLength));
    QRect touched;
    for (int i = 0; i < int(pieces); ++i)
        touched |= drawPiece(pen, {line.pointAt(i / pieces), line.pointAt((i + 1) / pieces)});
    return touched;
}

QRect StrokeLayer::drawPiece(const QPen &pen, const QLineF &piece)
{
    const qreal radius = pen.widthF() / 2;
    const QRectF box = QRectF(piece.p1(), piece.p2()).normalized();
    const QRectF pixels = m_strokeToPixels.mapRect(box.adjusted(-radius, -radius, radius, radius));
    const QRect area = pixels.toAlignedRect() & m_clip;
    if (area.isEmpty())
        return {};
    prepareScratch(area.size());
    QPainter painter(&m_scratch);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(m_strokeToPixels * QTransform::fromTranslate(-area.x(), -area.y()));
    if (piece.p1() == piece.p2()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(pen.color());
        painter.drawEllipse(piece.p1(), radius, radius);
    } else {
        painter.setPen(pen);
        painter.drawLine(piece);
    }
    painter.end();
    merge(area);
    return area;
}

void StrokeLayer::prepareScratch(const QSize &size)
{
    if (size.width() > m_scratch.width() || size.height() > m_scratch.height())
        m_scratch = QImage(size.expandedTo(m_scratch.size()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
        std::memset(m_scratch.scanLine(y), 0, size_t(size.width()) * bytesPerPixel);
}

void StrokeLayer::merge(const QRect &area)
{
    for (int y = 0; y < area.height(); ++y) {
        uchar *to = m_image.scanLine(area.y() + y) + qptrdiff(area.x()) * bytesPerPixel;
        if (takeMaximum(to, m_scratch.constScanLine(y), area.width() * bytesPerPixel))
            m_isBlank = false;
    }
}

} // namespace zk::widgets
