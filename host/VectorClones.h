#pragma once

// For sources of engine and plug-in that loop over heights; nothing here is called.
//
// Builds a function twice, for plain x86-64 and for AVX2, and picks one when the library is loaded.
// Both give the same bits: no fused operations, no reordering. The sanitizers do not get along with
// the load-time choice, so they build it once.
#if defined(__x86_64__) && !defined(__SANITIZE_ADDRESS__) && !defined(__clang__)
#define TELLUR_VECTOR_CLONES __attribute__((target_clones("avx2", "default")))
#else
#define TELLUR_VECTOR_CLONES
#endif
