#include "engine/files/FormatText.h"

#include <locale.h>

#include <clocale>
#include <cstdio>

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
    char szShort[512];
    va_list again;
    va_copy(again, arguments);
    const int nLength = std::vsnprintf(szShort, sizeof szShort, pszFormat, arguments);
    bool bDone = nLength >= 0;
    if (bDone && static_cast<size_t>(nLength) < sizeof szShort)
    {
        strText.assign(szShort, static_cast<size_t>(nLength));
    }
    else if (bDone)
    {
        std::string strLong(static_cast<size_t>(nLength), '\0');
        bDone = std::vsnprintf(strLong.data(), strLong.size() + 1, pszFormat, again) == nLength;
        if (bDone)
        {
            strText = std::move(strLong);
        }
    }
    va_end(again);
    return bDone;
}
