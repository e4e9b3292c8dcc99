#pragma once

#include "../timeline/ZkObserverList.h"

#include "ZkDataModel.h"

#include <QStringList>
#include <QUndoStack>

#include <functional>
#include <memory>

// Undo and redo of one timeline, on a QUndoStack.
//
// Nothing is told to anybody while the stack works: an operation first finishes on the stack, then the
// observers hear that the history has changed, then the change records that the operation's items
// reported go out as one set, all of it still inside the call. So an observer may run an event loop,
// undo, or delete the timeline.
//
// It keeps the last 1000 steps.
//
// Items must not push items from their redo() or undo(), unless recording is suspended: such an item is
// done, but cannot be undone.
class ZKDATAMODEL_EXPORT ZkStudioUndoRedoService : public IZkUndoRedoService
{
public:
    using ChangeSink = std::function<void(const ZkTimelineChanges &)>;

    // The sink gets the change records that are due.
    explicit ZkStudioUndoRedoService(ChangeSink sink);
    ~ZkStudioUndoRedoService() override;

    // Change records for the sink: at once, or when the step that is being done is over, or when
    // events are resumed.
    void report(const ZkTimelineChanges &changes);
    // Runs the function at once, or after the step that is being done and its change records; while
    // events are paused that is when they are resumed.
    void runAfterStep(std::function<void()> function);

    // Names the state that the steps have led to: undo and redo come back to the same number, no other
    // state has it, and clearing the history keeps it. Changes that were not recorded do not count.
    quint64 stateId() const;

    // While blocked, undo() and redo() are refused; what there is to undo stays the same.
    void setBlocked(bool blocked);
    bool isBlocked() const { return m_isBlocked; }

    void push(IZkUndoRedoItem *item) override;
    void clearHistory() override;
    void beginMacro(const QString &text, const QString &origin = QString()) override;
    // Ignored when no macro is open: undo, redo and clearing may have closed it.
    void endMacro() override;
    bool canUndo() const override;
    bool canRedo() const override;
    bool undo() override;
    bool redo() override;
    QString undoText() const override;
    QString redoText() const override;
    int undoStepCount() const override;
    void suspendRecording() override;
    void resumeRecording() override;
    bool isRecording() const override { return m_suspensions == 0; }
    void pauseEvents() override;
    void resumeEvents() override;
    void addObserver(IZkUndoRedoServiceEventObserver *observer) override;
    void removeObserver(IZkUndoRedoServiceEventObserver *observer) override;

private:
    Q_DISABLE_COPY(ZkStudioUndoRedoService)
    class Working;

    bool isMacroStarted() const { return m_startedMacros > 0; }
    bool canStep() const;
    bool step(bool isPossible, void (QUndoStack::*operation)());
    void pushUnrecorded(std::unique_ptr<IZkUndoRedoItem> item);
    void startMacros();
    bool closeMacros();
    void settle(bool hasHistoryChanged);
    bool flushChanges();
    bool flushFunctions();

    QUndoStack m_stack;
    quint64 m_baseState; // without any step
    ChangeSink m_sink;
    QStringList m_macros; // the open ones, outermost first
    int m_startedMacros = 0; // how many of them the stack knows
    int m_suspensions = 0;
    int m_pauses = 0;
    bool m_isWorking = false; // the stack, or an unrecorded item, is at it
    bool m_isBlocked = false;
    ZkTimelineChanges m_changes; // that wait
    QVector<std::function<void()>> m_functions; // that wait
    zk::datamodel::ObserverList<IZkUndoRedoServiceEventObserver> m_observers;
    std::shared_ptr<int> m_alive = std::make_shared<int>(0); // observers may delete the service
};
