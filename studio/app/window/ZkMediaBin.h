#pragma once

#include <QWidget>

class QLabel;
class QListView;
class QToolButton;

namespace zk::datamodel {
class Project;
}

namespace zk::app {

class MediaBinModel;
class WindowActions;

// The panel of the files that were imported. They are dragged to the clips, or added to their end by a
// double click or Enter.
class MediaBin : public QWidget
{
    Q_OBJECT

public:
    MediaBin(datamodel::Project *project, const WindowActions &actions, QWidget *parent = nullptr);

    qint64 currentMedia() const; // 0: none
    QListView *list() const { return m_list; }

Q_SIGNALS:
    void currentChanged();
    void activated(qint64 media);

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpList(const WindowActions &actions);
    void showHint();
    void retranslate();
    void openMenu(const QPoint &position);

    datamodel::Project *const m_project;
    const WindowActions &m_actions;
    MediaBinModel *m_model;
    QListView *m_list;
    QLabel *m_title;
    QLabel *m_hint; // while there is nothing to list
};

} // namespace zk::app
