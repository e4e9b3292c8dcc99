#pragma once

#include <QDialog>

class QTableWidget;

namespace zk::app {

class WindowActions;

// The table of keys, of the editor and of the workspace.
class ShortcutsDialog : public QDialog
{
    Q_OBJECT

public:
    ShortcutsDialog(const WindowActions &actions, QWidget *parent = nullptr);

private:
    void addHeading(const QString &text);
    void addRow(const QString &what, const QString &key);

    QTableWidget *m_table;
};

// Says what the program is.
void showAbout(QWidget *parent);

} // namespace zk::app
