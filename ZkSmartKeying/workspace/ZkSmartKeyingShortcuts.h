// Keys of the workspace's commands, and the tooltips that name them; not public.
#pragma once

#include <QString>

#include <functional>

class QObject;
class QShortcut;
class QWidget;

namespace ZKSHORTCUT {
// Numbers that the host gives its commands.
enum ZkShortcutId {
    NoShortcut = 0,
    Undo = 1000,
    Redo = 1001,
    RemoveNode = 1005,
    PlayOrPause = 3000,
    StopAndReturn = 3001,
    PreviousFrame = 3004,
    NextFrame = 3005,
    ZoomTimelineIn = 3016,
    ZoomTimelineOut = 3017,
    FitTimeline = 3018,
    KeepMask = 116004,
    RemoveMask = 116005, // named by a tooltip only
    EraseMask = 116006,
    PanFrame = 116007,
    FitFrame = 116008,
};
} // namespace ZKSHORTCUT

// The key as text; empty for an unknown number.
QString zkShortcutText(int id);

// Runs the action for that key anywhere in the owner's window. The shortcut belongs to the owner; the
// action is not run after the receiver has died.
QShortcut *
zkAddShortcut(QWidget *owner, int id, const QObject *receiver, const std::function<void()> &action);

// "text (key)", or the text alone without a key. Also the widget's accessible name.
void zkSetToolTip(QWidget *widget, const QString &text, int shortcutId);
