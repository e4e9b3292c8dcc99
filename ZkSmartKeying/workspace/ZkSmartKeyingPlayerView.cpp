#include "ZkSmartKeyingPlayerView.h"

#include "ZkSmartKeyingHeaderToolBar.h"
#include "ZkSmartKeyingMediaPlayerWidget.h"
#include "ZkSmartKeyingPlayerToolBar.h"
#include "ZkSmartKeyingProgressOverlayWidget.h"

#include <QCoreApplication>
#include <QVBoxLayout>

namespace {

// Widget pixels.
const int ToolBarHeight = 40;
const int CornerRadius = 6;

ZkRoundAreaInfo cornerArea(int height)
{
    return ZkRoundRadiusWidget::buildRoundAreaInfo(
        height, ZKSKIN::PanelBackground, ZKWIDGET::RoundOuter, 0, 0, CornerRadius);
}

// Paints what is due. What the user does meanwhile waits: another stroke or closing the workspace must
// not come in the middle of a segmentation.
void paintNow()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

ZkSmartKeyingPlayerView::ZkSmartKeyingPlayerView(ZkSmartKeyingPresenter *presenter,
                                                 ZkUIView *parent)
    : ZkRoundRadiusWidgetView(parent)
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkSmartKeyingPlayerView"));
    setViewPresenter(presenter);
    presenter->setView(this);
    initUI();
    connectSlots();
    roundCorners();
    presenter->init();
    if (presenter->isInitSuccessful())
        presenter->openEditTimeline();
}

ZkSmartKeyingPlayerView::~ZkSmartKeyingPlayerView() = default;

QWidget *ZkSmartKeyingPlayerView::widget()
{
    return this;
}

void ZkSmartKeyingPlayerView::initUI()
{
    m_mediaPlayerWidget = new ZkSmartKeyingMediaPlayerWidget(m_presenter, this);
    m_headerToolBar = new ZkSmartKeyingHeaderToolBar(m_presenter, this);
    m_toolBar = createToolBar();
    m_toolBar->setFixedHeight(ToolBarHeight);
    m_progressOverlay = new ZkSmartKeyingProgressOverlayWidget(m_mediaPlayerWidget, this);
    m_progressOverlay->setVisible(false);
    m_progressOverlay->setProgress(0);
    layOut();
}

QWidget *ZkSmartKeyingPlayerView::createToolBar()
{
    if (m_presenter->isPhotoMode())
        return new ZkWidget(this);
    return new ZkSmartKeyingPlayerToolBar(m_presenter, this);
}

void ZkSmartKeyingPlayerView::layOut()
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_headerToolBar);
    column->addWidget(m_mediaPlayerWidget, 0);
    column->addWidget(m_toolBar);
}

void ZkSmartKeyingPlayerView::roundCorners()
{
    setRoundAreaInfo(cornerArea(m_headerToolBar->height()), cornerArea(m_toolBar->height()));
}

void ZkSmartKeyingPlayerView::connectSlots()
{
    connect(m_presenter,
            &ZkSmartKeyingPresenter::sigSegmentProgressStatusChanged,
            this,
            &ZkSmartKeyingPlayerView::showProgress);
    connect(m_presenter,
            &ZkSmartKeyingPresenter::sigSegmentProgressValueChanged,
            this,
            &ZkSmartKeyingPlayerView::updateProgress);
}

void ZkSmartKeyingPlayerView::setDrawingEnabled(bool enabled)
{
    auto *const canvas =
        m_mediaPlayerWidget ? m_mediaPlayerWidget->findChild<ZkDrawingWidget *>() : nullptr;
    if (!canvas)
        return;
    canvas->setEnabled(enabled);
    if (!enabled)
        canvas->setCursor(Qt::ArrowCursor);
}

void ZkSmartKeyingPlayerView::setHeaderToolBarEnabled(bool enabled)
{
    if (m_headerToolBar)
        m_headerToolBar->setEnabled(enabled);
}

void ZkSmartKeyingPlayerView::setToolBarEnabled(bool enabled)
{
    if (m_toolBar)
        m_toolBar->setEnabled(enabled);
}

// The engine blocks the thread from here on, so the overlay must be on screen before this returns.
void ZkSmartKeyingPlayerView::showProgress(bool show)
{
    if (!m_progressOverlay)
        return;
    m_progressOverlay->setWidVisible(false);
    if (!show)
        return;
    m_progressOverlay->setProgress(0);
    paintNow();
    m_progressOverlay->setWidVisible(true);
    paintNow();
}

void ZkSmartKeyingPlayerView::updateProgress(int value)
{
    if (!m_progressOverlay)
        return;
    // Only a decoration of the segmentation, which goes on in the caller.
    try {
        m_progressOverlay->setProgress(value);
        m_progressOverlay->update();
    } catch (...) { }
}

// A workspace that comes back must not show where an earlier segmentation was.
void ZkSmartKeyingPlayerView::resetProgress()
{
    if (!m_progressOverlay)
        return;
    m_progressOverlay->setProgress(0);
    m_progressOverlay->setWidVisible(false);
}

void ZkSmartKeyingPlayerView::showEvent(QShowEvent *event)
{
    ZkRoundRadiusWidgetView::showEvent(event);
    resetProgress();
}

void ZkSmartKeyingPlayerView::hideEvent(QHideEvent *event)
{
    ZkRoundRadiusWidgetView::hideEvent(event);
    resetProgress();
}
