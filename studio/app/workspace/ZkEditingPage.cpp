#include "ZkEditingPage.h"

#include "ZkDataModel.h"
#include "ZkSmartKeyingPresenter.h"

namespace zk::app {

EditingPage::EditingPage(QWidget *parent)
    : QWidget(parent)
{ }

IZkUndoRedoService *EditingPage::undoRedoService() const
{
    return isOpen() ? presenter()->undoRedoService() : nullptr;
}

void EditingPage::undo()
{
    commitEditors();
    if (IZkUndoRedoService *const service = undoRedoService())
        service->undo();
}

void EditingPage::redo()
{
    commitEditors();
    if (IZkUndoRedoService *const service = undoRedoService())
        service->redo();
}

} // namespace zk::app
