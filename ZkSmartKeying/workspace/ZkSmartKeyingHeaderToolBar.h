// The bar above the player; not public.
#pragma once

#include "../presenters/ZkSmartKeyingPresenter.h"

#include "ZkWidgets.h"

class ZkZoomLevelBox;

// History, mask tools, zoom and how the object is shown, with the single-key shortcuts of the
// workspace. Decides nothing: what is checked and enabled follows the presenter, which is not owned.
class ZkSmartKeyingHeaderToolBar : public ZkToolButtonBar, public ZkUIView
{
    Q_OBJECT

public:
    enum ButtonId {
        UndoButton = 0,
        RedoButton = 1,
        KeepButton = 2,
        RemoveButton = 3,
        EraseButton = 4,
        PanButton = 5,
        InvertButton = 6,
        PreviewButton = 7,
        ColorButton = 8,
    };

    // Starts with the keep tool.
    ZkSmartKeyingHeaderToolBar(ZkSmartKeyingPresenter *presenter, ZkUIView *parentView);
    ~ZkSmartKeyingHeaderToolBar() override;

    QWidget *widget() override { return this; }

protected:
    QAbstractButton *createButton(int id) override;
    void changeEvent(QEvent *event) override;

private:
    void buildRow();
    void addToolButtons(int first, int last);
    void buildZoomBox();
    void buildSplitLine();
    void buildPreviewMenu();
    void connectPresenter();
    void addShortcuts();
    void translate();

    void handleClick(int id);
    void act(int id);
    void undo();
    void redo();
    void commitFocusedEditor();
    void chooseEditMode(ZkSmartKeyingPresenter::PlayerEditMode mode);
    void invertMask(bool inverted);
    void choosePreview(int type);
    void chooseOverlayColor();
    void placeUnderButton(QWidget *dialog, const QWidget *button) const;

    void followEditMode();
    void followUndoRedo();
    void followZoom();
    void followTracking(bool tracking);
    void followFrame();
    void followSegment();
    void followPreviewType(ZKSMARTKEYING::ZkPreviewType type);

    ZkSmartKeyingPresenter *m_presenter;
    ZkZoomLevelBox *m_zoomBox = nullptr;
    ZkLineWidget *m_splitLine = nullptr;
    ZkMenu *m_previewMenu = nullptr;
};
