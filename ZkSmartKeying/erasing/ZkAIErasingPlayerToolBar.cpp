#include "ZkAIErasingPlayerToolBar.h"

#include "ZkAIErasingPlayerView.h"

#include "../presenters/ZkAIErasingPresenter.h"

#include "ZkMediaPlayer.h"

#include <QHBoxLayout>

namespace {

const int SliderHeight = 24; // widget pixels

} // namespace

ZkAIErasingPlayerToolBar::ZkAIErasingPlayerToolBar(ZkAIErasingPresenter *presenter,
                                                   ZkAIErasingPlayerView *view)
    : ZkPlayerToolBarBase(view, !presenter->isImageClip())
    , m_presenter(presenter)
{
    setObjectName(QStringLiteral("ZkAIErasingPlayerToolBar"));
    if (!presenter->isImageClip())
        buildTimeline();
    ZkAIErasingPlayerToolBar::updateToolTip();
    connect(presenter,
            &ZkSmartKeyingPresenter::sigTrackingModeChanged,
            this,
            &ZkAIErasingPlayerToolBar::followTracking);
    setPlayerPresenter(presenter->playerPresenter());
}

ZkAIErasingPlayerToolBar::~ZkAIErasingPlayerToolBar() = default;

void ZkAIErasingPlayerToolBar::buildTimeline()
{
    m_currentTime = new ZkLabel(QString(), this);
    m_currentTime->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_duration = new ZkLabel(QString(), this);
    m_duration->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    auto *const times = new QHBoxLayout;
    times->setContentsMargins(0, 0, 0, 0);
    times->setSpacing(0);
    for (ZkLabel *const label :
         {m_currentTime, new ZkLabel(QStringLiteral("/"), this), m_duration}) {
        label->setLabelKind(ZKWIDGET::PlainLabel);
        times->addWidget(label);
    }
    QSlider *const slider = playbackSlider();
    slider->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    slider->setFixedHeight(SliderHeight);
    auto *const row = static_cast<QHBoxLayout *>(layout());
    row->addWidget(slider);
    row->addLayout(times);
}

void ZkAIErasingPlayerToolBar::durationChanged(int duration)
{
    ZkPlayerToolBarBase::durationChanged(duration);
    if (m_duration)
        m_duration->setText(m_presenter->frame2Time(duration));
}

void ZkAIErasingPlayerToolBar::frameChanged(int frame)
{
    ZkPlayerToolBarBase::frameChanged(frame);
    if (m_currentTime)
        m_currentTime->setText(m_presenter->frame2Time(qMax(frame, 0)));
}

void ZkAIErasingPlayerToolBar::updateToolTip()
{
    ZkPlayerToolBarBase::updateToolTip();
    if (!m_currentTime)
        return;
    m_currentTime->setAccessibleName(tr("Playhead Position"));
    m_duration->setAccessibleName(tr("Duration"));
}

void ZkAIErasingPlayerToolBar::followTracking(bool tracking)
{
    setSwitchButtonState(PlayPauseButton, tracking ? TrackingState : PlaybackState);
}
