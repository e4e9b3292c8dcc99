#include "ZkWidgets.h"

ZkListWidget::ZkListWidget(QWidget *parent)
    : QListWidget(parent)
{
    setFrameShape(QFrame::NoFrame);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/List"));
}

ZkListWidget::~ZkListWidget() = default;

void ZkListWidget::setItemSpacing(int pixels)
{
    setSpacing(pixels);
}

int ZkListWidget::itemSpacing() const
{
    return spacing();
}
