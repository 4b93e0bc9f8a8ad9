#include "tellur/modification/CHeightTiles.h"

#include "host/VectorLoop.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace
{

constexpr size_t MOST_KEPT = 2048; // 67 MB: a stroke of some dozen points of 1,000 cells

// Tiles that nobody uses.
struct SKept
{
    SHeightTile* pFirst = nullptr;
    size_t nCount = 0;
};

SKept g_Kept;

// Null without memory.
SHeightTile* MakeTile()
{
    if (g_Kept.pFirst == nullptr)
    {
        return new (std::nothrow) SHeightTile;
    }
    SHeightTile* pTile = std::exchange(g_Kept.pFirst, g_Kept.pFirst->pNext);
    --g_Kept.nCount;
    // Heights and bits stay what they were: whoever takes the tile and whoever looks for changes
    // writes all of them.
    pTile->uUsers = 1;
    pTile->uChanged = 0;
    pTile->bHoles = false;
    pTile->bWritten = false;
    return pTile;
}

// Copies a row twice. Whether a height is below 0.
TELLUR_LOOP_BODY bool CopyTwice(const float* __restrict pFrom,
                                float* __restrict pFirst,
                                float* __restrict pSecond,
                                size_t nCount)
{
    int32_t iAny = 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float fHeight = pFrom[i];
        pFirst[i] = fHeight;
        pSecond[i] = fHeight;
        iAny |= static_cast<int32_t>(fHeight < 0.0F);
    }
    return iAny != 0;
}

} // namespace

void ReleaseTile(SHeightTile* pTile)
{
    if (pTile == nullptr || --pTile->uUsers > 0)
    {
        return;
    }
    if (g_Kept.nCount >= MOST_KEPT)
    {
        delete pTile;
        return;
    }
    pTile->pNext = std::exchange(g_Kept.pFirst, pTile);
    ++g_Kept.nCount;
}

void FreeKeptTiles()
{
    [[maybe_unused]] const bool bAny = g_Kept.pFirst != nullptr;
    while (g_Kept.pFirst != nullptr)
    {
        delete std::exchange(g_Kept.pFirst, g_Kept.pFirst->pNext);
    }
    g_Kept.nCount = 0;
#if defined(__GLIBC__)
    if (bAny)
    {
        ::malloc_trim(0); // what lies between other memory would stay with the process
    }
#endif
}

size_t GetKeptTileCount()
{
    return g_Kept.nCount;
}

CHeightTiles::~CHeightTiles()
{
    Clear();
}

void CHeightTiles::Clear()
{
    ForEach([](SHeightTile& tile, int, int) { ReleaseTile(&tile); });
    m_Table.reset();
    m_FirstX.reset();
    m_LastX.reset();
    m_Ground = nullptr;
    m_Guard = nullptr;
    m_Count = 0;
    m_SizeX = 0;
    m_SizeZ = 0;
    m_TilesX = 0;
    m_TilesZ = 0;
}

bool CHeightTiles::Reset(int iSizeX, int iSizeZ)
{
    Clear();
    const int iTilesX = (iSizeX + SHeightTile::SIDE - 1) / SHeightTile::SIDE;
    const int iTilesZ = (iSizeZ + SHeightTile::SIDE - 1) / SHeightTile::SIDE;
    const auto nRows = static_cast<size_t>(iTilesZ);
    m_Table.reset(new (std::nothrow) SHeightTile*[static_cast<size_t>(iTilesX) * nRows]());
    m_FirstX.reset(new (std::nothrow) int[nRows]);
    m_LastX.reset(new (std::nothrow) int[nRows]);
    if (m_Table == nullptr || m_FirstX == nullptr || m_LastX == nullptr)
    {
        Clear();
        return false;
    }
    std::fill_n(m_FirstX.get(), nRows, iTilesX);
    std::fill_n(m_LastX.get(), nRows, -1);
    m_SizeX = iSizeX;
    m_SizeZ = iSizeZ;
    m_TilesX = iTilesX;
    m_TilesZ = iTilesZ;
    return true;
}

bool CHeightTiles::Take(const SGridBox& box)
{
    if (box.IsEmpty())
    {
        return true;
    }
    for (int iZ = box.iMinZ / SHeightTile::SIDE; iZ <= box.iMaxZ / SHeightTile::SIDE; ++iZ)
    {
        for (int iX = box.iMinX / SHeightTile::SIDE; iX <= box.iMaxX / SHeightTile::SIDE; ++iX)
        {
            if (TakeOne(iX, iZ) == nullptr)
            {
                return false;
            }
        }
    }
    return true;
}

