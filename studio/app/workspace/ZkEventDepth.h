#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace zk::app {

// Knows whether an event that began while it lives is still being handled further down the stack, in an
// event loop or a processEvents() of whoever handles it: then what he works on must stay. GUI thread only.
class EventDepth : public QObject
{
    Q_OBJECT

public:
    explicit EventDepth(QObject *parent = nullptr);
    ~EventDepth() override;

    // Runs the function once, when nothing is under way any more, never from inside the call.
    void whenIdle(std::function<void()> function);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    class Sentinel;
    struct State
    {
        int sentinels = 0;
        std::function<void()> function;
    };
    void post();

    const std::shared_ptr<State> m_state;
};

} // namespace zk::app
