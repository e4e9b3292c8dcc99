#include "ZkWorkspaceScene.h"

#include "ZkWidgets.h"

#include <QApplication>

namespace zk::app {

WorkspaceScene::WorkspaceScene(QObject *parent)
    : ZkPresenter(parent)
{ }

void WorkspaceScene::commitFocusedEditor()
{
    for (QWidget *widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (auto *const edit = qobject_cast<ZkTimeEditWidget *>(widget))
            edit->commit();
    }
    emit commitRequested();
}

bool WorkspaceScene::dispatchMessage(ZkMessage *message)
{
    if (message->id() != ZKMESSAGE::CommitFocusedEditor)
        return false;
    commitFocusedEditor();
    return true;
}

} // namespace zk::app
