#include "editor/script/ProtectionText.h"

#include <charconv>
#include <cstring>
#include <system_error>

namespace
{

constexpr char ALL[] = "all";
constexpr char NONE[] = "none";
constexpr uint32_t SIDE = CVertexProtection::SIDE;
constexpr size_t DIGITS = 16; // of a row
constexpr int HEXADECIMAL = 16;
constexpr unsigned DIGIT_BITS = 4;

using Square = CVertexProtection::Square;

bool ReadRows(const char* pszText, Square& bits)
{
    bool bRead = std::strlen(pszText) == DIGITS * SIDE;
    for (size_t z = 0; z < SIDE && bRead; ++z)
    {
        const char* pRow = pszText + z * DIGITS;
        const auto result = std::from_chars(pRow, pRow + DIGITS, bits[z], HEXADECIMAL);
        bRead = result.ec == std::errc() && result.ptr == pRow + DIGITS;
    }
    return bRead;
}

} // namespace

std::string
MakeSquareText(const CVertexProtection& protection, uint32_t uSquareX, uint32_t uSquareZ)
{
    constexpr char SIGNS[] = "0123456789abcdef";
    const CVertexProtection::SquareRef square = protection.GetSquare(uSquareX, uSquareZ);
    if (square == nullptr)
    {
        return NONE;
    }
    if (*square == protection.GetWholeSquare(uSquareX, uSquareZ))
    {
        return ALL;
    }
    std::string strText;
    strText.reserve(DIGITS * SIDE);
    for (const uint64_t uRow : *square)
    {
        for (size_t i = 0; i < DIGITS; ++i)
        {
            strText += SIGNS[(uRow >> ((DIGITS - 1 - i) * DIGIT_BITS)) & 0xFU];
        }
    }
    return strText;
}

bool ReadSquareText(const char* pszText, int iColumn, int iRow, CVertexProtection& protection)
{
    const auto uColumn = static_cast<uint32_t>(iColumn);
    const auto uRow = static_cast<uint32_t>(iRow);
    if (iColumn < 0 || iRow < 0 || uColumn % SIDE != 0 || uRow % SIDE != 0 ||
        uColumn >= protection.GetSizeX() || uRow >= protection.GetSizeZ())
    {
        return false;
    }
    const uint32_t uSquareX = uColumn / SIDE;
    const uint32_t uSquareZ = uRow / SIDE;
    Square bits = {};
    const bool bAll = std::strcmp(pszText, ALL) == 0;
    if (bAll)
    {
        bits = protection.GetWholeSquare(uSquareX, uSquareZ);
    }
    if (!bAll && std::strcmp(pszText, NONE) != 0 && !ReadRows(pszText, bits))
    {
        return false;
    }
    protection.SetSquare(uSquareX, uSquareZ, protection.MakeSquare(uSquareX, uSquareZ, bits));
    return true;
}

std::string
GetSquareCalls(const CVertexProtection& from, const CVertexProtection& to, const char* pszKeyword)
{
    const bool bSize = from.GetSizeX() == to.GetSizeX() && from.GetSizeZ() == to.GetSizeZ();
    std::string strCalls;
    for (uint32_t z = 0; z < to.GetSquaresZ() && from.GetId() != to.GetId(); ++z)
    {
        for (uint32_t x = 0; x < to.GetSquaresX(); ++x)
        {
            const uint64_t* pFrom = bSize ? from.FindRows(x, z) : nullptr;
            if (pFrom != to.FindRows(x, z)) // squares never change: one that is shared is the same
            {
                strCalls += std::string(pszKeyword) + "( " + std::to_string(x * SIDE) + ", " +
                            std::to_string(z * SIDE) + ", \"" + MakeSquareText(to, x, z) + "\" )\n";
            }
        }
    }
    return strCalls;
}
