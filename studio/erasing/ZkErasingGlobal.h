// Export macro of the erasing library: the task that makes a clip without its objects.
#pragma once

#include <QtGlobal>

#ifdef ZK_BUILD_ERASING
#define ZKERASING_EXPORT Q_DECL_EXPORT
#else
#define ZKERASING_EXPORT Q_DECL_IMPORT
#endif
