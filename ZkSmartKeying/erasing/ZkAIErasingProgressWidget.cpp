#include "ZkAIErasingProgressWidget.h"

#include "ZkErasingStyle.h"

#include <QHBoxLayout>

namespace {

// Widget pixels.
const int ButtonHeight = 24;
const int ButtonPadding = 32; // both sides together
const int InnerMargin = 4;
const int LabelSpacing = 4;
const int OuterSpacing = 8;

} // namespace

ZkAIErasingProgressWidget::ZkAIErasingProgressWidget(QWidget *parent)
    : ZkWidget(parent)
    , m_progress(this)
    , m_cancelButton(new ZkToolButton(this))
{
    zkApplyStyle(this, QStringLiteral("SmartKeying/ZkAIErasingProgressWidget"));
    zkApplyStyle(m_cancelButton, QStringLiteral("SmartKeying/ZkAIErasingPrimaryBtn"));
    m_cancelButton->setToolButtonStyle(Qt::ToolButtonTextOnly);
    connect(m_cancelButton,
            &QAbstractButton::clicked,
            this,
            &ZkAIErasingProgressWidget::sigCancelBtnClicked);
    layOut();
    ZkAIErasingProgressWidget::RetranslateUi();
}

ZkAIErasingProgressWidget::~ZkAIErasingProgressWidget() = default;

void ZkAIErasingProgressWidget::layOut()
{
    auto *const inner = new QHBoxLayout;
    inner->setSpacing(0);
    inner->setContentsMargins(InnerMargin, InnerMargin, InnerMargin, InnerMargin);
    inner->addWidget(m_progress.bar);
    inner->addSpacing(LabelSpacing);
    inner->addWidget(m_progress.label, 0, Qt::AlignVCenter);
    auto *const outer = new QHBoxLayout(this);
    outer->setSpacing(OuterSpacing);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addLayout(inner);
    outer->addWidget(m_cancelButton);
}

void ZkAIErasingProgressWidget::setProgress(int percent)
{
    m_progress.setPercent(percent);
}

void ZkAIErasingProgressWidget::RetranslateUi()
{
    ZkWidget::RetranslateUi();
    m_progress.bar->setAccessibleName(tr("Progress"));
    const QString cancel = tr("Cancel");
    m_cancelButton->setText(cancel);
    m_cancelButton->setAccessibleName(cancel);
    m_cancelButton->setFixedSize(zkTextWidth(m_cancelButton, cancel) + ButtonPadding, ButtonHeight);
}
