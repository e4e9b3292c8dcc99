// Export macro of the language library.
#pragma once

#include <QtGlobal>

#ifdef ZK_BUILD_LANGUAGE
#define ZKLANGUAGE_EXPORT Q_DECL_EXPORT
#else
#define ZKLANGUAGE_EXPORT Q_DECL_IMPORT
#endif
