#include "ZkNotifTrackingResultChangedUndoRedo.h"

ZkNotifTrackingResultChangedUndoRedo::ZkNotifTrackingResultChangedUndoRedo() = default;
ZkNotifTrackingResultChangedUndoRedo::~ZkNotifTrackingResultChangedUndoRedo() = default;

void ZkNotifTrackingResultChangedUndoRedo::redo()
{
    emit sigRedo();
}

void ZkNotifTrackingResultChangedUndoRedo::undo()
{
    emit sigUndo();
}
