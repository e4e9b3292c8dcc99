// Export macro of the storage library.
#pragma once

#include <QtGlobal>

#ifdef ZK_BUILD_STORAGE
#define ZKSTORAGE_EXPORT Q_DECL_EXPORT
#else
#define ZKSTORAGE_EXPORT Q_DECL_IMPORT
#endif
