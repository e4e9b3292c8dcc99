#include "ZkWidgets.h"

void zkSetAutomationTag(QWidget *widget, const QString &tag)
{
    widget->setProperty("AutomationTag", tag);
}

ZkWidget::ZkWidget(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
}

ZkWidget::~ZkWidget() = default;

ZkLabel::ZkLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{ }

ZkLabel::~ZkLabel() = default;

ZkLineWidget::ZkLineWidget(QWidget *parent)
    : ZkWidget(parent)
{
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Line"));
}

ZkLineWidget::~ZkLineWidget() = default;
