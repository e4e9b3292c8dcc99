// The step that saving leaves in the history of the AI erasing workspace; not public.
#pragma once

#include "datamodel/ZkUndoRedo.h"

#include <QObject>

// Only tells that the step is redone or undone; the presenter does it. Owned by the history.
class ZkNotifTrackingResultChangedUndoRedo final : public QObject, public IZkUndoRedoItem
{
    Q_OBJECT

public:
    ZkNotifTrackingResultChangedUndoRedo();
    ~ZkNotifTrackingResultChangedUndoRedo() override;

    void redo() override;
    void undo() override;

Q_SIGNALS:
    void sigRedo();
    void sigUndo();
};
