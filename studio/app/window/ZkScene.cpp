#include "ZkScene.h"

#include "ZkWidgets.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QLineEdit>

namespace zk::app {

namespace {

bool commit(QWidget *widget)
{
    if (auto *time = qobject_cast<ZkTimeEditWidget *>(widget)) {
        time->commit();
        return true;
    }
    if (auto *spinBox = qobject_cast<QAbstractSpinBox *>(widget)) {
        spinBox->interpretText();
        Q_EMIT spinBox->editingFinished();
        return true;
    }
    return false;
}

} // namespace

void commitFocusedEditor()
{
    QWidget *const focus = QApplication::focusWidget();
    // The line edit of a compound editor has the focus, but its owner knows what the text means.
    for (QWidget *widget = focus; widget; widget = widget->parentWidget()) {
        if (commit(widget))
            return;
    }
    auto *line = qobject_cast<QLineEdit *>(focus);
    if (line && line->hasAcceptableInput())
        Q_EMIT line->editingFinished();
}

bool ScenePresenter::dispatchMessage(ZkMessage *message)
{
    if (message->id() != ZKMESSAGE::CommitFocusedEditor)
        return ZkPresenter::dispatchMessage(message);
    commitFocusedEditor();
    return true;
}

SceneView::SceneView(QWidget *window)
    : m_window(window)
{
    m_presenter.setView(this);
    setViewPresenter(&m_presenter);
}

SceneView::~SceneView()
{
    m_presenter.clearView();
}

} // namespace zk::app
