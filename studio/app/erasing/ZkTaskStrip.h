#pragma once

#include <QHash>
#include <QWidget>

class QHBoxLayout;
class QScrollArea;

namespace zk::app {

class EraseTasks;
class TaskCard;

// The erasings of the project beside each other; nothing while there is none.
class TaskStrip : public QWidget
{
    Q_OBJECT

public:
    // The tasks are not owned and must outlive it.
    explicit TaskStrip(EraseTasks *tasks, QWidget *parent = nullptr);

    // Results cannot be looked at while a workspace is open on a clip.
    void setResultsEnabled(bool enabled);
    TaskCard *card(int id) const { return m_cards.value(id); }

Q_SIGNALS:
    void resultRequested(int id);
    void reasonRequested(int id);

protected:
    void changeEvent(QEvent *event) override;

private:
    void add(int id);
    void refresh(int id);
    void refreshAll();
    void remove(int id);

    EraseTasks *const m_tasks;
    QScrollArea *m_area;
    QHBoxLayout *m_row;
    QHash<int, TaskCard *> m_cards;
    bool m_canOpen = true;
};

} // namespace zk::app
