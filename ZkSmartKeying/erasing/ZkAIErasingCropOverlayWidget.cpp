#include "ZkAIErasingCropOverlayWidget.h"

#include "../ZkCallLater.h"
#include "../ZkSmartKeyingLog.h"
#include "../presenters/ZkAIErasingCropSelectorPresenter.h"
#include "../presenters/ZkAIErasingPresenter.h"

#include "player/ZkMediaPlayerWidget.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QVBoxLayout>

#define ZK_OVERLAY_LOG(function, message)                                                          \
    ZK_LOG(ZKLOG::Warning, "ZkAIErasingCropOverlayWidget", function, message)

namespace {

const int ResyncDelay = 50; // ms, after a removal that was refused

using Type = ZkMultiCropWidget::OperationType;

ZkCropLook look(const char *image)
{
    return {QString::fromLatin1(image), Qt::transparent, Qt::transparent};
}

// The same in every state.
ZkCropLooks steadyLooks(const char *image)
{
    ZkCropLooks looks;
    looks.fill(look(image));
    return looks;
}

} // namespace

ZkAIErasingCropOverlayWidget::ZkAIErasingCropOverlayWidget(ZkAIErasingPresenter *presenter,
                                                           QWidget *playerWidget,
                                                           QWidget *parent)
    : ZkPlayerOverlayWidget(playerWidget, parent)
    , m_presenter(presenter)
    , m_editor(new ZkMultiCropWidget(this))
{
    setObjectName(QStringLiteral("ZkAIErasingCropOverlayWidget"));
    setMouseTracking(true);
    grabGesture(Qt::PinchGesture);
    auto *const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(m_editor);
    // This window takes no focus, so the keys are the player's.
    playerWidget->setFocusPolicy(Qt::StrongFocus);
    m_editor->setKeySource(playerWidget);
    m_editor->installEventFilter(this);
    applyStyle();
    connectSignals();
    using Helper = ZkPlayerWidgetEventHelper;
    using Overlay = ZkAIErasingCropOverlayWidget;
    connect(eventHelper(), &Helper::sigMove, this, &Overlay::followPlayerGeometry);
    connect(eventHelper(), &Helper::sigPlayerResize, this, &Overlay::followPlayerGeometry);
}

ZkAIErasingCropOverlayWidget::~ZkAIErasingCropOverlayWidget() = default;

void ZkAIErasingCropOverlayWidget::applyStyle()
{
    ZkMultiCropStyle style = m_editor->getStyle();
    style.closeButton = {look(":/Resource/icon16_crop_close-normal.png"),
                         look(":/Resource/icon16_crop_close-hover.png"),
                         look(":/Resource/icon16_crop_close-pressed.png"),
                         look(":/Resource/icon16_crop_close-disabled.png")};
    style.topLeftHandle = steadyLooks(":/Resource/icon8_crop_top_left.png");
    style.topRightHandle = steadyLooks(":/Resource/icon8_crop_top_right.png");
    style.bottomLeftHandle = steadyLooks(":/Resource/icon8_crop_bottom_left.png");
    style.bottomRightHandle = steadyLooks(":/Resource/icon8_crop_bottom_right.png");
    m_editor->setStyle(style);
}

ZkAIErasingCropSelectorPresenter *ZkAIErasingCropOverlayWidget::crops() const
{
    return m_presenter ? m_presenter->cropSelectorPresenter() : nullptr;
}

// A change of the crop's rectangle and of the active crop needs nothing here: the editor, where they
// come from, shows them already, and a resync brings those that come from elsewhere.
void ZkAIErasingCropOverlayWidget::connectSignals()
{
    if (!crops())
        return;
    connectEditor();
    connectDrag();
    connectPresenter();
}

void ZkAIErasingCropOverlayWidget::connectEditor()
{
    using Editor = ZkMultiCropWidget;
    using Overlay = ZkAIErasingCropOverlayWidget;
    connect(m_editor, &Editor::sigCropCreated, this, &Overlay::addCrop);
    connect(m_editor, &Editor::sigCropRemoved, this, &Overlay::removeCrop);
    connect(m_editor, &Editor::sigCropActivated, this, &Overlay::activateCrop);
}

void ZkAIErasingCropOverlayWidget::connectDrag()
{
    using Editor = ZkMultiCropWidget;
    connect(m_editor, &Editor::sigCropMoveStarted, this, [this](int uiId, Type type) {
        const int crop = dataIdToDrag(uiId, type, "change started");
        if (crop >= 0)
            crops()->onCropMoveStarted(crop, type, editorRect(uiId));
    });
    connect(m_editor, &Editor::sigCropMoving, this, [this](int uiId, Type type) {
        const int crop = dataIdToDrag(uiId, type, "changing");
        if (crop >= 0)
            crops()->onCropMoving(crop, type, editorRect(uiId));
    });
    connect(m_editor,
            &Editor::sigCropMoveFinished,
            this,
            [this](int uiId, Type type, const QRect &rect) {
                const int crop = dataIdToDrag(uiId, type, "change finished");
                if (crop >= 0)
                    crops()->onCropMoveFinished(crop, type, rect);
            });
}

