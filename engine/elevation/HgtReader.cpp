#include "engine/elevation/HgtReader.h"

#include "engine/elevation/DegreeLength.h"

#include <cmath>
#include <limits>
#include <utility>

bool DecodeHgt(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    constexpr int16_t VOID_SAMPLE = -32768;
    const size_t nCount = bytes.size() / 2;
    // There is no header: the length alone tells how many samples a side has.
    const auto nSide = static_cast<size_t>(std::llround(std::sqrt(static_cast<double>(nCount))));
    if (bytes.size() % 2 != 0 || nSide * nSide != nCount || nSide < MIN_SAMPLES ||
        nSide > MAX_SAMPLES)
    {
        strFault = "its " + std::to_string(bytes.size()) + " bytes are no square of 16-bit samples";
        return false;
    }
    SSampleGrid read;
    read.uColumns = static_cast<uint32_t>(nSide);
    read.uRows = read.uColumns;
    read.eType = ESampleType::Signed;
    read.uBits = 16;
    read.eByteOrder = EByteOrder::Big;
    read.samples.resize(nCount);
    for (size_t i = 0; i < nCount; ++i)
    {
        const auto iSample =
            static_cast<int16_t>(static_cast<uint16_t>(bytes[2 * i] << 8 | bytes[2 * i + 1]));
        read.samples[i] =
            iSample == VOID_SAMPLE ? std::numeric_limits<float>::quiet_NaN() : iSample;
    }
    grid = std::move(read);
    return true;
}

void PlaceTile(const char* pszPath, SSampleGrid& grid)
{
    grid.bInDegrees = true;
    grid.dSpacingX = 1.0 / (grid.uColumns - 1);
    grid.dSpacingZ = 1.0 / (grid.uRows - 1);
    SMapPoint corner;
    if (!FindTileCorner(pszPath, corner))
    {
        return;
    }
    SGeoTags& geo = grid.geo;
    geo.bKnown = true;
    geo.bDegrees = true;
    geo.first = {corner.dX, corner.dY + 1.0};
    geo.lastX = {corner.dX + 1.0, corner.dY + 1.0};
    geo.lastZ = corner;
    geo.noData = -32768.0;
    // Longitude and latitude on WGS 84, at the samples themselves.
    geo.keys = {1, 1, 0, 3, 1024, 0, 1, 2, 1025, 0, 1, 2, 2048, 0, 1, 4326};
}
