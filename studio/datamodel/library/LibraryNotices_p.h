// Telling observers, with everything that may happen meanwhile. Not public.
#pragma once

#include <ZkDataModel.h>

#include <QVector>

#include <memory>
#include <vector>

namespace zk::datamodel {

// Counts the notices that are under way, and keeps what was taken out of the library alive until
// none is: an observer may run an event loop, in which a refresh replaces the folder that the notice
// is about.
class NoticeScope
{
public:
    class Enter
    {
    public:
        explicit Enter(NoticeScope &scope)
            : m_scope(scope)
        {
            ++m_scope.m_depth;
        }
        ~Enter()
        {
            if (--m_scope.m_depth == 0)
                m_scope.m_dying.clear();
        }

    private:
        Q_DISABLE_COPY(Enter)
        NoticeScope &m_scope;
    };

    // Deletes it when no notice is under way.
    void bury(std::shared_ptr<void> object)
    {
        if (m_depth > 0)
            m_dying.push_back(std::move(object));
    }

private:
    int m_depth = 0;
    std::vector<std::shared_ptr<void>> m_dying;
};

// Observers in the order of their registration. They may come and go during a notice: one that goes
// hears nothing more, one that comes hears the next notice.
template<typename Observer>
class Observers
{
public:
    explicit Observers(NoticeScope &scope)
        : m_scope(scope)
    { }

    void add(Observer *observer)
    {
        if (observer && !m_observers.contains(observer))
            m_observers.append(observer);
    }
    void remove(Observer *observer) { m_observers.removeOne(observer); }

    template<typename... Parameters, typename... Arguments>
    void notify(void (Observer::*callback)(Parameters...), Arguments... arguments)
    {
        const NoticeScope::Enter enter(m_scope);
        const QVector<Observer *> observers = m_observers;
        for (Observer *observer : observers) {
            if (m_observers.contains(observer))
                (observer->*callback)(arguments...);
        }
    }

private:
    Q_DISABLE_COPY(Observers)
    NoticeScope &m_scope;
    QVector<Observer *> m_observers;
};

using ItemObservers = Observers<IZkMediaItemManagerEventObserver>;
using TreeObservers = Observers<IZkCategoryTreeEventObserver>;

} // namespace zk::datamodel
