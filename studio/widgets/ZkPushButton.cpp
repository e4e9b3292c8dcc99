#include "ZkWidgets.h"

#include <QEvent>
#include <QKeyEvent>

namespace {

constexpr double createRadius = 6; // widget pixels
constexpr double focusGap = 2;
constexpr int createSide = 24; // beside the text
constexpr QSize smallestCreate(120, 32);

QColor skinColor(int type)
{
    return ZkSkinManager::instance()->color(type);
}

} // namespace

ZkPushButton::ZkPushButton(QWidget *parent)
    : ZkPushButton(parent, SecondaryType, Size24)
{ }

ZkPushButton::ZkPushButton(QWidget *parent, ZButtonType type, ZButtonSizeKind size)
    : QPushButton(parent)
{
    setFixedHeight(size);
    const QString key = type == PrimaryType ? QStringLiteral("Widgets/PrimaryPushButton")
                                            : QStringLiteral("Widgets/PushButton");
    ZkSkinManager::instance()->applyStyleSheet(this, key);
}

ZkPushButton::~ZkPushButton() = default;

ZkPushButton *ZkPushButton::CreateButton(QWidget *parent, ZButtonType type, ZButtonSizeKind size)
{
    return new ZkPushButton(parent, type, size);
}

void ZkPushButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QPushButton::keyPressEvent(event);
}

ZkPrimaryButton::ZkPrimaryButton(QWidget *parent)
    : ZkPushButton(parent, PrimaryType, Size32)
{ }

ZkPrimaryButton::~ZkPrimaryButton() = default;

ZAIGCCreateButton::ZAIGCCreateButton(QWidget *parent)
    : ZkPrimaryButton(parent)
{
    setText(tr("Create"));
    setCursor(Qt::PointingHandCursor);
}

ZAIGCCreateButton::~ZAIGCCreateButton() = default;

QSize ZAIGCCreateButton::sizeHint() const
{
    const int width = fontMetrics().horizontalAdvance(text()) + 2 * createSide;
    return QSize(width, smallestCreate.height()).expandedTo(smallestCreate);
}

QSize ZAIGCCreateButton::minimumSizeHint() const
{
    return sizeHint();
}

bool ZAIGCCreateButton::event(QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::Enter || type == QEvent::Leave) {
        m_hovered = type == QEvent::Enter;
        update();
    }
    return ZkPrimaryButton::event(event);
}

void ZAIGCCreateButton::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        setText(tr("Create"));
    if (event->type() == QEvent::EnabledChange)
        m_hovered = isEnabled() && underMouse();
    ZkPrimaryButton::changeEvent(event);
}

void ZAIGCCreateButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isBright = isEnabled() && m_hovered && !isDown();
    QLinearGradient fill(0, 0, width(), 0);
    fill.setColorAt(0, skinColor(isDown() ? ZKSKIN::AccentPressed : ZKSKIN::Accent));
    fill.setColorAt(1, skinColor(isDown() ? ZKSKIN::AccentPressed : ZKSKIN::TimelineTracked));
    painter.setPen(Qt::NoPen);
    painter.setBrush(isEnabled() ? QBrush(fill) : QBrush(skinColor(ZKSKIN::Raised)));
    painter.drawRoundedRect(rect(), createRadius, createRadius);
    if (isBright) {
        painter.setBrush(QColor(255, 255, 255, 50));
        painter.drawRoundedRect(rect(), createRadius, createRadius);
    }
    painter.setPen(skinColor(isEnabled() ? ZKSKIN::OnAccent : ZKSKIN::DisabledText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    if (!hasFocus())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(skinColor(ZKSKIN::OnAccent), 1.5));
    const QRectF ring = QRectF(rect()).adjusted(focusGap, focusGap, -focusGap, -focusGap);
    painter.drawRoundedRect(ring, createRadius - focusGap, createRadius - focusGap);
}
