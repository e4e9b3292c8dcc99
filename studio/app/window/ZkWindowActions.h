#pragma once

#include <QHash>
#include <QKeySequence>
#include <QObject>
#include <QVector>

class QAction;
class QWidget;

namespace zk::app {

enum class ActionId {
    NewProject,
    OpenProject,
    SaveProject,
    SaveProjectAs,
    ImportMedia,
    ExportVideo,
    Settings,
    Account,
    Quit,
    Undo,
    Redo,
    SmartCutout,
    RemoveCutout,
    AIErase,
    RelinkClip,
    RelinkMedia,
    AddToClips,
    RemoveMedia,
    RemoveClip,
    MoveEarlier,
    MoveLater,
    PlayPause,
    Stop,
    PreviousFrame,
    NextFrame,
    FirstFrame,
    LastFrame,
    FitPicture,
    FitTimeline,
    ZoomInTimeline,
    ZoomOutTimeline,
    ShowMedia,
    ShowProperties,
    ShowTimeline,
    FullScreen,
    ResetLayout,
    Shortcuts,
    About,
};

// Every command of the window with its text, icon and key. The workspace has keys of its own, some of which
// are the same: while it is open its keys count, and the commands that work on the editor's page are
// disabled.
class WindowActions : public QObject
{
    Q_OBJECT

public:
    // The window's keys work in the whole window.
    explicit WindowActions(QWidget *window);

    QAction *action(ActionId id) const { return m_actions.value(int(id)); }
    // Undo and Redo keep their texts current by themselves.
    void retranslate();
    // Takes the keys from the commands that stay enabled, too, where the workspace has them.
    void setWorkspaceOpen(bool open);

    struct Key
    {
        QString what;
        QString key; // as the user reads it
    };
    // The keys of the window's commands, in the order of the menus.
    QVector<Key> keys() const;

private:
    QHash<int, QAction *> m_actions;
};

} // namespace zk::app
