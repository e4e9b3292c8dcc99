// Export macro of the effects library.
#pragma once

#if defined(_WIN32)
#if defined(ZK_BUILD_EFFECTS)
#define ZKEFFECTS_EXPORT __declspec(dllexport)
#else
#define ZKEFFECTS_EXPORT __declspec(dllimport)
#endif
#else
#define ZKEFFECTS_EXPORT __attribute__((visibility("default")))
#endif
