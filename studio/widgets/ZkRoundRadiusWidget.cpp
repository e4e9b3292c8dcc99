#include "ZkWidgets.h"

#include <QPainterPath>

namespace {

// The strip's outer edge is its upper one; a bottom area is the same, upside down. Corners that stay
// square are pushed out of the strip, which clips them.
QPainterPath strip(const ZkRoundAreaInfo &area, int width)
{
    const QRectF rect(
        area.horizontalMargin, area.verticalMargin, width - 2 * area.horizontalMargin, area.height);
    QPainterPath bounds;
    bounds.addRect(rect);
    if (area.roundType == ZKWIDGET::RoundNone || area.radius <= 0)
        return bounds;
    const double inside = area.roundType == ZKWIDGET::RoundOuter ? area.radius : 0;
    QPainterPath rounded;
    rounded.addRoundedRect(rect.adjusted(0, 0, 0, inside), area.radius, area.radius);
    return rounded.intersected(bounds);
}

void paintArea(QPainter &painter, const ZkRoundAreaInfo &area, int width)
{
    if (area.height <= 0)
        return;
    painter.fillPath(strip(area, width), ZkSkinManager::instance()->color(area.colorType));
}

} // namespace

ZkRoundRadiusWidget::ZkRoundRadiusWidget(QWidget *parent)
    : QWidget(parent)
{ }

ZkRoundRadiusWidget::~ZkRoundRadiusWidget() = default;

ZkRoundAreaInfo ZkRoundRadiusWidget::buildRoundAreaInfo(
    int height, int colorType, int roundType, int horizontalMargin, int verticalMargin, int radius)
{
    return {height, colorType, roundType, horizontalMargin, verticalMargin, radius};
}

void ZkRoundRadiusWidget::setRoundAreaInfo(const ZkRoundAreaInfo &top,
                                           const ZkRoundAreaInfo &bottom)
{
    m_top = top;
    m_bottom = bottom;
    update();
}

void ZkRoundRadiusWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintArea(painter, m_top, width());
    painter.translate(0, height());
    painter.scale(1, -1);
    paintArea(painter, m_bottom, width());
}

ZkRoundRadiusWidgetView::ZkRoundRadiusWidgetView(ZkUIView *parent)
    : ZkRoundRadiusWidget(parent ? parent->widget() : nullptr)
    , ZkUIView(parent)
{ }

ZkRoundRadiusWidgetView::~ZkRoundRadiusWidgetView() = default;
