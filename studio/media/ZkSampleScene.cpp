#include "ZkSampleScene.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace zk::media {

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr int ShutterSamples = 6;
constexpr int Gores = 12;
constexpr double Radius = 0.27; // of the envelope, in heights
// How much wider than the picture the landscape is, for the pan.
constexpr double PanRoom = 0.5;
// How far the camera's shake moves things up and down, in heights.
constexpr double HillsShake = 0.004;
constexpr double FieldShake = 0.0064;

QRgb blend(QRgb from, QRgb to, double share)
{
    const double s = std::clamp(share, 0.0, 1.0);
    const auto channel = [s](int a, int b) { return int(std::lround(a + (b - a) * s)); };
    return qRgb(channel(qRed(from), qRed(to)),
                channel(qGreen(from), qGreen(to)),
                channel(qBlue(from), qBlue(to)));
}

QImage drawSky(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    const double unit = size.height();
    for (int y = 0; y < size.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        const QRgb clear = blend(qRgb(72, 126, 196), qRgb(214, 214, 206), y / (0.75 * unit));
        for (int x = 0; x < size.width(); ++x) {
            const double cloud = valueNoise(x / unit * 3.2, y / unit * 6.5, 5, 11);
            row[x] = blend(clear, qRgb(250, 244, 236), (cloud - 0.48) * 4.2);
        }
    }
    return image;
}

// Ground below a wavy edge; the fourth corner of the look is how coarse its texture is.
struct Ground
{
    double edge; // heights from the top
    double waviness;
    double coarseness;
    QRgb dark;
    QRgb light;
    QRgb speck;
    quint32 seed;
};

QRgb groundColour(const Ground &ground, double x, double y)
{
    const double patches = valueNoise(x * 3, y * 7, 3, ground.seed + 1);
    const double leaves = valueNoise(x * ground.coarseness, y * ground.coarseness, 3, ground.seed);
    const QRgb base = blend(ground.dark, ground.light, (leaves - 0.5) * 2.2 + 0.5);
    return blend(base, ground.speck, (patches - 0.52) * 5 * leaves);
}

// Reaches below the picture as far as the camera's shake may lift it.
QImage drawGround(const QSize &size, const Ground &ground)
{
    const double unit = size.height();
    QImage image(size.width(),
                 size.height() + int(std::ceil(2 * FieldShake * unit)),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int x = 0; x < size.width(); ++x) {
        const double edge = ground.edge
            + ground.waviness * (valueNoise(x / unit * 2.2, 0.5, 5, ground.seed + 9) - 0.5);
        const int top = std::max(0, int(edge * unit));
        for (int y = top; y < image.height(); ++y)
            image.setPixel(x, y, groundColour(ground, x / unit, y / unit));
    }
    return image;
}

// The envelope's outline, around (0, 0), in units of its radius: a ball that narrows to the burner's
// mouth, and that the wind dents a little.
QPointF outline(double angle, double time)
{
    const double dent = 0.022 * std::sin(2 * angle + 2.1 * time)
        + 0.016 * std::sin(3 * angle - 3.3 * time + 1) + 0.012 * std::sin(5 * angle + 2.7 * time);
    const double down = std::max(0.0, -std::cos(angle)); // 0 at the equator, 1 at the mouth
    const double narrow = 1 - 0.62 * std::pow(down, 2.2);
    return {(1 + dent) * narrow * std::sin(angle), -(1 + dent) * std::cos(angle) + 0.18 * down};
}

QPainterPath envelope(double time)
{
    constexpr int Points = 96;
    QPolygonF polygon;
    for (int i = 0; i < Points; ++i)
        polygon.append(outline(2 * Pi * i / Points, time));
    QPainterPath path;
    path.addPolygon(polygon);
    path.closeSubpath();
    return path;
}

// The stripe between two meridians of the turning envelope, as far as it faces us.
QPainterPath gore(double from, double to)
{
    constexpr int Points = 24;
    QPolygonF polygon;
    for (int i = 0; i <= Points; ++i) {
        const double angle = Pi * i / Points;
        polygon.append({std::sin(from) * std::sin(angle) * 1.1, -1.25 * std::cos(angle)});
    }
    for (int i = Points; i >= 0; --i) {
        const double angle = Pi * i / Points;
        polygon.append({std::sin(to) * std::sin(angle) * 1.1, -1.25 * std::cos(angle)});
    }
    QPainterPath path;
    path.addPolygon(polygon);
    return path;
}

QColor goreColour(int index)
{
    static const QRgb colours[] = {
        qRgb(206, 44, 40), qRgb(246, 190, 48), qRgb(34, 82, 160), qRgb(226, 120, 44)};
    return QColor(colours[index % 4]);
}

void drawGores(QPainter &painter, double turn)
{
    constexpr double Width = 2 * Pi / Gores;
    for (int i = 0; i < Gores; ++i) {
        const double middle = std::remainder(i * Width + turn, 2 * Pi);
        const double from = std::max(middle - Width / 2, -Pi / 2);
        const double to = std::min(middle + Width / 2, Pi / 2);
        if (from < to)
            painter.fillPath(gore(from, to), goreColour(i));
    }
}

