// Undoable change of the pen width; not public.
#pragma once

#include "datamodel/ZkUndoRedo.h"

class ZkSmartKeyingPresenter;

// Never merges: a drag is grouped by a macro around it. The presenter outlives the history.
class ZkChangePenPixelWidthCommand final : public IZkUndoRedoItem
{
public:
    // The width to go back to is the presenter's at this moment.
    ZkChangePenPixelWidthCommand(ZkSmartKeyingPresenter *presenter, int newWidth);

    void redo() override;
    void undo() override;

private:
    ZkSmartKeyingPresenter *m_presenter;
    int m_oldWidth;
    int m_newWidth;
};
