#include "ZkPercentBar.h"

namespace {

const int LabelWidth = 30; // widget pixels

} // namespace

ZkPercentBar::ZkPercentBar(QWidget *parent)
    : bar(ZkProgressBar::CreateMiniProgressBar(parent))
    , label(new ZkLabel(QString(), parent))
{
    bar->setRange(0, 100);
    bar->setSizeKind(ZKWIDGET::MiniSize);
    label->setFixedWidth(LabelWidth);
    label->setObjectName(QStringLiteral("barLabel"));
    ZkSkinManager::instance()->applyStyleSheet(label, QStringLiteral("ZCore/barLabel"));
    label->setAlignment(Qt::AlignHCenter);
    setPercent(0);
}

// Not translated: with a space before the sign it would not fit into the label.
void ZkPercentBar::setPercent(int percent)
{
    bar->setValue(percent);
    label->setText(QStringLiteral("%1%").arg(percent));
}
