#include "editor/view/CNormalTexels.h"

#include "engine/terrain/CNormalField.h"
#include "host/VectorLoop.h"

#include <algorithm>
#include <cmath>

namespace
{

// Up to this level texels are taken from the normals of a block; what is left is a hundredth.
constexpr uint32_t BLOCK_LEVEL = 3;

inline uint32_t Pack(float fComponent)
{
    constexpr float MOST = 2.0F * SNormalTile::SCALE;
    const float fPlace = fComponent * SNormalTile::SCALE + (SNormalTile::SCALE + 0.5F);
    const float fLow = fPlace > 0.0F ? fPlace : 0.0F; // NaN, which a height may be, is 0 then
    return static_cast<uint32_t>(static_cast<int32_t>(fLow < MOST ? fLow : MOST));
}

inline uint32_t PackNormal(float fSlopeX, float fSlopeZ)
{
    const float fScale = -1.0F / std::sqrt(1.0F + fSlopeX * fSlopeX + fSlopeZ * fSlopeZ);
    return Pack(fSlopeX * fScale) | Pack(fSlopeZ * fScale) << 16U;
}

// Vertices before and behind one of a side, and what makes a slope of their difference.
struct SSide
{
    SSide(uint32_t uAt, uint32_t uSize, float fStep)
        : uBefore(uAt > 0 ? uAt - 1 : 0)
        , uBehind(std::min(uAt + 1, uSize - 1))
        , fScale(1.0F / (static_cast<float>(uBehind - uBefore) * fStep))
    {
    }

    uint32_t uBefore;
    uint32_t uBehind;
    float fScale;
};

uint32_t MakeNormal(const SHeightView& ground, uint32_t uX, uint32_t uZ)
{
    const SSide x(uX, ground.uSizeX, ground.fStepX);
    const SSide z(uZ, ground.uSizeZ, ground.fStepZ);
    const float* pRow = ground.pHeights + size_t{uZ} * ground.uSizeX;
    const float* pAbove = ground.pHeights + size_t{z.uBefore} * ground.uSizeX;
    const float* pBelow = ground.pHeights + size_t{z.uBehind} * ground.uSizeX;
    return PackNormal((pRow[x.uBehind] - pRow[x.uBefore]) * x.fScale,
                      (pBelow[uX] - pAbove[uX]) * z.fScale);
}

// Vertices of a row [uMinX, uEndX), none of them the first or the last one.
TELLUR_LOOP_BODY void
MakeRow(const SHeightView& ground, uint32_t uZ, uint32_t uMinX, uint32_t uEndX, uint32_t* pNormals)
{
    const SSide z(uZ, ground.uSizeZ, ground.fStepZ);
    const float* pRow = ground.pHeights + size_t{uZ} * ground.uSizeX;
    const float* pAbove = ground.pHeights + size_t{z.uBefore} * ground.uSizeX;
    const float* pBelow = ground.pHeights + size_t{z.uBehind} * ground.uSizeX;
    const float fScaleX = 0.5F / ground.fStepX;
    const float fScaleZ = z.fScale;
    const size_t nFirst = uMinX;
    for (size_t i = 0; i + nFirst < uEndX; ++i)
    {
        const size_t x = nFirst + i;
        pNormals[i] =
            PackNormal((pRow[x + 1] - pRow[x - 1]) * fScaleX, (pBelow[x] - pAbove[x]) * fScaleZ);
    }
}

// Rounded as the shader rounds: halves go up.
uint32_t GetMean(uint32_t a, uint32_t b, uint32_t c, uint32_t d)
{
    const uint32_t uX = (a & 0xFFFFU) + (b & 0xFFFFU) + (c & 0xFFFFU) + (d & 0xFFFFU);
    const uint32_t uZ = (a >> 16U) + (b >> 16U) + (c >> 16U) + (d >> 16U);
    return (uX + 2) / 4 | (uZ + 2) / 4 << 16U;
}

} // namespace

