#include "engine/files/FormatText.h"

#include <locale.h>
#include <stdio.h>

#include <cstdlib>
#include <memory>

namespace
{

// Puts the calling thread into the "C" locale while it lives.
class CNeutralLocale
{
public:
    CNeutralLocale()
        : m_Previous(uselocale(GetNeutral()))
    {
    }

    ~CNeutralLocale() { uselocale(m_Previous); }

    CNeutralLocale(const CNeutralLocale&) = delete;
    CNeutralLocale& operator=(const CNeutralLocale&) = delete;

private:
    static locale_t GetNeutral()
    {
        static const locale_t s_Neutral = newlocale(LC_ALL_MASK, "C", nullptr);
        return s_Neutral;
    }

    locale_t m_Previous;
};

} // namespace

bool FormatText(std::string& strText, const char* pszFormat, va_list arguments)
{
    const CNeutralLocale neutral;
    char* pszFormatted = nullptr;
    const int nLength = ::vasprintf(&pszFormatted, pszFormat, arguments);
    if (nLength < 0)
    {
        return false;
    }
    const std::unique_ptr<char, decltype(&std::free)> pFormatted(pszFormatted, &std::free);
    strText.assign(pszFormatted, static_cast<size_t>(nLength));
    return true;
}
