#include "ZkColorField_p.h"

#include "ZkFocusFrame_p.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double frameRoom =
    3; // widget pixels around the field, for the focus frame and the marker
constexpr double keyStep = 0.01;
constexpr double fastKeyStep = 0.1;
constexpr double markerRadius = 5;
constexpr double bandMarkerWidth = 6;

// Dark outside, light inside: visible on every colour.
void strokeTwice(QPainter &painter, const QPainterPath &path)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 160), 3));
    painter.drawPath(path);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.drawPath(path);
}

QPointF stepOf(const QKeyEvent *event)
{
    const double step = event->modifiers() & Qt::ShiftModifier ? fastKeyStep : keyStep;
    switch (event->key()) {
    case Qt::Key_Left:
        return {-step, 0};
    case Qt::Key_Right:
        return {step, 0};
    case Qt::Key_Up:
        return {0, step};
    case Qt::Key_Down:
        return {0, -step};
    default:
        return {};
    }
}

} // namespace

ZkColorField::ZkColorField(QWidget *parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

ZkColorField::~ZkColorField() = default;

void ZkColorField::setPosition(const QPointF &position)
{
    m_position = {qBound(0.0, position.x(), 1.0), qBound(0.0, position.y(), 1.0)};
    update();
}

void ZkColorField::forgetPicture()
{
    m_picture = QImage();
    update();
}

QRectF ZkColorField::field() const
{
    return QRectF(rect()).adjusted(frameRoom, frameRoom, -frameRoom, -frameRoom);
}

void ZkColorField::follow(const QPointF &point)
{
    const QRectF area = field();
    moveTo({(point.x() - area.left()) / area.width(), (area.bottom() - point.y()) / area.height()});
}

void ZkColorField::moveTo(const QPointF &position)
{
    const QPointF before = m_position;
    setPosition(position);
    if (m_position != before)
        emit sigMoved();
}

void ZkColorField::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        follow(event->localPos());
}

void ZkColorField::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        follow(event->localPos());
}

void ZkColorField::keyPressEvent(QKeyEvent *event)
{
    const QPointF step = stepOf(event);
    if (step.isNull())
        QWidget::keyPressEvent(event);
    else
        moveTo(m_position + step);
}

void ZkColorField::paintEvent(QPaintEvent *)
{
    const QRectF area = field();
    const QSize deviceSize = (area.size() * devicePixelRatioF()).toSize();
    if (m_picture.size() != deviceSize)
        m_picture = makePicture(deviceSize);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawImage(area, m_picture);
    paintMarker(painter, area);
    painter.end();
    zkPaintFocusFrame(this);
}

ZkSaturationValueField::ZkSaturationValueField(QWidget *parent)
    : ZkColorField(parent)
{ }

void ZkSaturationValueField::setHue(double hue)
{
    if (hue == m_hue)
        return;
    m_hue = hue;
    forgetPicture();
}

QImage ZkSaturationValueField::makePicture(const QSize &deviceSize) const
{
    QImage image(deviceSize, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    QLinearGradient saturation(0, 0, image.width(), 0);
    saturation.setColorAt(0, Qt::white);
    saturation.setColorAt(1, QColor::fromHsvF(m_hue, 1, 1));
    painter.fillRect(image.rect(), saturation);
    QLinearGradient value(0, 0, 0, image.height());
    value.setColorAt(0, Qt::transparent);
    value.setColorAt(1, Qt::black);
    painter.fillRect(image.rect(), value);
    return image;
}

void ZkSaturationValueField::paintMarker(QPainter &painter, const QRectF &field) const
{
    const QPointF centre(field.left() + position().x() * field.width(),
                         field.bottom() - position().y() * field.height());
    QPainterPath ring;
    ring.addEllipse(centre, markerRadius, markerRadius);
    painter.setClipRect(field);
    strokeTwice(painter, ring);
}

ZkHueBand::ZkHueBand(QWidget *parent)
    : ZkColorField(parent)
{ }

QImage ZkHueBand::makePicture(const QSize &deviceSize) const
{
    QImage image(deviceSize, QImage::Format_RGB32);
    QLinearGradient hues(0, 0, image.width(), 0);
    for (int sixth = 0; sixth <= 6; ++sixth)
        hues.setColorAt(sixth / 6.0, QColor::fromHsv(sixth * 60 % 360, 255, 255));
    QPainter(&image).fillRect(image.rect(), hues);
    return image;
}

void ZkHueBand::paintMarker(QPainter &painter, const QRectF &field) const
{
    const double room = field.width() - bandMarkerWidth;
    QPainterPath frame;
    frame.addRoundedRect(
        QRectF(field.left() + position().x() * room, field.top(), bandMarkerWidth, field.height()),
        2,
        2);
    strokeTwice(painter, frame);
}
