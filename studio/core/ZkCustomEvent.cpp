#include "ZkCore.h"

#include "ZkCallGate_p.h"

#include <QHash>
#include <QVector>

#include <mutex>

// What the manager knows of a listener. A delivery keeps it alive until it is through, so a handler
// may destroy the listener that it belongs to.
class ZkCustomEventListener::Entry
{
public:
    Entry(const QString &eventType, Handler eventHandler)
        : type(eventType)
        , handler(std::move(eventHandler))
    { }

    bool deliver(const ZkCustomEvent &event)
    {
        const ZkGatePass pass(gate);
        return pass && handler && handler(event);
    }

    void withdraw()
    {
        gate.close();
        // What the handler has captured goes with its listener, not with some later delivery's copy
        // of the entry. A handler that is being run by this thread must stay, though.
        if (!gate.isInside())
            handler = nullptr;
    }

    const QString type;

private:
    Handler handler;
    ZkCallGate gate;
};

class ZkCustomEventManager::Private
{
public:
    using EntryPointer = std::shared_ptr<ZkCustomEventListener::Entry>;

    void add(const EntryPointer &entry)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_entries[entry->type].append(entry);
    }

    void remove(const EntryPointer &entry)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        QVector<EntryPointer> &ofType = m_entries[entry->type];
        ofType.removeOne(entry);
        if (ofType.isEmpty())
            m_entries.remove(entry->type);
    }

    QVector<EntryPointer> entries(const QString &type) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_entries.value(type);
    }

private:
    mutable std::mutex m_mutex;
    QHash<QString, QVector<EntryPointer>> m_entries;
};

ZkCustomEventListener::ZkCustomEventListener(const QString &type, Handler handler, QObject *parent)
    : QObject(parent)
    , m_entry(std::make_shared<Entry>(type, std::move(handler)))
{
    ZkCustomEventManager::instance()->d->add(m_entry);
}

ZkCustomEventListener::~ZkCustomEventListener()
{
    ZkCustomEventManager::instance()->d->remove(m_entry);
    m_entry->withdraw();
}

ZkCustomEventManager::ZkCustomEventManager()
    : d(std::make_unique<Private>())
{ }

ZkCustomEventManager::~ZkCustomEventManager() = default;

ZkCustomEventManager *ZkCustomEventManager::instance()
{
    static ZkCustomEventManager manager;
    return &manager;
}

bool ZkCustomEventManager::postEvent(const QString &type, const QVariant &data)
{
    const ZkCustomEvent event {type, data};
    // The manager is not locked while handlers run: they post, register and withdraw as they like.
    const auto entries = d->entries(type);
    for (const auto &entry : entries) {
        if (entry->deliver(event))
            return true;
    }
    return false;
}
