#include "ZkStudioUndoRedoService.h"

#include <QLoggingCategory>
#include <QUndoCommand>

#include <utility>

Q_LOGGING_CATEGORY(lcUndo, "zk.undo")

namespace {

// Strokes keep their masks, compressed.
constexpr int mostSteps = 1000;

quint64 nextState()
{
    static quint64 last = 0; // GUI thread only
    return ++last;
}

class Command : public QUndoCommand
{
public:
    explicit Command(std::unique_ptr<IZkUndoRedoItem> item)
        : QUndoCommand(item->description())
        , m_item(std::move(item))
        , m_state(nextState())
    { }

    quint64 state() const { return m_state; }

    void redo() override { m_item->redo(); }
    void undo() override { m_item->undo(); }

private:
    const std::unique_ptr<IZkUndoRedoItem> m_item;
    const quint64 m_state; // that it leads to
};

// Of a macro it is that of its last command.
quint64 stateOf(const QUndoCommand *step)
{
    while (step->childCount() > 0)
        step = step->child(step->childCount() - 1);
    const auto *command = dynamic_cast<const Command *>(step);
    return command ? command->state() : 0; // a macro that is just being begun
}

// The time in which a full stack may forget its oldest step: without any step there is then what that one
// had led to.
class Growth
{
public:
    Growth(const QUndoStack &stack, quint64 *baseState)
        : m_stack(stack)
        , m_oldest(stack.index() > 0 ? stateOf(stack.command(0)) : 0)
        , m_baseState(baseState)
    { }
    ~Growth()
    {
        if (m_oldest > 0 && stateOf(m_stack.command(0)) != m_oldest)
            *m_baseState = m_oldest;
    }

private:
    Q_DISABLE_COPY(Growth)
    const QUndoStack &m_stack;
    const quint64 m_oldest;
    quint64 *const m_baseState;
};

} // namespace

// Marks the time in which nothing may be told to anybody.
class ZkStudioUndoRedoService::Working
{
public:
    explicit Working(ZkStudioUndoRedoService *service)
        : m_service(service)
        , m_wasWorking(service->m_isWorking)
    {
        m_service->m_isWorking = true;
    }
    ~Working() { m_service->m_isWorking = m_wasWorking; }

private:
    Q_DISABLE_COPY(Working)
    ZkStudioUndoRedoService *const m_service;
    const bool m_wasWorking;
};

ZkStudioUndoRedoService::ZkStudioUndoRedoService(ChangeSink sink)
    : m_baseState(nextState())
    , m_sink(std::move(sink))
{
    m_stack.setUndoLimit(mostSteps);
}

ZkStudioUndoRedoService::~ZkStudioUndoRedoService() = default;

void ZkStudioUndoRedoService::report(const ZkTimelineChanges &changes)
{
    m_changes.add(changes);
    flushChanges();
}

void ZkStudioUndoRedoService::runAfterStep(std::function<void()> function)
{
    m_functions.append(std::move(function));
    flushFunctions();
}

// While a macro is open it is the last step on the stack, but not counted yet.
quint64 ZkStudioUndoRedoService::stateId() const
{
    const int steps = m_stack.index() + (isMacroStarted() ? 1 : 0);
    return steps > 0 ? stateOf(m_stack.command(steps - 1)) : m_baseState;
}

void ZkStudioUndoRedoService::setBlocked(bool blocked)
{
    m_isBlocked = blocked;
}

void ZkStudioUndoRedoService::push(IZkUndoRedoItem *item)
{
    if (!item)
        return;
    std::unique_ptr<IZkUndoRedoItem> owned(item);
    if (m_isWorking && isRecording())
        qCWarning(lcUndo, "An undo step was pushed from inside another one and cannot be undone");
    if (m_isWorking || !isRecording()) {
        pushUnrecorded(std::move(owned));
        return;
    }
    {
        const Working working(this);
        startMacros();
        const Growth growth(m_stack, &m_baseState);
        m_stack.push(new Command(std::move(owned)));
    }
    settle(!isMacroStarted());
}

void ZkStudioUndoRedoService::pushUnrecorded(std::unique_ptr<IZkUndoRedoItem> item)
{
    {
        const Working working(this);
        item->redo();
        item.reset();
    }
    settle(false);
}

// Macros reach the stack with their first item, so that one without items leaves nothing there.
void ZkStudioUndoRedoService::startMacros()
{
    while (m_startedMacros < m_macros.size())
        m_stack.beginMacro(m_macros.at(m_startedMacros++));
}

