#pragma once

class QKeyEvent;
class QWidget;

namespace zk::app {

// Whether the focused widget has a better use for the key than the window, whose commands have plain keys
// such as Space and Left: lists move by arrows, buttons are pressed by Space.
bool belongsToFocus(const QKeyEvent &event, const QWidget *focus);

} // namespace zk::app
