// Undo and redo of one timeline.
#pragma once

#include "../ZkGlobal.h"

#include <QString>

// One undoable step, or a part of one.
class ZK_INTERFACE IZkUndoRedoItem
{
public:
    virtual ~IZkUndoRedoItem() = default;
    virtual void redo() = 0;
    virtual void undo() = 0;
    // Shown in the Edit menu unless the step is a macro, which has its own text.
    virtual QString description() const { return QString(); }
};

class ZK_INTERFACE IZkUndoRedoServiceEventObserver
{
public:
    virtual ~IZkUndoRedoServiceEventObserver() = default;
    // The history or the position in it has changed, once per step and not from inside one.
    virtual void onUndoRedoChangedEvent() = 0;
};

// GUI thread only. Undo, redo and clearing close macros that were left open first. While tracking
// runs, undo and redo are refused.
class ZK_INTERFACE IZkUndoRedoService
{
public:
    virtual ~IZkUndoRedoService() = default;

    // Takes ownership and runs redo() at once. While recording is suspended the item is deleted
    // right after that and leaves no step.
    virtual void push(IZkUndoRedoItem *item) = 0;
    virtual void clearHistory() = 0;

    // Macros nest; the outermost one is one step. A macro without items leaves no step. The origin
    // names the code that opened it, for the log.
    virtual void beginMacro(const QString &text, const QString &origin = QString()) = 0;
    virtual void endMacro() = 0;

    // An open macro that holds items counts as a step.
    virtual bool canUndo() const = 0;
    virtual bool canRedo() const = 0;
    // False when there was nothing to do or it was refused.
    virtual bool undo() = 0;
    virtual bool redo() = 0;
    virtual QString undoText() const = 0;
    virtual QString redoText() const = 0;
    // Number of steps that can be undone.
    virtual int undoStepCount() const = 0;

    // Counted: recording goes on after as many resumes as suspensions.
    virtual void suspendRecording() = 0;
    virtual void resumeRecording() = 0;
    virtual bool isRecording() const = 0;

    // Counted. While paused the timeline's change records are collected; the last resume reports
    // them as one set.
    virtual void pauseEvents() = 0;
    virtual void resumeEvents() = 0;

    // Not owned; an observer must be removed before it dies.
    virtual void addObserver(IZkUndoRedoServiceEventObserver *observer) = 0;
    virtual void removeObserver(IZkUndoRedoServiceEventObserver *observer) = 0;
};

// Scopes that undo themselves. A null service makes them do nothing.

// One undoable step with a text and the name of the code that opened it.
class ZkUndoRedoCommander
{
public:
    ZkUndoRedoCommander(IZkUndoRedoService *service, const QString &text, const QString &origin)
        : m_service(service)
    {
        if (m_service)
            m_service->beginMacro(text, origin);
    }
    ~ZkUndoRedoCommander()
    {
        if (m_service)
            m_service->endMacro();
    }

private:
    Q_DISABLE_COPY(ZkUndoRedoCommander)
    IZkUndoRedoService *m_service;
};

// Holds change records back.
class ZkPauseEventCommander
{
public:
    explicit ZkPauseEventCommander(IZkUndoRedoService *service)
        : m_service(service)
    {
        if (m_service)
            m_service->pauseEvents();
    }
    ~ZkPauseEventCommander()
    {
        if (m_service)
            m_service->resumeEvents();
    }

private:
    Q_DISABLE_COPY(ZkPauseEventCommander)
    IZkUndoRedoService *m_service;
};

// With false: changes made while it lives leave no undo step. With true it does nothing.
class ZkUndoRedoEnableCommander
{
public:
    ZkUndoRedoEnableCommander(IZkUndoRedoService *service, bool enabled)
        : m_service(enabled ? nullptr : service)
    {
        if (m_service)
            m_service->suspendRecording();
    }
    ~ZkUndoRedoEnableCommander()
    {
        if (m_service)
            m_service->resumeRecording();
    }

private:
    Q_DISABLE_COPY(ZkUndoRedoEnableCommander)
    IZkUndoRedoService *m_service;
};

class ZkDisableUndoRedoCommander : public ZkUndoRedoEnableCommander
{
public:
    explicit ZkDisableUndoRedoCommander(IZkUndoRedoService *service)
        : ZkUndoRedoEnableCommander(service, false)
    { }
};