void CNormalTexels::Make(const SHeightView& ground,
                         const SNormalTile& tile,
                         const SVertexRect& part)
{
    m_Ground = &ground;
    m_Tile = &tile;
    m_Part = part;
    // Whole blocks of the levels that will look here, counted from the tile's corner.
    const SVertexRect& whole = tile.vertices;
    const auto roundDown = [](uint32_t uVertex, uint32_t uFrom)
    {
        return uFrom + ((uVertex - uFrom) >> BLOCK_LEVEL << BLOCK_LEVEL);
    };
    constexpr uint32_t MORE = (1U << BLOCK_LEVEL) - 1;
    m_Block = {roundDown(part.uMinX, whole.uMinX),
               roundDown(part.uMinZ, whole.uMinZ),
               std::min(roundDown(part.uEndX + MORE, whole.uMinX), whole.uEndX),
               std::min(roundDown(part.uEndZ + MORE, whole.uMinZ), whole.uEndZ)};
    const size_t nWidth = m_Block.uEndX - m_Block.uMinX;
    m_Normals.resize(nWidth * (m_Block.uEndZ - m_Block.uMinZ));
    const uint32_t uMinX = std::max(m_Block.uMinX, 1U);
    const uint32_t uEndX = std::min(m_Block.uEndX, ground.uSizeX - 1);
    for (uint32_t z = m_Block.uMinZ; z < m_Block.uEndZ; ++z)
    {
        uint32_t* pRow = m_Normals.data() + (z - m_Block.uMinZ) * nWidth;
        CVectorLoop<MakeRow>::Run(ground, z, uMinX, uEndX, pRow + (uMinX - m_Block.uMinX));
        // At the terrain's border a vertex has a neighbour on one side only.
        if (m_Block.uMinX == 0)
        {
            pRow[0] = MakeNormal(ground, 0, z);
        }
        if (m_Block.uEndX == ground.uSizeX)
        {
            pRow[nWidth - 1] = MakeNormal(ground, ground.uSizeX - 1, z);
        }
    }
}

const uint32_t* CNormalTexels::Take(uint32_t uLevel)
{
    const SVertexRect texels = m_Tile->GetTexels(m_Part, uLevel);
    const size_t nWidth = texels.uEndX - texels.uMinX;
    m_Texels.resize(nWidth * (texels.uEndZ - texels.uMinZ));
    uint32_t* pTo = m_Texels.data();
    for (uint32_t z = texels.uMinZ; z < texels.uEndZ; ++z)
    {
        if (uLevel == 0)
        {
            const size_t nPitch = m_Block.uEndX - m_Block.uMinX;
            const size_t nRow = m_Tile->vertices.uMinZ + z - m_Block.uMinZ;
            const size_t nColumn = m_Tile->vertices.uMinX + texels.uMinX - m_Block.uMinX;
            std::copy_n(m_Normals.data() + nRow * nPitch + nColumn, nWidth, pTo);
        }
        else
        {
            TakeMeans(uLevel, z, texels, pTo);
        }
        pTo += nWidth;
    }
    return m_Texels.data();
}

// A row of the texels of a level.
void CNormalTexels::TakeMeans(uint32_t uLevel,
                              uint32_t uRow,
                              const SVertexRect& texels,
                              uint32_t* pTo) const
{
    const SVertexRect& whole = m_Tile->vertices;
    const uint32_t uNear = (1U << uLevel) / 4;
    const uint32_t uFar = (1U << uLevel) * 3 / 4;
    const uint32_t uTop = whole.uMinZ + (uRow << uLevel);
    const uint32_t uNearZ = std::min(uTop + uNear, whole.uEndZ - 1);
    const uint32_t uFarZ = std::min(uTop + uFar, whole.uEndZ - 1);
    const bool bRows = uNearZ >= m_Block.uMinZ && uFarZ < m_Block.uEndZ;
    const size_t nPitch = m_Block.uEndX - m_Block.uMinX;
    const uint32_t* pNear = bRows ? m_Normals.data() + (uNearZ - m_Block.uMinZ) * nPitch : nullptr;
    const uint32_t* pFar = bRows ? m_Normals.data() + (uFarZ - m_Block.uMinZ) * nPitch : nullptr;
    for (uint32_t x = texels.uMinX; x < texels.uEndX; ++x)
    {
        const uint32_t uLeft = whole.uMinX + (x << uLevel);
        const uint32_t uNearX = std::min(uLeft + uNear, whole.uEndX - 1);
        const uint32_t uFarX = std::min(uLeft + uFar, whole.uEndX - 1);
        // Texels of the coarse levels look at vertices outside the block. They are few, so their
        // normals are made here and kept nowhere.
        if (bRows && uNearX >= m_Block.uMinX && uFarX < m_Block.uEndX)
        {
            const size_t nNear = uNearX - m_Block.uMinX;
            const size_t nFar = uFarX - m_Block.uMinX;
            *pTo++ = GetMean(pNear[nNear], pNear[nFar], pFar[nNear], pFar[nFar]);
        }
        else
        {
            *pTo++ = GetMean(MakeNormal(*m_Ground, uNearX, uNearZ),
                             MakeNormal(*m_Ground, uFarX, uNearZ),
                             MakeNormal(*m_Ground, uNearX, uFarZ),
                             MakeNormal(*m_Ground, uFarX, uFarZ));
        }
    }
}