SHeightTile* CHeightTiles::TakeOne(int iTileX, int iTileZ)
{
    SHeightTile* pTile = Find(iTileX, iTileZ);
    if (pTile != nullptr || (pTile = MakeTile()) == nullptr)
    {
        return pTile;
    }
    const int iFirstX = iTileX * SHeightTile::SIDE;
    const int iFirstZ = iTileZ * SHeightTile::SIDE;
    const auto nWidth = static_cast<size_t>(std::min(SHeightTile::SIDE, m_SizeX - iFirstX));
    const auto nDepth = static_cast<size_t>(std::min(SHeightTile::SIDE, m_SizeZ - iFirstZ));
    const float* pFrom = m_Ground + static_cast<size_t>(iFirstZ) * static_cast<size_t>(m_SizeX) +
                         static_cast<size_t>(iFirstX);
    for (size_t z = 0; z < SHeightTile::SIDE; ++z)
    {
        float* pSource = pTile->aSource.data() + z * SHeightTile::SIDE;
        float* pDest = pTile->aDest.data() + z * SHeightTile::SIDE;
        const size_t nThere = z < nDepth ? nWidth : 0;
        if (nThere > 0 && CVectorLoop<CopyTwice>::Run(pFrom, pSource, pDest, nThere))
        {
            pTile->bHoles = true;
        }
        // Behind the last row the pointer stays, so that it never leaves the heights.
        pFrom += z + 1 < nDepth ? m_SizeX : 0;
        std::fill(pSource + nThere, pSource + SHeightTile::SIDE, 0.0F);
        std::fill(pDest + nThere, pDest + SHeightTile::SIDE, 0.0F);
    }
    m_Table[static_cast<size_t>(iTileZ) * static_cast<size_t>(m_TilesX) +
            static_cast<size_t>(iTileX)] = pTile;
    // ForEach looks at this span of each row alone, since the table of a large terrain is mostly
    // empty.
    m_FirstX[iTileZ] = std::min(m_FirstX[iTileZ], iTileX);
    m_LastX[iTileZ] = std::max(m_LastX[iTileZ], iTileX);
    ++m_Count;
    return pTile;
}

const float* CHeightTiles::Locate(int iX, int iZ, Heights SHeightTile::*pHeights) const
{
    constexpr int SIDE = SHeightTile::SIDE;
    const SHeightTile* pTile = Find(iX / SIDE, iZ / SIDE);
    return pTile != nullptr ? (pTile->*pHeights).data() + SHeightTile::GetPlace(iX, iZ)
                            : m_Ground + static_cast<size_t>(iZ) * static_cast<size_t>(m_SizeX) +
                                  static_cast<size_t>(iX);
}

const float* CHeightTiles::GetRow(
    int iX, int iZ, int iCount, float* pScratch, Heights SHeightTile::*pHeights) const
{
    constexpr int SIDE = SHeightTile::SIDE;
    if (iCount <= SIDE - iX % SIDE)
    {
        return Locate(iX, iZ, pHeights); // within one tile
    }
    for (int iAt = iX; iAt < iX + iCount;)
    {
        const int iPart = std::min(SIDE - iAt % SIDE, iX + iCount - iAt);
        std::memcpy(pScratch + (iAt - iX),
                    Locate(iAt, iZ, pHeights),
                    static_cast<size_t>(iPart) * sizeof(float));
        iAt += iPart;
    }
    return pScratch;
}

const float* CHeightTiles::GetSourceRow(int iX, int iZ, int iCount, float* pScratch) const
{
    return GetRow(iX, iZ, iCount, pScratch, &SHeightTile::aSource);
}

const float* CHeightTiles::GetDestRow(int iX, int iZ, int iCount, float* pScratch) const
{
    return GetRow(iX, iZ, iCount, pScratch, &SHeightTile::aDest);
}

void CHeightTiles::SetDest(int iX, int iZ, float fHeight)
{
    constexpr int SIDE = SHeightTile::SIDE;
    SHeightTile* pTile = Find(iX / SIDE, iZ / SIDE);
    pTile->aDest[SHeightTile::GetPlace(iX, iZ)] = fHeight;
    pTile->bWritten = true;
}

SGridBox CHeightTiles::GetTileBox(int iTileX, int iTileZ) const
{
    constexpr int SIDE = SHeightTile::SIDE;
    return {iTileX * SIDE,
            iTileZ * SIDE,
            std::min((iTileX + 1) * SIDE, m_SizeX) - 1,
            std::min((iTileZ + 1) * SIDE, m_SizeZ) - 1};
}
