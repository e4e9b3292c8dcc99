// The bar above the player of an AI erasing workspace; not public.
#pragma once

#include "ZkCore.h"
#include "ZkWidgets.h"

class ZkAIErasingPresenter;
class ZkZoomLevelBox;

// History, the hand and zoom. Undo and redo act on the history of the view that it belongs to. The
// presenter is not owned.
class ZkAIErasingHeaderToolBar : public ZkToolButtonBar, public ZkUIView
{
    Q_OBJECT

public:
    enum ButtonId {
        UndoButton = 0,
        RedoButton = 1,
        MoveFrameButton = 2,
    };

    ZkAIErasingHeaderToolBar(ZkAIErasingPresenter *presenter, ZkUIView *parentView);
    ~ZkAIErasingHeaderToolBar() override;

    QWidget *widget() override { return this; }

protected:
    void RetranslateUi() override;

private:
    void buildButtons();
    void buildZoomBox();
    void connectPresenter();
    void addShortcuts();

    void handleClick(int id);
    // False, and nothing happens, when there is nothing to undo or redo.
    bool undo();
    bool redo();
    void commitFocusedEditor();
    void toggleMoveFrame();

    void followHistory();
    void followEditMode();
    void followZoom();

    ZkAIErasingPresenter *m_presenter;
    ZkZoomLevelBox *m_zoomBox = nullptr;
};
