#include "engine/terrain/StlFile.h"

#include "host/FileSystem.h"
#include "host/Log.h"
#include "host/Progress.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

static_assert(std::endian::native == std::endian::little, "records are written as they lie");

namespace
{

constexpr const char* TASK = "Export terrain to STL"; // as progress shows it
constexpr size_t HEADER_BYTES = 80;
constexpr size_t TRIANGLE_BYTES = 50; // normal, three corners, one 16-bit word that stays 0
constexpr size_t CELL_BYTES = 2 * TRIANGLE_BYTES;
constexpr size_t WRITE_BYTES = size_t{256} << 10; // whole pages at whole pages of the file
constexpr uint32_t RUN_CELLS = 1024;

// The first and one past the last cell wholly inside [fMin, fMax]. A bound that misses a vertex by
// less than a thousandth of a cell is on it: boxes come from 32-bit positions.
std::array<uint32_t, 2> GetCellRange(float fMin, float fMax, double dStep, uint32_t uCells)
{
    constexpr double SNAP = 0.001;
    const double dCells = uCells;
    const double dFirst = std::ceil(fMin / dStep - SNAP);
    const double dEnd = std::floor(fMax / dStep + SNAP);
    // Written so that a NaN bound gives no cells.
    if (!(dFirst < dCells) || !(dEnd > 0.0))
    {
        return {0, 0};
    }
    return {static_cast<uint32_t>(std::max(dFirst, 0.0)),
            static_cast<uint32_t>(std::min(dEnd, dCells))};
}

SVertexRect GetCells(const SHeightView& view, const SExtents* pBox)
{
    if (pBox == nullptr)
    {
        return {0, 0, view.uSizeX - 1, view.uSizeZ - 1};
    }
    const auto [uMinX, uEndX] =
        GetCellRange(pBox->min.x, pBox->max.x, view.fStepX, view.uSizeX - 1);
    const auto [uMinZ, uEndZ] =
        GetCellRange(pBox->min.z, pBox->max.z, view.fStepZ, view.uSizeZ - 1);
    return {uMinX, uMinZ, uEndX, uEndZ};
}

// Unit normals of the triangles of one kind in a row of cells.
struct SNormals
{
    float afX[RUN_CELLS];
    float afY[RUN_CELLS];
    float afZ[RUN_CELLS];
};

// pEdge: the row of heights that the triangles' edges along x lie on; pNorth, pSouth: both ends of
// their edges along the other axis. A plain loop over arrays: square roots and divisions are what
// the export spends its time on, and so four of them are done at once.
void ComputeNormals(const float* pEdge,
                    const float* pNorth,
                    const float* pSouth,
                    const SHeightView& view,
                    uint32_t nCells,
                    SNormals& normals)
{
    const float fStepX = view.fStepX;
    const float fStepZ = view.fStepZ;
    for (uint32_t i = 0; i < nCells; ++i)
    {
        const float fSlopeX = (pEdge[i + 1] - pEdge[i]) / fStepX;
        const float fSlopeZ = (pSouth[i] - pNorth[i]) / fStepZ;
        const float fScale = 1.0F / std::sqrt(1.0F + fSlopeX * fSlopeX + fSlopeZ * fSlopeZ);
        normals.afX[i] = -fSlopeX * fScale;
        normals.afY[i] = fSlopeZ * fScale;
        normals.afZ[i] = fScale;
    }
}

// Twelve floats: normal, then the corners counter-clockwise seen from above.
void StoreTriangle(uint8_t* pDest, const std::array<float, 12>& triangle)
{
    constexpr uint16_t ATTRIBUTES = 0;
    std::memcpy(pDest, triangle.data(), sizeof(triangle));
    std::memcpy(pDest + sizeof(triangle), &ATTRIBUTES, sizeof(ATTRIBUTES));
}

// Makes the file's bytes and writes them through a buffer of fixed size.
class CStlStream
{
public:
    CStlStream(fs::file& file, const SHeightView& view)
        : m_File(file)
        , m_View(view)
        , m_Buffer(WRITE_BYTES + CELL_BYTES)
    {
    }

    void AddHeader(uint32_t uTriangles)
    {
        constexpr char TEXT[] = "terrain, z up"; // must not begin with "solid"
        std::memcpy(m_Buffer.data(), TEXT, sizeof(TEXT));
        std::memcpy(m_Buffer.data() + HEADER_BYTES, &uTriangles, sizeof(uTriangles));
        m_Used = HEADER_BYTES + sizeof(uTriangles);
    }

