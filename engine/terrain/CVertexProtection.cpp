#include "engine/terrain/CVertexProtection.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace
{

uint64_t MakeId()
{
    static uint64_t s_LastId = 0;
    return ++s_LastId;
}

// The lowest bits that lie on the terrain, of a square that begins at uFirst.
uint64_t GetColumns(uint32_t uFirst, uint32_t uSize)
{
    const uint32_t uThere = uSize - uFirst;
    return uThere >= CVertexProtection::SIDE ? ~uint64_t{0} : (uint64_t{1} << uThere) - 1;
}

// The vertex of another grid over the same ground that lies nearest; halves go up.
uint32_t GetNearest(uint32_t uVertex, uint32_t uSize, uint32_t uOtherSize)
{
    const uint64_t uCells = uSize - 1;
    return static_cast<uint32_t>((uint64_t{uVertex} * (uOtherSize - 1) * 2 + uCells) /
                                 (2 * uCells));
}

// The bits of row uZ of another grid, in the square that begins at column uFirst.
uint64_t GetResampledRow(const CVertexProtection& from,
                         const CVertexProtection& other,
                         uint32_t uFirst,
                         uint32_t uZ)
{
    const uint32_t uFromZ = GetNearest(uZ, other.GetSizeZ(), from.GetSizeZ());
    const uint32_t uEnd = std::min(uFirst + CVertexProtection::SIDE, other.GetSizeX());
    uint64_t uBits = 0;
    for (uint32_t x = uFirst; x < uEnd; ++x)
    {
        const uint32_t uFromX = GetNearest(x, other.GetSizeX(), from.GetSizeX());
        uBits |= uint64_t{from.IsProtected(uFromX, uFromZ)} << (x - uFirst);
    }
    return uBits;
}

} // namespace

CVertexProtection::CVertexProtection(uint32_t uSizeX, uint32_t uSizeZ)
    : m_SizeX(uSizeX)
    , m_SizeZ(uSizeZ)
{
}

CVertexProtection::SquareRef CVertexProtection::GetSquare(uint32_t uSquareX,
                                                          uint32_t uSquareZ) const
{
    return m_Squares.empty() ? nullptr : m_Squares[size_t{uSquareZ} * GetSquaresX() + uSquareX];
}

size_t CVertexProtection::GetCount() const
{
    size_t nCount = 0;
    for (const SquareRef& square : m_Squares)
    {
        for (size_t z = 0; square != nullptr && z < SIDE; ++z)
        {
            nCount += static_cast<size_t>(std::popcount((*square)[z]));
        }
    }
    return nCount;
}

CVertexProtection::Square CVertexProtection::GetWholeSquare(uint32_t uSquareX,
                                                            uint32_t uSquareZ) const
{
    Square bits = {};
    const uint32_t uRows = std::min(m_SizeZ - uSquareZ * SIDE, SIDE);
    std::fill_n(bits.begin(), uRows, GetColumns(uSquareX * SIDE, m_SizeX));
    return bits;
}

CVertexProtection::SquareRef
CVertexProtection::MakeSquare(uint32_t uSquareX, uint32_t uSquareZ, const Square& bits) const
{
    Square inside = GetWholeSquare(uSquareX, uSquareZ);
    uint64_t uAny = 0;
    uint64_t uAll = ~uint64_t{0};
    for (size_t z = 0; z < SIDE; ++z)
    {
        inside[z] &= bits[z];
        uAny |= inside[z];
        uAll &= inside[z];
    }
    if (uAny == 0)
    {
        return nullptr;
    }
    // One for all of them, so that a large terrain that is protected as a whole takes no memory.
    static const SquareRef s_Full = []
    {
        Square full = {};
        full.fill(~uint64_t{0});
        return std::make_shared<const Square>(full);
    }();
    return ~uAll == 0 ? s_Full : std::make_shared<const Square>(inside);
}

void CVertexProtection::SetSquare(uint32_t uSquareX, uint32_t uSquareZ, SquareRef square)
{
    if (m_Squares.empty())
    {
        if (square == nullptr)
        {
            return;
        }
        m_Squares.resize(size_t{GetSquaresX()} * GetSquaresZ());
    }
    SquareRef& place = m_Squares[size_t{uSquareZ} * GetSquaresX() + uSquareX];
    m_Used += (square != nullptr ? 1U : 0U);
    m_Used -= (place != nullptr ? 1U : 0U);
    place = std::move(square);
    if (IsEmpty())
    {
        m_Squares.clear(); // its memory stays: what is taken back must find it
    }
    m_Id = IsEmpty() ? 0 : MakeId();
}

CVertexProtection CVertexProtection::Resampled(uint32_t uSizeX, uint32_t uSizeZ) const
{
    if (uSizeX == m_SizeX && uSizeZ == m_SizeZ)
    {
        return *this;
    }
    CVertexProtection other(uSizeX, uSizeZ);
    const uint32_t uSquares = IsEmpty() ? 0 : other.GetSquaresX() * other.GetSquaresZ();
    for (uint32_t i = 0; i < uSquares; ++i)
    {
        const uint32_t uSquareX = i % other.GetSquaresX();
        const uint32_t uSquareZ = i / other.GetSquaresX();
        Square bits = {};
        for (uint32_t z = uSquareZ * SIDE; z < std::min((uSquareZ + 1) * SIDE, uSizeZ); ++z)
        {
            bits[z % SIDE] = GetResampledRow(*this, other, uSquareX * SIDE, z);
        }
        other.SetSquare(uSquareX, uSquareZ, other.MakeSquare(uSquareX, uSquareZ, bits));
    }
    return other;
}