// A zigzag ribbon around the widest part.
void drawRibbon(QPainter &painter, double turn)
{
    QPolygonF ribbon;
    for (int i = -48; i <= 48; ++i) {
        const double angle = Pi / 2 * i / 48.0;
        ribbon.append({1.08 * std::sin(angle), 0.06 + 0.07 * std::sin((angle - turn) * Gores)});
    }
    painter.setPen(QPen(QColor(46, 34, 92), 0.11));
    painter.drawPolyline(ribbon);
    painter.setPen(QPen(QColor(250, 222, 120), 0.03));
    painter.drawPolyline(ribbon);
}

void drawShade(QPainter &painter)
{
    QRadialGradient light(QPointF(-0.35, -0.45), 1.75);
    light.setColorAt(0, QColor(255, 255, 240, 90));
    light.setColorAt(0.35, QColor(255, 255, 255, 0));
    light.setColorAt(1, QColor(10, 8, 40, 150));
    painter.fillRect(QRectF(-1.5, -1.5, 3, 3.2), light);
}

void drawRopes(QPainter &painter)
{
    painter.setPen(QPen(QColor(52, 40, 34), 0.018));
    for (const double side : {-1.0, -0.4, 0.4, 1.0})
        painter.drawLine(QPointF(0.30 * side, 1.08), QPointF(0.17 * side, 1.46));
}

void drawBasket(QPainter &painter)
{
    const QRectF basket(-0.19, 1.44, 0.38, 0.27);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(128, 82, 42));
    painter.drawRoundedRect(basket, 0.05, 0.05);
    painter.setPen(QPen(QColor(88, 52, 26), 0.016));
    for (int i = 1; i < 7; ++i) {
        const double x = basket.left() + basket.width() * i / 7;
        painter.drawLine(QPointF(x, basket.top() + 0.02), QPointF(x, basket.bottom() - 0.02));
    }
    painter.setPen(QPen(QColor(196, 148, 86), 0.03));
    painter.drawLine(basket.topLeft() + QPointF(0.02, 0.03),
                     basket.topRight() + QPointF(-0.02, 0.03));
}

// The mean of the pictures taken while the shutter is open.
template<typename Draw>
QImage expose(const QImage &blank, double time, double shutter, Draw draw)
{
    const size_t bytes = size_t(blank.sizeInBytes());
    std::vector<quint16> sums(bytes, ShutterSamples / 2);
    for (int i = 0; i < ShutterSamples; ++i) {
        QImage sample = blank;
        QPainter painter(&sample);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        draw(painter, time + shutter * (double(i) / ShutterSamples - 0.5));
        painter.end();
        const uchar *pixels = sample.constBits();
        for (size_t k = 0; k < bytes; ++k)
            sums[k] = quint16(sums[k] + pixels[k]);
    }
    QImage result = blank;
    std::transform(sums.begin(), sums.end(), result.bits(), [](quint16 sum) {
        return uchar(sum / ShutterSamples);
    });
    return result;
}

// What the lens adds: a blur of about one pixel.
QImage softened(const QImage &image)
{
    QImage result = image;
    for (int y = 1; y + 1 < image.height(); ++y) {
        const uchar *rows[] = {
            image.constScanLine(y - 1), image.constScanLine(y), image.constScanLine(y + 1)};
        uchar *target = result.scanLine(y);
        for (int x = 4; x < image.width() * 4 - 4; ++x) {
            const int outer = rows[0][x - 4] + rows[0][x + 4] + rows[2][x - 4] + rows[2][x + 4];
            const int inner = rows[0][x] + rows[2][x] + rows[1][x - 4] + rows[1][x + 4];
            target[x] = uchar((outer + 2 * inner + 4 * rows[1][x] + 8) / 16);
        }
    }
    return result;
}

} // namespace

SampleScene::SampleScene(const QSize &size, double duration)
    : m_size(size)
    , m_duration(duration)
{
    const QSize wide(int(size.width() * (1 + PanRoom)), size.height());
    m_sky = drawSky(wide);
    m_hills = drawGround(
        wide, {0.62, 0.30, 26, qRgb(58, 84, 96), qRgb(108, 132, 122), qRgb(150, 118, 92), 31});
    m_field = drawGround(
        wide, {0.80, 0.16, 44, qRgb(58, 74, 30), qRgb(150, 148, 62), qRgb(196, 92, 40), 57});
}

