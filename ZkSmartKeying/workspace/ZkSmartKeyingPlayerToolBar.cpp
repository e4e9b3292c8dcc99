#include "ZkSmartKeyingPlayerToolBar.h"

#include "../ZkCallLater.h"
#include "../presenters/ZkSmartKeyingPresenter.h"
#include "ZkSmartKeyingShortcuts.h"

#include "ZkMediaPlayer.h"
#include "ZkTimelineView.h"

#include <QHBoxLayout>
#include <QShortcut>

namespace {

// Widget pixels.
const QSize TimeEditSize(88, 24);
const QSize ZoomSliderSize(144, 24);
const QMargins RowMargins(16, 4, 16, 4);
const int RowSpacing = 16;

} // namespace

ZkSmartKeyingPlayerToolBar::ZkSmartKeyingPlayerToolBar(ZkSmartKeyingPresenter *presenter,
                                                       ZkUIView *parentView)
    : ZkPlayerToolBarBase(parentView->widget())
    , ZkUIView(parentView)
    , m_presenter(presenter)
{
    const QString name = QStringLiteral("smartKeying_ZkSmartKeyingPlayerToolBar");
    setObjectName(name);
    ZkSkinManager::instance()->applyStyleSheet(this, QLatin1String("SmartKeying/") + name);
    buildTimeEdit();
    buildFitButton();
    buildZoomSlider();
    layOut();
    // The timeline has no width before the window has been laid out.
    zkCallLater(0, this, &ZkSmartKeyingPlayerToolBar::fitTimeline);
    ZkSmartKeyingPlayerToolBar::updateToolTip();
    connectSignals();
    addShortcuts();
    setPlayerPresenter(presenter->playerPresenter());
}

ZkSmartKeyingPlayerToolBar::~ZkSmartKeyingPlayerToolBar() = default;

void ZkSmartKeyingPlayerToolBar::buildTimeEdit()
{
    m_timeEdit = ZkTimeEditWidget::CreateTimeEditWidget(this, ZkTimeEditWidget::PlayheadTime);
    m_timeEdit->setFixedSize(TimeEditSize);
    m_timeEdit->setObjectName(QStringLiteral("ZkMainPlayerToolBar_CurrentFrame"));
}

void ZkSmartKeyingPlayerToolBar::buildFitButton()
{
    const QString name = QStringLiteral("ZTimelineToolbar_FitTimeline");
    ZkToolButton *const fit = baseButton(FitButton);
    fit->setObjectName(name);
    ZkSkinManager::instance()->applyStyleSheet(fit, QLatin1String("Timeline/") + name);
}

void ZkSmartKeyingPlayerToolBar::buildZoomSlider()
{
    m_zoomSlider = ZkZoomSlider::CreateZoomSlider(this);
    m_zoomSlider->setFixedSize(ZoomSliderSize);
    zkSetAutomationTag(m_zoomSlider->zoomInButton(),
                       QStringLiteral("ZkSilenceDetectionToolbar_ScaleSlider_In"));
    zkSetAutomationTag(m_zoomSlider->zoomOutButton(),
                       QStringLiteral("ZkSilenceDetectionToolbar_ScaleSlider_Out"));
    if (timeline())
        timeline()->setZoomSlider(m_zoomSlider);
}

void ZkSmartKeyingPlayerToolBar::layOut()
{
    auto *const outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);
    auto *const row = new QHBoxLayout;
    row->setContentsMargins(RowMargins);
    row->setSpacing(RowSpacing);
    for (const int id : {PreviousFrameButton, NextFrameButton, PlayPauseButton, StopButton})
        row->addWidget(baseButton(id));
    row->addWidget(playbackSlider());
    row->addWidget(m_timeEdit);
    row->addWidget(baseButton(FitButton));
    row->addWidget(m_zoomSlider);
    outer->addLayout(row);
}

