#include "engine/elevation/TileSet.h"

#include "engine/elevation/ReportText.h"
#include "host/FileSystem.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>

namespace
{

constexpr char FIRST_TILE[] = "_x0_y0";
constexpr uint32_t MOST_FOUND = 1024; // tiles a side

size_t FindExtension(const std::string& strPath)
{
    const size_t nDot = strPath.rfind('.');
    const size_t nFolder = strPath.find_last_of("/\\");
    const bool bDot = nDot != std::string::npos && (nFolder == std::string::npos || nDot > nFolder);
    return bDot ? nDot : strPath.size();
}

// What is put together: side by side at first, since only the last tile shows whether all
// neighbours have one edge.
class CTileJoint
{
public:
    CTileJoint(const SSampleInfo& first, uint32_t uColumns, uint32_t uRows)
        : m_Info(first)
        , m_Columns(uColumns)
        , m_Rows(uRows)
    {
        static_cast<SSampleInfo&>(m_Whole) = first;
        m_Whole.uColumns = first.uColumns * uColumns;
        m_Whole.uRows = first.uRows * uRows;
    }

    // Whether they are as many samples as a grid may have where their edges are shared.
    bool IsPossible() const
    {
        return std::max(m_Whole.uColumns - (m_Columns - 1), m_Whole.uRows - (m_Rows - 1)) <=
               MAX_SAMPLES;
    }

    bool IsAlike(const SSampleInfo& tile) const
    {
        return tile.uColumns == m_Info.uColumns && tile.uRows == m_Info.uRows &&
               tile.eType == m_Info.eType && tile.uBits == m_Info.uBits;
    }

    void Allocate() { m_Whole.samples.resize(size_t{m_Whole.uColumns} * m_Whole.uRows); }

    void Place(const SSampleGrid& tile, uint32_t uX, uint32_t uY);

    // Takes the second samples of the edges out where every pair of neighbours has the same ones.
    // False when the samples are too many as they lie then.
    bool Close();

    bool IsShared() const { return m_Shared; }

    SSampleGrid& GetWhole() { return m_Whole; }

private:
    float* GetRow(size_t nRow) { return m_Whole.samples.data() + nRow * m_Whole.uColumns; }

    // Whether the samples from there on are also those before them, voids too.
    bool IsRepeated(const float* pSample, size_t nBefore, size_t nStep, uint32_t uCount) const;

    SSampleInfo m_Info; // of one tile
    uint32_t m_Columns; // tiles
    uint32_t m_Rows;
    bool m_Shared = true;
    SSampleGrid m_Whole;
};

bool CTileJoint::IsRepeated(const float* pSample,
                            size_t nBefore,
                            size_t nStep,
                            uint32_t uCount) const
{
    for (uint32_t i = 0; i < uCount; ++i, pSample += nStep)
    {
        const float fBefore = *(pSample - nBefore);
        if (fBefore != *pSample && !(std::isnan(fBefore) && std::isnan(*pSample)))
        {
            return false;
        }
    }
    return true;
}

void CTileJoint::Place(const SSampleGrid& tile, uint32_t uX, uint32_t uY)
{
    const size_t nColumn = size_t{tile.uColumns} * uX;
    const size_t nRow = size_t{tile.uRows} * uY;
    for (uint32_t z = 0; z < tile.uRows; ++z)
    {
        std::copy_n(tile.samples.data() + size_t{z} * tile.uColumns,
                    tile.uColumns,
                    GetRow(nRow + z) + nColumn);
    }
    const float* pFirst = GetRow(nRow) + nColumn;
    m_Shared = m_Shared && (uX == 0 || IsRepeated(pFirst, 1, m_Whole.uColumns, tile.uRows)) &&
               (uY == 0 || IsRepeated(pFirst, m_Whole.uColumns, 1, tile.uColumns));
    m_Whole.geo.bKnown = m_Whole.geo.bKnown && tile.geo.bKnown;
    if (uY == 0)
    {
        m_Whole.geo.lastX = tile.geo.lastX; // that of the last tile stays
    }
    if (uX == 0)
    {
        m_Whole.geo.lastZ = tile.geo.lastZ;
    }
}

bool CTileJoint::Close()
{
    if (m_Shared)
    {
        float* pDest = m_Whole.samples.data(); // never before what is still to be read
        for (uint32_t z = 0; z < m_Whole.uRows; ++z)
        {
            const bool bSecond = z > 0 && z % m_Info.uRows == 0;
            const float* pRow = GetRow(z);
            for (uint32_t i = 0; i < m_Columns && !bSecond; ++i)
            {
                const uint32_t uSkipped = i > 0 ? 1 : 0;
                const float* pTile = pRow + size_t{i} * m_Info.uColumns;
                pDest = std::copy(pTile + uSkipped, pTile + m_Info.uColumns, pDest);
            }
        }
        m_Whole.uColumns -= m_Columns - 1;
        m_Whole.uRows -= m_Rows - 1;
        m_Whole.samples.resize(size_t{m_Whole.uColumns} * m_Whole.uRows);
    }
    return std::max(m_Whole.uColumns, m_Whole.uRows) <= MAX_SAMPLES;
}

} // namespace

