#include "ZkFunctionTipBubble_p.h"

#include "ZkWidgets.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainterPath>
#include <QTimer>

namespace {

constexpr int shownMs = 8000;
constexpr int arrowHeight = 7; // widget pixels, as all sizes here
constexpr int arrowWidth = 14;
constexpr int radius = 6;
constexpr int widest = 280;
constexpr int windowMargin = 4;

} // namespace

ZkFunctionTipBubble::ZkFunctionTipBubble(int tip, const QString &text, QWidget *owner)
    : QWidget(owner->window())
    , m_tip(tip)
{
    setObjectName(QStringLiteral("ZkFunctionTip"));
    setAccessibleName(text);
    auto *label = new ZkLabel(text, this);
    ZkSkinManager::instance()->applyStyleSheet(label, QStringLiteral("Widgets/FunctionTip"));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    const int width = qMin(label->sizeHint().width(), widest);
    label->setWordWrap(true);
    label->setFixedSize(width, label->heightForWidth(width));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, arrowHeight + 8, 12, 8);
    row->addWidget(label);
    connect(owner, &QObject::destroyed, this, &QObject::deleteLater);
    QCoreApplication::instance()->installEventFilter(this);
    QTimer::singleShot(shownMs, this, [this] { deleteLater(); });
}

ZkFunctionTipBubble::~ZkFunctionTipBubble() = default;

void ZkFunctionTipBubble::pointAt(const QPoint &globalPosition)
{
    adjustSize();
    const QPoint point = parentWidget()->mapFromGlobal(globalPosition);
    const int last = parentWidget()->width() - width() - windowMargin;
    const int left = qMax(windowMargin, qMin(point.x() - width() / 2, last));
    m_arrow = qBound(radius + arrowWidth / 2, point.x() - left, width() - radius - arrowWidth / 2);
    move(left, point.y());
    show();
    raise();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

// Whoever presses something has begun to work: what is told may lie over what is pressed next.
bool ZkFunctionTipBubble::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        hide();
        deleteLater();
    }
    return QWidget::eventFilter(watched, event);
}

void ZkFunctionTipBubble::paintEvent(QPaintEvent *)
{
    QPainterPath body;
    body.addRoundedRect(QRectF(rect()).adjusted(0, arrowHeight, 0, 0), radius, radius);
    QPainterPath arrow;
    arrow.moveTo(m_arrow - arrowWidth / 2.0, arrowHeight + 1);
    arrow.lineTo(m_arrow, 0);
    arrow.lineTo(m_arrow + arrowWidth / 2.0, arrowHeight + 1);
    arrow.closeSubpath();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(body.united(arrow), ZkSkinManager::instance()->color(ZKSKIN::Accent));
}
