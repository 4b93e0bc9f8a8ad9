#include "engine/elevation/TileSet.h"

#include "engine/elevation/ReportText.h"
#include "host/FileSystem.h"

#include <algorithm>
#include <bit>
#include <cstring>
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

// What is put together.
class CTileJoint
{
public:
    CTileJoint(const SSampleInfo& first, bool bShared, uint32_t uColumns, uint32_t uRows)
        : m_Info(first)
        , m_Shared(bShared ? 1 : 0)
    {
        static_cast<SSampleInfo&>(m_Whole) = first;
        m_Whole.uColumns = (first.uColumns - m_Shared) * uColumns + m_Shared;
        m_Whole.uRows = (first.uRows - m_Shared) * uRows + m_Shared;
    }

    bool IsPossible() const { return std::max(m_Whole.uColumns, m_Whole.uRows) <= MAX_SAMPLES; }

    bool IsAlike(const SSampleInfo& tile) const
    {
        return tile.uColumns == m_Info.uColumns && tile.uRows == m_Info.uRows &&
               tile.eType == m_Info.eType && tile.uBits == m_Info.uBits;
    }

    void Allocate() { m_Whole.samples.resize(size_t{m_Whole.uColumns} * m_Whole.uRows); }

    void Place(const SSampleGrid& tile, uint32_t uX, uint32_t uY)
    {
        const size_t nColumn = size_t{tile.uColumns - m_Shared} * uX;
        const size_t nRow = size_t{tile.uRows - m_Shared} * uY;
        for (uint32_t z = 0; z < tile.uRows; ++z)
        {
            std::copy_n(tile.samples.begin() + static_cast<ptrdiff_t>(size_t{z} * tile.uColumns),
                        tile.uColumns,
                        m_Whole.samples.begin() +
                            static_cast<ptrdiff_t>((nRow + z) * m_Whole.uColumns + nColumn));
        }
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

    SSampleGrid& GetWhole() { return m_Whole; }

private:
    SSampleInfo m_Info;
    uint32_t m_Shared;
    SSampleGrid m_Whole;
};

// Whether the last samples of one tile are the first ones of the next, voids too.
bool HaveOneEdge(const SSampleGrid& tile, const SSampleGrid& next, bool bAlongX)
{
    const uint32_t uCount = bAlongX ? tile.uRows : tile.uColumns;
    const size_t nLast = bAlongX ? tile.uColumns - 1 : size_t{tile.uRows - 1} * tile.uColumns;
    const size_t nStep = bAlongX ? tile.uColumns : 1;
    for (uint32_t i = 0; i < uCount; ++i)
    {
        const float* pLeft = tile.samples.data() + nLast + i * nStep;
        const float* pRight = next.samples.data() + i * nStep;
        if (std::bit_cast<uint32_t>(*pLeft) != std::bit_cast<uint32_t>(*pRight))
        {
            return false;
        }
    }
    return true;
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
    uColumns = 1;
    uRows = 1;
    while (uColumns < MOST_FOUND && fs::exists(GetTilePath(strPath, uColumns, 0).c_str()))
    {
        ++uColumns;
    }
    while (uRows < MOST_FOUND && fs::exists(GetTilePath(strPath, 0, uRows).c_str()))
    {
        ++uRows;
    }
    return uColumns > 1 || uRows > 1;
}

bool STileSet::Join(const std::function<bool(const std::string&, SSampleGrid&)>& read,
                    SSampleGrid& grid,
                    std::vector<std::string>& lines,
                    std::string& strLine) const
{
    SSampleGrid first;
    SSampleGrid tile;
    const bool bAlongX = uColumns > 1;
    const std::string strSecond = GetTilePath(strPath, bAlongX ? 1 : 0, bAlongX ? 0 : 1);
    if (!read(GetTilePath(strPath, 0, 0), first) || !read(strSecond, tile))
    {
        return false;
    }
    const CTileJoint alike(first, false, uColumns, uRows);
    const bool bShared = alike.IsAlike(tile) && HaveOneEdge(first, tile, bAlongX);
    CTileJoint joint(first, bShared, uColumns, uRows);
    if (!joint.IsPossible())
    {
        strLine =
            MakeText("%s: %u x %u tiles are too many samples", strPath.c_str(), uColumns, uRows);
        return false;
    }
    joint.Allocate();
    for (uint32_t i = 0; i < uColumns * uRows; ++i)
    {
        const std::string strTile = GetTilePath(strPath, i % uColumns, i / uColumns);
        if (!read(strTile, tile))
        {
            return false;
        }
        if (!joint.IsAlike(tile))
        {
            strLine = strTile + ": its samples are others than those of the first tile";
            return false;
        }
        joint.Place(tile, i % uColumns, i / uColumns);
    }
    lines.push_back(
        MakeText(
            "tiles: %u x %u of %u x %u samples, ", uColumns, uRows, first.uColumns, first.uRows) +
        (bShared ? "edges are shared" : "side by side"));
    grid = std::move(joint.GetWhole());
    return true;
}
