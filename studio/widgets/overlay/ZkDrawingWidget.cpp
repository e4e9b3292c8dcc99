#include "widgets/ZkDrawing.h"

#include "ZkStrokeLayer_p.h"
#include "widgets/ZkPlayerOverlay.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVector>

#include <cmath>
#include <utility>

using zk::widgets::StrokeLayer;

namespace {

// Some systems let mouse events fall through a window where it is wholly transparent.
const QColor almostTransparent(0, 0, 0, 1);

bool isEscape(QEvent *event)
{
    return static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
}

} // namespace

// The stroke under way. Its coordinates are widget pixels from the canvas's top left, as the canvas was
// when the stroke began; so the points move along when the canvas is moved or zoomed.
class ZkDrawingWidget::Private : public QObject
{
public:
    explicit Private(ZkDrawingWidget *widget)
        : q(widget)
    {
        q->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override;

    void retranslate();
    void begin(const QPointF &position);
    void extend(const QPointF &position);
    void redraw();
    void finish();
    void cancel();

    ZkDrawingWidget *q;
    QColor penColor;
    int penWidth = 1;
    QRect canvas;
    QSize maximumImageSize;
    bool isDrawing = false;
    StrokeLayer screen; // the widget in device pixels

private:
    QPointF toStroke(const QPointF &position) const;
    QSize imageSize() const;
    void makeLayers();
    void draw(const QLineF &line);
    QRect widgetArea(const QRect &pixels) const;
    void end();

    QString m_name; // for screen readers
    QPen m_pen;
    QSizeF m_canvasSize; // when the stroke began
    QVector<QPointF> m_points;
    QRect m_painted; // widget pixels
    StrokeLayer m_image; // the canvas as it will be handed over
};

// In a filter, so that neither depends on what a subclass hands on to event(). The keys come from the
// whole application, since an overlay that is drawn on need not have the focus.
bool ZkDrawingWidget::Private::eventFilter(QObject *watched, QEvent *event)
{
    if (!isDrawing)
        return false;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (!isEscape(event))
            return false;
        event->accept();
        if (event->type() == QEvent::KeyPress)
            cancel();
        return true;
    case QEvent::Hide:
        if (watched == q)
            cancel();
        return false;
    case QEvent::EnabledChange:
        if (watched == q && !q->isEnabled())
            cancel();
        return false;
    case QEvent::Resize:
        if (watched == q)
            redraw();
        return false;
    default:
        return false;
    }
}

// A name that somebody else has given stays.
void ZkDrawingWidget::Private::retranslate()
{
    const QString before = std::exchange(m_name, ZkDrawingWidget::tr("Canvas"));
    if (q->accessibleName() == before)
        q->setAccessibleName(m_name);
}

