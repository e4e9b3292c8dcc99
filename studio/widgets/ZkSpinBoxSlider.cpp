#include "ZkWidgets.h"

#include "ZkJumpSlider_p.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <cmath>

namespace {

constexpr int spacing = 12; // widget pixels
constexpr int spinBoxWidth = 64;
constexpr double startMaximum = 99;

} // namespace

// The slider counts in steps of the last decimal.
class ZkSpinBoxSlider::Private
{
public:
    explicit Private(ZkSpinBoxSlider *widget)
        : q(widget)
    { }

    double fitted(double wanted) const;
    void show();
    void report(double wanted);
    void changeByUser(double wanted);
    void begin();
    void end();

    ZkSpinBoxSlider *q;
    QSlider *slider = nullptr;
    QDoubleSpinBox *spinBox = nullptr;
    double value = 0;
    double defaultValue = 0;
    double minimum = 0;
    double maximum = startMaximum;
    double steps = 1; // of the slider, to 1
    bool isDragging = false;
};

double ZkSpinBoxSlider::Private::fitted(double wanted) const
{
    return qBound(minimum, std::round(wanted * steps) / steps, maximum);
}

void ZkSpinBoxSlider::Private::show()
{
    const QSignalBlocker sliderBlocker(slider);
    const QSignalBlocker spinBoxBlocker(spinBox);
    slider->setRange(qRound(minimum * steps), qRound(maximum * steps));
    spinBox->setRange(minimum, maximum);
    slider->setValue(qRound(value * steps));
    spinBox->setValue(value);
}

void ZkSpinBoxSlider::Private::report(double wanted)
{
    const double next = fitted(wanted);
    const bool isNew = next != value;
    value = next;
    show();
    if (isNew)
        emit q->sigValueChanged(value);
}

void ZkSpinBoxSlider::Private::changeByUser(double wanted)
{
    if (fitted(wanted) == value) {
        show();
        return;
    }
    if (isDragging) {
        report(wanted);
        return;
    }
    emit q->sigValueChangedBegin();
    report(wanted);
    emit q->sigValueChangedEnd();
}

void ZkSpinBoxSlider::Private::begin()
{
    end(); // of a drag whose release has got lost
    isDragging = true;
    emit q->sigValueChangedBegin();
}

void ZkSpinBoxSlider::Private::end()
{
    if (!isDragging)
        return;
    isDragging = false;
    emit q->sigValueChangedEnd();
}

ZkSpinBoxSlider::ZkSpinBoxSlider(QWidget *parent)
    : ZkWidget(parent)
    , d(std::make_unique<Private>(this))
{
    d->slider = new ZkJumpSlider(this);
    d->spinBox = new QDoubleSpinBox(this);
    d->spinBox->setButtonSymbols(QAbstractSpinBox::NoButtons);
    d->spinBox->setAlignment(Qt::AlignCenter);
    d->spinBox->setDecimals(0);
    d->spinBox->setFixedWidth(spinBoxWidth);
    d->spinBox->setFocusPolicy(Qt::StrongFocus);
    d->spinBox->setKeyboardTracking(false); // what is typed counts when it is complete
    ZkSkinManager::instance()->applyStyleSheet(d->spinBox, QStringLiteral("Widgets/SpinBox"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    row->addWidget(d->slider, 1);
    row->addWidget(d->spinBox);
    d->show();
    d->slider->installEventFilter(this);
    connect(d->slider, &QSlider::valueChanged, this, [this](int position) {
        d->changeByUser(position / d->steps);
    });
    connect(d->spinBox,
            QOverload<double>::of(&QDoubleSpinBox::valueChanged),
            this,
            [this](double value) { d->changeByUser(value); });
}

ZkSpinBoxSlider::~ZkSpinBoxSlider() = default;

double ZkSpinBoxSlider::value() const
{
    return d->value;
}

void ZkSpinBoxSlider::setValue(double value, bool report)
{
    if (report) {
        d->report(value);
        return;
    }
    d->value = d->fitted(value);
    d->show();
}

bool ZkSpinBoxSlider::setRange(double minimum, double maximum)
{
    if (!(minimum <= maximum))
        return false;
    d->minimum = minimum;
    d->maximum = maximum;
    d->report(d->value);
    return true;
}

double ZkSpinBoxSlider::minimum() const
{
    return d->minimum;
}

double ZkSpinBoxSlider::maximum() const
{
    return d->maximum;
}

void ZkSpinBoxSlider::setDecimals(int decimals)
{
    d->steps = std::pow(10.0, decimals);
    d->spinBox->setDecimals(decimals);
    d->spinBox->setSingleStep(1 / d->steps);
    d->report(d->value);
}

void ZkSpinBoxSlider::setDefaultValue(double value)
{
    d->defaultValue = value;
}

double ZkSpinBoxSlider::defaultValue() const
{
    return d->defaultValue;
}

void ZkSpinBoxSlider::restoreDefaultValue()
{
    d->changeByUser(d->defaultValue);
}

bool ZkSpinBoxSlider::isDefaultValue() const
{
    return d->value == d->fitted(d->defaultValue);
}

void ZkSpinBoxSlider::setSpinBoxFocusPolicy(Qt::FocusPolicy policy)
{
    d->spinBox->setFocusPolicy(policy);
}

QDoubleSpinBox *ZkSpinBoxSlider::spinBox() const
{
    return d->spinBox;
}

QSlider *ZkSpinBoxSlider::slider() const
{
    return d->slider;
}

void ZkSpinBoxSlider::setFieldName(const QString &name)
{
    d->slider->setAccessibleName(name);
    d->spinBox->setAccessibleName(name);
}

// The slider jumps before it says that it is pressed, and the jump belongs to the drag.
bool ZkSpinBoxSlider::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    if (watched != d->slider || (!isPress && event->type() != QEvent::MouseButtonRelease))
        return ZkWidget::eventFilter(watched, event);
    if (static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton && d->slider->isEnabled())
        isPress ? d->begin() : d->end();
    return false;
}

// A slider that is hidden in the middle of a drag is never released.
void ZkSpinBoxSlider::hideEvent(QHideEvent *event)
{
    d->end();
    ZkWidget::hideEvent(event);
}
