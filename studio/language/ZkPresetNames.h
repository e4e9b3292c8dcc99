// The names of looks in the user's language. They come as data, so they are listed for translators.
#pragma once

#include "ZkLanguageGlobal.h"

#include <QString>

namespace zk::app {

// Also of a category of looks. A name that is not listed comes back as it is.
ZKLANGUAGE_EXPORT QString presetName(const QString &name);

} // namespace zk::app
