#include "ZkAIErasingProgressPanel.h"

#include "../presenters/ZkAIErasingPresenter.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

// Widget pixels.
const QMargins Margins(24, 0, 24, 16);
const int LineSpacing = 8;
const int BarSpacing = 8;

} // namespace

ZkAIErasingProgressPanel::ZkAIErasingProgressPanel(ZkAIErasingPresenter *presenter, QWidget *parent)
    : ZkWidget(parent)
    , m_titleLabel(new ZkLabel(QString(), this))
    , m_statusLabel(new ZkLabel(QString(), this))
    , m_progress(this)
{
    setObjectName(QStringLiteral("ZkAIErasingProgressPanel"));
    m_titleLabel->setLabelKind(ZKWIDGET::TitleLabel);
    m_statusLabel->setLabelKind(ZKWIDGET::SecondaryLabel);
    m_titleLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_statusLabel->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    layOut();
    ZkAIErasingProgressPanel::RetranslateUi();
    connect(presenter, &ZkSmartKeyingPresenter::sigTrackingProgress, this, [this](int percent) {
        m_progress.setPercent(percent);
    });
}

ZkAIErasingProgressPanel::~ZkAIErasingProgressPanel() = default;

void ZkAIErasingProgressPanel::layOut()
{
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(BarSpacing);
    row->addWidget(m_progress.bar);
    row->addWidget(m_progress.label, 0, Qt::AlignVCenter);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(Margins);
    column->setSpacing(LineSpacing);
    column->addWidget(m_titleLabel);
    column->addWidget(m_statusLabel);
    column->addLayout(row);
}

void ZkAIErasingProgressPanel::RetranslateUi()
{
    ZkWidget::RetranslateUi();
    m_titleLabel->setText(tr("Preview Object Tracking"));
    m_statusLabel->setText(tr("Object Tracking in progress…"));
    m_progress.bar->setAccessibleName(tr("Progress"));
}
