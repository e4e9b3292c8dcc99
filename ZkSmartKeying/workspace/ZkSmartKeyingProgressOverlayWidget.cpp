#include "ZkSmartKeyingProgressOverlayWidget.h"

#include <QEvent>
#include <QHBoxLayout>

namespace {

// Widget pixels.
const int BarHeight = 24;
const int BarMargin = 4;
const int LabelWidth = 30;
const int OuterSpacing = 8;
const int AboveBottom = 24; // from the player's bottom edge to the middle of the overlay

// Not translated: with a space before the sign it would not fit into the label.
QString percentText(int percent)
{
    return QStringLiteral("%1%").arg(percent);
}

} // namespace

ZkSmartKeyingProgressOverlayWidget::ZkSmartKeyingProgressOverlayWidget(QWidget *playerWidget,
                                                                       QWidget *parent)
    : ZkPlayerOverlayWidget(playerWidget, parent)
{
    ZkProgressBar *const bar = ZkProgressBar::CreateMiniProgressBar(this);
    bar->setRange(0, 100);
    bar->setSizeKind(ZKWIDGET::MiniSize);
    bar->setValue(0);
    m_progressBar = bar;

    m_percentLabel = new ZkLabel(QString(), this);
    m_percentLabel->setFixedWidth(LabelWidth);
    m_percentLabel->setText(percentText(0));
    m_percentLabel->setObjectName(QStringLiteral("barLabel"));
    ZkSkinManager::instance()->applyStyleSheet(m_percentLabel, QStringLiteral("ZCore/barLabel"));
    m_percentLabel->setAlignment(Qt::AlignHCenter);
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
    row->addWidget(m_progressBar);
    row->addWidget(m_percentLabel);

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
    m_progressBar->setValue(percent);
    m_percentLabel->setText(percentText(percent));
    m_progressBar->update();
    m_percentLabel->update();
    m_percentLabel->repaint();
    update();
}

void ZkSmartKeyingProgressOverlayWidget::restart()
{
    m_progressBar->setRange(0, 100);
    m_progressBar->reset();
    m_progressBar->setValue(0);
    m_percentLabel->setText(percentText(0));
    m_progressBar->repaint();
    m_percentLabel->repaint();
    repaint();
}

void ZkSmartKeyingProgressOverlayWidget::translate()
{
    m_progressBar->setAccessibleName(tr("Progress"));
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
