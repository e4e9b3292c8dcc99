#include "widgets/ZkPlayerOverlay.h"

ZkPlayerOverlayWidget::ZkPlayerOverlayWidget(QWidget *playerWidget, QWidget *parent)
    : ZkWidget(parent)
    , m_helper(nullptr)
{
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_helper = new ZkPlayerWidgetEventHelper(this, playerWidget, this);
    connect(m_helper,
            &ZkPlayerWidgetEventHelper::sigMove,
            this,
            &ZkPlayerOverlayWidget::updatePosition);
    connect(m_helper,
            &ZkPlayerWidgetEventHelper::sigPlayerResize,
            this,
            &ZkPlayerOverlayWidget::updatePosition);
}

ZkPlayerOverlayWidget::~ZkPlayerOverlayWidget() = default;

QWidget *ZkPlayerOverlayWidget::playerWidget() const
{
    return m_helper->playerWidget();
}

ZkPlayerWidgetEventHelper *ZkPlayerOverlayWidget::eventHelper() const
{
    return m_helper;
}

void ZkPlayerOverlayWidget::setWidVisible(bool visible)
{
    updatePosition();
    setVisible(visible);
}

void ZkPlayerOverlayWidget::setVisible(bool visible)
{
    if (m_helper)
        m_helper->setOverlayVisible(visible);
    else
        ZkWidget::setVisible(visible);
}

void ZkPlayerOverlayWidget::updatePosition()
{
    if (playerWidget())
        move(overlayPosition());
}

QPoint ZkPlayerOverlayWidget::overlayPosition() const
{
    return playerWidget()->mapToGlobal(QPoint(0, 0));
}

void ZkPlayerOverlayWidget::resizeEvent(QResizeEvent *event)
{
    ZkWidget::resizeEvent(event);
    updatePosition();
}
