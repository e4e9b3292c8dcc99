#include "ZkJumpSlider_p.h"

#include "ZkFocusFrame_p.h"
#include "ZkWidgets.h"

#include <QMouseEvent>
#include <QStyleOptionSlider>

namespace {

QRect handleOf(const QSlider *slider, const QStyleOptionSlider &option)
{
    return slider->style()->subControlRect(
        QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
}

} // namespace

ZkJumpSlider::ZkJumpSlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the window's shortcuts
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Widgets/Slider"));
}

ZkJumpSlider::~ZkJumpSlider() = default;

// With the handle under the pointer, the base begins to drag it.
void ZkJumpSlider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QSlider::mousePressEvent(event);
        return;
    }
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect handle = handleOf(this, option);
    if (!handle.contains(event->pos()))
        setSliderPosition(QStyle::sliderValueFromPosition(minimum(),
                                                          maximum(),
                                                          event->x() - handle.width() / 2,
                                                          width() - handle.width(),
                                                          option.upsideDown));
    QMouseEvent onHandle(event->type(),
                         QPointF(event->x(), handle.center().y()),
                         event->button(),
                         event->buttons(),
                         event->modifiers());
    QSlider::mousePressEvent(&onHandle);
}

void ZkJumpSlider::paintEvent(QPaintEvent *event)
{
    QSlider::paintEvent(event);
    zkPaintFocusFrame(this);
}
