#include "engine/terrain/CTerrain.h"

#include "engine/terrain/CRayPicker.h"
#include "engine/terrain/HeightFile.h"
#include "engine/terrain/StlFile.h"
#include "host/Log.h"
#include "host/TerrainSize.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace
{

// First and one past the last vertex of one axis under [fMin, fMax].
std::pair<uint32_t, uint32_t> GetAxisRange(float fMin, float fMax, double dStep, uint32_t uVertices)
{
    const double dLast = uVertices - 1;
    const double dFrom = std::floor(fMin / dStep);
    const double dTo = std::ceil(fMax / dStep);
    // The comparisons fail for NaN: the whole side is then taken, which loses no edit.
    const double dFirst = dFrom > 0.0 ? std::min(dFrom, dLast + 1.0) : 0.0;
    // A box before the terrain ends at 0, one behind it begins after the last vertex: both are
    // empty.
    const double dEnd = dTo < dLast ? std::max(dTo, -1.0) + 1.0 : dLast + 1.0;
    return {static_cast<uint32_t>(dFirst), static_cast<uint32_t>(dEnd)};
}

// The cell that holds a position of one axis, and where in it.
struct SCellPosition
{
    uint32_t uCell = 0;
    float fFraction = 0.0F;
};

SCellPosition LocateCell(float fPosition, float fSize, uint32_t uCells)
{
    const double dCells = uCells;
    const double dAt = fPosition / static_cast<double>(fSize) * dCells;
    // A NaN fails the comparison and counts as the border at 0.
    const double dClamped = dAt > 0.0 ? std::min(dAt, dCells) : 0.0;
    // The far border belongs to the last cell, at fraction 1.
    const uint32_t uCell = std::min(static_cast<uint32_t>(dClamped), uCells - 1);
    return {uCell, static_cast<float>(dClamped - uCell)};
}

} // namespace

bool IsTerrainSizeValid(uint32_t uSizeX, uint32_t uSizeZ)
{
    return uSizeX >= TERRAIN_MIN_VERTICES && uSizeX <= TERRAIN_MAX_VERTICES &&
           uSizeZ >= TERRAIN_MIN_VERTICES && uSizeZ <= TERRAIN_MAX_VERTICES;
}

bool IsSizeVectorValid(const SVec3& size)
{
    const float aParts[] = {size.x, size.y, size.z};
    return std::all_of(std::begin(aParts),
                       std::end(aParts),
                       [](float f) { return std::isfinite(f) && f != 0.0F; });
}

CTerrain::CTerrain(SHeightField&& field)
    : CProtectedField(std::move(field))
{
    m_Dirty.Reset({0, 0, m_Field.uSizeX, m_Field.uSizeZ});
}

CTerrain::~CTerrain()
{
    TellGoing();
}

void CTerrain::GetHeights(float* pDest, size_t nCount) const
{
    if (pDest != nullptr)
    {
        std::copy_n(GetHeightData(), std::min(nCount, m_Field.GetCount()), pDest);
    }
}

void CTerrain::SetHeights(const float* pSource, size_t nCount, const SExtents& box)
{
    if (pSource == nullptr || nCount != m_Field.GetCount())
    {
        CrashLog("[CTerrain::SetHeights] %zu heights for a terrain of %zu vertices\n",
                 pSource != nullptr ? nCount : size_t{0},
                 m_Field.GetCount());
        return;
    }
    const SVertexRect rect = GetVertexRect(box);
    if (rect.IsEmpty())
    {
        return;
    }
    TellBefore(rect);
    const size_t nWidth = rect.uEndX - rect.uMinX;
    for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
    {
        const size_t nFirst = static_cast<size_t>(z) * m_Field.uSizeX + rect.uMinX;
        if (m_Field.protection.IsEmpty())
        {
            std::copy_n(pSource + nFirst, nWidth, m_Field.pHeights.get() + nFirst);
            continue;
        }
        for (size_t i = 0; i < nWidth; ++i)
        {
            if (!m_Field.protection.IsProtected(rect.uMinX + static_cast<uint32_t>(i), z))
            {
                m_Field.pHeights[nFirst + i] = pSource[nFirst + i];
            }
        }
    }
    OnHeightsChanged(rect);
}

bool CTerrain::HasHeights(const float* pSource, size_t nCount, const SExtents& box) const
{
    const SVertexRect rect = GetVertexRect(box);
    bool bSame = pSource != nullptr && nCount == m_Field.GetCount();
    for (uint32_t z = rect.uMinZ; z < rect.uEndZ && bSame; ++z)
    {
        const float* pRow = pSource + static_cast<size_t>(z) * m_Field.uSizeX;
        const float* pOwn = m_Field.pHeights.get() + static_cast<size_t>(z) * m_Field.uSizeX;
        bSame =
            rect.IsEmpty() || std::equal(pRow + rect.uMinX, pRow + rect.uEndX, pOwn + rect.uMinX);
    }
    return bSame;
}

