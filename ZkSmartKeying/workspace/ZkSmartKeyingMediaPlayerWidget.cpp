#include "ZkSmartKeyingMediaPlayerWidget.h"

#include "ZkSmartKeyingDrawingWidget.h"

#include <QApplication>
#include <QIcon>
#include <QMouseEvent>

namespace {

const int ToastMargin = 24; // widget pixels
const int ToastTop = 20;
const int ToastLeftOfCentre = 18;
const QSize IconSize(24, 24);

// Values beyond these are shown without a text.
const struct
{
    ZkSmartKeyingPresenter::PromptType type;
    const char *text;
    const char *icon;
} Prompts[] = {
    {ZkSmartKeyingPresenter::DrawMaskFirstPrompt,
     QT_TRANSLATE_NOOP("ZkSmartKeyingMediaPlayerWidget",
                       "Please draw mask first. Then you can start tracking."),
     ":/Resource/icon24_toast_info.png"},
    {ZkSmartKeyingPresenter::TrackingFailedPrompt,
     QT_TRANSLATE_NOOP("ZkSmartKeyingMediaPlayerWidget",
                       "Track rendering failed, please try again!"),
     ":/Resource/icon24_toast_error.png"},
    {ZkSmartKeyingPresenter::NothingToTrackPrompt,
     QT_TRANSLATE_NOOP("ZkSmartKeyingMediaPlayerWidget",
                       "No objects to track in this direction, please select another direction."),
     ":/Resource/icon24_toast_info.png"},
};

} // namespace

ZkSmartKeyingMediaPlayerWidget::ZkSmartKeyingMediaPlayerWidget(ZkSmartKeyingPresenter *presenter,
                                                               QWidget *parent)
    : ZkMediaPlayerWidget(parent)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkSmartKeyingMediaPlayerWidget"));
    setAttribute(Qt::WA_MouseTracking, false);
    setPresenter(presenter->playerPresenter());
    m_drawingWidget = new ZkSmartKeyingDrawingWidget(presenter, this);
    m_drawingWidget->setVisible(false);
    connectPresenter();
    vblPlayerWidget()->setZoomAdsorbEnabled(false);
    presenter->playerPresenter()->setZoomEnabled(true);
}

ZkSmartKeyingMediaPlayerWidget::~ZkSmartKeyingMediaPlayerWidget() = default;

// What moves or scales the canvas is queued: it may come from inside the input event that the canvas
// is still busy with.
void ZkSmartKeyingMediaPlayerWidget::connectPresenter()
{
    using Widget = ZkSmartKeyingMediaPlayerWidget;
    using Presenter = ZkSmartKeyingPresenter;
    const auto queued = Qt::QueuedConnection;
    connect(m_presenter, &Presenter::sigFrameZoomed, this, &Widget::followCanvas, queued);
    connect(m_presenter, &Presenter::sigFrameMoved, this, &Widget::followCanvas, queued);
    connect(m_presenter, &Presenter::sigPenDrawWidthChanged, this, &Widget::followPenWidth, queued);
    connect(m_presenter, &Presenter::sigPrompt, this, &Widget::showPrompt);
}

void ZkSmartKeyingMediaPlayerWidget::followCanvas()
{
    m_drawingWidget->setCanvasRect(m_presenter->canvasRect());
}

void ZkSmartKeyingMediaPlayerWidget::followPenWidth(int width)
{
    m_drawingWidget->setPenWidth(width);
    refreshCursor();
}

QWidget *ZkSmartKeyingMediaPlayerWidget::topmost()
{
    if (m_drawingWidget->isVisible())
        return m_drawingWidget;
    return this;
}

void ZkSmartKeyingMediaPlayerWidget::refreshCursor()
{
    topmost()->setCursor(m_presenter->cursor(true));
}

void ZkSmartKeyingMediaPlayerWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        event->ignore();
        return;
    }
    m_mousePressed = true;
    if (m_presenter->canMoveFrame()) {
        m_pressPos = event->pos();
        m_presenter->startMoveFrame();
    }
}

void ZkSmartKeyingMediaPlayerWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() != Qt::RightButton && m_presenter->canMoveFrame())
        m_presenter->moveFrame(event->localPos() - m_pressPos);
}

void ZkSmartKeyingMediaPlayerWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        event->ignore();
        return;
    }
    m_mousePressed = false;
    m_presenter->finishMoveFrame();
}

void ZkSmartKeyingMediaPlayerWidget::wheelEvent(QWheelEvent *event)
{
    QCoreApplication::sendEvent(vblPlayerWidget(), event);
}

void ZkSmartKeyingMediaPlayerWidget::enterEvent(QEvent *event)
{
    Q_UNUSED(event)
    // The canvas takes no focus, so what has to be active for the keys to reach the workspace is the
    // player's window. Only within the application: nobody wants a window that the mouse passes to
    // come up over another program's.
    const QWidget *const active = QApplication::activeWindow();
    if (m_drawingWidget->isVisible() && active && active != window()
        && !QApplication::activeModalWidget())
        window()->activateWindow();
    refreshCursor();
}

void ZkSmartKeyingMediaPlayerWidget::leaveEvent(QEvent *event)
{
    Q_UNUSED(event)
    if (!m_mousePressed)
        topmost()->setCursor(Qt::ArrowCursor);
}

void ZkSmartKeyingMediaPlayerWidget::showPrompt(ZkSmartKeyingPresenter::PromptType type)
{
    if (type == ZkSmartKeyingPresenter::DrawMaskFirstPrompt && !m_presenter->isSmartCutout())
        return;
    QString text;
    QPixmap icon;
    for (const auto &prompt : Prompts) {
        if (prompt.type == type) {
            text = tr(prompt.text);
            icon = QIcon(QString::fromLatin1(prompt.icon)).pixmap(IconSize); // @2x where it is due
        }
    }
    ZkToast *const toast = ZkToast::creatToast(text, this, icon, ToastMargin);
    const QPoint place((width() - toast->width()) / 2 - ToastLeftOfCentre, ToastTop);
    // A toast is a child of the player or a window of its own, as the host likes it.
    toast->move(toast->isWindow() ? mapToGlobal(place) : place);
    toast->showToast();
}
