#include "engine/terrain/StlFile.h"

#include "host/FileSystem.h"
#include "host/Log.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

static_assert(std::endian::native == std::endian::little, "records are written as they lie");

namespace
{

constexpr size_t HEADER_BYTES = 80;
constexpr size_t TRIANGLE_BYTES = 50; // normal, three corners, one 16-bit word that stays 0
constexpr size_t BUFFER_TRIANGLES = 4096;

// Collects triangles and writes them a buffer at a time.
class CTriangleStream
{
public:
    explicit CTriangleStream(fs::file& file)
        : m_File(file)
        , m_Buffer(BUFFER_TRIANGLES * TRIANGLE_BYTES)
    {
    }

    // Twelve floats: normal, then the corners counter-clockwise seen from above.
    void Add(const std::array<float, 12>& triangle)
    {
        std::memcpy(m_Buffer.data() + m_Used, triangle.data(), sizeof(triangle));
        m_Used += TRIANGLE_BYTES;
        if (m_Used == m_Buffer.size())
        {
            Flush();
        }
    }

    // A write that failed makes the file's close fail.
    void Flush()
    {
        m_File.write(m_Buffer.data(), m_Used);
        m_Used = 0;
    }

private:
    fs::file& m_File;
    std::vector<uint8_t> m_Buffer;
    size_t m_Used = 0;
};

// The first and one past the last cell wholly inside [fMin, fMax]. A bound that misses a vertex by
// less than a thousandth of a cell is on it: boxes come from 32-bit positions.
std::array<uint32_t, 2> GetCellRange(float fMin, float fMax, double dStep, uint32_t uCells)
{
    constexpr double SNAP = 0.001;
    const double dCells = uCells;
    const double dFirst = std::ceil(fMin / dStep - SNAP);
    const double dEnd = std::floor(fMax / dStep + SNAP);
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

SVec3 MakeNormal(float fSlopeX, float fSlopeZ)
{
    const float fScale = 1.0F / std::sqrt(1.0F + fSlopeX * fSlopeX + fSlopeZ * fSlopeZ);
    return {-fSlopeX * fScale, fSlopeZ * fScale, fScale};
}

void AddCell(const SHeightView& view, uint32_t uX, uint32_t uZ, CTriangleStream& stream)
{
    const float* pUpper = view.pHeights + static_cast<size_t>(uZ) * view.uSizeX + uX;
    const float* pLower = pUpper + view.uSizeX;
    const float fX0 = static_cast<float>(uX) * view.fStepX;
    const float fX1 = static_cast<float>(uX + 1) * view.fStepX;
    const float fY0 = -static_cast<float>(uZ) * view.fStepZ;
    const float fY1 = -static_cast<float>(uZ + 1) * view.fStepZ;
    const SVec3 first =
        MakeNormal((pUpper[1] - pUpper[0]) / view.fStepX, (pLower[0] - pUpper[0]) / view.fStepZ);
    const SVec3 second =
        MakeNormal((pLower[1] - pLower[0]) / view.fStepX, (pLower[1] - pUpper[1]) / view.fStepZ);
    // clang-format off
    stream.Add({first.x, first.y, first.z,
                fX0, fY0, pUpper[0],
                fX0, fY1, pLower[0],
                fX1, fY0, pUpper[1]});
    stream.Add({second.x, second.y, second.z,
                fX1, fY0, pUpper[1],
                fX0, fY1, pLower[0],
                fX1, fY1, pLower[1]});
    // clang-format on
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
    std::array<char, HEADER_BYTES> header{};
    std::memcpy(header.data(), "terrain, z up", 13);
    const uint32_t uTriangles =
        2 * (cells.uEndX - cells.uMinX) * (cells.uEndZ - cells.uMinZ); // at most 2^29
    file.write(header.data(), header.size());
    file.write(&uTriangles, sizeof(uTriangles));

    CTriangleStream stream(file);
    for (uint32_t z = cells.uMinZ; z < cells.uEndZ; ++z)
    {
        for (uint32_t x = cells.uMinX; x < cells.uEndX; ++x)
        {
            AddCell(view, x, z, stream);
        }
    }
    stream.Flush();
    if (!file.close())
    {
        CrashLog("[WriteStlFile] %s\n", file.last_error().get_error_text());
        return false;
    }
    return true;
}
