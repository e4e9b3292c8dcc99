#pragma once

#include <QPair>
#include <QString>
#include <QVector>
#include <QWidget>

class QAbstractButton;
class QHBoxLayout;
class QLabel;
class QProgressBar;
class QShortcut;
class QStackedWidget;

namespace zk::app {

// The bar over a workspace: tracking, what is running and how far it is, and how to leave. Decides
// nothing; what can be clicked is told by setState().
class WorkspaceBar : public QWidget
{
    Q_OBJECT

public:
    enum Command {
        TrackBackward,
        TrackBoth,
        TrackForward,
        TrackSimple,
        Stop,
        CheckFrame,
        Reset,
        Cancel,
        Apply,
    };
    Q_ENUM(Command)

    struct State
    {
        bool canTrack = false; // there are other frames to track to
        bool isIdle = false;
        bool isTracking = false;
        bool isSaving = false;
        bool canApply = false;
        bool canReset = false;
        bool canCancel = false;
        QString doubt; // time of the frame that had better be checked; empty: none
    };

    explicit WorkspaceBar(QWidget *parent = nullptr);

    // Keys and what they do, translated.
    static QVector<QPair<QString, QString>> shortcuts();

    void setTitle(const QString &clipName);
    void setState(const State &state);
    // Of what is running.
    void setPercent(int percent);
    QAbstractButton *button(Command command) const { return m_buttons.at(command); }

Q_SIGNALS:
    void triggered(zk::app::WorkspaceBar::Command command);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addTracking(QHBoxLayout *row);
    void addProgress(QHBoxLayout *row);
    QWidget *createProgress();
    QWidget *createDoubt();
    void addLeaving(QHBoxLayout *row);
    QAbstractButton *addIconButton(QHBoxLayout *row, Command command);
    QAbstractButton *addTextButton(QHBoxLayout *row, Command command);
    void setUp(QAbstractButton *button, Command command);
    void addShortcuts();
    void retranslate();
    void showRunning();
    void showDoubt();

    QVector<QAbstractButton *> m_buttons; // by command
    QVector<QShortcut *> m_shortcuts; // by command
    QVector<QWidget *> m_trackingWidgets; // not for a still picture
    QLabel *m_title = nullptr;
    QLabel *m_trackName = nullptr;
    QLabel *m_runningName = nullptr;
    QProgressBar *m_progress = nullptr;
    QLabel *m_percent = nullptr;
    QStackedWidget *m_outcome = nullptr; // the progress, or what is worth a look afterwards
    State m_state;
};

} // namespace zk::app
