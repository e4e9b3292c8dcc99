#pragma once

#include <QWidget>

class QLabel;
class QListView;
class QModelIndex;

namespace zk::datamodel {
class Project;
class ProjectClip;
} // namespace zk::datamodel

namespace zk::app {

class ClipListModel;
class WindowActions;

// The clips of the project in their order, from left to right. Its current clip is the project's.
class ClipList : public QWidget
{
    Q_OBJECT

public:
    ClipList(datamodel::Project *project, const WindowActions &actions, QWidget *parent = nullptr);

    QListView *list() const { return m_list; }

Q_SIGNALS:
    void activated(); // the current clip, by a double click or Enter
    void filesDropped(const QStringList &files, int row);

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpList(const WindowActions &actions);
    void setUpHint();
    void showHint();
    void showCurrent();
    void takeCurrent(const QModelIndex &index);
    void retranslate();
    void openMenu(const QPoint &position);

    datamodel::Project *const m_project;
    const WindowActions &m_actions;
    ClipListModel *m_model;
    QListView *m_list;
    QLabel *m_title;
    QLabel *m_hint; // while there is nothing to list
    bool m_isFollowing = false; // the project, not the user
};

} // namespace zk::app
