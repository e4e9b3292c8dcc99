// The program with its windows.
#pragma once

#include <QStringList>

class QApplication;

namespace zk::app {

// Whether the arguments after the program's name ask for the windows rather than for a command.
bool isEditorStart(const QStringList &arguments);

// Chooses what the windows run on. Before the application is made. False, with a sentence for the user, when
// there is no display.
bool prepareEditor(QString *error);

// Shows the window until it is closed. Returns the program's exit code.
int runEditor(QApplication &application, const QStringList &arguments);

} // namespace zk::app
