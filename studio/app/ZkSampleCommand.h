// "zkstudio sample": writes the sample clip with its strokes and true mattes.
#pragma once

#include "ZkExitCode.h"

#include <QStringList>

namespace zk::app {

ExitCode runSampleCommand(const QStringList &arguments);

} // namespace zk::app
