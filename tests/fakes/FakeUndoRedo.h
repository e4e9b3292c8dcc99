// A small history that really undoes and redoes.
#pragma once

#include "Journal.h"

#include "datamodel/ZkUndoRedo.h"

#include <QVector>

#include <functional>
#include <memory>
#include <vector>

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
        std::unique_ptr<IZkUndoRedoItem> owned(item);
        item->redo();
        if (m_suspended > 0)
            return;
        if (m_depth == 0)
            openMacro(item->description());
        m_open.items.push_back(std::move(owned));
        if (m_depth == 0)
            closeMacro();
    }
    void clearHistory() override
    {
        m_steps.clear();
        m_position = 0;
    }
    void beginMacro(const QString &text, const QString &origin) override
    {
        note("undo.beginMacro", text, origin);
        if (m_depth++ == 0)
            openMacro(text);
    }
    void endMacro() override
    {
        note("undo.endMacro");
        if (--m_depth == 0)
            closeMacro();
    }
    bool canUndo() const override { return m_position > 0; }
    bool canRedo() const override { return m_position < m_steps.size(); }
    bool undo() override
    {
        if (!canUndo())
            return false;
        auto &items = m_steps[--m_position].items;
        for (auto item = items.rbegin(); item != items.rend(); ++item)
            (*item)->undo();
        notify();
        return true;
    }
    bool redo() override
    {
        if (!canRedo())
            return false;
        for (auto &item : m_steps[m_position++].items)
            item->redo();
        notify();
        return true;
    }
    QString undoText() const override
    {
        return canUndo() ? m_steps[m_position - 1].text : QString();
    }
    QString redoText() const override { return canRedo() ? m_steps[m_position].text : QString(); }
    int undoStepCount() const override { return int(m_position); }
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
    void addObserver(IZkUndoRedoServiceEventObserver *observer) override
    {
        note("undo.addObserver");
        observers.append(observer);
    }
    void removeObserver(IZkUndoRedoServiceEventObserver *observer) override
    {
        note("undo.removeObserver");
        observers.removeOne(observer);
    }

    QVector<IZkUndoRedoServiceEventObserver *> observers;

private:
    struct Macro
    {
        QString text;
        std::vector<std::unique_ptr<IZkUndoRedoItem>> items;
    };

    void openMacro(const QString &text) { m_open = Macro {text, {}}; }
    void closeMacro()
    {
        if (m_open.items.empty())
            return;
        m_steps.resize(m_position);
        m_steps.push_back(std::move(m_open));
        ++m_position;
        notify();
    }
    void notify()
    {
        const auto listeners = observers;
        for (IZkUndoRedoServiceEventObserver *observer : listeners)
            observer->onUndoRedoChangedEvent();
    }

    Macro m_open;
    std::vector<Macro> m_steps;
    size_t m_position = 0;
    int m_depth = 0;
    int m_suspended = 0;
    int m_paused = 0;
};

} // namespace zk::fake
