// Marks the few inner loops that are worth a second translation for wider registers. Not public.
#pragma once

// The loader picks the variant that the processor has. Sanitizers run their start-up code after the
// loader's choice, so they get the plain variant only, as do compilers without this mechanism.
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__linux__)          \
    && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define ZKENGINE_VECTORISED __attribute__((target_clones("arch=haswell", "default")))
#else
#define ZKENGINE_VECTORISED
#endif
