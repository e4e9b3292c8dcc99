#include "ZkFocusFrame_p.h"
#include "ZkToolTip_p.h"
#include "ZkWidgets.h"

#include <QHelpEvent>
#include <QKeyEvent>

namespace {

constexpr int iconSide = 24; // widget pixels
constexpr int iconMargin = 2;
constexpr int swatchSide = 16;
constexpr double swatchRadius = 3;
constexpr double disabledOpacity = 0.4;

} // namespace

ZkToolButton::ZkToolButton(QWidget *parent)
    : QToolButton(parent)
{
    setIconSize(QSize(iconSide, iconSide));
    setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the window's shortcuts
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/ToolButton"));
}

ZkToolButton::~ZkToolButton() = default;

void ZkToolButton::setIconName(const QString &name)
{
    if (name == m_iconName)
        return;
    m_iconName = name;
    setIcon(ZkSkinManager::instance()->icon(name));
}

QSize ZkToolButton::sizeHint() const
{
    if (!text().isEmpty() && toolButtonStyle() != Qt::ToolButtonIconOnly)
        return QToolButton::sizeHint();
    return iconSize() + QSize(2 * iconMargin, 2 * iconMargin);
}

bool ZkToolButton::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip
        && zkShowShortcutToolTip(this, static_cast<QHelpEvent *>(event)))
        return true;
    const bool handled = QToolButton::event(event);
    if (event->type() == QEvent::ToolTipChange || event->type() == QEvent::DynamicPropertyChange)
        followToolTip();
    return handled;
}

// An icon says nothing to a screen reader.
void ZkToolButton::followToolTip()
{
    if (accessibleName() != m_nameFromToolTip)
        return;
    m_nameFromToolTip = zkToolTipParts(this).text;
    setAccessibleName(m_nameFromToolTip);
}

void ZkToolButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QToolButton::keyPressEvent(event);
}

void ZkToolButton::paintEvent(QPaintEvent *event)
{
    QToolButton::paintEvent(event);
    zkPaintFocusFrame(this);
}

ZkColorToolButton::ZkColorToolButton(const QColor &color, QWidget *parent)
    : ZkToolButton(parent)
    , m_color(color)
{ }

ZkColorToolButton::~ZkColorToolButton() = default;

void ZkColorToolButton::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

void ZkColorToolButton::paintEvent(QPaintEvent *event)
{
    ZkToolButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : disabledOpacity);
    QRectF swatch(0, 0, swatchSide, swatchSide);
    swatch.moveCenter(QRectF(rect()).center());
    painter.setPen(ZkSkinManager::instance()->color(ZKSKIN::Text));
    painter.setBrush(m_color);
    painter.drawRoundedRect(swatch.adjusted(0.5, 0.5, -0.5, -0.5), swatchRadius, swatchRadius);
}
