#pragma once

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// Whether the application object has taken the locale that the run is meant to have: where it is
// not there, the run would prove nothing.
inline bool HasExpectedPoint()
{
    const char* pszExpected = std::getenv("TELLUR_TEST_POINT");
    const char* pszPoint = std::localeconv()->decimal_point;
    const bool bAsExpected = pszExpected == nullptr || std::strcmp(pszExpected, pszPoint) == 0;
    if (!bAsExpected)
    {
        std::fprintf(
            stderr, "the decimal point is \"%s\" instead of \"%s\"\n", pszPoint, pszExpected);
    }
    return bAsExpected;
}
