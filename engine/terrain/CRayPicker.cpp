#include "engine/terrain/CRayPicker.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double FAR = std::numeric_limits<double>::infinity();
// Blocks of the pyramid's level 0 are halved three times more, down to single cells.
constexpr int CELL_LEVEL = -3;
static_assert(CHeightPyramid::BLOCK == 1U << -CELL_LEVEL);

bool IsFinite(const SVec3& vec)
{
    return std::isfinite(vec.x) && std::isfinite(vec.y) && std::isfinite(vec.z);
}

// Where along the line an axis reaches a border; FAR or -FAR when it never does, so that the line
// lies on the lower side of a border that it runs along.
double FindBorder(double fAt, double fBy, double fPerCell, double fBorder)
{
    if (fBy == 0.0)
    {
        return fAt <= fBorder ? FAR : -FAR;
    }
    return (fBorder - fAt) * fPerCell;
}

// Whether a piece lies on the upper side of a border that is crossed at fCross. A piece without
// length on the border counts to the lower side, which is always there.
bool IsUpper(double fFrom, double fTo, double fCross, double fBy)
{
    const double fMiddle = (fFrom + fTo) * 0.5;
    return fBy >= 0.0 ? fMiddle > fCross : fMiddle < fCross;
}

// Narrows [fFrom, fTo] to where an axis is within [0, fCells].
bool ClipAxis(double fAt, double fBy, double fCells, double& fFrom, double& fTo)
{
    if (fBy == 0.0)
    {
        return fAt >= 0.0 && fAt <= fCells;
    }
    const double fLow = (0.0 - fAt) / fBy;
    const double fHigh = (fCells - fAt) / fBy;
    fFrom = std::max(fFrom, std::min(fLow, fHigh));
    fTo = std::min(fTo, std::max(fLow, fHigh));
    return fFrom <= fTo;
}

// Heights over (x, z) in cells: plane[0] + plane[1] * x + plane[2] * z.
struct SCellPlanes
{
    double first[3];  // corners (0, 0), (0, 1), (1, 0)
    double second[3]; // corners (1, 0), (0, 1), (1, 1)
};

template <class TCorners> SCellPlanes MakePlanes(const TCorners& corners)
{
    const double fNorthWest = corners.fNorthWest;
    const double fNorthEast = corners.fNorthEast;
    const double fSouthWest = corners.fSouthWest;
    const double fSouthEast = corners.fSouthEast;
    return {
        {fNorthWest, fNorthEast - fNorthWest, fSouthWest - fNorthWest},
        {fNorthEast + fSouthWest - fSouthEast, fSouthEast - fSouthWest, fSouthEast - fNorthEast}};
}

} // namespace

CRayPicker::CRayPicker(const SHeightView& view,
                       const CHeightPyramid& pyramid,
                       const SVec3& size,
                       const SStill* pStill)
    : m_View(view)
    , m_Pyramid(pyramid)
    , m_Size(size)
    , m_Still(pStill)
{
}

float CRayPicker::GetStillHeight(uint32_t uX, uint32_t uZ) const
{
    constexpr uint32_t TILE = CStillGround::TILE;
    const float* pTile = m_Still->getTile(uX / TILE, uZ / TILE);
    return pTile != nullptr ? pTile[uZ % TILE * TILE + uX % TILE]
                            : m_View.pHeights[static_cast<size_t>(uZ) * m_View.uSizeX + uX];
}

CRayPicker::SCorners CRayPicker::GetCorners(uint32_t uX, uint32_t uZ) const
{
    if (m_Still != nullptr)
    {
        return {GetStillHeight(uX, uZ),
                GetStillHeight(uX + 1, uZ),
                GetStillHeight(uX, uZ + 1),
                GetStillHeight(uX + 1, uZ + 1)};
    }
    const float* pUpper = m_View.pHeights + static_cast<size_t>(uZ) * m_View.uSizeX + uX;
    const float* pLower = pUpper + m_View.uSizeX;
    return {pUpper[0], pUpper[1], pLower[0], pLower[1]};
}

// The heights of a block. Null where they are not known: in a tile that has changed since, or
// beside one, whose first vertices are corners of its cells.
const SHeightRange* CRayPicker::FindRange(int iLevel, uint32_t uX, uint32_t uZ) const
{
    if (m_Still == nullptr || iLevel >= TILE_LEVEL)
    {
        return &m_Pyramid.GetBlock(iLevel, uX, uZ);
    }
    const uint32_t uTileX = uX >> (TILE_LEVEL - iLevel);
    const uint32_t uTileZ = uZ >> (TILE_LEVEL - iLevel);
    for (uint32_t i = 0; i < 4; ++i)
    {
        if (m_Still->getTile(uTileX + i % 2, uTileZ + i / 2) != nullptr)
        {
            return nullptr;
        }
    }
    return &m_Still->pNow->GetBlock(iLevel, uX, uZ);
}

