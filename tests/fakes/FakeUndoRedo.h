// A small history that really undoes and redoes.
#pragma once

#include "Journal.h"

#include "datamodel/ZkUndoRedo.h"

#include <QSharedPointer>

#include <functional>

namespace zk::fake {

class Step : public IZkUndoRedoItem
{
public:
    Step(std::function<void()> redo, std::function<void()> undo)
        : m_redo(std::move(redo))
        , m_undo(std::move(undo))
    { }
    void redo() override { m_redo(); }
    void undo() override { m_undo(); }

private:
    std::function<void()> m_redo;
    std::function<void()> m_undo;
};

class UndoRedoService : public IZkUndoRedoService
{
public:
    // Reports what was held back.
    std::function<void()> onEventsResumed;

    void push(IZkUndoRedoItem *item) override
    {
        const QSharedPointer<IZkUndoRedoItem> owned(item);
        item->redo();
        if (!isRecording())
            return;
        open(item->description());
        m_open.items.append(owned);
        close();
    }
    void clearHistory() override
    {
        m_steps.clear();
        m_position = 0;
    }
    void beginMacro(const QString &text, const QString &origin) override
    {
        note("undo.beginMacro", text, origin);
        open(text);
    }
    void endMacro() override
    {
        note("undo.endMacro");
        close();
    }
    bool canUndo() const override { return m_position > 0; }
    bool canRedo() const override { return m_position < m_steps.size(); }
    bool undo() override
    {
        if (!canUndo())
            return false;
        const auto &items = m_steps.at(--m_position).items;
        for (auto item = items.crbegin(); item != items.crend(); ++item)
            (*item)->undo();
        notify();
        return true;
    }
    bool redo() override
    {
        if (!canRedo())
            return false;
        for (const auto &item : m_steps.at(m_position++).items)
            item->redo();
        notify();
        return true;
    }
    QString undoText() const override { return m_steps.value(m_position - 1).text; }
    QString redoText() const override { return m_steps.value(m_position).text; }
    int undoStepCount() const override { return m_position; }
    void suspendRecording() override { ++m_suspended; }
    void resumeRecording() override { --m_suspended; }
    bool isRecording() const override { return m_suspended == 0; }
    void pauseEvents() override { ++m_paused; }
    void resumeEvents() override
    {
        if (--m_paused == 0 && onEventsResumed)
            onEventsResumed();
    }
    bool arePaused() const { return m_paused > 0; }
    void addObserver(IZkUndoRedoServiceEventObserver *who) override { m_observers.add(who); }
    void removeObserver(IZkUndoRedoServiceEventObserver *who) override { m_observers.drop(who); }

private:
    struct Macro
    {
        QString text;
        QVector<QSharedPointer<IZkUndoRedoItem>> items;
    };

    void open(const QString &text)
    {
        if (m_depth++ == 0)
            m_open = Macro {text, {}};
    }
    void close()
    {
        if (--m_depth > 0 || m_open.items.isEmpty())
            return;
        m_steps.resize(m_position++);
        m_steps.append(m_open);
        notify();
    }
    void notify()
    {
        const auto listeners = m_observers;
        for (IZkUndoRedoServiceEventObserver *observer : listeners)
            observer->onUndoRedoChangedEvent();
    }

    Observers<IZkUndoRedoServiceEventObserver> m_observers {"undo"};
    Macro m_open;
    QVector<Macro> m_steps;
    int m_position = 0;
    int m_depth = 0;
    int m_suspended = 0;
    int m_paused = 0;
};

} // namespace zk::fake
