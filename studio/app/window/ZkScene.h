// The outermost view of the editor.
#pragma once

#include "ZkCore.h"

namespace zk::app {

// The widget that is being typed in takes over what it holds.
void commitFocusedEditor();

// Takes the messages that views of all depths send up.
class ScenePresenter : public ZkPresenter
{
    Q_OBJECT

public:
    using ZkPresenter::ZkPresenter;

    bool dispatchMessage(ZkMessage *message) override;
};

// A window as the root of the tree of views.
class SceneView : public ZkUIView
{
public:
    // The window is not owned.
    explicit SceneView(QWidget *window);
    ~SceneView() override;

    QWidget *widget() override { return m_window; }

private:
    QWidget *const m_window;
    ScenePresenter m_presenter;
};

} // namespace zk::app
