// "zkstudio export": writes the clips of a project.
#pragma once

#include "ZkExitCode.h"

#include <QStringList>

namespace zk::app {

ExitCode runExportCommand(const QStringList &arguments);

} // namespace zk::app