void ZkStudioUndoRedoService::clearHistory()
{
    if (m_isWorking)
        return;
    bool hadHistory = false;
    {
        const Working working(this);
        hadHistory = closeMacros() || m_stack.count() > 0;
        m_baseState = stateId();
        m_stack.clear();
    }
    settle(hadHistory);
}

void ZkStudioUndoRedoService::beginMacro(const QString &text, const QString &origin)
{
    qCDebug(lcUndo) << "macro" << text << "opened by" << origin;
    m_macros.append(text);
}

void ZkStudioUndoRedoService::endMacro()
{
    if (m_macros.isEmpty())
        return;
    m_macros.removeLast();
    if (m_startedMacros <= m_macros.size())
        return;
    --m_startedMacros;
    {
        const Working working(this);
        const Growth growth(m_stack, &m_baseState);
        m_stack.endMacro();
    }
    settle(!isMacroStarted());
}

// True when that made a step.
bool ZkStudioUndoRedoService::closeMacros()
{
    const bool makesStep = isMacroStarted();
    m_macros.clear();
    for (; m_startedMacros > 0; --m_startedMacros)
        m_stack.endMacro();
    return makesStep;
}

// QUndoStack itself can neither undo nor redo while a macro is open.
bool ZkStudioUndoRedoService::canUndo() const
{
    return isMacroStarted() || m_stack.index() > 0;
}

bool ZkStudioUndoRedoService::canRedo() const
{
    return m_stack.canRedo();
}

bool ZkStudioUndoRedoService::canStep() const
{
    return !m_isBlocked && !m_isWorking;
}

bool ZkStudioUndoRedoService::undo()
{
    return canStep() && step(canUndo(), &QUndoStack::undo);
}

bool ZkStudioUndoRedoService::redo()
{
    return canStep() && step(canRedo(), &QUndoStack::redo);
}

bool ZkStudioUndoRedoService::step(bool isPossible, void (QUndoStack::*operation)())
{
    bool makesStep = false;
    {
        const Working working(this);
        makesStep = closeMacros();
        if (isPossible)
            (m_stack.*operation)();
    }
    settle(makesStep || isPossible);
    return isPossible;
}

QString ZkStudioUndoRedoService::undoText() const
{
    if (isMacroStarted())
        return m_macros.constFirst();
    return m_stack.index() > 0 ? m_stack.text(m_stack.index() - 1) : QString();
}

QString ZkStudioUndoRedoService::redoText() const
{
    return m_stack.redoText();
}

int ZkStudioUndoRedoService::undoStepCount() const
{
    return m_stack.index() + (isMacroStarted() ? 1 : 0);
}

void ZkStudioUndoRedoService::suspendRecording()
{
    ++m_suspensions;
}

void ZkStudioUndoRedoService::resumeRecording()
{
    m_suspensions = qMax(0, m_suspensions - 1);
}

void ZkStudioUndoRedoService::pauseEvents()
{
    ++m_pauses;
}

void ZkStudioUndoRedoService::resumeEvents()
{
    m_pauses = qMax(0, m_pauses - 1);
    if (flushChanges())
        flushFunctions();
}

void ZkStudioUndoRedoService::addObserver(IZkUndoRedoServiceEventObserver *observer)
{
    m_observers.add(observer);
}

void ZkStudioUndoRedoService::removeObserver(IZkUndoRedoServiceEventObserver *observer)
{
    m_observers.remove(observer);
}

// Tells what has been held back. The service may be gone when a receiver returns.
void ZkStudioUndoRedoService::settle(bool hasHistoryChanged)
{
    if (m_isWorking)
        return;
    const std::weak_ptr<int> alive = m_alive;
    if (hasHistoryChanged)
        m_observers.forEach([](auto *observer) { observer->onUndoRedoChangedEvent(); });
    if (!alive.expired() && flushChanges())
        flushFunctions();
}

// False when the service is gone.
bool ZkStudioUndoRedoService::flushChanges()
{
    if (m_isWorking || m_pauses > 0 || m_changes.isEmpty())
        return true;
    const std::weak_ptr<int> alive = m_alive;
    const ChangeSink sink = m_sink;
    sink(std::exchange(m_changes, ZkTimelineChanges()));
    return !alive.expired();
}

// False when the service is gone.
bool ZkStudioUndoRedoService::flushFunctions()
{
    const std::weak_ptr<int> alive = m_alive;
    while (!alive.expired() && !m_isWorking && m_pauses == 0 && !m_functions.isEmpty()) {
        const std::function<void()> function = m_functions.takeFirst();
        function();
    }
    return !alive.expired();
}