QImage SampleScene::blank() const
{
    QImage image(m_size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

double SampleScene::progress(double time) const
{
    return time / m_duration;
}

QImage SampleScene::background(double time, double shutter) const
{
    return expose(blank(), time, shutter, [this](QPainter &painter, double at) {
        drawBackground(painter, at);
    });
}

QImage SampleScene::balloon(double time, double shutter) const
{
    return softened(expose(blank(), time, shutter, [this](QPainter &painter, double at) {
        drawBalloon(painter, at);
    }));
}

QImage SampleScene::post(double time, double shutter) const
{
    return softened(expose(
        blank(), time, shutter, [this](QPainter &painter, double at) { drawPost(painter, at); }));
}

// Near things pass faster than far ones, and the camera is held by hand.
void SampleScene::drawBackground(QPainter &painter, double time) const
{
    const double room = m_size.width() * PanRoom;
    const double shake = m_size.height() * std::sin(5.3 * time);
    const double way = 0.08 + 0.8 * progress(time);
    painter.drawImage(QPointF(-0.35 * room * way, 0), m_sky);
    painter.drawImage(QPointF(-0.6 * room * way, HillsShake * shake), m_hills);
    painter.drawImage(QPointF(-room * way, FieldShake * shake), m_field);
}

QTransform SampleScene::pose(double time) const
{
    const double unit = m_size.height();
    const double way = progress(time);
    const double x = m_size.width() * (0.30 + 0.36 * way) + 0.02 * unit * std::sin(2.4 * time);
    const double y = unit * (0.42 - 0.10 * std::sin(Pi * way) + 0.015 * std::sin(3.1 * time));
    const double scale = Radius * unit * (1 + 0.06 * std::sin(1.3 * time));
    QTransform transform;
    transform.translate(x, y);
    transform.rotate(5 * std::sin(1.9 * time));
    transform.scale(scale, scale);
    return transform;
}

void SampleScene::drawBalloon(QPainter &painter, double time) const
{
    painter.setTransform(pose(time));
    drawRopes(painter);
    drawBasket(painter);
    drawEnvelope(painter, time);
}

void SampleScene::drawEnvelope(QPainter &painter, double time) const
{
    // Clipping has no soft edge, so the fabric is drawn apart and laid into the outline as a brush.
    QImage fabric = blank();
    QPainter inner(&fabric);
    inner.setRenderHint(QPainter::Antialiasing);
    inner.setTransform(painter.transform());
    const double turn = 0.35 * time;
    inner.fillRect(QRectF(-1.5, -1.5, 3, 3.2), QColor(206, 44, 40));
    drawGores(inner, turn);
    drawRibbon(inner, turn);
    drawShade(inner);
    inner.end();
    const QPainterPath shape = painter.transform().map(envelope(time));
    painter.resetTransform();
    painter.fillPath(shape, QBrush(fabric));
}

void SampleScene::drawPost(QPainter &painter, double time) const
{
    const double unit = m_size.height();
    const double x = m_size.width() * (1.12 - 1.25 * progress(time));
    const QRectF trunk(x, -0.1 * unit, 0.055 * unit, 1.2 * unit);
    QLinearGradient round(trunk.topLeft(), trunk.topRight());
    round.setColorAt(0, QColor(64, 56, 52));
    round.setColorAt(0.4, QColor(136, 122, 108));
    round.setColorAt(1, QColor(42, 36, 36));
    painter.fillRect(trunk, round);
    painter.setPen(QPen(QColor(38, 32, 30, 150), 0.006 * unit));
    for (int i = 0; i < 26; ++i) {
        const double y = unit * (i / 26.0);
        const double from = valueNoise(i * 1.7, 3.5, 1, 5) * 0.06 * unit;
        painter.drawLine(QPointF(x + from, y), QPointF(x + from + 0.018 * unit, y + 0.025 * unit));
    }
}

QPolygonF SampleScene::envelopeStroke(double time) const
{
    // Across every gore that faces us, as a hand would do it.
    const QVector<QPointF> zigzag {QPointF(-0.76, -0.35),
                                   QPointF(-0.35, -0.80),
                                   QPointF(0.35, -0.80),
                                   QPointF(0.76, -0.35),
                                   QPointF(0.80, 0.15),
                                   QPointF(0.0, -0.2),
                                   QPointF(-0.80, 0.15),
                                   QPointF(-0.40, 0.55),
                                   QPointF(0.40, 0.55),
                                   QPointF(0.05, 0.90)};
    return pose(time).map(QPolygonF(zigzag));
}

QPolygonF SampleScene::basketStroke(double time) const
{
    return pose(time).map(QPolygonF(QVector<QPointF> {QPointF(-0.06, 1.58), QPointF(0.06, 1.58)}));
}

QPolygonF SampleScene::backgroundStroke(double time) const
{
    const QVector<QPointF> around {QPointF(-1.30, -0.90),
                                   QPointF(-1.40, 0.40),
                                   QPointF(-0.80, 1.25),
                                   QPointF(-0.60, 1.85),
                                   QPointF(0.60, 1.85),
                                   QPointF(0.80, 1.25),
                                   QPointF(1.40, 0.40),
                                   QPointF(1.30, -0.90)};
    return pose(time).map(QPolygonF(around));
}

} // namespace zk::media
