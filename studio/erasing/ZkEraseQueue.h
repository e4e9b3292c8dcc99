// Erasings one after another: each wants all processors and much memory.
#pragma once

#include "ZkEraseTask.h"

#include <QVector>

namespace zk::erasing {

// Starts its tasks in the order in which they were added, one at a time. Does not own them: a task that
// is cancelled or deleted leaves the queue. GUI thread only.
class ZKERASING_EXPORT EraseQueue : public QObject
{
    Q_OBJECT

public:
    explicit EraseQueue(QObject *parent = nullptr);

    // A task that has not been started.
    void add(EraseTask *task);
    // The first one runs, the others wait.
    const QVector<EraseTask *> &tasks() const { return m_tasks; }

Q_SIGNALS:
    void changed(); // a task came, began or left

private:
    void remove(QObject *task);

    QVector<EraseTask *> m_tasks;
};

} // namespace zk::erasing
