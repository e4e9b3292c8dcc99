// What the window does about erasing: the tasks with their strip, what is told of them, and the account.
#pragma once

#include "ZkEraseTasks.h"
#include "ZkUserMemory.h"

#include "ZkCore.h"

#include <QObject>
#include <QPointer>

class QAction;

namespace zk::app {

class LoginDialog;
class ResultDialog;
class TaskStrip;

// GUI thread only. While it lives, requests to log in are answered, and erasing counts as reachable when
// there is a program that erases.
class ErasingDesk : public QObject
{
    Q_OBJECT

public:
    // Neither project, window nor action is owned; all must outlive it. An empty eraser is this program.
    ErasingDesk(datamodel::Project *project,
                const QString &eraser,
                QAction *account,
                QWidget *window);
    ~ErasingDesk() override;

    EraseTasks *tasks() { return &m_tasks; }
    // The window's; it becomes whose layout it is put into.
    TaskStrip *strip() const { return m_strip; }
    void setWorkspaceOpen(bool isOpen);
    // Asks when erasings would be lost, and says whether the user agrees; nothing has happened to them yet.
    bool mayDrop();
    void drop();
    void retranslate();

Q_SIGNALS:
    void notice(const QString &text);
    // The user wants to select anew on that clip of the project.
    void selectionRequested(qint64 clip);

private:
    void showLogin();
    void switchAccount();
    void refreshAccount();
    void showResult(int id);
    void showReason(int id);
    void onSucceeded(int id);
    void onFailed(int id);

    QWidget *const m_window;
    QAction *const m_account;
    UserMemory m_memory;
    EraseTasks m_tasks;
    TaskStrip *const m_strip;
    ZkCustomEventListener m_loginListener;
    QPointer<LoginDialog> m_login;
    QPointer<ResultDialog> m_result;
    bool m_isAsking = false;
};

} // namespace zk::app
