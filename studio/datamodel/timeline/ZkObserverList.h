#pragma once

#include <QVector>

#include <memory>

namespace zk::datamodel {

// Observers that may do anything while they are being told: remove themselves or others (who then hear
// nothing more), add some (who hear the next call), cause another call, run an event loop, or delete
// the owner of the list. Not owned. One thread only.
template<typename Observer>
class ObserverList
{
public:
    ObserverList() = default;
    ~ObserverList() { m_entries->fill(nullptr); }
    ObserverList(const ObserverList &) = delete;
    ObserverList &operator=(const ObserverList &) = delete;

    // An observer that is there already is not added again.
    void add(Observer *observer)
    {
        if (observer && !m_entries->contains(observer))
            m_entries->append(observer);
    }
    void remove(Observer *observer)
    {
        const int index = m_entries->indexOf(observer);
        if (index >= 0)
            (*m_entries)[index] = nullptr;
    }

    template<typename Function>
    void forEach(Function function)
    {
        const std::shared_ptr<QVector<Observer *>> entries = m_entries;
        if (entries.use_count() == 2) // no call is under way: nobody relies on the indexes
            entries->removeAll(nullptr);
        const int count = entries->size();
        for (int i = 0; i < count; ++i) {
            if (Observer *observer = entries->at(i))
                function(observer);
        }
    }

private:
    std::shared_ptr<QVector<Observer *>> m_entries = std::make_shared<QVector<Observer *>>();
};

} // namespace zk::datamodel
