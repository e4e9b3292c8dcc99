#include "ZkWidgets.h"

#include <QEvent>
#include <QStyle>

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

void ZkWidget::RetranslateUi() { }

void ZkWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        RetranslateUi();
    QWidget::changeEvent(event);
}

ZkWidgetView::ZkWidgetView(ZkUIView *parent)
    : ZkWidget(parent ? parent->widget() : nullptr)
    , ZkUIView(parent)
{ }

ZkWidgetView::~ZkWidgetView() = default;

ZkLabel::ZkLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
{ }

ZkLabel::~ZkLabel() = default;

// Style sheets look at properties only while they polish a widget.
void ZkLabel::setLabelKind(int kind)
{
    setProperty("LabelKind", kind);
    if (!ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Label")))
        return;
    style()->unpolish(this);
    style()->polish(this);
}

int ZkLabel::labelKind() const
{
    return property("LabelKind").toInt();
}

ZkLineWidget::ZkLineWidget(QWidget *parent)
    : ZkWidget(parent)
{
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Line"));
}

ZkLineWidget::~ZkLineWidget() = default;
