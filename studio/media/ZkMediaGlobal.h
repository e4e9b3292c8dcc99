// Export macro of the media library: decoding, encoding and caching of pictures.
#pragma once

#include <QtGlobal>

#ifdef ZK_BUILD_MEDIA
#define ZKMEDIA_EXPORT Q_DECL_EXPORT
#else
#define ZKMEDIA_EXPORT Q_DECL_IMPORT
#endif