std::string GetTilePath(const std::string& strPath, uint32_t uX, uint32_t uY)
{
    const size_t nName = FindExtension(strPath);
    return strPath.substr(0, nName) + MakeText("_x%u_y%u", uX, uY) + strPath.substr(nName);
}

bool STileSet::Find(const std::string& strFirstTile)
{
    const std::string strName = strFirstTile.substr(0, FindExtension(strFirstTile));
    if (!strName.ends_with(FIRST_TILE))
    {
        return false;
    }
    strPath = strName.substr(0, strName.size() - std::strlen(FIRST_TILE)) +
              strFirstTile.substr(strName.size());
    *this = Extend(strPath, 1);
    return uColumns > 1 || uRows > 1;
}

STileSet STileSet::Extend(const std::string& strPath, uint32_t uTiles)
{
    STileSet set{strPath, uTiles, uTiles};
    while (set.uColumns < MOST_FOUND && fs::exists(GetTilePath(strPath, set.uColumns, 0).c_str()))
    {
        ++set.uColumns;
    }
    while (set.uRows < MOST_FOUND && fs::exists(GetTilePath(strPath, 0, set.uRows).c_str()))
    {
        ++set.uRows;
    }
    return set;
}

bool STileSet::Join(const std::function<bool(const std::string&, SSampleGrid&)>& read,
                    SSampleGrid& grid,
                    std::vector<std::string>& lines,
                    std::string& strLine) const
{
    const auto fail = [&]
    {
        strLine =
            MakeText("%s: %u x %u tiles are too many samples", strPath.c_str(), uColumns, uRows);
        return false;
    };
    std::optional<CTileJoint> joint;
    uint32_t uTileColumns = 0;
    uint32_t uTileRows = 0;
    for (uint32_t i = 0; i < uColumns * uRows; ++i)
    {
        SSampleGrid tile;
        const std::string strTile = GetTilePath(strPath, i % uColumns, i / uColumns);
        if (!read(strTile, tile))
        {
            return false;
        }
        if (!joint)
        {
            uTileColumns = tile.uColumns;
            uTileRows = tile.uRows;
            joint.emplace(tile, uColumns, uRows);
            if (!joint->IsPossible())
            {
                return fail();
            }
            joint->Allocate();
        }
        if (!joint->IsAlike(tile))
        {
            strLine = strTile + ": its samples are others than those of the first tile";
            return false;
        }
        joint->Place(tile, i % uColumns, i / uColumns);
    }
    if (!joint || !joint->Close())
    {
        return fail();
    }
    lines.push_back(
        MakeText("tiles: %u x %u of %u x %u samples, ", uColumns, uRows, uTileColumns, uTileRows) +
        (joint->IsShared() ? "edges are shared" : "side by side"));
    grid = std::move(joint->GetWhole());
    return true;
}
