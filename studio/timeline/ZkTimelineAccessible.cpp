#include "ZkTimelineAccessible.h"

#include "ZkStudioTimelinePresenter.h"
#include "ZkTimelineCanvas.h"

#include <QAccessibleWidget>

namespace zk::timeline {

namespace {

class CanvasInterface : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit CanvasInterface(TimelineCanvas *canvas)
        : QAccessibleWidget(canvas, QAccessible::Slider)
    { }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text type) const override
    {
        return type == QAccessible::Value ? canvas()->positionText()
                                          : QAccessibleWidget::text(type);
    }

    QVariant currentValue() const override { return presenter()->position(); }
    void setCurrentValue(const QVariant &value) override { presenter()->seek(value.toLongLong()); }
    QVariant minimumValue() const override { return 0; }
    QVariant maximumValue() const override
    {
        return qMax<qint64>(0, presenter()->scale().frameCount() - 1);
    }
    QVariant minimumStepSize() const override { return 1; }

private:
    TimelineCanvas *canvas() const { return static_cast<TimelineCanvas *>(object()); }
    ZkStudioTimelinePresenter *presenter() const { return canvas()->presenter(); }
};

QAccessibleInterface *canvasInterface(const QString &, QObject *object)
{
    auto *canvas = qobject_cast<TimelineCanvas *>(object);
    return canvas ? new CanvasInterface(canvas) : nullptr;
}

} // namespace

void installTimelineAccessibility()
{
    // Qt leaves out a factory that it has already.
    QAccessible::installFactory(canvasInterface);
}

} // namespace zk::timeline
