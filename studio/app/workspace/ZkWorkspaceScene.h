#pragma once

#include "ZkCore.h"

namespace zk::app {

// The presenter of the outermost view of a workspace: hears what its bars send to the scene.
class WorkspaceScene : public ZkPresenter
{
    Q_OBJECT

public:
    explicit WorkspaceScene(QObject *parent = nullptr);

    // Before the history moves, whatever is being typed or dragged is finished, or it would end up as
    // a step behind the one that is taken back.
    void commitFocusedEditor();
    bool dispatchMessage(ZkMessage *message) override;

Q_SIGNALS:
    void commitRequested();
};

} // namespace zk::app
