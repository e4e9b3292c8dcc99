#include "widgets/ZkPlayerOverlay.h"

#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWindow>

namespace {

const char helperProperty[] = "zkPlayerWidgetEventHelper";

} // namespace

class ZkPlayerWidgetEventHelper::Private
{
public:
    Private(ZkPlayerWidgetEventHelper *helper, QWidget *overlayWidget, QWidget *playerWidget)
        : q(helper)
        , overlay(overlayWidget)
        , player(playerWidget)
        , top(playerWidget)
    { }

    void follow();
    void followUpwards(QWidget *widget);
    void letGo();
    void hide();
    void sync();
    void standAbovePlayer();
    void forgetMinimising();

    ZkPlayerWidgetEventHelper *q;
    QPointer<QWidget> overlay;
    QPointer<QWidget> player;
    QPointer<QWidget> top; // whose window is followed
    QVector<QPointer<QWidget>> followed;
    QTimer syncTimer;
    bool isWanted = false;
};

// The player goes wherever one of the widgets around it goes, so all of them are watched.
void ZkPlayerWidgetEventHelper::Private::follow()
{
    letGo();
    followUpwards(player);
    followUpwards(top);
}

void ZkPlayerWidgetEventHelper::Private::followUpwards(QWidget *widget)
{
    for (; widget && !followed.contains(widget); widget = widget->parentWidget()) {
        widget->installEventFilter(q);
        followed.append(widget);
        if (widget->isWindow())
            break;
    }
}

void ZkPlayerWidgetEventHelper::Private::letGo()
{
    for (const QPointer<QWidget> &widget : qAsConst(followed)) {
        if (widget)
            widget->removeEventFilter(q);
    }
    followed.clear();
}

// Past the overlay's own setVisible(), which comes here.
void ZkPlayerWidgetEventHelper::Private::hide()
{
    if (overlay && overlay->isVisible())
        overlay->QWidget::setVisible(false);
}

void ZkPlayerWidgetEventHelper::Private::sync()
{
    if (!isWanted || !q->isPlayerOnScreen()) {
        hide();
        return;
    }
    if (!overlay || overlay->isVisible())
        return;
    standAbovePlayer();
    forgetMinimising();
    overlay->QWidget::setVisible(true);
}

void ZkPlayerWidgetEventHelper::Private::standAbovePlayer()
{
    overlay->winId(); // there has to be a window to be stacked
    if (QWindow *window = overlay->windowHandle())
        window->setTransientParent(player->window()->windowHandle());
}

// Window managers minimise a window with those that stand above it. An overlay that came back minimised
// would take the player's window down again.
void ZkPlayerWidgetEventHelper::Private::forgetMinimising()
{
    overlay->setWindowState(overlay->windowState() & ~Qt::WindowMinimized);
}

ZkPlayerWidgetEventHelper::ZkPlayerWidgetEventHelper(QWidget *overlay,
                                                     QWidget *playerWidget,
                                                     QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, overlay, playerWidget))
{
    if (overlay)
        overlay->setProperty(helperProperty, QVariant::fromValue<QObject *>(this));
    if (playerWidget)
        connect(playerWidget, &QObject::destroyed, this, [this] { d->hide(); });
    d->syncTimer.setSingleShot(true);
    connect(&d->syncTimer, &QTimer::timeout, this, [this] {
        if (isPlayerOnScreen())
            Q_EMIT sigMove();
        d->sync();
    });
    d->follow();
}

ZkPlayerWidgetEventHelper::~ZkPlayerWidgetEventHelper()
{
    if (d->overlay)
        d->overlay->setProperty(helperProperty, QVariant());
}

ZkPlayerWidgetEventHelper *ZkPlayerWidgetEventHelper::of(const QWidget *overlay)
{
    return qobject_cast<ZkPlayerWidgetEventHelper *>(
        overlay->property(helperProperty).value<QObject *>());
}

QWidget *ZkPlayerWidgetEventHelper::playerWidget() const
{
    return d->player;
}

void ZkPlayerWidgetEventHelper::updateTopWidget(QWidget *widget)
{
    d->top = widget;
    d->follow();
    d->syncTimer.start();
}

// A widget counts as visible before its window is on screen, and while that is minimised.
bool ZkPlayerWidgetEventHelper::isPlayerOnScreen() const
{
    if (!d->player || !d->player->isVisible())
        return false;
    const QWidget *window = d->player->window();
    const QWindow *handle = window->windowHandle();
    return handle && handle->isVisible() && !window->isMinimized();
}

void ZkPlayerWidgetEventHelper::setOverlayVisible(bool visible)
{
    d->isWanted = visible;
    d->sync();
}

// The overlay goes at once, but comes only when the player's window has come: an event of being shown
// is sent before it has.
bool ZkPlayerWidgetEventHelper::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
        Q_EMIT sigMove();
        break;
    case QEvent::Resize:
        if (watched == d->player)
            Q_EMIT sigPlayerResize();
        break;
    case QEvent::ParentChange:
        d->follow();
        d->syncTimer.start();
        break;
    case QEvent::Hide:
        d->hide();
        d->syncTimer.start();
        break;
    case QEvent::WindowStateChange:
        if (!isPlayerOnScreen())
            d->hide();
        d->syncTimer.start();
        break;
    case QEvent::Show:
        d->syncTimer.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