bool CRayPicker::Pick(const SVec3& origin, const SVec3& direction, SVec3& hit)
{
    const double fLength = std::hypot(static_cast<double>(direction.x), direction.y, direction.z);
    if (!IsFinite(origin) || !IsFinite(direction) || fLength == 0.0 || m_Pyramid.IsEmpty())
    {
        return false;
    }
    const double fCellsX = m_View.uSizeX - 1;
    const double fCellsZ = m_View.uSizeZ - 1;
    // With a direction of length 1, t is the way along the line in terrain units.
    const double fStepX = direction.x / fLength;
    const double fStepZ = direction.z / fLength;
    m_X = {origin.x * fCellsX / m_Size.x, fStepX * fCellsX / m_Size.x, 0.0};
    m_Z = {origin.z * fCellsZ / m_Size.z, fStepZ * fCellsZ / m_Size.z, 0.0};
    // Infinite for an axis along which the line does not move; FindBorder then does not use it.
    m_X.fPerCell = 1.0 / m_X.fBy;
    m_Z.fPerCell = 1.0 / m_Z.fBy;
    m_Y = origin.y;
    m_StepY = direction.y / fLength;
    m_Side = ESide::Unknown;

    double fFrom = 0.0;
    double fTo = FAR;
    if (!ClipAxis(m_X.fAt, m_X.fBy, fCellsX, fFrom, fTo) ||
        !ClipAxis(m_Z.fAt, m_Z.fBy, fCellsZ, fFrom, fTo))
    {
        return false;
    }
    // A vertical line stays over one point: its only piece has no end, which the cuts need.
    const bool bVertical = m_X.fBy == 0.0 && m_Z.fBy == 0.0;
    if (bVertical ? !PickVertical(m_X.fAt, m_Z.fAt, m_Hit)
                  : !VisitBlock(m_Pyramid.GetLevelCount() - 1, 0, 0, fFrom, fTo))
    {
        return false;
    }
    // Rounding could put a hit on the terrain's border outside of it.
    hit = {std::clamp(static_cast<float>(origin.x + m_Hit * fStepX), 0.0F, m_Size.x),
           static_cast<float>(GetY(m_Hit)),
           std::clamp(static_cast<float>(origin.z + m_Hit * fStepZ), 0.0F, m_Size.z)};
    return true;
}

bool CRayPicker::PickVertical(double fX, double fZ, double& fHit) const
{
    // A point on the far border belongs to the last cell.
    const uint32_t uX = std::min(static_cast<uint32_t>(fX), m_View.uSizeX - 2);
    const uint32_t uZ = std::min(static_cast<uint32_t>(fZ), m_View.uSizeZ - 2);
    const SCellPlanes planes = MakePlanes(GetCorners(uX, uZ));
    const double fInX = fX - uX;
    const double fInZ = fZ - uZ;
    const double(&plane)[3] = fInX + fInZ <= 1.0 ? planes.first : planes.second;
    fHit = (plane[0] + plane[1] * fInX + plane[2] * fInZ - m_Y) / m_StepY;
    // False for a NaN too, which a hole gives.
    return fHit >= 0.0 && fHit < FAR;
}

// Levels below 0 are parts of a block of level 0 and have no ranges of their own.
bool CRayPicker::VisitBlock(int iLevel, uint32_t uX, uint32_t uZ, double fFrom, double fTo)
{
    if (iLevel <= CELL_LEVEL)
    {
        return VisitCell(uX, uZ, fFrom, fTo);
    }
    if (const SHeightRange* pRange = iLevel >= 0 ? FindRange(iLevel, uX, uZ) : nullptr)
    {
        bool bDone = false;
        const bool bHit = PassRange(pRange->fMin, pRange->fMax, fFrom, fTo, bDone);
        if (bDone)
        {
            return bHit;
        }
    }
    return VisitHalves(iLevel, uX, uZ, fFrom, fTo);
}

bool CRayPicker::VisitHalves(int iLevel, uint32_t uX, uint32_t uZ, double fFrom, double fTo)
{
    const uint32_t uHalf = 1U << (iLevel - CELL_LEVEL - 1); // cells
    const double fCrossX = FindBorder(m_X.fAt, m_X.fBy, m_X.fPerCell, (2.0 * uX + 1.0) * uHalf);
    const double fCrossZ = FindBorder(m_Z.fAt, m_Z.fBy, m_Z.fPerCell, (2.0 * uZ + 1.0) * uHalf);
    // The two border lines cut the piece into three at most, here in the order of the line. They
    // are looked at from its start, so that the first hit is the nearest.
    const double aCuts[] = {fFrom,
                            std::clamp(std::min(fCrossX, fCrossZ), fFrom, fTo),
                            std::clamp(std::max(fCrossX, fCrossZ), fFrom, fTo),
                            fTo};
    // A piece without length, as at a corner of the terrain, is still looked at, once.
    const bool bPoint = fFrom == fTo;
    for (int i = 0; i < (bPoint ? 1 : 3); ++i)
    {
        if (!bPoint && aCuts[i] == aCuts[i + 1])
        {
            continue;
        }
        const uint32_t uChildX =
            2 * uX + (IsUpper(aCuts[i], aCuts[i + 1], fCrossX, m_X.fBy) ? 1U : 0U);
        const uint32_t uChildZ =
            2 * uZ + (IsUpper(aCuts[i], aCuts[i + 1], fCrossZ, m_Z.fBy) ? 1U : 0U);
        // The terrain's far borders need not be borders of blocks; rounding can end a piece there.
        const bool bThere =
            uChildX * uHalf < m_View.uSizeX - 1 && uChildZ * uHalf < m_View.uSizeZ - 1;
        if (bThere && VisitBlock(iLevel - 1, uChildX, uChildZ, aCuts[i], aCuts[i + 1]))
        {
            return true;
        }
    }
    return false;
}

