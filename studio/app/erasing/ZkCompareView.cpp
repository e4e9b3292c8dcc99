#include "ZkCompareView.h"

#include "ZkWidgets.h"

#include <QMouseEvent>
#include <QPainter>

namespace zk::app {

namespace {

// Widget pixels.
constexpr QSize usualSize(960, 540);
constexpr QSize leastSize(320, 180);
constexpr double handleRadius = 13;
constexpr double arrowSide = 5;
constexpr double lineWidth = 2;
constexpr int nameMargin = 10;
constexpr int namePadding = 8;
constexpr double nameRadius = 4;

constexpr double keyStep = 0.02; // of the width

QColor skinColor(int type)
{
    return ZkSkinManager::instance()->color(type);
}

} // namespace

CompareView::CompareView(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("CompareView"));
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(leastSize);
    setCursor(Qt::SplitHCursor);
    setAccessibleName(tr("Before and after"));
}

QSize CompareView::sizeHint() const
{
    return usualSize;
}

void CompareView::setPictures(const QImage &before, const QImage &after)
{
    m_before = before;
    m_after = after;
    update();
}

void CompareView::setDivider(double place)
{
    const double inside = qBound(0.0, place, 1.0);
    if (qFuzzyCompare(1 + inside, 1 + m_divider))
        return;
    m_divider = inside;
    update();
    emit dividerMoved(inside);
}

void CompareView::setShowsBeforeOnly(bool before)
{
    if (m_showsBeforeOnly == before)
        return;
    m_showsBeforeOnly = before;
    update();
}

// Never enlarged beyond its own pixels, of which a screen may have several in a widget's.
QRectF CompareView::pictureRect() const
{
    const QSizeF size = QSizeF(m_before.size());
    if (size.isEmpty())
        return {};
    const QSizeF shown = size.scaled(QSizeF(this->size()), Qt::KeepAspectRatio);
    return QRectF(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2), shown);
}

void CompareView::drawPart(QPainter *painter, const QImage &picture, const QRectF &part) const
{
    if (picture.isNull() || part.isEmpty())
        return;
    painter->save();
    painter->setClipRect(part);
    painter->drawImage(pictureRect(), picture);
    painter->restore();
}

void CompareView::drawDivider(QPainter *painter, double x) const
{
    const QRectF picture = pictureRect();
    const QPointF middle(x, picture.center().y());
    const QColor color = skinColor(hasFocus() ? ZKSKIN::Accent : ZKSKIN::Text);
    painter->setPen(QPen(color, lineWidth));
    painter->drawLine(QPointF(x, picture.top()), QPointF(x, picture.bottom()));
    painter->setBrush(skinColor(ZKSKIN::PanelBackground));
    painter->drawEllipse(middle, handleRadius, handleRadius);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    for (const int side : {-1, 1}) {
        const double tip = middle.x() + side * (handleRadius - 4);
        painter->drawPolygon(QPolygonF({QPointF(tip, middle.y()),
                                        QPointF(tip - side * arrowSide, middle.y() - arrowSide),
                                        QPointF(tip - side * arrowSide, middle.y() + arrowSide)}));
    }
}

void CompareView::drawName(QPainter *painter, const QString &name, bool isLeft) const
{
    const QRectF picture = pictureRect();
    const QSizeF size(fontMetrics().horizontalAdvance(name) + 2 * namePadding,
                      fontMetrics().height() + namePadding);
    const double x =
        isLeft ? picture.left() + nameMargin : picture.right() - nameMargin - size.width();
    const QRectF box(QPointF(x, picture.top() + nameMargin), size);
    QColor background = skinColor(ZKSKIN::Canvas);
    background.setAlphaF(0.7);
    painter->setPen(Qt::NoPen);
    painter->setBrush(background);
    painter->drawRoundedRect(box, nameRadius, nameRadius);
    painter->setPen(skinColor(ZKSKIN::Text));
    painter->drawText(box, Qt::AlignCenter, name);
}

void CompareView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.fillRect(rect(), skinColor(ZKSKIN::Canvas));
    const QRectF picture = pictureRect();
    if (picture.isEmpty())
        return;
    const double x =
        m_showsBeforeOnly ? picture.right() : picture.left() + m_divider * picture.width();
    drawPart(&painter, m_before, QRectF(picture.topLeft(), QPointF(x, picture.bottom())));
    drawPart(&painter, m_after, QRectF(QPointF(x, picture.top()), picture.bottomRight()));
    drawName(&painter, tr("Before"), true);
    if (m_showsBeforeOnly)
        return;
    drawName(&painter, tr("After"), false);
    drawDivider(&painter, x);
}

void CompareView::follow(const QPoint &point)
{
    const QRectF picture = pictureRect();
    if (!picture.isEmpty())
        setDivider((point.x() - picture.left()) / picture.width());
}

void CompareView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        follow(event->pos());
}

void CompareView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        follow(event->pos());
}

void CompareView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        setDivider(m_divider - keyStep);
        break;
    case Qt::Key_Right:
        setDivider(m_divider + keyStep);
        break;
    case Qt::Key_Home:
        setDivider(0);
        break;
    case Qt::Key_End:
        setDivider(1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace zk::app
