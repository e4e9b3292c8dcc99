#pragma once

#include "ZkEraseTasks.h"

#include <QFrame>

class QLabel;
class QProgressBar;
class QPushButton;
class ZkToolButton;

namespace zk::app {

// One erasing: picture, name, how far it is, and what can be done about it.
class TaskCard : public QFrame
{
    Q_OBJECT

public:
    explicit TaskCard(int id, QWidget *parent = nullptr);

    int id() const { return m_id; }
    // Results wait while they cannot be looked at.
    void show(const EraseTasks::Item &item, bool canOpen);

Q_SIGNALS:
    void cancelClicked(int id); // of a task that is under way
    void resultClicked(int id); // of one that is done
    void reasonClicked(int id); // of one that has failed
    void dismissClicked(int id);

private:
    void layOut();

    const int m_id;
    EraseTasks::State m_state = EraseTasks::State::Preparing;
    QLabel *m_picture;
    QLabel *m_name;
    QLabel *m_stage;
    QProgressBar *m_progress;
    QPushButton *m_open;
    ZkToolButton *m_cancel;
};

} // namespace zk::app
