// "zkstudio erase-worker": what an erase task starts; not for people.
#pragma once

#include <QStringList>

namespace zk::app {

// Without the program's and the command's name: the folder of the job. Returns the exit code.
int runEraseWorkerCommand(const QStringList &arguments);

} // namespace zk::app
