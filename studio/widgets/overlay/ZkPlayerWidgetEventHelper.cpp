#include "widgets/ZkPlayerOverlay.h"

#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWindow>

namespace {

const char helperProperty[] = "zkPlayerWidgetEventHelper";

// Within which a window that is shown comes on screen, with those above it; in ms.
constexpr int settlingTime = 100;
// Some window managers insist on what they did.
constexpr int mostCorrections = 10;

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
    void followOverlay(const QEvent *event);
    void check();
    bool isLost() const;

    ZkPlayerWidgetEventHelper *q;
    QPointer<QWidget> overlay;
    QPointer<QWidget> player;
    QPointer<QWidget> top; // whose window is followed
    QVector<QPointer<QWidget>> followed;
    QTimer syncTimer;
    QTimer checkTimer;
    bool isWanted = false;
    int corrections = 0; // since the player has moved, or has come back
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
    checkTimer.start();
}

void ZkPlayerWidgetEventHelper::Private::standAbovePlayer()
{
    overlay->winId(); // there has to be a window to be stacked
    if (QWindow *window = overlay->windowHandle())
        window->setTransientParent(player->window()->windowHandle());
}

void ZkPlayerWidgetEventHelper::Private::followOverlay(const QEvent *event)
{
    const bool isByWindowManager = event->type() == QEvent::WindowStateChange
        || (event->type() == QEvent::Move && event->spontaneous());
    if (isWanted && isByWindowManager)
        checkTimer.start();
}

// Window managers that restore the player's window and at once minimise it again forget to show an overlay,
// or leave it minimised or elsewhere.
void ZkPlayerWidgetEventHelper::Private::check()
{
    if (!isWanted || !overlay || !q->isPlayerOnScreen() || ++corrections > mostCorrections)
        return;
    if (isLost()) {
        hide();
        checkTimer.start(); // a window that goes and comes at once confuses them again
        return;
    }
    Q_EMIT q->sigMove();
    sync();
}

bool ZkPlayerWidgetEventHelper::Private::isLost() const
{
    const QWindow *const window = overlay->windowHandle();
    return overlay->isVisible()
        && (overlay->isMinimized()
            || (!window->isExposed() && player->window()->windowHandle()->isExposed()));
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
    if (overlay) {
        overlay->setProperty(helperProperty, QVariant::fromValue<QObject *>(this));
        overlay->installEventFilter(this);
    }
    if (playerWidget)
        connect(playerWidget, &QObject::destroyed, this, [this] { d->hide(); });
    d->syncTimer.setSingleShot(true);
    d->checkTimer.setSingleShot(true);
    d->checkTimer.setInterval(settlingTime);
    connect(&d->checkTimer, &QTimer::timeout, this, [this] { d->check(); });
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
    d->corrections = 0;
    d->sync();
}

// The overlay goes at once, but comes only when the player's window has come: an event of being shown
// is sent before it has. What the window manager restores it is still busy with.
bool ZkPlayerWidgetEventHelper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == d->overlay) {
        d->followOverlay(event);
        return QObject::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::Move:
        d->corrections = 0;
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
        d->corrections = 0;
        if (!isPlayerOnScreen())
            d->hide();
        d->checkTimer.start();
        break;
    case QEvent::Show:
        d->corrections = 0;
        (event->spontaneous() ? d->checkTimer : d->syncTimer).start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
