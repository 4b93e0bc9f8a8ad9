#pragma once

#include "host/Export.h"

// Loops over heights, weights and texels, built for plain x86-64 and for AVX2 by whichever
// compiler, with and without the sanitizers; other processors have the plain form alone. Both give
// the same bits: nothing is fused (-ffp-contract=off) or reordered (no -ffast-math), and a loop
// that adds up floating numbers adds them in the order in which it is written.
//
//     TELLUR_LOOP_BODY void AddTo(float* pSums, const float* pAdded, size_t nCount) { … }
//     CVectorLoop<AddTo>::Run(pSums, pAdded, nCount);
//
// Choosing costs a few nanoseconds, so a loop is worth a row of values, not one. What a body calls
// must be inlined into it, otherwise it stays plain code: the standard library's small functions
// and other bodies are.

// The compiler makes a form of its own out of the body for each processor.
#define TELLUR_LOOP_BODY [[gnu::always_inline]] static inline

#if defined(__x86_64__)
#define TELLUR_HAS_AVX2_FORM
#endif

// Whether loops run in their AVX2 form: the processor and the system have it, and the environment
// variable TELLUR_PLAIN_CPU was not set when this was asked first, whatever its value. The answer
// stays for the life of the process. Implemented by the engine library; any thread.
TELLUR_API bool UseAvx2();

template <auto TBody> struct CVectorLoop;

// A body is a function of its own name: not overloaded, and no member of an object.
template <typename TResult, typename... TArguments, TResult (*TBody)(TArguments...)>
struct CVectorLoop<TBody>
{
    static TResult RunPlain(TArguments... arguments) { return TBody(arguments...); }

#ifdef TELLUR_HAS_AVX2_FORM
    [[gnu::target("avx2")]] static TResult RunAvx2(TArguments... arguments)
    {
        return TBody(arguments...);
    }

    static TResult Run(TArguments... arguments)
    {
        return UseAvx2() ? RunAvx2(arguments...) : RunPlain(arguments...);
    }
#else
    static TResult Run(TArguments... arguments)
    {
        return RunPlain(arguments...);
    }
#endif
};
