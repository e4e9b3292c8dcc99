#include "ZkSmartKeyingProgressOverlayWidget.h"

#include <QEvent>
#include <QHBoxLayout>

namespace {

// Widget pixels.
const int BarHeight = 24;
const int BarMargin = 4;
const int OuterSpacing = 8;
const int AboveBottom = 24; // from the player's bottom edge to the middle of the overlay

} // namespace

ZkSmartKeyingProgressOverlayWidget::ZkSmartKeyingProgressOverlayWidget(QWidget *playerWidget,
                                                                       QWidget *parent)
    : ZkPlayerOverlayWidget(playerWidget, parent)
    , m_progress(this)
{
    buildBar();
    translate();
}

ZkSmartKeyingProgressOverlayWidget::~ZkSmartKeyingProgressOverlayWidget() = default;

void ZkSmartKeyingProgressOverlayWidget::buildBar()
{
    auto *const inner = new QWidget(this);
    inner->setFixedHeight(BarHeight);
    inner->setObjectName(QStringLiteral("ZkSmartKeyingProgressOverlayWidget"));
    ZkSkinManager::instance()->applyStyleSheet(
        inner, QStringLiteral("SmartKeying/ZkSmartKeyingProgressOverlayWidget"));
    auto *const row = new QHBoxLayout(inner);
    row->setSpacing(0);
    row->setContentsMargins(BarMargin, BarMargin, BarMargin, BarMargin);
    row->addSpacing(BarMargin);
    row->addWidget(m_progress.bar);
    row->addWidget(m_progress.label);

    auto *const outer = new QHBoxLayout(this);
    outer->setSpacing(OuterSpacing);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(inner);
}

void ZkSmartKeyingProgressOverlayWidget::setProgress(int percent)
{
    if (percent == 0) {
        restart();
        return;
    }
    m_progress.setPercent(percent);
    m_progress.bar->update();
    m_progress.label->update();
    m_progress.label->repaint();
    update();
}

void ZkSmartKeyingProgressOverlayWidget::restart()
{
    m_progress.bar->setRange(0, 100);
    m_progress.bar->reset();
    m_progress.setPercent(0);
    m_progress.bar->repaint();
    m_progress.label->repaint();
    repaint();
}

void ZkSmartKeyingProgressOverlayWidget::translate()
{
    m_progress.bar->setAccessibleName(tr("Progress"));
}

void ZkSmartKeyingProgressOverlayWidget::changeEvent(QEvent *event)
{
    ZkPlayerOverlayWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        translate();
}

QPoint ZkSmartKeyingProgressOverlayWidget::overlayPosition() const
{
    const QWidget *const player = playerWidget();
    if (!player)
        return pos();
    const QRect area(player->mapToGlobal(player->rect().topLeft()), player->size());
    return QPoint(area.center().x() - width() / 2, area.bottom() - height() / 2 - AboveBottom);
}
