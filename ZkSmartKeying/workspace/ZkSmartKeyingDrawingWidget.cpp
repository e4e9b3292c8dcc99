#include "ZkSmartKeyingDrawingWidget.h"

#include "../presenters/ZkSmartKeyingPresenter.h"

#include "player/ZkMediaPlayerWidget.h"

#include <QCoreApplication>
#include <QMouseEvent>

ZkSmartKeyingDrawingWidget::ZkSmartKeyingDrawingWidget(ZkSmartKeyingPresenter *presenter,
                                                       QWidget *parent)
    : ZkDrawingWidget(parent)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkSmartKeyingDrawingWidget"));
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_TranslucentBackground);
    m_eventHelper = new ZkPlayerWidgetEventHelper(this, parent, this);
    m_eventHelper->updateTopWidget(parent);
    connectPresenter();
    connectPen();
    grabGesture(Qt::PinchGesture);
}

ZkSmartKeyingDrawingWidget::~ZkSmartKeyingDrawingWidget() = default;

void ZkSmartKeyingDrawingWidget::connectPresenter()
{
    using Widget = ZkSmartKeyingDrawingWidget;
    using Presenter = ZkSmartKeyingPresenter;
    // Queued: the presenter waits for the new mask in an event loop of its own, which must not run
    // inside the release of the mouse.
    connect(this,
            &ZkDrawingWidget::sigDrawingFinished,
            this,
            &Widget::takeStroke,
            Qt::QueuedConnection);
    connect(m_presenter, &Presenter::sigPlayerEditModeChanged, this, &Widget::followEditMode);
    connect(m_presenter, &Presenter::sigTrackingModeChanged, this, &Widget::followTracking);
    connect(m_presenter, &Presenter::sigDrawingEnabledChanged, this, &Widget::followEnabled);
    using Helper = ZkPlayerWidgetEventHelper;
    connect(m_eventHelper, &Helper::sigPlayerResize, this, &Widget::followPlayerGeometry);
    connect(m_eventHelper, &Helper::sigMove, this, &Widget::followPlayerGeometry);
}

void ZkSmartKeyingDrawingWidget::connectPen()
{
    using Presenter = ZkSmartKeyingPresenter;
    const auto repaint = [this] { update(); };
    connect(m_presenter, &Presenter::sigPenPixelWidthBeginChanged, this, repaint);
    connect(m_presenter, &Presenter::sigPenPixelWidthEndChanged, this, repaint);
    connect(m_presenter, &Presenter::sigPenPixelWidthChanged, this, [this] {
        refreshCursor();
        update();
    });
}

void ZkSmartKeyingDrawingWidget::takeStroke(const QImage &mask, bool finished)
{
    if (!finished)
        return;
    m_presenter->setMask(mask);
    emit m_presenter->sigDrawingFinished();
}

void ZkSmartKeyingDrawingWidget::refreshCursor()
{
    setCursor(m_presenter->cursor(true));
}

// A window of its own, so its place is on the screen.
void ZkSmartKeyingDrawingWidget::followPlayerGeometry()
{
    const QWidget *const player = m_eventHelper->playerWidget();
    if (!player)
        return;
    const QRect rect = player->rect();
    setGeometry(QRect(player->mapToGlobal(rect.topLeft()), rect.size()));
}

void ZkSmartKeyingDrawingWidget::followEditMode()
{
    refreshCursor();
    const bool drawing = m_presenter->isDrawingMode();
    if (drawing) {
        setPenColor(m_presenter->penColor());
        followPlayerGeometry();
    }
    setVisible(drawing);
}

void ZkSmartKeyingDrawingWidget::followTracking(bool tracking)
{
    if (!m_presenter->isSmartCutout())
        return;
    setEnabled(!tracking);
    refreshCursor();
    // A tool that was chosen meanwhile could not be shown before.
    if (!tracking)
        followEditMode();
}

void ZkSmartKeyingDrawingWidget::followEnabled(bool enabled)
{
    setEnabled(enabled);
    refreshCursor();
}

bool ZkSmartKeyingDrawingWidget::event(QEvent *event)
{
    if (event->type() != QEvent::Gesture)
        return ZkDrawingWidget::event(event);
    if (const auto *player = qobject_cast<ZkMediaPlayerWidget *>(m_eventHelper->playerWidget()))
        player->vblPlayerWidget()->dealGestureEvent(event);
    return true;
}

void ZkSmartKeyingDrawingWidget::sendToPlayer(QEvent *event)
{
    if (QWidget *const player = m_eventHelper->playerWidget())
        QCoreApplication::sendEvent(player, event);
}

void ZkSmartKeyingDrawingWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton)
        return;
    if (event->modifiers() == Qt::ControlModifier && event->button() == Qt::LeftButton) {
        beginPenWidthDrag(event->pos());
    } else if (event->button() == Qt::MiddleButton) {
        m_presenter->setFrameMoving(true);
        sendToPlayer(event);
    } else if (event->button() == Qt::LeftButton) {
        ZkDrawingWidget::mousePressEvent(event);
    }
    setCursor(m_presenter->pressedCursor());
}

void ZkSmartKeyingDrawingWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::RightButton)
        return;
    if (m_presenter->isPenPixelWidthChanging())
        dragPenWidth(event->pos());
    else if (m_presenter->isFrameMoving())
        sendToPlayer(event);
    else if (event->buttons() & Qt::LeftButton)
        ZkDrawingWidget::mouseMoveEvent(event);
    setCursor(m_presenter->pressedCursor());
}

void ZkSmartKeyingDrawingWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton)
        return;
    // A stroke that was begun before or during a pan with the middle button has to end all the same.
    const bool endsStroke = isDrawing() && event->button() == Qt::LeftButton;
    if (m_presenter->isPenPixelWidthChanging()) {
        endPenWidthDrag();
    } else if (m_presenter->isFrameMoving() && !endsStroke) {
        m_presenter->setFrameMoving(false);
        sendToPlayer(event);
    } else if (event->button() == Qt::LeftButton) {
        ZkDrawingWidget::mouseReleaseEvent(event);
    }
    refreshCursor();
}

void ZkSmartKeyingDrawingWidget::beginPenWidthDrag(const QPoint &position)
{
    m_pressPos = position;
    m_lastPos = position;
    m_presenter->setPenPixelWidthChanging(true);
}

// Beyond the range the width stays as it is, and so it goes on from there when the mouse comes back.
void ZkSmartKeyingDrawingWidget::dragPenWidth(const QPoint &position)
{
    const int width = position.x() - m_lastPos.x() + m_presenter->penPixelWidth();
    m_lastPos = position;
    if (m_presenter->penPixelWidthRange().contains(width))
        m_presenter->setPenPixelWidth(width);
}

void ZkSmartKeyingDrawingWidget::endPenWidthDrag()
{
    m_pressPos = QPoint();
    m_presenter->setPenPixelWidthChanging(false);
}

// No release follows once the canvas is gone: a macro of the history and a pan would stay open.
void ZkSmartKeyingDrawingWidget::endGestures()
{
    if (m_presenter->isPenPixelWidthChanging())
        endPenWidthDrag();
    if (!m_presenter->isFrameMoving())
        return;
    m_presenter->setFrameMoving(false);
    QMouseEvent release(QEvent::MouseButtonRelease,
                        mapFromGlobal(QCursor::pos()),
                        Qt::MiddleButton,
                        Qt::NoButton,
                        Qt::NoModifier);
    sendToPlayer(&release);
}

void ZkSmartKeyingDrawingWidget::hideEvent(QHideEvent *event)
{
    endGestures();
    ZkDrawingWidget::hideEvent(event);
}

void ZkSmartKeyingDrawingWidget::changeEvent(QEvent *event)
{
    ZkDrawingWidget::changeEvent(event);
    if (event->type() != QEvent::EnabledChange)
        return;
    // The pointer need not have moved when the canvas may be drawn on again.
    if (isEnabled())
        refreshCursor();
    else
        endGestures();
}

void ZkSmartKeyingDrawingWidget::wheelEvent(QWheelEvent *event)
{
    sendToPlayer(event);
}

void ZkSmartKeyingDrawingWidget::enterEvent(QEvent *event)
{
    sendToPlayer(event);
}

void ZkSmartKeyingDrawingWidget::leaveEvent(QEvent *event)
{
    sendToPlayer(event);
}

void ZkSmartKeyingDrawingWidget::paintEvent(QPaintEvent *event)
{
    if (m_presenter->isPenPixelWidthChanging())
        paintBrushPreview();
    else
        ZkDrawingWidget::paintEvent(event);
}

// In the middle when the width is not changed by the mouse on the canvas.
void ZkSmartKeyingDrawingWidget::paintBrushPreview()
{
    QPainter painter(this);
    const ZkPainterCaretaker caretaker(&painter);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QPixmap brush = m_presenter->cursor(false).pixmap();
    const QSize size = brush.size() / brush.devicePixelRatio();
    const QPoint middle = m_pressPos.isNull() ? rect().center() : m_pressPos;
    painter.drawPixmap(middle.x() - size.width() / 2, middle.y() - size.height() / 2, brush);
}
