#include "ZkAIErasingPlayerView.h"

#include "ZkAIErasingCropOverlayWidget.h"
#include "ZkAIErasingHeaderToolBar.h"
#include "ZkAIErasingMediaPlayerWidget.h"
#include "ZkAIErasingOverlayWidget.h"
#include "ZkAIErasingPlayerToolBar.h"

#include "../presenters/ZkAIErasingCropSelectorPresenter.h"
#include "../presenters/ZkAIErasingPresenter.h"

#include "datamodel/ZkSmartKeyingEditing.h"

#include <QEvent>
#include <QVBoxLayout>

namespace {

// Widget pixels.
const int ToolBarHeight = 40;
const int CornerRadius = 6;

using Overlay = ZkAIErasingOverlayWidget;
using Presenter = ZkAIErasingPresenter;

} // namespace

ZkAIErasingPlayerView::ZkAIErasingPlayerView(ZkAIErasingPresenter *presenter, ZkUIView *parent)
    : ZkRoundRadiusWidgetView(parent)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkAIErasingPlayerView"));
    m_mediaPlayerWidget = new ZkAIErasingMediaPlayerWidget(presenter, this);
    m_headerToolBar = new ZkAIErasingHeaderToolBar(presenter, this);
    m_playerToolBar = new ZkAIErasingPlayerToolBar(presenter, this);
    m_playerToolBar->setFixedHeight(ToolBarHeight);
    m_cropOverlay = new ZkAIErasingCropOverlayWidget(presenter, m_mediaPlayerWidget, this);
    m_cropOverlay->setVisible(true);
    layOut();
    roundCorners();
    connectPresenter();
    // Last, so that its place in front is taken after everything else has taken its own.
    m_erasingOverlay = new ZkAIErasingOverlayWidget(presenter, m_mediaPlayerWidget, this);
    for (QWidget *const over : {static_cast<QWidget *>(m_cropOverlay),
                                static_cast<QWidget *>(m_cropOverlay->editor()),
                                canvas(),
                                static_cast<QWidget *>(m_erasingOverlay)})
        over->installEventFilter(this);
    connectBar();
}

// A player that goes changes the canvas, and rebuilding the rectangles for it would process events.
ZkAIErasingPlayerView::~ZkAIErasingPlayerView()
{
    delete m_cropOverlay;
}

void ZkAIErasingPlayerView::layOut()
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_headerToolBar);
    column->addWidget(m_mediaPlayerWidget, 1);
    column->addWidget(m_playerToolBar);
}

void ZkAIErasingPlayerView::roundCorners()
{
    const auto area = [](const QWidget *bar) {
        return buildRoundAreaInfo(
            bar->height(), ZKSKIN::PanelBackground, ZKWIDGET::RoundOuter, 0, 0, CornerRadius);
    };
    setRoundAreaInfo(area(m_headerToolBar), area(m_playerToolBar));
}

void ZkAIErasingPlayerView::connectPresenter()
{
    connect(m_presenter,
            &Presenter::sigPlayerEditModeChanged,
            this,
            &ZkAIErasingPlayerView::followEditMode);
}

QWidget *ZkAIErasingPlayerView::canvas() const
{
    return m_mediaPlayerWidget->findChild<ZkDrawingWidget *>();
}

// Window managers raise the window that is pressed, and one that is shown comes to the front.
bool ZkAIErasingPlayerView::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::Show)
        QMetaObject::invokeMethod(this, &ZkAIErasingPlayerView::restack, Qt::QueuedConnection);
    else if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease)
        restack();
    return ZkRoundRadiusWidgetView::eventFilter(watched, event);
}

// The rectangles are below both.
void ZkAIErasingPlayerView::restack()
{
    for (QWidget *const over : {canvas(), static_cast<QWidget *>(m_erasingOverlay)}) {
        if (over && over->isVisible())
            over->raise();
    }
}

void ZkAIErasingPlayerView::followEditMode()
{
    const int mode = m_presenter->playerEditMode();
    const bool selects = mode == Presenter::SelectRectMode;
    if (mode != Presenter::KeepMode && mode != Presenter::EraseMode && mode != Presenter::HandMode
        && !selects)
        return;
    m_cropOverlay->setVisible(true);
    restack();
    m_presenter->cropSelectorPresenter()->setCropBackgroundOnlyMode(!selects);
}

// What the selection means for the bar is looked at when it has settled; tracking, saving and
// discarding are the bar's own.
void ZkAIErasingPlayerView::connectBar()
{
    using View = ZkAIErasingPlayerView;
    const auto queued = Qt::QueuedConnection;
    for (const auto signal : {&Presenter::sigSmartKeyingSegmentChanged,
                              &Presenter::sigAIRemoveSelectAreaAdd,
                              &Presenter::sigAIRemoveSelectAreaRemove,
                              &Presenter::sigAIRemoveSelectAreaUpdate})
        connect(m_presenter, signal, this, &View::followSelection, queued);
    connect(m_presenter, &Presenter::sigResetAllData, this, &View::offerPreview, queued);
    connect(m_presenter, &Presenter::sigBeginTracking, this, &View::followRefusal, queued);
    connect(m_presenter, &Presenter::sigNodeChanged, this, &View::followNodeChange);
}

bool ZkAIErasingPlayerView::hasNodes() const
{
    const IZkSmartKeyingService *const service = m_presenter->smartKeyingService();
    return service && service->segmentCount() > 0;
}

void ZkAIErasingPlayerView::offerPreview()
{
    m_erasingOverlay->setType(hasNodes() ? Overlay::PreviewEffectWidget : Overlay::NoWidget);
}

void ZkAIErasingPlayerView::followSelection()
{
    const Overlay::WidgetType type = m_erasingOverlay->type();
    if (type == (hasNodes() ? Overlay::NoWidget : Overlay::PreviewEffectWidget))
        offerPreview();
}

void ZkAIErasingPlayerView::followRefusal()
{
    if (!m_presenter->isTrackingMode()
        && m_erasingOverlay->type() == Overlay::TrackingProgressWidget)
        m_erasingOverlay->setType(Overlay::PreviewEffectWidget);
}

// What was tracked no longer fits the selection; the next run replaces it. Saving and discarding have
// left the type before they touch a node.
void ZkAIErasingPlayerView::followNodeChange()
{
    if (m_erasingOverlay->type() != Overlay::SaveOrDiscardWidget)
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_erasingOverlay->type() != Overlay::SaveOrDiscardWidget)
                return;
            m_presenter->setHasTracked(false);
            offerPreview();
        },
        Qt::QueuedConnection);
}
