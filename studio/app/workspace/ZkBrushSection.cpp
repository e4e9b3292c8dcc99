#include "ZkBrushSection.h"

#include "ZkOwnKeys.h"

#include "ZkSmartKeyingPresenter.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

namespace zk::app {

namespace {

constexpr int burstGap = 500; // ms without a change that end a burst
constexpr int keyStep = 2; // widget pixels
constexpr int pageStep = 20;

} // namespace

BrushSection::BrushSection(ZkSmartKeyingPresenter *presenter, QWidget *parent)
    : QWidget(parent)
    , m_presenter(presenter)
    , m_name(new QLabel(this))
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_value(new QLabel(this))
{
    m_slider->setObjectName(QStringLiteral("WorkspaceBrushWidth"));
    m_slider->setSingleStep(keyStep);
    m_slider->setPageStep(pageStep);
    m_slider->setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the window's shortcuts
    new OwnKeys(m_slider, OwnKeys::navigation());
    m_name->setBuddy(m_slider);
    m_value->setObjectName(QStringLiteral("WorkspaceBrushWidthText"));
    auto *const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_name, 0, 0);
    grid->addWidget(m_value, 0, 1, Qt::AlignRight);
    grid->addWidget(m_slider, 1, 0, 1, 2);

    m_burstTimer.setSingleShot(true);
    m_burstTimer.setInterval(burstGap);
    connect(&m_burstTimer, &QTimer::timeout, this, &BrushSection::commit);
    connect(m_slider, &QSlider::valueChanged, this, &BrushSection::change);
    connect(m_slider, &QSlider::sliderReleased, this, &BrushSection::commit);
    using Presenter = ZkSmartKeyingPresenter;
    connect(presenter, &Presenter::sigPenPixelWidthChanged, this, &BrushSection::followPresenter);
    connect(presenter, &Presenter::sigFrameZoomed, this, &BrushSection::followPresenter);
    retranslate();
    followPresenter();
}

void BrushSection::widen(int pixels)
{
    m_slider->setValue(m_slider->value() + pixels);
}

// A press alone is no step, so the step begins with the first change.
void BrushSection::change(int width)
{
    if (!m_presenter->isPenPixelWidthChanging()) {
        m_isChanging = true;
        m_presenter->setPenPixelWidthChanging(true);
    }
    m_presenter->setPenPixelWidth(width);
    if (!m_slider->isSliderDown())
        m_burstTimer.start();
}

void BrushSection::commit()
{
    m_burstTimer.stop();
    if (m_isChanging)
        m_presenter->setPenPixelWidthChanging(false);
    m_isChanging = false;
}

// Zooming moves the bounds. A width beyond them, which only the presenter may set, is shown as it is.
void BrushSection::followPresenter()
{
    const QSignalBlocker blocker(m_slider);
    const ZkRange<int> range = m_presenter->penPixelWidthRange();
    const int width = m_presenter->penPixelWidth();
    m_slider->setRange(range.minimum, qMax(range.minimum, range.maximum));
    m_slider->setValue(width);
    m_value->setText(tr("%1 px").arg(width));
}

void BrushSection::retranslate()
{
    m_name->setText(tr("Brush width"));
    m_slider->setAccessibleName(tr("Brush width"));
    m_slider->setToolTip(tr("Brush width. Also [ and ], or Ctrl and a drag on the picture."));
}

void BrushSection::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    retranslate();
    followPresenter();
}

} // namespace zk::app