void ZkAIErasingCropOverlayWidget::connectPresenter()
{
    using Overlay = ZkAIErasingCropOverlayWidget;
    using Crops = ZkAIErasingCropSelectorPresenter;
    connect(crops(), &Crops::sigCropRectAdded, this, &Overlay::syncUIFromBusinessData);
    connect(crops(), &Crops::sigCropRectRemoved, this, &Overlay::syncUIFromBusinessData);
    connect(crops(), &Crops::sigAllCropRectsCleared, this, &Overlay::clearCrops);
    connect(crops(), &Crops::sigCanvasRectChanged, this, &Overlay::resyncAllCropRects);
    connect(crops(), &Crops::sigResyncAllCropRects, this, &Overlay::resyncAllCropRects);
    // After the resync: the editor may clamp what it holds to the new canvas.
    connect(crops(), &Crops::sigCanvasRectChanged, this, [this](const QRect &rect) {
        ZK_OVERLAY_LOG("connectSignals",
                       QString::asprintf("ZkAIErasingCropOverlayWidget: sigCanvasRectChanged "
                                         "received - rect: (%d,%d,%dx%d)",
                                         rect.x(),
                                         rect.y(),
                                         rect.width(),
                                         rect.height()));
        m_editor->setCanvasRect(rect);
    });
    connect(crops(),
            &Crops::sigCropDisplayModeChanged,
            m_editor,
            &ZkMultiCropWidget::setBackgroundOnlyMode);
}

int ZkAIErasingCropOverlayWidget::dataId(int uiId) const
{
    return qMax(-1, m_uiToData.value(uiId, -1));
}

int ZkAIErasingCropOverlayWidget::dataIdToDrag(int uiId, Type type, const char *step) const
{
    const int crop = dataId(uiId);
    if (crop < 0)
        ZK_OVERLAY_LOG(
            "connectSignals",
            QString::asprintf(
                "ZkAIErasingCropOverlayWidget: No data ID mapping found for %s %s - UI ID: %d",
                type == ZkMultiCropWidget::MoveOperation ? "position" : "size",
                step,
                uiId));
    return crop;
}

QRect ZkAIErasingCropOverlayWidget::editorRect(int uiId) const
{
    return m_editor->getCropRects().value(uiId);
}

// A notice of the areas may rebuild the maps, or even close the workspace, before the call returns: then
// there is nothing left to enter here.
void ZkAIErasingCropOverlayWidget::addCrop(int uiId, const QRect &rect)
{
    const QPointer<ZkAIErasingCropOverlayWidget> alive(this);
    const int rebuild = m_rebuilds;
    const int crop = crops()->addCropRect(rect);
    if (!alive)
        return;
    if (crop < 0) {
        ZK_OVERLAY_LOG("connectSignals",
                       QStringLiteral("ZkAIErasingCropOverlayWidget: Failed to create crop in data "
                                      "layer for UI ID: %1")
                           .arg(uiId));
        return;
    }
    if (rebuild != m_rebuilds)
        return;
    m_uiToData[uiId] = crop;
    m_dataToUi[crop] = uiId;
}

void ZkAIErasingCropOverlayWidget::removeCrop(int uiId)
{
    const int crop = dataId(uiId);
    if (crop < 0) {
        ZK_OVERLAY_LOG("connectSignals",
                       QStringLiteral("ZkAIErasingCropOverlayWidget: No data ID mapping found for "
                                      "UI ID to remove: %1")
                           .arg(uiId));
        return;
    }
    const QPointer<ZkAIErasingCropOverlayWidget> alive(this);
    const int rebuild = m_rebuilds;
    const bool isRemoved = crops()->removeCropRect(crop);
    if (!alive)
        return;
    if (!isRemoved) {
        healRemoval(uiId, crop);
    } else if (rebuild == m_rebuilds) {
        m_uiToData.remove(uiId);
        m_dataToUi.remove(crop);
    }
}

void ZkAIErasingCropOverlayWidget::healRemoval(int uiId, int crop)
{
    ZK_OVERLAY_LOG("connectSignals",
                   QStringLiteral("ZkAIErasingCropOverlayWidget: Failed to remove crop in data "
                                  "layer - UI ID: %1, Data ID: %2")
                       .arg(uiId)
                       .arg(crop));
    ZK_OVERLAY_LOG("connectSignals",
                   QStringLiteral("ZkAIErasingCropOverlayWidget: UI layer has already removed the "
                                  "crop, but data layer failed. Forcing resync to restore "
                                  "consistency."));
    zkCallLater(ResyncDelay, this, &ZkAIErasingCropOverlayWidget::resyncAllCropRects);
}

