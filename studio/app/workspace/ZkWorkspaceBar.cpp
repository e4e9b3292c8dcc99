#include "ZkWorkspaceBar.h"

#include "ZkOwnKeys.h"
#include "ZkToolTipText.h"

#include "ZkWidgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

namespace zk::app {

namespace {

constexpr int barHeight = 48; // widget pixels
constexpr int spacing = 8;
constexpr int progressWidth = 160;
constexpr int percentWidth = 40;

struct CommandLook
{
    const char *objectName;
    const char *icon; // null: a button with a text
    const char *key;
    const char *text;
    const char *toolTip;
};

// In the order of WorkspaceBar::Command.
constexpr CommandLook looks[] = {
    {"WorkspaceTrackBackward",
     "track_backward",
     "Shift+Left",
     nullptr,
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Track Backward")},
    {"WorkspaceTrackBoth",
     "track_both",
     "Shift+T",
     nullptr,
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Track Both Ways")},
    {"WorkspaceTrackForward",
     "track_forward",
     "Shift+Right",
     nullptr,
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Track Forward")},
    {"WorkspaceTrackSimple",
     "simple_mode",
     "T",
     nullptr,
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar",
                       "Track in Simple Mode: the direction is chosen for you")},
    {"WorkspaceStop", "stop", "Esc", nullptr, QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Stop")},
    {"WorkspaceCheckFrame",
     nullptr,
     "Shift+C",
     nullptr,
     QT_TRANSLATE_NOOP(
         "zk::app::WorkspaceBar",
         "Go to the frame that tracking is least certain of, from there to the next one")},
    {"WorkspaceReset",
     nullptr,
     "Ctrl+R",
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Reset"),
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Discard strokes, tracking and preset")},
    {"WorkspaceCancel",
     nullptr,
     "Ctrl+W",
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Cancel"),
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Close without changing the clip")},
    {"WorkspaceApply",
     nullptr,
     "Ctrl+Return",
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Apply"),
     QT_TRANSLATE_NOOP("zk::app::WorkspaceBar", "Save the cutout to the clip")},
};
constexpr int commandCount = int(std::size(looks));

QString latin(const char *text)
{
    return QString::fromLatin1(text);
}

} // namespace

WorkspaceBar::WorkspaceBar(QWidget *parent)
    : QWidget(parent)
    , m_buttons(commandCount, nullptr)
{
    setObjectName(QStringLiteral("WorkspaceBar"));
    setAttribute(Qt::WA_StyledBackground);
    ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Workspace/WorkspaceBar"));
    setFixedHeight(barHeight);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(12, 0, 12, 0);
    row->setSpacing(spacing);
    m_title = new QLabel(this);
    m_title->setProperty("PanelTitle", true); // for the skin
    m_title->setMinimumWidth(1); // gives way to everything else
    row->addWidget(m_title, 1);
    addTracking(row);
    addProgress(row);
    row->addStretch(1);
    addLeaving(row);
    addShortcuts();
    retranslate();
    setState({});
}

void WorkspaceBar::addTracking(QHBoxLayout *row)
{
    m_trackName = new QLabel(this);
    row->addWidget(m_trackName);
    m_trackingWidgets.append(m_trackName);
    for (int command = TrackBackward; command <= TrackSimple; ++command)
        m_trackingWidgets.append(addIconButton(row, Command(command)));
    row->addSpacing(8);
}

// One in place of the other, so that nothing beside them moves.
void WorkspaceBar::addProgress(QHBoxLayout *row)
{
    m_outcome = new QStackedWidget(this);
    m_outcome->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    m_outcome->addWidget(createProgress());
    m_outcome->addWidget(createDoubt());
    row->addWidget(m_outcome, 0, Qt::AlignVCenter); // above the line at the bottom
}

QWidget *WorkspaceBar::createDoubt()
{
    auto *const page = new QWidget(m_outcome);
    auto *const row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    addTextButton(row, CheckFrame);
    row->addStretch(1);
    return page;
}

QWidget *WorkspaceBar::createProgress()
{
    auto *const page = new QWidget(m_outcome);
    auto *const row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    m_runningName = new QLabel(this);
    m_runningName->setObjectName(QStringLiteral("WorkspaceRunning"));
    m_progress = ZkProgressBar::CreateMiniProgressBar(this);
    m_progress->setObjectName(QStringLiteral("WorkspaceProgress"));
    m_progress->setFixedWidth(progressWidth);
    m_progress->setRange(0, 100);
    m_percent = new QLabel(this);
    m_percent->setObjectName(QStringLiteral("WorkspacePercent"));
    m_percent->setFixedWidth(percentWidth);
    row->addWidget(m_runningName);
    row->addWidget(m_progress);
    row->addWidget(m_percent);
    addIconButton(row, Stop);
    for (QWidget *const widget :
         {static_cast<QWidget *>(m_runningName), static_cast<QWidget *>(m_progress)}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
    }
    return page;
}

void WorkspaceBar::addLeaving(QHBoxLayout *row)
{
    addTextButton(row, Reset);
    row->addSpacing(8);
    addTextButton(row, Cancel);
    ZkSkinManager::instance()->applyStyleSheet(addTextButton(row, Apply),
                                               QStringLiteral("Widgets/PrimaryButton"));
}

QAbstractButton *WorkspaceBar::addIconButton(QHBoxLayout *row, Command command)
{
    auto *const button = new ZkToolButton(this);
    button->setIconName(latin(looks[command].icon));
    setUp(button, command);
    row->addWidget(button);
    return button;
}

QAbstractButton *WorkspaceBar::addTextButton(QHBoxLayout *row, Command command)
{
    auto *const button = new QPushButton(this);
    new EnterClicks(button); // the space bar plays
    button->setFocusPolicy(Qt::TabFocus);
    setUp(button, command);
    row->addWidget(button);
    return button;
}

void WorkspaceBar::setUp(QAbstractButton *button, Command command)
{
    button->setObjectName(latin(looks[command].objectName));
    connect(button, &QAbstractButton::clicked, this, [this, command] { emit triggered(command); });
    m_buttons[command] = button;
}

// A key clicks its button, so it can do no more than the button can.
void WorkspaceBar::addShortcuts()
{
    for (int command = 0; command < commandCount; ++command) {
        auto *const shortcut = new QShortcut(QKeySequence(latin(looks[command].key)), this);
        m_shortcuts.append(shortcut);
        connect(shortcut, &QShortcut::activated, m_buttons.at(command), &QAbstractButton::click);
    }
}

QVector<QPair<QString, QString>> WorkspaceBar::shortcuts()
{
    QVector<QPair<QString, QString>> keys;
    for (const CommandLook &look : looks)
        keys.append({latin(look.key), tr(look.toolTip)});
    return keys;
}

void WorkspaceBar::setTitle(const QString &clipName)
{
    m_title->setText(clipName);
    m_title->setToolTip(clipName);
}

void WorkspaceBar::setState(const State &state)
{
    const bool wasRunning = m_state.isTracking || m_state.isSaving;
    m_state = state;
    for (QWidget *const widget : m_trackingWidgets)
        widget->setVisible(state.canTrack);
    for (int command = TrackBackward; command <= TrackSimple; ++command)
        m_buttons.at(command)->setEnabled(state.isIdle);
    m_buttons.at(Stop)->setEnabled(state.isTracking || state.isSaving);
    m_shortcuts.at(Stop)->setEnabled(state.isTracking || state.isSaving); // others use Esc, too
    m_buttons.at(CheckFrame)->setEnabled(state.isIdle && !state.doubt.isEmpty());
    m_buttons.at(Reset)->setEnabled(state.isIdle && state.canReset);
    m_buttons.at(Cancel)->setEnabled(state.canCancel);
    m_buttons.at(Apply)->setEnabled(state.isIdle && state.canApply);
    if (!wasRunning)
        setPercent(0);
    showRunning();
}

void WorkspaceBar::showRunning()
{
    const bool isRunning = m_state.isTracking || m_state.isSaving;
    m_runningName->setText(m_state.isSaving ? tr("Saving") : tr("Tracking"));
    m_runningName->setVisible(isRunning);
    m_progress->setVisible(isRunning);
    m_percent->setVisible(isRunning);
    m_buttons.at(Stop)->setVisible(isRunning);
    setToolTipWithKey(m_buttons.at(Stop),
                      m_state.isSaving ? tr("Cancel Saving") : tr("Stop Tracking"),
                      latin(looks[Stop].key));
    showDoubt();
}

void WorkspaceBar::showDoubt()
{
    QAbstractButton *const button = m_buttons.at(CheckFrame);
    button->setText(tr("Check %1").arg(m_state.doubt));
    button->setAccessibleName(button->text());
    const bool isShown = !m_state.doubt.isEmpty() && !m_state.isTracking && !m_state.isSaving;
    m_outcome->setCurrentIndex(isShown ? 1 : 0);
}

void WorkspaceBar::setPercent(int percent)
{
    m_progress->setValue(percent);
    m_percent->setText(tr("%1%").arg(percent));
}

void WorkspaceBar::retranslate()
{
    m_trackName->setText(tr("Track"));
    for (int command = 0; command < commandCount; ++command) {
        const CommandLook &look = looks[command];
        if (look.text)
            m_buttons.at(command)->setText(tr(look.text));
        setToolTipWithKey(m_buttons.at(command), tr(look.toolTip), latin(look.key));
        if (look.text)
            m_buttons.at(command)->setAccessibleName(tr(look.text));
    }
    m_progress->setAccessibleName(tr("Progress"));
    showRunning();
}

void WorkspaceBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

} // namespace zk::app
