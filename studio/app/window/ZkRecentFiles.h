#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class QMenu;

namespace zk::app {

// The projects that were open last, the latest first, and the menu that offers them. Files that are
// missing stay in the menu, disabled, since their disk may come back.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int maximum = 10;

    explicit RecentFiles(QObject *parent = nullptr);

    QStringList files() const;
    void add(const QString &path);
    void remove(const QString &path);
    void clear();
    // The menu is filled whenever it is about to be shown. Not owned.
    void setMenu(QMenu *menu);

Q_SIGNALS:
    void chosen(const QString &path);

private:
    void fill();
    void store(const QStringList &files);

    QPointer<QMenu> m_menu;
};

} // namespace zk::app
