// Export macro of the models library.
#pragma once

#include <QtGlobal>

#ifdef ZK_BUILD_MODELS
#define ZKMODELS_EXPORT Q_DECL_EXPORT
#else
#define ZKMODELS_EXPORT Q_DECL_IMPORT
#endif
