#include "host/VectorLoop.h"

#include <cstdlib>

bool UseAvx2()
{
#ifdef TELLUR_HAS_AVX2_FORM
    static const bool s_bUse =
        __builtin_cpu_supports("avx2") && std::getenv("TELLUR_PLAIN_CPU") == nullptr;
    return s_bUse;
#else
    return false;
#endif
}
