// Questions and messages to the user, in boxes of one look.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

namespace zk::app {

// Each returns when the box is closed.
void warnUser(QWidget *parent, const QString &title, const QString &text);
// One line per file or the like; long lists scroll.
void warnUser(QWidget *parent, const QString &title, const QString &text, const QStringList &list);
// Cancel is what Esc does.
bool askUser(QWidget *parent, const QString &title, const QString &text, const QString &goAhead);

enum class SaveChoice {
    Save,
    Discard,
    Cancel,
};
SaveChoice askToSave(QWidget *parent, const QString &project);

} // namespace zk::app
