#include "ZkJumpSlider_p.h"
#include "ZkWidgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace {

constexpr int closest = 100;
constexpr int step = 10;
constexpr int buttonSide = 24; // widget pixels
constexpr int gap = 4;

ZkToolButton *makeButton(const QString &iconName, ZkZoomSlider *slider)
{
    auto *button = new ZkToolButton(slider);
    button->setIconName(iconName);
    button->setFixedSize(buttonSide, buttonSide);
    button->setAutoRepeat(true);
    return button;
}

// A tooltip that somebody else set stays theirs.
void replaceToolTip(QWidget *widget, QString &own, const QString &text)
{
    if (widget->toolTip() == own)
        widget->setToolTip(text);
    own = text;
}

} // namespace

class ZkZoomSlider::Private
{
public:
    explicit Private(ZkZoomSlider *q)
        : out(makeButton(QStringLiteral("zoom_out"), q))
        , slider(new ZkJumpSlider(q))
        , in(makeButton(QStringLiteral("zoom_in"), q))
    {
        slider->setRange(0, closest);
        slider->setSingleStep(step / 2);
        slider->setPageStep(step);
    }

    void retranslate();

    ZkToolButton *out;
    ZkJumpSlider *slider;
    ZkToolButton *in;
    QString outText;
    QString inText;
};

void ZkZoomSlider::Private::retranslate()
{
    replaceToolTip(out, outText, ZkZoomSlider::tr("Zoom out"));
    replaceToolTip(in, inText, ZkZoomSlider::tr("Zoom in"));
    slider->setAccessibleName(ZkZoomSlider::tr("Zoom"));
}

ZkZoomSlider *ZkZoomSlider::CreateZoomSlider(QWidget *parent)
{
    return new ZkZoomSlider(parent);
}

ZkZoomSlider::ZkZoomSlider(QWidget *parent)
    : ZkWidget(parent)
    , d(std::make_unique<Private>(this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(d->out);
    row->addWidget(d->slider, 1);
    row->addWidget(d->in);
    setFocusProxy(d->slider);
    d->retranslate();
    connect(d->out, &QAbstractButton::clicked, this, &ZkZoomSlider::Sub);
    connect(d->in, &QAbstractButton::clicked, this, &ZkZoomSlider::Add);
    connect(d->slider, &QSlider::valueChanged, this, &ZkZoomSlider::sigValueChanged);
}

ZkZoomSlider::~ZkZoomSlider() = default;

int ZkZoomSlider::value() const
{
    return d->slider->value();
}

void ZkZoomSlider::setValue(int value)
{
    const QSignalBlocker blocker(d->slider);
    d->slider->setValue(value);
}

void ZkZoomSlider::Add()
{
    d->slider->setValue(value() + step);
}

void ZkZoomSlider::Sub()
{
    d->slider->setValue(value() - step);
}

ZkToolButton *ZkZoomSlider::zoomInButton() const
{
    return d->in;
}

ZkToolButton *ZkZoomSlider::zoomOutButton() const
{
    return d->out;
}

void ZkZoomSlider::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        d->retranslate();
    ZkWidget::changeEvent(event);
}