void CTerrain::SetRowHeights(uint32_t uColumn,
                             uint32_t uRow,
                             const float* pHeights,
                             uint32_t nCount)
{
    TellBefore({uColumn, uRow, uColumn + nCount, uRow + 1});
    std::copy_n(pHeights,
                nCount,
                m_Field.pHeights.get() + static_cast<size_t>(uRow) * m_Field.uSizeX + uColumn);
    OnHeightsChanged({uColumn, uRow, uColumn + nCount, uRow + 1});
}

bool CTerrain::SaveHeightMap(const char* pszPath,
                             const float* pHeights,
                             uint32_t uSizeX,
                             uint32_t uSizeZ)
{
    const bool bOwn = pHeights == nullptr && uSizeX == 0 && uSizeZ == 0;
    const bool bMay = m_Listener == nullptr || m_Listener->OnBeforeSave(pszPath, bOwn);
    const float* pWritten = bOwn ? GetHeightData() : pHeights;
    const bool bDone = bMay && WriteHeightFile(pszPath,
                                               pWritten,
                                               bOwn ? m_Field.uSizeX : uSizeX,
                                               bOwn ? m_Field.uSizeZ : uSizeZ,
                                               m_Field.size);
    if (m_Listener != nullptr)
    {
        m_Listener->OnSaved(pszPath, bOwn, bDone);
    }
    return bDone;
}

void CTerrain::GetHeightMap(float* pDest, uint32_t uVerticesPerSide) const
{
    if (pDest == nullptr)
    {
        return;
    }
    const size_t nSide = uVerticesPerSide;
    const size_t nColumns = std::min(uVerticesPerSide, m_Field.uSizeX);
    const size_t nRows = std::min(uVerticesPerSide, m_Field.uSizeZ);
    for (size_t z = 0; z < nRows; ++z)
    {
        float* pRow = pDest + z * nSide;
        std::copy_n(GetHeightData() + z * m_Field.uSizeX, nColumns, pRow);
        std::fill(pRow + nColumns, pRow + nSide, 0.0F);
    }
    std::fill(pDest + nRows * nSide, pDest + nSide * nSide, 0.0F);
}

void CTerrain::DrawProjectedTexture(const SExtents& box, ITexture* pTexture)
{
    m_Projected = {box, pTexture};
}

bool CTerrain::UpdateNormals()
{
    return m_Normals.TakeStale(); // they are made when somebody reads them
}

void CTerrain::SetEditOverlay(uint32_t uHandle)
{
    m_EditOverlay = uHandle;
}

void CTerrain::SetEditOverlayTransform(const SMatrix4& transform)
{
    m_OverlayTransform = transform;
}

void CTerrain::SetEditMaterial(const char* pszName)
{
    m_EditMaterial = pszName != nullptr ? pszName : "";
}

bool CTerrain::ExportToSTL(const char* pszPath, const SExtents* pBox)
{
    return WriteStlFile(pszPath, GetView(), pBox);
}

SVec3 CTerrain::GetSize() const
{
    return {std::fabs(m_Field.size.x), std::fabs(m_Field.size.y), std::fabs(m_Field.size.z)};
}

SVec3 CTerrain::GetSizeVector() const
{
    return m_Field.size;
}

uint32_t CTerrain::GetCellsPerSide() const
{
    return m_Field.uSizeX - 1;
}

uint32_t CTerrain::GetCellsPerSideZ() const
{
    return m_Field.uSizeZ - 1;
}

void CTerrain::BeginFrame()
{
    m_Projected = {};
}

void CTerrain::ForgetTexture(const ITexture* pTexture)
{
    if (m_Projected.pTexture == pTexture)
    {
        m_Projected = {};
    }
}

SHeightField CTerrain::ReplaceField(SHeightField&& field)
{
    TellGoing();
    // The pyramid needs no call: the reset below makes all heights new to it.
    SHeightField before = Exchange(std::move(field));
    // The overlay lies over the whole terrain: its scale goes with the width.
    m_OverlayTransform.m[2] *= std::fabs(before.size.x / m_Field.size.x);
    m_Normals.Reset();
    m_Dirty.Reset({0, 0, m_Field.uSizeX, m_Field.uSizeZ});
    m_Projected = {};
    return before;
}

bool CTerrain::IsSameField(const SHeightField& field) const
{
    const SVec3& size = m_Field.size;
    return field.uSizeX == m_Field.uSizeX && field.uSizeZ == m_Field.uSizeZ &&
           field.size.x == size.x && field.size.y == size.y && field.size.z == size.z &&
           std::memcmp(field.pHeights.get(), GetHeightData(), field.GetCount() * sizeof(float)) ==
               0;
}

