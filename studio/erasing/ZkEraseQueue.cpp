#include "ZkEraseQueue.h"

#include <algorithm>

namespace zk::erasing {

EraseQueue::EraseQueue(QObject *parent)
    : QObject(parent)
{ }

void EraseQueue::add(EraseTask *task)
{
    m_tasks.append(task);
    connect(task, &EraseTask::finished, this, [this, task] { remove(task); });
    connect(task, &QObject::destroyed, this, &EraseQueue::remove);
    if (m_tasks.size() == 1)
        task->start();
    Q_EMIT changed();
}

void EraseQueue::remove(QObject *task)
{
    const auto place = std::find_if(
        m_tasks.begin(), m_tasks.end(), [task](const QObject *one) { return one == task; });
    if (place == m_tasks.end())
        return;
    m_tasks.erase(place);
    if (!m_tasks.isEmpty())
        m_tasks.constFirst()->start();
    Q_EMIT changed();
}

} // namespace zk::erasing
