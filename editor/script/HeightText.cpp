#include "editor/script/HeightText.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace
{

constexpr size_t DIGITS = 8;
constexpr int BASE = 16;
constexpr uint32_t BITS_A_DIGIT = 4;

} // namespace

std::string MakeHeightText(const float* pHeights, size_t nCount)
{
    constexpr char HEX[] = "0123456789abcdef";
    std::string strText(nCount * DIGITS, '0');
    for (size_t i = 0; i < nCount; ++i)
    {
        auto uBits = std::bit_cast<uint32_t>(pHeights[i]);
        for (size_t iDigit = DIGITS; iDigit-- > 0; uBits >>= BITS_A_DIGIT)
        {
            strText[i * DIGITS + iDigit] = HEX[uBits % BASE];
        }
    }
    return strText;
}

bool ReadHeightText(const char* pszText, std::vector<float>& heights)
{
    const size_t nText = std::strlen(pszText);
    heights.clear();
    for (size_t i = 0; i + DIGITS <= nText; i += DIGITS)
    {
        uint32_t uBits = 0;
        const auto result = std::from_chars(pszText + i, pszText + i + DIGITS, uBits, BASE);
        const auto fHeight = std::bit_cast<float>(uBits);
        if (result.ptr != pszText + i + DIGITS || !std::isfinite(fHeight))
        {
            return false;
        }
        heights.push_back(fHeight);
    }
    return nText > 0 && nText % DIGITS == 0;
}
