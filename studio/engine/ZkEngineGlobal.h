// Export macro of the engine library.
#pragma once

#if defined(_WIN32)
#if defined(ZK_BUILD_ENGINE)
#define ZKENGINE_EXPORT __declspec(dllexport)
#else
#define ZKENGINE_EXPORT __declspec(dllimport)
#endif
#else
#define ZKENGINE_EXPORT __attribute__((visibility("default")))
#endif
