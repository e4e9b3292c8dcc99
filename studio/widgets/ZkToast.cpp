#include "ZkWidgets.h"

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPropertyAnimation>
#include <QScreen>

namespace {

constexpr int shownMs = 3000;
constexpr double fadeBegins = 0.85; // of the time that it is shown
constexpr int widestText = 480; // widget pixels
constexpr int sideMargin = 16; // kept free at either side of a narrow parent

Qt::WindowFlags flags(const QWidget *parent)
{
    if (parent)
        return Qt::Widget;
    return Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus
        | Qt::WindowTransparentForInput;
}

QRect surroundings(const QWidget *parent)
{
    if (parent)
        return parent->rect();
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

QLabel *iconLabel(const QPixmap &icon, QWidget *toast)
{
    auto *label = new QLabel(toast);
    label->setObjectName(QStringLiteral("toastIcon"));
    label->setPixmap(icon);
    label->setVisible(!icon.isNull());
    return label;
}

// Breaks the text over several lines only where it does not fit in one.
QLabel *textLabel(const QString &text, QWidget *toast, int widest)
{
    auto *label = new QLabel(text, toast);
    label->setObjectName(QStringLiteral("toastText"));
    label->setTextFormat(Qt::PlainText);
    label->ensurePolished();
    if (label->sizeHint().width() > widest) {
        label->setWordWrap(true);
        label->setFixedWidth(widest);
    }
    return label;
}

// The effect fades a child and a window alike; not every platform can fade a window.
void addFade(QWidget *toast)
{
    auto *effect = new QGraphicsOpacityEffect(toast);
    effect->setOpacity(1.0);
    toast->setGraphicsEffect(effect);
    auto *fade = new QPropertyAnimation(effect, "opacity", toast);
    fade->setDuration(shownMs);
    fade->setStartValue(1.0);
    fade->setKeyValueAt(fadeBegins, 1.0);
    fade->setEndValue(0.0);
    QObject::connect(fade, &QAbstractAnimation::finished, toast, &QObject::deleteLater);
}

} // namespace

ZkToast *
ZkToast::creatToast(const QString &text, QWidget *parent, const QPixmap &icon, int topMargin)
{
    return new ZkToast(text, parent, icon, topMargin);
}

ZkToast::ZkToast(const QString &text, QWidget *parent, const QPixmap &icon, int topMargin)
    : QWidget(parent, flags(parent))
    , m_text(text)
    , m_icon(icon)
    , m_topMargin(topMargin)
{
    setObjectName(QStringLiteral("Toast"));
    setAccessibleName(text);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_StyledBackground);
    if (!parent)
        setAttribute(Qt::WA_TranslucentBackground); // nothing outside the rounded corners
    hide(); // or a parent that is shown later would show it, too

    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Toast"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(14, 10, 16, 10);
    row->setSpacing(8);
    row->addWidget(iconLabel(icon, this), 0, Qt::AlignTop);
    const QMargins margins = row->contentsMargins();
    const int taken = margins.left() + margins.right() + 2 * sideMargin
        + (icon.isNull() ? 0 : row->spacing() + qRound(icon.width() / icon.devicePixelRatio()));
    const int room = surroundings(parent).width() - taken;
    row->addWidget(textLabel(text, this, qBound(80, room, widestText)), 1, Qt::AlignVCenter);
    addFade(this);
    placeAtTop();
}

void ZkToast::placeAtTop()
{
    adjustSize();
    const QRect area = surroundings(parentWidget());
    move(area.x() + (area.width() - width()) / 2, area.y() + m_topMargin);
}

QString ZkToast::text() const
{
    return m_text;
}

QPixmap ZkToast::icon() const
{
    return m_icon;
}

void ZkToast::showToast()
{
    show();
    if (!isWindow()) // a window of this kind comes to the top by itself
        raise();
    auto *fade = findChild<QPropertyAnimation *>();
    fade->stop();
    fade->start();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}