bool CRayPicker::VisitCell(uint32_t uX, uint32_t uZ, double fFrom, double fTo)
{
    const SCorners corners = GetCorners(uX, uZ);
    // Most cells under a line are passed here, without a look at their triangles.
    bool bDone = false;
    const bool bHit = PassRange(std::min(std::min(corners.fNorthWest, corners.fNorthEast),
                                         std::min(corners.fSouthWest, corners.fSouthEast)),
                                std::max(std::max(corners.fNorthWest, corners.fNorthEast),
                                         std::max(corners.fSouthWest, corners.fSouthEast)),
                                fFrom,
                                fTo,
                                bDone);
    if (bDone)
    {
        return bHit;
    }
    SCellPlanes planes = MakePlanes(corners);
    // From the cell's corner to the line's start.
    for (double(&plane)[3] : {std::ref(planes.first), std::ref(planes.second)})
    {
        plane[0] += plane[1] * (m_X.fAt - uX) + plane[2] * (m_Z.fAt - uZ);
    }
    // The diagonal of a cell has x + z constant, so that sum is one more axis with a border.
    const double fAcross = m_X.fBy + m_Z.fBy;
    const double fCross =
        FindBorder(m_X.fAt + m_Z.fAt, fAcross, 1.0 / fAcross, static_cast<double>(uX) + uZ + 1.0);
    const double fCut = std::clamp(fCross, fFrom, fTo);
    const bool bPoint = fFrom == fTo;
    if ((fCut > fFrom || bPoint) &&
        VisitTriangle(
            IsUpper(fFrom, fCut, fCross, fAcross) ? planes.second : planes.first, fFrom, fCut))
    {
        return true;
    }
    return fCut < fTo &&
           VisitTriangle(
               IsUpper(fCut, fTo, fCross, fAcross) ? planes.second : planes.first, fCut, fTo);
}

// plane: heights along the line's own coordinates, relative to its start.
bool CRayPicker::VisitTriangle(const double (&plane)[3], double fFrom, double fTo)
{
    const double fSlope = plane[1] * m_X.fBy + plane[2] * m_Z.fBy;
    // How far the line is above the plane at both ends of the piece.
    const double fStart = GetY(fFrom) - (plane[0] + fSlope * fFrom);
    const double fEnd = GetY(fTo) - (plane[0] + fSlope * fTo);
    if (std::isnan(fStart) || std::isnan(fEnd))
    {
        m_Side = ESide::Unknown; // a hole
        return false;
    }
    if (m_Side == ESide::Unknown && fStart != 0.0)
    {
        m_Side = fStart > 0.0 ? ESide::Above : ESide::Below;
    }
    // The side is where the line has been so far, so a hit that rounding lost at the end of the
    // piece before shows at the start of this one. With the side unknown, the start lies on the
    // ground.
    const double fSign = m_Side == ESide::Above ? 1.0 : -1.0;
    if (fStart * fSign <= 0.0)
    {
        m_Hit = fFrom;
        return true;
    }
    if (fEnd * fSign <= 0.0)
    {
        m_Hit = std::clamp(fFrom + (fTo - fFrom) * (fStart / (fStart - fEnd)), fFrom, fTo);
        return true;
    }
    return false;
}

// The line is on one side of the ground from fAt on. True when it was on the other side before.
bool CRayPicker::EnterSide(ESide eSide, double fAt)
{
    if (m_Side != ESide::Unknown && m_Side != eSide)
    {
        m_Hit = fAt;
        return true;
    }
    m_Side = eSide;
    return false;
}

// A piece above or below all heights under it needs no closer look: bDone is then set.
bool CRayPicker::PassRange(float fMin, float fMax, double fFrom, double fTo, bool& bDone)
{
    const double fStart = GetY(fFrom);
    const double fEnd = GetY(fTo);
    if (std::min(fStart, fEnd) > fMax)
    {
        bDone = true;
        if (fMin > fMax) // no number among the heights
        {
            m_Side = ESide::Unknown;
            return false;
        }
        return EnterSide(ESide::Above, fFrom);
    }
    if (std::max(fStart, fEnd) < fMin)
    {
        bDone = true;
        return EnterSide(ESide::Below, fFrom);
    }
    return false;
}