void ZkDrawingWidget::Private::begin(const QPointF &position)
{
    if (isDrawing) // the release of the stroke before has got lost
        finish();
    if (!penColor.isValid() || canvas.isEmpty())
        return;
    isDrawing = true;
    qApp->installEventFilter(this);
    m_pen = QPen(penColor, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    m_canvasSize = canvas.size();
    makeLayers();
    extend(position);
}

void ZkDrawingWidget::Private::extend(const QPointF &position)
{
    const QPointF point = toStroke(position);
    if (m_points.isEmpty() || m_points.constLast() != point) {
        m_points.append(point);
        draw({m_points.at(qMax(0, m_points.size() - 2)), point});
    }
}

// Like the cursor's: the middle of the pointer's pixel for odd widths, its corner for even ones.
QPointF ZkDrawingWidget::Private::toStroke(const QPointF &position) const
{
    const qreal middle = m_pen.width() % 2 == 1 ? 0.5 : 0;
    const QPointF point = position + QPointF(middle, middle) - canvas.topLeft();
    return {point.x() * m_canvasSize.width() / canvas.width(),
            point.y() * m_canvasSize.height() / canvas.height()};
}

QSize ZkDrawingWidget::Private::imageSize() const
{
    const QSize shown = (QSizeF(canvas.size()) * q->devicePixelRatioF()).toSize();
    return maximumImageSize.isEmpty() ? shown : shown.boundedTo(maximumImageSize);
}

void ZkDrawingWidget::Private::makeLayers()
{
    const qreal ratio = q->devicePixelRatioF();
    const QSizeF pixels = QSizeF(q->size()) * ratio;
    const QTransform toWidget = QTransform::fromScale(canvas.width() / m_canvasSize.width(),
                                                      canvas.height() / m_canvasSize.height())
        * QTransform::fromTranslate(canvas.x(), canvas.y());
    const QRectF visible(QPointF(canvas.topLeft()) * ratio, QSizeF(canvas.size()) * ratio);
    screen = StrokeLayer({int(std::ceil(pixels.width())), int(std::ceil(pixels.height()))},
                         toWidget * QTransform::fromScale(ratio, ratio),
                         visible.toRect());
    screen.setDevicePixelRatio(ratio);

    const QSize size = imageSize();
    m_image = StrokeLayer(size,
                          QTransform::fromScale(size.width() / m_canvasSize.width(),
                                                size.height() / m_canvasSize.height()),
                          QRect(QPoint(0, 0), size));
}

void ZkDrawingWidget::Private::draw(const QLineF &line)
{
    const QRect area = widgetArea(screen.draw(m_pen, line));
    m_image.draw(m_pen, line);
    m_painted |= area;
    q->update(area);
}

QRect ZkDrawingWidget::Private::widgetArea(const QRect &pixels) const
{
    const qreal ratio = q->devicePixelRatioF();
    return QRectF(QPointF(pixels.topLeft()) / ratio, QSizeF(pixels.size()) / ratio).toAlignedRect();
}

void ZkDrawingWidget::Private::redraw()
{
    q->update(std::exchange(m_painted, QRect()));
    makeLayers();
    for (int i = 0; i < m_points.size(); ++i)
        draw({m_points.at(qMax(0, i - 1)), m_points.at(i)});
}

void ZkDrawingWidget::Private::end()
{
    isDrawing = false;
    qApp->removeEventFilter(this);
    q->update(std::exchange(m_painted, QRect()));
    m_points.clear();
    screen = {};
}

void ZkDrawingWidget::Private::finish()
{
    end();
    const StrokeLayer stroke = std::exchange(m_image, {});
    if (!stroke.isBlank())
        Q_EMIT q->sigDrawingFinished(stroke.image(), true);
}

void ZkDrawingWidget::Private::cancel()
{
    end();
    m_image = {};
    Q_EMIT q->sigDrawingFinished(QImage(), false);
}

ZkDrawingWidget::ZkDrawingWidget(QWidget *parent)
    : QWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->retranslate();
}

ZkDrawingWidget::~ZkDrawingWidget() = default;

QColor ZkDrawingWidget::penColor() const
{
    return d->penColor;
}

void ZkDrawingWidget::setPenColor(const QColor &color)
{
    d->penColor = color;
}

int ZkDrawingWidget::penWidth() const
{
    return d->penWidth;
}

void ZkDrawingWidget::setPenWidth(int width)
{
    d->penWidth = qMax(1, width);
}

QRect ZkDrawingWidget::canvasRect() const
{
    return d->canvas;
}

void ZkDrawingWidget::setCanvasRect(const QRect &rect)
{
    if (d->canvas == rect)
        return;
    if (d->isDrawing && rect.isEmpty())
        d->cancel();
    d->canvas = rect;
    if (d->isDrawing)
        d->redraw();
}

void ZkDrawingWidget::setMaximumImageSize(const QSize &size)
{
    if (d->maximumImageSize == size)
        return;
    d->maximumImageSize = size;
    if (d->isDrawing)
        d->redraw();
}

bool ZkDrawingWidget::isDrawing() const
{
    return d->isDrawing;
}

void ZkDrawingWidget::setVisible(bool visible)
{
    if (ZkPlayerWidgetEventHelper *helper = ZkPlayerWidgetEventHelper::of(this))
        helper->setOverlayVisible(visible);
    else
        QWidget::setVisible(visible);
}

void ZkDrawingWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        d->begin(event->localPos());
}

void ZkDrawingWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (d->isDrawing && event->buttons().testFlag(Qt::LeftButton))
        d->extend(event->localPos());
}

void ZkDrawingWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (!d->isDrawing || event->button() != Qt::LeftButton)
        return;
    d->extend(event->localPos());
    d->finish();
}

void ZkDrawingWidget::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (isWindow()) {
        for (const QRect &rect : event->region())
            painter.fillRect(rect, almostTransparent);
    }
    if (d->isDrawing)
        painter.drawImage(QPoint(0, 0), d->screen.image());
}

void ZkDrawingWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        d->retranslate();
    QWidget::changeEvent(event);
}
