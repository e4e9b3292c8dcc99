#include "ZkWidgets.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include <cmath>

namespace {

constexpr int smallestDiameter = 2;
constexpr int contourWidth = 1; // widget pixels, of each of the two contours
constexpr int margin = contourWidth + 1; // room for the outer contour and its soft edge
constexpr double normalFillOpacity = 0.25;

const QColor outerContour(0, 0, 0, 200);
const QColor innerContour(255, 255, 255, 230);

double primaryPixelRatio()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

// Qt takes the place in a cursor in widget pixels, but hands it on to X11 as if it were one of device pixels.
int hotSpot(int widgetPixels)
{
    const bool isX11 = QGuiApplication::platformName() == QLatin1String("xcb");
    return isX11 ? int(std::lround(widgetPixels * primaryPixelRatio())) : widgetPixels;
}

QColor fillColor(const QColor &color, bool pressed)
{
    if (!color.isValid())
        return Qt::transparent;
    QColor fill = color;
    if (!pressed)
        fill.setAlphaF(color.alphaF() * normalFillOpacity);
    return fill;
}

// A ring of one contour's width with the given outer radius.
void drawRing(QPainter &painter, double outerRadius, const QColor &color)
{
    const double radius = outerRadius - contourWidth / 2.0;
    if (radius <= 0)
        return;
    painter.setPen(QPen(color, contourWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(0, 0), radius, radius);
}

// Two contours meet at the edge of the brush, the dark one outside and the light one inside, so that
// one of them stands out from any picture and the line between them is where the stroke will end.
void drawBrush(QPainter &painter, double radius, const QColor &fill)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawEllipse(QPointF(0, 0), radius, radius);
    drawRing(painter, radius + contourWidth, outerContour);
    drawRing(painter, radius, innerContour);
}

} // namespace

QCursor ZkDrawingCursor::cursor(int diameter, const QColor &color, bool pressed)
{
    const int shown = qMax(smallestDiameter, diameter);
    // Odd for odd diameters, which puts the edges of the circle on pixel edges in either case.
    const int side = shown + 2 * margin;
    const double ratio = primaryPixelRatio();
    const int deviceSide = int(std::ceil(side * ratio));
    QPixmap pixmap(deviceSide, deviceSide);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);

    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    drawBrush(painter, shown / 2.0, fillColor(color, pressed));
    painter.end();
    return QCursor(pixmap, hotSpot(side / 2), hotSpot(side / 2));
}
