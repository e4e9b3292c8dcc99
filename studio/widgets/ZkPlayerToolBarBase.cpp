#include "ZkJumpSlider_p.h"
#include "ZkMediaPlayer.h"
#include "ZkWidgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace {

constexpr int gap = 16; // widget pixels
constexpr int sideMargin = 16;

struct ButtonKind
{
    int id;
    const char *objectName;
    const char *icon;
};

constexpr ButtonKind kinds[] = {
    {ZkPlayerToolBarBase::PlayPauseButton, "ZkPlayerToolBar_PlayPause", "play"},
    {ZkPlayerToolBarBase::StopButton, "ZkPlayerToolBar_Stop", "stop"},
    {ZkPlayerToolBarBase::PreviousFrameButton, "ZkPlayerToolBar_PreviousFrame", "frame_back"},
    {ZkPlayerToolBarBase::NextFrameButton, "ZkPlayerToolBar_NextFrame", "frame_forward"},
    {ZkPlayerToolBarBase::FitButton, "ZkPlayerToolBar_Fit", "fit_timeline"},
};

const ButtonKind *kindOf(int id)
{
    for (const ButtonKind &kind : kinds) {
        if (kind.id == id)
            return &kind;
    }
    return nullptr;
}

} // namespace

ZkPlayerToolBarBase::ZkPlayerToolBarBase(QWidget *parent, bool ownButtons)
    : ZkWidget(parent)
{
    if (ownButtons)
        layOutOwnButtons();
}

ZkPlayerToolBarBase::~ZkPlayerToolBarBase()
{
    leavePlayer();
}

void ZkPlayerToolBarBase::leavePlayer()
{
    disconnect(m_playerDies);
    if (m_player)
        m_player->removeObserver(this);
    m_player = nullptr;
}

void ZkPlayerToolBarBase::layOutOwnButtons()
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(sideMargin, 0, sideMargin, 0);
    row->setSpacing(gap);
    for (const int id : {PreviousFrameButton, NextFrameButton, PlayPauseButton, StopButton})
        row->addWidget(baseButton(id));
}

void ZkPlayerToolBarBase::setPlayerPresenter(IZkPlayerControl *player)
{
    leavePlayer();
    m_player = player;
    if (auto *object = dynamic_cast<QObject *>(player)) {
        m_playerDies = connect(object, &QObject::destroyed, this, [this] {
            m_player = nullptr; // too late to leave it
            refresh();
        });
    }
    if (m_player) {
        m_player->addObserver(this);
        playerDurationChanged(m_player->duration());
        playerFrameChanged(int(m_player->currentFrame()));
    }
    refresh();
}

ZkToolButton *ZkPlayerToolBarBase::baseButton(int id)
{
    ZkToolButton *button = m_buttons.value(id);
    return button ? button : makeButton(id);
}

ZkToolButton *ZkPlayerToolBarBase::makeButton(int id)
{
    const ButtonKind *kind = kindOf(id);
    if (!kind)
        return nullptr;
    auto *button = new ZkToolButton(this);
    button->setObjectName(QLatin1String(kind->objectName));
    button->setIconName(QLatin1String(kind->icon));
    button->setAutoRepeat(id == PreviousFrameButton || id == NextFrameButton);
    connect(button, &QAbstractButton::clicked, this, [this, id] { clicked(id); });
    m_buttons.insert(id, button);
    refresh();
    return button;
}

QSlider *ZkPlayerToolBarBase::playbackSlider()
{
    if (m_slider)
        return m_slider;
    m_slider = new ZkJumpSlider(this);
    m_slider->setObjectName(QStringLiteral("ZkPlayerToolBar_Slider"));
    connect(m_slider, &QSlider::valueChanged, this, [this](int frame) {
        if (m_player)
            m_player->seek(frame);
    });
    if (m_player) {
        playerDurationChanged(m_player->duration());
        playerFrameChanged(int(m_player->currentFrame()));
    }
    refresh();
    return m_slider;
}

void ZkPlayerToolBarBase::setSwitchButtonState(int id, int state)
{
    m_switchStates.insert(id, state);
    refresh();
}

int ZkPlayerToolBarBase::switchButtonState(int id) const
{
    return m_switchStates.value(id, PlaybackState);
}

QString ZkPlayerToolBarBase::shortcutText(int) const
{
    return {};
}

void ZkPlayerToolBarBase::durationChanged(int) { }

void ZkPlayerToolBarBase::frameChanged(int) { }

void ZkPlayerToolBarBase::updateToolTip() { }

void ZkPlayerToolBarBase::setToolTipWithShortcut(QWidget *widget,
                                                 const QString &text,
                                                 const QString &key)
{
    widget->setProperty("WITH_SHORTCUT", !key.isEmpty());
    widget->setToolTip(key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, key));
}

void ZkPlayerToolBarBase::changeEvent(QEvent *event)
{
    ZkWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    refreshToolTips();
    updateToolTip();
}

void ZkPlayerToolBarBase::playerStateChanged(int)
{
    refresh();
}

void ZkPlayerToolBarBase::playerFrameChanged(int frame)
{
    // What the user drags must not be pulled back to the frame that is on screen so far.
    if (m_slider && !m_slider->isSliderDown()) {
        const QSignalBlocker blocker(m_slider);
        m_slider->setValue(frame);
    }
    frameChanged(frame);
}

void ZkPlayerToolBarBase::playerDurationChanged(int frames)
{
    if (m_slider) {
        const QSignalBlocker blocker(m_slider);
        m_slider->setRange(0, qMax(0, frames - 1));
    }
    refresh();
    durationChanged(frames);
}

void ZkPlayerToolBarBase::clicked(int id)
{
    if (!m_player)
        return;
    switch (id) {
    case PlayPauseButton:
        m_player->playOrPause();
        break;
    case StopButton:
        m_player->stopAndReturn();
        break;
    case PreviousFrameButton:
        m_player->step(-1);
        break;
    case NextFrameButton:
        m_player->step(1);
        break;
    default:
        break;
    }
}

void ZkPlayerToolBarBase::refresh()
{
    const bool canPlay = m_player && m_player->duration() > 0;
    if (m_slider)
        m_slider->setEnabled(canPlay);
    for (auto it = m_buttons.cbegin(); it != m_buttons.cend(); ++it)
        it.value()->setEnabled(canPlay || it.key() == FitButton);
    if (ZkToolButton *button = m_buttons.value(PlayPauseButton)) {
        const bool plays = m_player && m_player->state() == ZKPLAYER::PlayingState;
        const bool tracks = switchButtonState(PlayPauseButton) == TrackingState;
        // In full colour though the bar is disabled while tracking.
        button->setIconName(tracks      ? QStringLiteral("tracking_checked")
                                : plays ? QStringLiteral("pause")
                                        : QStringLiteral("play"));
    }
    refreshToolTips();
}

void ZkPlayerToolBarBase::refreshToolTips()
{
    const auto set = [this](int id, const QString &text, int shortcut) {
        if (ZkToolButton *button = m_buttons.value(id))
            setToolTipWithShortcut(button, text, shortcutText(shortcut));
    };
    const bool plays = m_player && m_player->state() == ZKPLAYER::PlayingState;
    set(PlayPauseButton, plays ? tr("Pause") : tr("Play"), PlayPauseShortcut);
    set(StopButton, tr("Stop and go back"), StopShortcut);
    set(PreviousFrameButton, tr("Previous frame"), PreviousFrameShortcut);
    set(NextFrameButton, tr("Next frame"), NextFrameShortcut);
    if (m_slider)
        m_slider->setAccessibleName(tr("Position"));
}
