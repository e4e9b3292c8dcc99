// Export macros of the host libraries. A library is built with ZK_BUILD_<NAME> defined and so exports
// what its header declares; everyone else imports it.
#pragma once

#include <QtGlobal>

// Interfaces without code of their own: their type information must be one across libraries, so that
// dynamic_cast works between them. Windows compares type names and needs nothing.
#if defined(__GNUC__) && !defined(_WIN32)
#define ZK_INTERFACE __attribute__((visibility("default")))
#else
#define ZK_INTERFACE
#endif

#ifdef ZK_BUILD_CORE
#define ZKCORE_EXPORT Q_DECL_EXPORT
#else
#define ZKCORE_EXPORT Q_DECL_IMPORT
#endif

#ifdef ZK_BUILD_DATAMODEL
#define ZKDATAMODEL_EXPORT Q_DECL_EXPORT
#else
#define ZKDATAMODEL_EXPORT Q_DECL_IMPORT
#endif

#ifdef ZK_BUILD_MEDIAPLAYER
#define ZKMEDIAPLAYER_EXPORT Q_DECL_EXPORT
#else
#define ZKMEDIAPLAYER_EXPORT Q_DECL_IMPORT
#endif

#ifdef ZK_BUILD_WIDGETS
#define ZKWIDGETS_EXPORT Q_DECL_EXPORT
#else
#define ZKWIDGETS_EXPORT Q_DECL_IMPORT
#endif

#ifdef ZK_BUILD_TIMELINEVIEW
#define ZKTIMELINEVIEW_EXPORT Q_DECL_EXPORT
#else
#define ZKTIMELINEVIEW_EXPORT Q_DECL_IMPORT
#endif

#ifdef ZK_BUILD_UTILITY
#define ZKUTILITY_EXPORT Q_DECL_EXPORT
#else
#define ZKUTILITY_EXPORT Q_DECL_IMPORT
#endif

#ifdef ZK_BUILD_ACCOUNT
#define ZKACCOUNT_EXPORT Q_DECL_EXPORT
#else
#define ZKACCOUNT_EXPORT Q_DECL_IMPORT
#endif
