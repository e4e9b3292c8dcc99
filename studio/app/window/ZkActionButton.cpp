#include "ZkActionButton.h"

#include "ZkFormat.h"

#include "ZkWidgets.h"

#include <QAction>

namespace zk::app {

ActionButton::ActionButton(QAction *action, QWidget *parent, Rank rank)
    : QPushButton(parent)
    , m_action(action)
    , m_rank(rank)
{
    setFocusPolicy(Qt::TabFocus);
    if (rank == Rank::Primary)
        ZkSkinManager::instance()->applyStyleSheet(this, QStringLiteral("Window/PrimaryButton"));
    connect(action, &QAction::changed, this, &ActionButton::follow);
    connect(this, &QPushButton::clicked, action, &QAction::trigger);
    follow();
}

void ActionButton::follow()
{
    setEnabled(m_action->isEnabled());
    setText(withoutMnemonic(m_action->text()));
    setToolTip(m_action->toolTip());
    if (m_rank == Rank::Normal)
        setIcon(m_action->icon());
}

} // namespace zk::app
