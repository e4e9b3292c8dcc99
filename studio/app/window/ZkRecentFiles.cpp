#include "ZkRecentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

namespace zk::app {

namespace {

QString key()
{
    return QStringLiteral("projects/recent");
}

// An ampersand in a file's name is no key of the menu.
QString menuText(int number, const QString &path)
{
    const QFileInfo file(path);
    QString text = QStringLiteral("%1  –  %2")
                       .arg(file.fileName(), QDir::toNativeSeparators(file.absolutePath()));
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    return number < 10 ? QStringLiteral("&%1  %2").arg(number).arg(text) : text;
}

} // namespace

RecentFiles::RecentFiles(QObject *parent)
    : QObject(parent)
{ }

QStringList RecentFiles::files() const
{
    return QSettings().value(key()).toStringList();
}

void RecentFiles::add(const QString &path)
{
    const QString file = QFileInfo(path).absoluteFilePath();
    QStringList known = files();
    known.removeAll(file);
    known.prepend(file);
    store(known.mid(0, maximum));
}

void RecentFiles::remove(const QString &path)
{
    QStringList known = files();
    known.removeAll(QFileInfo(path).absoluteFilePath());
    store(known);
}

void RecentFiles::clear()
{
    store({});
}

void RecentFiles::setMenu(QMenu *menu)
{
    m_menu = menu;
    connect(menu, &QMenu::aboutToShow, this, &RecentFiles::fill);
    menu->menuAction()->setEnabled(!files().isEmpty());
}

void RecentFiles::store(const QStringList &files)
{
    QSettings().setValue(key(), files);
    if (m_menu)
        m_menu->menuAction()->setEnabled(!files.isEmpty());
}

void RecentFiles::fill()
{
    m_menu->clear();
    int number = 0;
    const QStringList known = files();
    for (const QString &path : known) {
        QAction *action = m_menu->addAction(menuText(++number, path));
        action->setData(path);
        action->setEnabled(QFileInfo::exists(path));
        connect(action, &QAction::triggered, this, [this, path] { Q_EMIT chosen(path); });
    }
    m_menu->addSeparator();
    connect(m_menu->addAction(tr("Clear List")), &QAction::triggered, this, &RecentFiles::clear);
}

} // namespace zk::app
