#pragma once

#include <cstdint>
#include <cstdlib>
#include <vector>

// How much is measured: everything, or each benchmark once at its smallest size (`./bench
// --quick`), which only tells whether they still run.

inline bool IsQuick()
{
    return std::getenv("TELLUR_BENCH_QUICK") != nullptr;
}

inline int64_t GetRounds(int64_t iRounds)
{
    return IsQuick() ? 1 : iRounds;
}

// Smallest first.
inline std::vector<int64_t> GetSizes(std::vector<int64_t> sizes)
{
    sizes.resize(IsQuick() ? 1 : sizes.size());
    return sizes;
}