    // False when the file takes no more; its close then fails too.
    bool AddRow(uint32_t uZ, uint32_t uMinX, uint32_t uEndX)
    {
        uint32_t nRun = 0;
        for (uint32_t x = uMinX; x < uEndX; x += nRun)
        {
            // Rounded up: the last cell may end behind WRITE_BYTES, for which the buffer has room.
            const auto nRoom =
                static_cast<uint32_t>((WRITE_BYTES - m_Used + CELL_BYTES - 1) / CELL_BYTES);
            nRun = std::min({uEndX - x, nRoom, RUN_CELLS});
            StoreCells(uZ, x, nRun);
            m_Used += nRun * CELL_BYTES;
            if (m_Used >= WRITE_BYTES && !Write(WRITE_BYTES))
            {
                return false;
            }
        }
        return true;
    }

    void Flush() { Write(m_Used); }

private:
    void StoreCells(uint32_t uZ, uint32_t uX, uint32_t nCells);

    // What lies behind nBytes, less than a cell, moves to the front.
    bool Write(size_t nBytes)
    {
        const bool bGood = m_File.write(m_Buffer.data(), nBytes) == nBytes;
        m_Used -= nBytes;
        std::memcpy(m_Buffer.data(), m_Buffer.data() + nBytes, m_Used);
        return bGood;
    }

    fs::file& m_File;
    const SHeightView& m_View;
    std::vector<uint8_t> m_Buffer;
    size_t m_Used = 0;
    SNormals m_First = {};
    SNormals m_Second = {};
};

// The hot loop: it makes 1.7 GB for 4097 x 4097 vertices.
void CStlStream::StoreCells(uint32_t uZ, uint32_t uX, uint32_t nCells)
{
    const float* pUpper = m_View.pHeights + static_cast<size_t>(uZ) * m_View.uSizeX + uX;
    const float* pLower = pUpper + m_View.uSizeX;
    ComputeNormals(pUpper, pUpper, pLower, m_View, nCells, m_First);
    ComputeNormals(pLower, pUpper + 1, pLower + 1, m_View, nCells, m_Second);
    const float fY0 = 0.0F - static_cast<float>(uZ) * m_View.fStepZ; // no negative zero
    const float fY1 = 0.0F - static_cast<float>(uZ + 1) * m_View.fStepZ;
    uint8_t* pDest = m_Buffer.data() + m_Used;
    for (uint32_t i = 0; i < nCells; ++i, pDest += CELL_BYTES)
    {
        const float fX0 = static_cast<float>(uX + i) * m_View.fStepX;
        const float fX1 = static_cast<float>(uX + i + 1) * m_View.fStepX;
        // clang-format off
        StoreTriangle(pDest, {m_First.afX[i], m_First.afY[i], m_First.afZ[i],
                              fX0, fY0, pUpper[i],
                              fX0, fY1, pLower[i],
                              fX1, fY0, pUpper[i + 1]});
        StoreTriangle(pDest + TRIANGLE_BYTES,
                             {m_Second.afX[i], m_Second.afY[i], m_Second.afZ[i],
                              fX1, fY0, pUpper[i + 1],
                              fX0, fY1, pLower[i],
                              fX1, fY1, pLower[i + 1]});
        // clang-format on
    }
}

// False when the user cancelled. A file that takes no more ends it early too: its close fails.
bool WriteCells(fs::file& file, const SHeightView& view, const SVertexRect& cells)
{
    const uint32_t nRows = cells.uEndZ - cells.uMinZ;
    const uint32_t nColumns = cells.uEndX - cells.uMinX;
    CStlStream stream(file, view);
    stream.AddHeader(2 * nColumns * nRows); // at most 2^29
    CProgressSteps progress(TASK, nRows);
    for (uint32_t z = 0; z < nRows; ++z)
    {
        if (!progress.Reach(z))
        {
            return false;
        }
        if (!stream.AddRow(cells.uMinZ + z, cells.uMinX, cells.uEndX))
        {
            return true;
        }
    }
    stream.Flush();
    return progress.Finish();
}

} // namespace

bool WriteStlFile(const char* pszPath, const SHeightView& view, const SExtents* pBox)
{
    const char* pszName = pszPath != nullptr ? pszPath : "";
    const SVertexRect cells = GetCells(view, pBox);
    if (cells.IsEmpty())
    {
        CrashLog("[WriteStlFile] %s: the box holds no whole cell\n", pszName);
        return false;
    }
    fs::file file;
    if (!file.open(pszName, fs::mode_write))
    {
        CrashLog("[WriteStlFile] %s\n", file.last_error().get_error_text());
        return false;
    }
    if (!WriteCells(file, view, cells))
    {
        file.discard();
        // No failure in the log: the person has asked for it.
        LogR("[WriteStlFile] %s: cancelled\n", pszName);
        return false;
    }
    if (!file.close())
    {
        CrashLog("[WriteStlFile] %s\n", file.last_error().get_error_text());
        return false;
    }
    return true;
}
