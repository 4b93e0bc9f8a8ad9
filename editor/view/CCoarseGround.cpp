#include "editor/view/CCoarseGround.h"

#include "engine/terrain/CNormalField.h"

#include <algorithm>
#include <bit>

namespace
{

// Vertices of the copy; its last one is the terrain's last one, however far that is.
uint32_t CountVertices(uint32_t uVertices, uint32_t uShift)
{
    return ((uVertices - 1 + (1U << uShift) - 1) >> uShift) + 1;
}

} // namespace

bool CCoarseGround::Make(OpenGl& gl,
                         const SHeightView& ground,
                         uint32_t uTileCells,
                         uint32_t uMostCells)
{
    const uint32_t uCells = std::max(ground.uSizeX, ground.uSizeZ) - 1;
    // Patches of the tile's size must be patches of the copy.
    const auto uMost =
        static_cast<uint32_t>(std::countr_zero(uTileCells)) - CPatchTree::PATCH_SHIFT;
    uint32_t uShift = 0;
    while (uShift < uMost && (uCells >> uShift) > uMostCells)
    {
        ++uShift;
    }
    // Nothing coarser is needed, or possible with such tiles.
    if (uShift == 0)
    {
        return false;
    }
    m_VerticesX = CountVertices(ground.uSizeX, uShift);
    m_VerticesZ = CountVertices(ground.uSizeZ, uShift);
    // The heights come with the first Follow, which is told that all of them changed.
    m_Heights.resize(size_t{m_VerticesX} * m_VerticesZ);
    m_Shift = uShift;
    m_Tree.Reset(m_VerticesX, m_VerticesZ, uTileCells >> uShift);
    // A single tile takes all of the copy, whatever its shape.
    m_Tiles.Reset(gl, GetView(ground), std::bit_ceil(std::max(m_VerticesX, m_VerticesZ)));
    if (!m_Tiles.MakeTile(gl, 0, 0))
    {
        Release(gl);
        return false;
    }
    return true;
}

void CCoarseGround::Release(OpenGl& gl)
{
    if (IsMade())
    {
        m_Tiles.Release(gl);
        m_Heights = {};
        m_Shift = 0;
    }
}

SHeightView CCoarseGround::GetView(const SHeightView& ground) const
{
    const auto fScale = static_cast<float>(1U << m_Shift);
    return {
        m_Heights.data(), m_VerticesX, m_VerticesZ, ground.fStepX * fScale, ground.fStepZ * fScale};
}

uint64_t CCoarseGround::Follow(OpenGl& gl,
                               const SHeightView& ground,
                               const std::vector<SVertexRect>& changed)
{
    m_Changed.clear();
    for (const SVertexRect& rect : changed)
    {
        // Up to the kept vertex at or behind the last changed one: the last vertex of the copy lies
        // nearer than its number says.
        const SVertexRect part = {rect.uMinX >> m_Shift,
                                  rect.uMinZ >> m_Shift,
                                  CountVertices(rect.uEndX, m_Shift),
                                  CountVertices(rect.uEndZ, m_Shift)};
        for (uint32_t z = part.uMinZ; z < part.uEndZ; ++z)
        {
            const uint32_t uRow = std::min(z << m_Shift, ground.uSizeZ - 1);
            const float* pRow = ground.pHeights + size_t{uRow} * ground.uSizeX;
            float* pTo = m_Heights.data() + size_t{z} * m_VerticesX;
            for (uint32_t x = part.uMinX; x < part.uEndX; ++x)
            {
                pTo[x] = pRow[std::min(x << m_Shift, ground.uSizeX - 1)];
            }
        }
        m_Changed.push_back(part);
    }
    m_Tree.Update(m_Heights.data(), m_Changed);
    return m_Tiles.Upload(gl, GetView(ground), 0, 0, m_Changed);
}