void ZkAIErasingCropOverlayWidget::activateCrop(int uiId)
{
    const int crop = dataId(uiId);
    if (crop < 0)
        ZK_OVERLAY_LOG("connectSignals",
                       QString::asprintf("ZkAIErasingCropOverlayWidget: No data ID mapping found "
                                         "for activated UI ID: %d",
                                         uiId));
    crops()->setActiveCropId(crop);
}

void ZkAIErasingCropOverlayWidget::clearCrops()
{
    clearMaps();
    m_editor->clearCropRects();
}

void ZkAIErasingCropOverlayWidget::clearMaps()
{
    m_uiToData.clear();
    m_dataToUi.clear();
}

void ZkAIErasingCropOverlayWidget::fillMaps(const QList<int> &ids)
{
    clearMaps();
    for (int i = 0; i < ids.size(); ++i) {
        m_uiToData[i] = ids.at(i);
        m_dataToUi[ids.at(i)] = i;
    }
}

ZkMediaPlayerWidget *ZkAIErasingCropOverlayWidget::player() const
{
    return qobject_cast<ZkMediaPlayerWidget *>(playerWidget());
}

void ZkAIErasingCropOverlayWidget::sendToPlayer(QEvent *event)
{
    if (player())
        QCoreApplication::sendEvent(player(), event);
}

// A window of its own, so its place is on the screen.
void ZkAIErasingCropOverlayWidget::followPlayerGeometry()
{
    const QWidget *const surface = playerWidget();
    if (surface && isVisible())
        setGeometry(QRect(surface->mapToGlobal(surface->rect().topLeft()), surface->size()));
}

void ZkAIErasingCropOverlayWidget::showEvent(QShowEvent *event)
{
    followPlayerGeometry();
    ZkPlayerOverlayWidget::showEvent(event);
}

bool ZkAIErasingCropOverlayWidget::event(QEvent *event)
{
    if (event->type() != QEvent::Gesture)
        return ZkPlayerOverlayWidget::event(event);
    if (player())
        player()->vblPlayerWidget()->dealGestureEvent(event);
    return true;
}

// What the editor takes for itself the player sees first; the rest comes to the handlers below.
bool ZkAIErasingCropOverlayWidget::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    const bool isClick = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease
        || type == QEvent::MouseButtonDblClick;
    if (watched == m_editor && isClick && m_editor->isEnabled() && !m_editor->isBackgroundOnlyMode()
        && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton)
        sendToPlayer(event);
    return ZkPlayerOverlayWidget::eventFilter(watched, event);
}

void ZkAIErasingCropOverlayWidget::enterEvent(QEvent *event)
{
    sendToPlayer(event);
    ZkPlayerOverlayWidget::enterEvent(event);
}

void ZkAIErasingCropOverlayWidget::leaveEvent(QEvent *event)
{
    sendToPlayer(event);
    ZkPlayerOverlayWidget::leaveEvent(event);
}

void ZkAIErasingCropOverlayWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    sendToPlayer(event);
    ZkPlayerOverlayWidget::mouseDoubleClickEvent(event);
}

void ZkAIErasingCropOverlayWidget::wheelEvent(QWheelEvent *event)
{
    if (player())
        QCoreApplication::sendEvent(player()->vblPlayerWidget(), event);
}

void ZkAIErasingCropOverlayWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton || !player())
        return;
    if (event->button() == Qt::MiddleButton) {
        beginPan(event);
        return;
    }
    sendToPlayer(event);
    ZkPlayerOverlayWidget::mousePressEvent(event);
}

void ZkAIErasingCropOverlayWidget::beginPan(QMouseEvent *event)
{
    m_isPanning = true;
    m_panStart = event->pos();
    m_presenter->startMoveFrame();
    updateDragCursor();
    sendToPlayer(event);
}

void ZkAIErasingCropOverlayWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_presenter || !player() || event->buttons() == Qt::RightButton)
        return;
    if (m_isPanning && event->buttons().testFlag(Qt::MiddleButton)) {
        m_presenter->moveFrame(QPointF(event->pos() - m_panStart));
    } else if (!m_presenter->isFrameMovingMode()) {
        ZkPlayerOverlayWidget::mouseMoveEvent(event);
        return;
    }
    sendToPlayer(event);
    updateDragCursor();
}

void ZkAIErasingCropOverlayWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton || !player())
        return;
    if (event->button() == Qt::MiddleButton) {
        endPan(event);
        return;
    }
    sendToPlayer(event);
    ZkPlayerOverlayWidget::mouseReleaseEvent(event);
}

void ZkAIErasingCropOverlayWidget::endPan(QMouseEvent *event)
{
    m_isPanning = false;
    m_panStart = QPoint();
    m_presenter->finishMoveFrame();
    m_editor->setCursor(Qt::ArrowCursor);
    sendToPlayer(event);
}

void ZkAIErasingCropOverlayWidget::updateDragCursor()
{
    const QCursor drag = m_editor->getStyle().getMiddleButtonDragCursor();
    if (m_editor->cursor().shape() != drag.shape())
        m_editor->setCursor(drag);
}
