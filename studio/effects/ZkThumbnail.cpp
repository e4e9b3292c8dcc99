// A drawn portrait in front of an evening landscape, cut out with the look.
#include "ZkLookCatalogue.h"

#include "Pixels_p.h"
#include "Render_p.h"
#include "ZkLookRenderer.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace zk::effects {

namespace {

constexpr int pixelRatio = 2;
// Lengths are drawn larger than the picture's height asks for, or an outline would be a hairline.
constexpr double exaggeration = 3.4;
// Not 0, so that animated looks are caught in the middle of their movement.
constexpr double moment = 0.28; // seconds

QPainterPath ellipse(double x, double y, double radiusX, double radiusY)
{
    QPainterPath path;
    path.addEllipse(QPointF(x, y), radiusX, radiusY);
    return path;
}

// All shapes in a square of 100 x 100.
QPainterPath shoulders()
{
    QPainterPath path(QPointF(22, 101));
    path.cubicTo(22, 74, 34, 70, 43, 67);
    path.lineTo(57, 67);
    path.cubicTo(66, 70, 78, 74, 78, 101);
    path.closeSubpath();
    return path;
}

QPainterPath neck()
{
    QPainterPath path;
    path.addRoundedRect(43, 50, 14, 21, 6, 6);
    return path;
}

QPainterPath hair()
{
    QPainterPath path = ellipse(50, 38, 18.5, 19.5);
    return path.united(ellipse(61, 21, 8, 7.5)).united(ellipse(37, 42, 6.5, 14));
}

QPainterPath fringe()
{
    QPainterPath path(QPointF(35, 41));
    path.cubicTo(36, 24, 64, 22, 65, 41);
    path.cubicTo(58, 38, 52, 33, 49, 31);
    path.cubicTo(46, 36, 41, 39, 35, 41);
    return path;
}

QLinearGradient shaded(const QColor &light, const QColor &dark)
{
    QLinearGradient gradient(30, 20, 75, 95);
    gradient.setColorAt(0, light);
    gradient.setColorAt(1, dark);
    return gradient;
}

void prepare(QPainter &painter, const QSize &size)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double side = qMin(size.width(), size.height());
    painter.translate((size.width() - side) / 2, size.height() - side);
    painter.scale(side / 100, side / 100);
}

void drawSubject(QPainter &painter)
{
    painter.fillPath(hair(), shaded(QColor(0x6a, 0x3f, 0x35), QColor(0x35, 0x1f, 0x26)));
    painter.fillPath(shoulders(), shaded(QColor(0x3f, 0xb8, 0xaf), QColor(0x1c, 0x6e, 0x7d)));
    painter.fillPath(neck(), QColor(0xd9, 0x98, 0x7a));
    painter.fillPath(ellipse(50, 42, 13.5, 16),
                     shaded(QColor(0xff, 0xd3, 0xb2), QColor(0xe8, 0xa5, 0x84)));
    painter.fillPath(fringe(), QColor(0x55, 0x31, 0x2e));
    painter.fillPath(ellipse(45, 43, 1.5, 1.9), QColor(0x3a, 0x26, 0x2c));
    painter.fillPath(ellipse(55.5, 43, 1.5, 1.9), QColor(0x3a, 0x26, 0x2c));
    QPainterPath smile(QPointF(46, 50));
    smile.cubicTo(48, 53.5, 53, 53.5, 55, 50);
    painter.strokePath(smile, QPen(QColor(0xb5, 0x54, 0x4f), 1.5, Qt::SolidLine, Qt::RoundCap));
}

void drawLandscape(QPainter &painter, const QRect &rect)
{
    QLinearGradient sky(0, 0, 0, rect.height());
    sky.setColorAt(0, QColor(0x5b, 0x7f, 0xc7));
    sky.setColorAt(0.65, QColor(0xf7, 0xb7, 0x8a));
    sky.setColorAt(1, QColor(0x6d, 0x8f, 0x5a));
    painter.fillRect(rect, sky);
}

QImage drawnFrame(const QSize &size)
{
    QImage frame(size, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&frame);
    drawLandscape(painter, frame.rect());
    prepare(painter, size);
    painter.fillPath(ellipse(14, 28, 9, 9), QColor(0xff, 0xe3, 0xa3));
    painter.fillPath(ellipse(88, 96, 34, 22), QColor(0x4d, 0x74, 0x55));
    painter.fillPath(ellipse(6, 98, 30, 20), QColor(0x3c, 0x5f, 0x52));
    drawSubject(painter);
    return frame.convertToFormat(QImage::Format_RGBA8888);
}

QImage drawnMatte(const QSize &size)
{
    QImage matte(size, QImage::Format_ARGB32_Premultiplied);
    matte.fill(Qt::black);
    QPainter painter(&matte);
    prepare(painter, size);
    painter.fillPath(hair().united(neck()).united(shoulders()), Qt::white);
    painter.end();
    return matte.convertToFormat(QImage::Format_Grayscale8);
}

QImage stage(const QSize &size)
{
    QImage picture(size, QImage::Format_RGBA8888);
    QPainter painter(&picture);
    QLinearGradient light(0, 0, 0, size.height());
    light.setColorAt(0, QColor(0x62, 0x67, 0x73));
    light.setColorAt(1, QColor(0x43, 0x47, 0x51));
    painter.fillRect(picture.rect(), light);
    return picture;
}

} // namespace

QImage renderThumbnail(const Look &look, const QSize &size)
{
    const QSize pixels = size * pixelRatio;
    if (pixels.isEmpty())
        return {};
    const QImage frame = drawnFrame(pixels);
    const QImage matte = drawnMatte(pixels);
    RenderJob job;
    job.frame = viewOf(frame);
    job.matte = viewOf(matte);
    job.scale = pixels.height() / referenceHeight * exaggeration;
    job.time = moment;
    QImage cutout(pixels, QImage::Format_RGBA8888);
    cv::Mat canvas = writableViewOf(cutout);
    renderInto(job, look, canvas);
    QImage picture =
        compositeOver(cutout, stage(pixels)).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(pixelRatio);
    return picture;
}

} // namespace zk::effects
