// How the rectangles look.
#include "ZkMultiCropWidget_p.h"

#include "widgets/ZkSkin.h"

#include <QFile>
#include <QIcon>

using namespace zk::widgets;

namespace {

// Some systems let mouse events fall through a window where it is wholly transparent.
const QColor almostTransparent(0, 0, 0, 1);
constexpr double lineWidth = 1.5; // widget pixels
constexpr int fillAlpha = 46; // of 255; the hovered one's is larger
constexpr int hoveredFillAlpha = 78;
constexpr double focusInset = 1;

QColor skinColor(int type, int alpha = 255)
{
    QColor color = ZkSkinManager::instance()->color(type);
    color.setAlpha(alpha);
    return color;
}

// Dark below light: visible on every picture.
void strokeTwice(QPainter &painter, const QRectF &rect, const QColor &color, Qt::PenStyle style)
{
    painter.setPen(QPen(QColor(0, 0, 0, 140), lineWidth + 1.5));
    painter.drawRect(rect);
    painter.setPen(QPen(color, lineWidth, style));
    painter.drawRect(rect);
}

void paintCross(QPainter &painter, const QRectF &area)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 170));
    painter.drawEllipse(area);
    painter.setPen(QPen(Qt::white, lineWidth));
    const double inset = area.width() * 0.32;
    const QRectF cross = area.adjusted(inset, inset, -inset, -inset);
    painter.drawLine(cross.topLeft(), cross.bottomRight());
    painter.drawLine(cross.topRight(), cross.bottomLeft());
}

void paintKnob(QPainter &painter, const QRectF &area)
{
    painter.setPen(QPen(QColor(0, 0, 0, 170), 1));
    painter.setBrush(Qt::white);
    painter.drawRect(area.adjusted(1, 1, -1, -1));
}

// True when the look has an image of its own.
bool paintLook(QPainter &painter, const QRect &area, const ZkCropLook &look)
{
    painter.setPen(look.border.alpha() ? QPen(look.border) : QPen(Qt::NoPen));
    painter.setBrush(look.background);
    if (look.border.alpha() || look.background.alpha())
        painter.drawRect(area);
    if (look.image.isEmpty() || !QFile::exists(look.image))
        return false;
    QIcon(look.image).paint(&painter, area);
    return true;
}

} // namespace

bool ZkMultiCropWidget::Private::hasKeys() const
{
    return keySource ? keySource->hasFocus() : q->hasFocus();
}

void ZkMultiCropWidget::Private::paint(QPainter &painter) const
{
    if (!isBackgroundOnly)
        painter.fillRect(canvas, almostTransparent);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index = crops.size() - 1; index >= 0; --index) {
        if (index != active || isBackgroundOnly)
            paintCrop(painter, index);
    }
    if (!isBackgroundOnly && active >= 0) {
        paintCrop(painter, active);
        if (canEdit()) {
            paintHandles(painter, crops.at(active).rect);
            paintClose(painter);
        }
    }
    if (drag.isOn && drag.draws && !rubberBand().isEmpty()) {
        painter.setBrush(skinColor(ZKSKIN::RemoveStroke, fillAlpha));
        strokeTwice(painter, rubberBand(), Qt::white, Qt::DashLine);
    }
    if (canEdit() && hasKeys() && active < 0) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(skinColor(ZKSKIN::Accent), lineWidth));
        const QRectF frame = canvas.isEmpty() ? q->rect() : canvas & q->rect();
        painter.drawRect(frame.adjusted(focusInset, focusInset, -focusInset, -focusInset));
    }
}

void ZkMultiCropWidget::Private::paintCrop(QPainter &painter, int index) const
{
    const bool isActive = index == active && !isBackgroundOnly;
    painter.setBrush(
        skinColor(ZKSKIN::RemoveStroke, index == hovered ? hoveredFillAlpha : fillAlpha));
    const QColor idle = skinColor(ZKSKIN::RemoveStroke, isBackgroundOnly ? 200 : 255);
    const QColor line = !isActive ? idle : hasKeys() ? skinColor(ZKSKIN::Accent) : Qt::white;
    strokeTwice(painter, crops.at(index).rect, line, Qt::SolidLine);
}

ZKWIDGET::ZkCropState ZkMultiCropWidget::Private::handleState() const
{
    if (drag.isOn && drag.index == active)
        return ZKWIDGET::CropPressed;
    return hovered == active ? ZKWIDGET::CropHover : ZKWIDGET::CropNormal;
}

void ZkMultiCropWidget::Private::paintHandles(QPainter &painter, const QRect &rect) const
{
    const ZKWIDGET::ZkCropState state = handleState();
    for (Operation edge : {ResizeTop, ResizeRight, ResizeBottom, ResizeLeft})
        paintKnob(painter, cropHandle(rect, edge));
    const std::pair<Operation, const ZkCropLooks *> corners[] = {
        {ResizeTopLeft, &style.topLeftHandle},
        {ResizeTopRight, &style.topRightHandle},
        {ResizeBottomLeft, &style.bottomLeftHandle},
        {ResizeBottomRight, &style.bottomRightHandle},
    };
    for (const auto &[corner, looks] : corners) {
        const QRect area = cropHandle(rect, corner);
        if (!paintLook(painter, area, looks->at(state)))
            paintKnob(painter, area);
    }
}

void ZkMultiCropWidget::Private::paintClose(QPainter &painter) const
{
    const ZKWIDGET::ZkCropState state = isClosePressed && isCloseHovered ? ZKWIDGET::CropPressed
        : isCloseHovered                                                 ? ZKWIDGET::CropHover
                                                                         : ZKWIDGET::CropNormal;
    const QRect area = closeButton();
    if (!paintLook(painter, area, style.closeButton.at(state)))
        paintCross(painter, area);
}
