// Export macro of the module.
#pragma once

#include <QtGlobal>

#ifdef ZK_BUILD_SMARTKEYING
#define ZKSMARTKEYING_EXPORT Q_DECL_EXPORT
#else
#define ZKSMARTKEYING_EXPORT Q_DECL_IMPORT
#endif
