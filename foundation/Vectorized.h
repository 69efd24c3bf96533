#pragma once

/// Stands in front of a function that is little more than a loop over words: the compiler makes it of vector
/// instructions, on x86-64 once more for processors that have AVX2, and the loader takes what the machine can do.
/// Sanitizers look at plain loops.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) && \
    !defined(__SANITIZE_THREAD__)
#define ZPL_VECTORIZED __attribute__((target_clones("avx2", "default"), optimize("O3")))
#else
#define ZPL_VECTORIZED
#endif
