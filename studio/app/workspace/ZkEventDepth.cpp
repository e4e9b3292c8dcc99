#include "ZkEventDepth.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace zk::app {

namespace {

// Those that programs do more about than to pass them on.
bool canTakeLong(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::Close:
    case QEvent::Resize:
    case QEvent::Timer:
    case QEvent::MetaCall:
        return true;
    default:
        return false;
    }
}

} // namespace

// What is deleted later goes only when everything has returned that was running when this was said.
class EventDepth::Sentinel : public QObject
{
public:
    Sentinel(const std::shared_ptr<State> &state, QObject *parent)
        : QObject(parent)
        , m_state(state)
    {
        ++m_state->sentinels;
        deleteLater();
    }
    ~Sentinel() override
    {
        setParent(nullptr); // which may go now
        if (--m_state->sentinels > 0 || !m_state->function)
            return;
        std::exchange(m_state->function, nullptr)();
    }

private:
    const std::shared_ptr<State> m_state;
};

EventDepth::EventDepth(QObject *parent)
    : QObject(parent)
    , m_state(std::make_shared<State>())
{
    QCoreApplication::instance()->installEventFilter(this);
}

EventDepth::~EventDepth()
{
    m_state->function = nullptr;
}

void EventDepth::post()
{
    new Sentinel(m_state, this);
}

void EventDepth::whenIdle(std::function<void()> function)
{
    m_state->function = std::move(function);
    post();
}

bool EventDepth::eventFilter(QObject *, QEvent *event)
{
    if (canTakeLong(event->type()))
        post();
    return false;
}

} // namespace zk::app
