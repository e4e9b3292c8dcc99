// The view of one AI erasing workspace.
#pragma once

#include "../ZkSmartKeyingGlobal.h"

#include "widgets/ZkWidgetView.h"

class ZAIGCCreateButton;
class ZkAIErasingPlayerView;
class ZkAIErasingPresenter;
class ZkAIErasingSettingView;
class ZkPushButton;

// The whole workspace: player, tools, and the button that starts the task. Becomes the presenter's view;
// whoever owns it calls the presenter's clearView() before deleting it. Parent view and presenter are
// not owned, and the presenter must outlive the view. GUI thread only. Not to be deleted while a stroke
// is being segmented: an event loop runs inside.
class ZKSMARTKEYING_EXPORT ZkAIErasingView : public ZkWidgetView
{
    Q_OBJECT

public:
    // Ends with the presenter's init() and, when there is something to edit, with opening it.
    ZkAIErasingView(ZkAIErasingPresenter *presenter, ZkUIView *parent);
    ~ZkAIErasingView() override;

Q_SIGNALS:
    // The user is logged in, the network is there: the host erases what is selected. A host that has to
    // track first begins that from inside; the view then shows its progress until it ends.
    void sigStartTask();

protected:
    void RetranslateUi() override;

private Q_SLOTS:
    void onCreateButtonClicked();
    void onToolChanged(int toolType);
    void onResetButtonClicked();

private:
    void initUI();
    void connectSignals();
    void updateUIForTool(int toolType); // nothing: the setting view shows which tool is chosen
    void updateCreateButtonState();
    void open();
    int segmentCount() const;
    bool checkLogin();
    bool checkNetwork();
    void showTrackingProgress();

    ZkAIErasingPresenter *m_presenter;
    ZkAIErasingSettingView *m_settingView = nullptr;
    ZkAIErasingPlayerView *m_playerView = nullptr;
    ZAIGCCreateButton *m_createButton = nullptr;
    ZkPushButton *m_resetButton = nullptr;
};
