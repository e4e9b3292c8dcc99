#include "ZkFocusFrame_p.h"

#include "ZkWidgets.h"

namespace {

constexpr double lineWidth = 1.5; // widget pixels
constexpr double radius = 4;

} // namespace

void zkPaintFocusFrame(QWidget *widget)
{
    if (!widget->hasFocus())
        return;
    QPainter painter(widget);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ZkSkinManager::instance()->color(ZKSKIN::Accent), lineWidth));
    const double inset = lineWidth / 2;
    const QRectF frame = QRectF(widget->rect()).adjusted(inset, inset, -inset, -inset);
    painter.drawRoundedRect(frame, radius, radius);
}
