#include "tests/support/Calls.h"

#include <locale.h>

#include <cstdarg>
#include <cstdio>

void AddCall(Calls* pCalls, const char* pszFormat, ...)
{
    if (pCalls == nullptr)
    {
        return;
    }
    // The run may have a locale with a comma for the point, and expected lines have the point.
    static const locale_t s_Neutral = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(s_Neutral);
    char szLine[512];
    va_list arguments;
    va_start(arguments, pszFormat);
    std::vsnprintf(szLine, sizeof(szLine), pszFormat, arguments);
    va_end(arguments);
    uselocale(before);
    pCalls->emplace_back(szLine);
}

std::string ToText(const SExtents& box)
{
    const auto& [min, max] = box;
    Calls text;
    AddCall(&text, "[%g %g %g, %g %g %g]", min.x, min.y, min.z, max.x, max.y, max.z);
    return text.front();
}
