// "zkstudio presets": lists the looks of the preset library.
#pragma once

#include "ZkExitCode.h"

#include <QStringList>

namespace zk::app {

ExitCode runPresetsCommand(const QStringList &arguments);

} // namespace zk::app
