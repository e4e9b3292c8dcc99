#include "widgets/ZkPlayerOverlay.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWindow>

namespace {

const char helperProperty[] = "zkPlayerWidgetEventHelper";

// Within which a window manager does what goes with something that it did, as a rule; in ms.
constexpr int settlingTime = 100;
// In which an overlay comes on screen unless it is forgotten; in ms. Beside programs that take all processors it may
// need more than 500.
constexpr int patience = 800;
// Some window managers insist on what they did. Both times double with each correction, since a slow machine looks
// the same.
constexpr int mostCorrections = 3;

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
    void followExposure();
    void startAnew();
    void check();
    void keepWaiting();
    bool isUnseen() const;
    bool isLost() const;
    void bringIntoPlace();

    ZkPlayerWidgetEventHelper *q;
    QPointer<QWidget> overlay;
    QPointer<QWidget> player;
    QPointer<QWidget> top; // whose window is followed
    QVector<QPointer<QWidget>> followed;
    QTimer syncTimer;
    QTimer checkTimer;
    QElapsedTimer waiting; // since checks have found the overlay unseen
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
    checkTimer.start(settlingTime);
}

void ZkPlayerWidgetEventHelper::Private::standAbovePlayer()
{
    overlay->winId(); // there has to be a window to be stacked
    QWindow *const window = overlay->windowHandle();
    QWindow *const playerWindow = player->window()->windowHandle();
    if (!window)
        return;
    window->setTransientParent(playerWindow);
    window->installEventFilter(q);
    playerWindow->installEventFilter(q);
}

void ZkPlayerWidgetEventHelper::Private::followOverlay(const QEvent *event)
{
    const bool isByWindowManager = event->type() == QEvent::WindowStateChange
        || (event->type() == QEvent::Move && event->spontaneous());
    if (isWanted && isByWindowManager)
        checkTimer.start(settlingTime);
}

// The player's window may have come on screen without the overlay, or the overlay may have been taken away.
void ZkPlayerWidgetEventHelper::Private::followExposure()
{
    if (isWanted && isUnseen())
        checkTimer.start(settlingTime);
}

void ZkPlayerWidgetEventHelper::Private::startAnew()
{
    corrections = 0;
    waiting.invalidate();
}

// Window managers that restore the player's window and at once minimise it again forget to show an overlay,
// or leave it minimised or elsewhere. What is hidden here the next check shows; after the last correction it stays
// shown, seen or not.
void ZkPlayerWidgetEventHelper::Private::check()
{
    if (!isWanted || !overlay || !q->isPlayerOnScreen())
        return;
    if (corrections < mostCorrections) {
        keepWaiting();
        if (isLost()) {
            hide();
            // One that goes and comes at once confuses them again.
            checkTimer.start(settlingTime << corrections++);
            return;
        }
        bringIntoPlace();
    }
    sync();
}

void ZkPlayerWidgetEventHelper::Private::keepWaiting()
{
    if (!isUnseen()) {
        waiting.invalidate();
        return;
    }
    if (!waiting.isValid())
        waiting.start();
    checkTimer.start(settlingTime);
}

bool ZkPlayerWidgetEventHelper::Private::isUnseen() const
{
    const auto isExposed = [](const QWidget *widget) {
        return widget->windowHandle() && widget->windowHandle()->isExposed();
    };
    return overlay && player && overlay->isVisible() && !isExposed(overlay)
        && isExposed(player->window());
}

bool ZkPlayerWidgetEventHelper::Private::isLost() const
{
    return overlay->isVisible()
        && (overlay->isMinimized()
            || (waiting.isValid() && waiting.hasExpired(patience << corrections)));
}

void ZkPlayerWidgetEventHelper::Private::bringIntoPlace()
{
    const QPoint before = overlay->pos();
    Q_EMIT q->sigMove();
    if (overlay && overlay->pos() != before)
        ++corrections;
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
    d->startAnew();
    d->sync();
}

// The overlay goes at once, but comes only when the player's window has come: an event of being shown
// is sent before it has. What the window manager restores it is still busy with.
bool ZkPlayerWidgetEventHelper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == d->overlay || watched->isWindowType()) {
        if (watched == d->overlay)
            d->followOverlay(event);
        else if (event->type() == QEvent::Expose)
            d->followExposure();
        return QObject::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::Move:
        d->startAnew();
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
        d->startAnew();
        if (!isPlayerOnScreen())
            d->hide();
        d->checkTimer.start(settlingTime);
        break;
    case QEvent::Show:
        d->startAnew();
        if (event->spontaneous())
            d->checkTimer.start(settlingTime);
        else
            d->syncTimer.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
