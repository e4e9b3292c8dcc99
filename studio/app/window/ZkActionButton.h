#pragma once

#include <QPushButton>

class QAction;

namespace zk::app {

// A push button that does what an action does and looks like it, but for the key in its text, which the menu
// has. Takes the focus by the Tab key alone, so that a click leaves the keys where they were.
class ActionButton : public QPushButton
{
    Q_OBJECT

public:
    enum class Rank {
        Normal, // with the action's icon
        Primary, // what one mostly wants here
    };

    // The action is not owned and must outlive the button.
    ActionButton(QAction *action, QWidget *parent, Rank rank = Rank::Normal);

private:
    void follow();

    QAction *const m_action;
    const Rank m_rank;
};

} // namespace zk::app