float CTerrain::GetHeightAt(float fX, float fZ) const
{
    const SVec3 size = GetSize();
    const SCellPosition atX = LocateCell(fX, size.x, GetCellsPerSide());
    const SCellPosition atZ = LocateCell(fZ, size.z, GetCellsPerSideZ());
    const float* pUpper =
        GetHeightData() + static_cast<size_t>(atZ.uCell) * m_Field.uSizeX + atX.uCell;
    const float* pLower = pUpper + m_Field.uSizeX;
    // In this form a position on a vertex gives the height of that vertex to the last bit.
    const float fUpper = pUpper[0] * (1.0F - atX.fFraction) + pUpper[1] * atX.fFraction;
    const float fLower = pLower[0] * (1.0F - atX.fFraction) + pLower[1] * atX.fFraction;
    return fUpper * (1.0F - atZ.fFraction) + fLower * atZ.fFraction;
}

bool CTerrain::PickRay(const SVec3& origin, const SVec3& direction, SVec3& hit) const
{
    const CHeightPyramid* pPyramid = FetchPyramid();
    const SHeightView view = GetView();
    return pPyramid != nullptr &&
           CRayPicker(view, *pPyramid, GetSize()).Pick(origin, direction, hit);
}

bool CTerrain::PickDown(SVec3& point) const
{
    constexpr float FAR_ABOVE = 1e7F; // costs one cell, wherever it starts
    return PickRay({point.x, FAR_ABOVE, point.z}, {0.0F, -1.0F, 0.0F}, point);
}

bool CTerrain::GetHeightRange(const SVertexRect& rect, float& fMin, float& fMax) const
{
    const CHeightPyramid* pPyramid = FetchPyramid();
    const SHeightRange range =
        pPyramid != nullptr ? pPyramid->GetRange(GetView(), rect) : SHeightRange();
    if (range.IsEmpty())
    {
        return false;
    }
    fMin = range.fMin;
    fMax = range.fMax;
    return true;
}

SVec3 CTerrain::GetNormal(uint32_t uX, uint32_t uZ)
{
    const bool bVertex = uX < m_Field.uSizeX && uZ < m_Field.uSizeZ;
    const int16_t* pNormals = bVertex ? GetNormals({uX, uZ, uX + 1, uZ + 1}) : nullptr;
    if (pNormals == nullptr)
    {
        return {0.0F, 1.0F, 0.0F};
    }
    return CNormalField::Unpack(pNormals + 2 * (static_cast<size_t>(uZ) * m_Field.uSizeX + uX));
}

const int16_t* CTerrain::GetNormals()
{
    return GetNormals({0, 0, m_Field.uSizeX, m_Field.uSizeZ});
}

const int16_t* CTerrain::GetNormals(const SVertexRect& rect)
{
    return m_Normals.Fetch(GetView(), rect);
}

bool CTerrain::TakeDirtyRects(uint64_t& uSeen, std::vector<SVertexRect>& rects) const
{
    if (uSeen >= GetRevision())
    {
        return false;
    }
    m_Dirty.GetChangedSince(uSeen, rects);
    uSeen = GetRevision();
    return true;
}

SVertexRect CTerrain::GetVertexRect(const SExtents& box) const
{
    const SHeightView view = GetView();
    const auto [uMinX, uEndX] = GetAxisRange(box.min.x, box.max.x, view.fStepX, view.uSizeX);
    const auto [uMinZ, uEndZ] = GetAxisRange(box.min.z, box.max.z, view.fStepZ, view.uSizeZ);
    return {uMinX, uMinZ, uEndX, uEndZ};
}

SHeightView CTerrain::GetView() const
{
    const SVec3 size = GetSize();
    return {GetHeightData(),
            m_Field.uSizeX,
            m_Field.uSizeZ,
            size.x / static_cast<float>(GetCellsPerSide()),
            size.z / static_cast<float>(GetCellsPerSideZ())};
}

// Null, with one logged line, when there is no memory for it.
const CHeightPyramid* CTerrain::FetchPyramid() const
{
    if (TakeDirtyRects(m_PyramidSeen, m_PyramidRects) &&
        !m_Pyramid.Update(GetView(), m_PyramidRects))
    {
        // The next caller tries again.
        m_PyramidSeen = 0;
        CrashLog("[CTerrain::FetchPyramid] no memory to find points on the ground\n");
        return nullptr;
    }
    return &m_Pyramid;
}

void CTerrain::OnHeightsChanged(const SVertexRect& rect)
{
    m_Dirty.Add(rect);
    m_Normals.MarkStale(rect, GetView());
}
