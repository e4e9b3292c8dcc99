// The process that erases: started by an EraseTask, in which it has its host.
#pragma once

#include "ZkErasingGlobal.h"

#include <QString>

namespace zk::erasing {

// Does the job of that folder, puts the result into it and tells the host by lines on standard output.
// Returns the process's exit code when the host has taken the result, when there will be none, or when
// the host is gone; then the folder is gone, too. Needs an application object. selectLanguage gets the
// code of the language of messages, if it is not that of the source texts.
ZKERASING_EXPORT int runEraseWorker(const QString &folder,
                                    void (*selectLanguage)(const QString &code));

} // namespace zk::erasing
