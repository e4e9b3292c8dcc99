#include "ZkWidgets.h"

#include <QStyle>

ZkProgressBar::ZkProgressBar(QWidget *parent)
    : QProgressBar(parent)
{
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/ProgressBar"));
}

ZkProgressBar::~ZkProgressBar() = default;

ZkProgressBar *ZkProgressBar::CreateMiniProgressBar(QWidget *parent)
{
    auto *bar = new ZkProgressBar(parent);
    bar->setTextVisible(false);
    bar->setSizeKind(ZKWIDGET::MiniSize);
    return bar;
}

void ZkProgressBar::setSizeKind(int kind)
{
    setProperty("SizeKind", kind);
    // Style sheets look at properties only while they polish a widget.
    style()->unpolish(this);
    style()->polish(this);
    updateGeometry();
}