void ZkSmartKeyingPlayerToolBar::connectSignals()
{
    connect(m_timeEdit, &ZkTimeEditWidget::sigValueChanged, this, [this](int frame) {
        m_presenter->playerPresenter()->seek(frame);
    });
    connect(baseButton(FitButton),
            &QAbstractButton::clicked,
            this,
            &ZkSmartKeyingPlayerToolBar::fitTimeline);
    connect(m_presenter,
            &ZkSmartKeyingPresenter::sigTrackingModeChanged,
            this,
            &ZkSmartKeyingPlayerToolBar::followTracking);
}

void ZkSmartKeyingPlayerToolBar::addShortcuts()
{
    QWidget *const owner = parentView()->widget();
    addTimelineShortcuts(owner);
    addPlaybackShortcuts(owner);
}

void ZkSmartKeyingPlayerToolBar::addTimelineShortcuts(QWidget *owner)
{
    zkAddShortcut(owner, ZKSHORTCUT::FitTimeline, this, [this] { fitTimeline(); });
    zkAddShortcut(owner, ZKSHORTCUT::ZoomTimelineIn, this, [this] { m_zoomSlider->Add(); });
    zkAddShortcut(owner, ZKSHORTCUT::ZoomTimelineOut, this, [this] { m_zoomSlider->Sub(); });
    zkAddShortcut(owner, ZKSHORTCUT::RemoveNode, this, [this] { removeSelectedNode(); });
}

void ZkSmartKeyingPlayerToolBar::addPlaybackShortcuts(QWidget *owner)
{
    ZkMediaPlayerPresenter *const player = m_presenter->playerPresenter();
    QShortcut *const play = zkAddShortcut(owner, ZKSHORTCUT::PlayOrPause, this, [this, player] {
        emit sigBeforeShortcutPlayOrPause();
        player->playOrPause();
    });
    play->setAutoRepeat(false); // a key that is held down would start and stop all the time
    zkAddShortcut(owner, ZKSHORTCUT::StopAndReturn, this, [player] { player->stopAndReturn(); });
    zkAddShortcut(owner, ZKSHORTCUT::PreviousFrame, this, [player] { player->step(-1); });
    zkAddShortcut(owner, ZKSHORTCUT::NextFrame, this, [player] { player->step(1); });
}

QString ZkSmartKeyingPlayerToolBar::shortcutText(int id) const
{
    return zkShortcutText(id);
}

void ZkSmartKeyingPlayerToolBar::durationChanged(int duration)
{
    ZkPlayerToolBarBase::durationChanged(duration);
    m_timeEdit->setFrameRate(m_presenter->playerPresenter()->mediaFrameRate());
    m_timeEdit->setMaximum(duration);
}

void ZkSmartKeyingPlayerToolBar::frameChanged(int frame)
{
    ZkPlayerToolBarBase::frameChanged(frame);
    m_timeEdit->setValue(qMax(frame, 0));
}

void ZkSmartKeyingPlayerToolBar::updateToolTip()
{
    ZkPlayerToolBarBase::updateToolTip();
    const auto set = [](QWidget *widget, const QString &text, int id) {
        setToolTipWithShortcut(widget, text, zkShortcutText(id));
        widget->setAccessibleName(text);
    };
    set(m_timeEdit, tr("Playhead Position"), ZKSHORTCUT::NoShortcut);
    set(m_zoomSlider->zoomOutButton(), tr("Zoom out"), ZKSHORTCUT::ZoomTimelineOut);
    set(m_zoomSlider->zoomInButton(), tr("Zoom in"), ZKSHORTCUT::ZoomTimelineIn);
    set(baseButton(FitButton), tr("Zoom to Fit Timeline"), ZKSHORTCUT::FitTimeline);
}

void ZkSmartKeyingPlayerToolBar::followTracking(bool tracking)
{
    setEnabled(!tracking);
    setSwitchButtonState(PlayPauseButton, tracking ? TrackingState : PlaybackState);
}

ZTimelinePresenter *ZkSmartKeyingPlayerToolBar::timeline() const
{
    return m_presenter->timelinePresenter();
}

void ZkSmartKeyingPlayerToolBar::fitTimeline()
{
    if (timeline())
        timeline()->fitTimeline();
}

void ZkSmartKeyingPlayerToolBar::removeSelectedNode()
{
    if (timeline())
        timeline()->removeSelectedSmartKeyingNode();
}
