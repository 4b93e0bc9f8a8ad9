#include "editor/core/CChangeCount.h"

#include "engine/terrain/CTerrain.h"
#include "engine/world/CWorld.h"

#include <algorithm>
#include <new>

namespace
{

constexpr uint32_t SQUARE = 16; // vertices per side

uint32_t GetSquares(uint32_t uVertices)
{
    return (uVertices + SQUARE - 1) / SQUARE;
}

} // namespace

CChangeCount::CChangeCount(CWorld& world)
    : m_World(world)
{
}

void CChangeCount::Start()
{
    Clear();
    const CTerrain* pTerrain = m_World.GetCTerrain();
    const uint32_t uSizeX = pTerrain != nullptr ? pTerrain->GetVerticesX() : 0;
    const uint32_t uSizeZ = pTerrain != nullptr ? pTerrain->GetVerticesZ() : 0;
    if (uSizeX != m_SizeX || uSizeZ != m_SizeZ || m_Squares == nullptr)
    {
        m_SizeX = uSizeX;
        m_SizeZ = uSizeZ;
        m_Squares.reset(new (std::nothrow)
                            uint8_t[size_t{GetSquares(uSizeX)} * GetSquares(uSizeZ)]());
    }
    m_Seen = pTerrain != nullptr ? pTerrain->GetRevision() : 0;
}

void CChangeCount::Follow()
{
    const CTerrain* pTerrain = m_World.GetCTerrain();
    if (pTerrain != nullptr && pTerrain->GetVerticesX() == m_SizeX &&
        pTerrain->GetVerticesZ() == m_SizeZ && pTerrain->TakeDirtyRects(m_Seen, m_Rects))
    {
        for (const SVertexRect& rect : m_Rects)
        {
            Add(rect);
        }
    }
}

void CChangeCount::Clear()
{
    const size_t nPitch = GetSquares(m_SizeX);
    // Only the rows that have marks: most strokes are small and the terrain may be large.
    for (size_t z = m_Changed.uMinZ / SQUARE; m_Squares != nullptr && z * SQUARE < m_Changed.uEndZ;
         ++z)
    {
        std::fill_n(m_Squares.get() + z * nPitch, nPitch, uint8_t{0});
    }
    m_Changed = {};
    m_Count = 0;
}

void CChangeCount::Add(const SVertexRect& rect)
{
    m_Changed = m_Changed.Union(rect);
    if (m_Squares == nullptr)
    {
        m_Count = size_t{m_Changed.uEndX - m_Changed.uMinX} * (m_Changed.uEndZ - m_Changed.uMinZ);
        return;
    }
    const size_t nPitch = GetSquares(m_SizeX);
    for (uint32_t z = rect.uMinZ / SQUARE; z * SQUARE < rect.uEndZ; ++z)
    {
        const size_t nRows = std::min(m_SizeZ - z * SQUARE, SQUARE);
        for (uint32_t x = rect.uMinX / SQUARE; x * SQUARE < rect.uEndX; ++x)
        {
            uint8_t& uSquare = m_Squares[z * nPitch + x];
            m_Count += uSquare == 0 ? nRows * std::min(m_SizeX - x * SQUARE, SQUARE) : 0;
            uSquare = 1;
        }
    }
}
