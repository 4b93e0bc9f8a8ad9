#include "engine/elevation/AsciiGridReader.h"
#include "engine/elevation/GeoTiffReader.h"
#include "engine/elevation/GreyPngReader.h"
#include "engine/elevation/HgtReader.h"
#include "engine/elevation/NpyReader.h"
#include "engine/elevation/RawReader.h"
#include "engine/elevation/VoidFiller.h"
#include "engine/terrain/HeightFile.h"
#include "host/Log.h"

#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{

// Counts the lines of the log and keeps them off the terminal.
class CLineCounter : public ILogSink
{
public:
    void Write(const char* pszText) override
    {
        for (; *pszText != '\0'; ++pszText)
        {
            m_Lines += *pszText == '\n' ? 1 : 0;
        }
    }

    uint32_t Take()
    {
        const uint32_t uLines = m_Lines;
        m_Lines = 0;
        return uLines;
    }

private:
    uint32_t m_Lines = 0;
};

void Require(bool bTrue)
{
    if (!bTrue)
    {
        std::abort();
    }
}

void FuzzHeightFile(std::vector<uint8_t> bytes, bool bFixChecksum)
{
    static CLineCounter counter;
    static const int iFile = memfd_create("height", 0);
    static const std::string strPath = "/proc/self/fd/" + std::to_string(iFile);
    SetLogSink(&counter);
    if (bFixChecksum && bytes.size() > 4)
    {
        const uint32_t uChecksum =
            static_cast<uint32_t>(crc32_z(0, bytes.data(), bytes.size() - 4));
        std::memcpy(bytes.data() + bytes.size() - 4, &uChecksum, sizeof(uChecksum));
    }
    Require(ftruncate(iFile, 0) == 0 &&
            pwrite(iFile, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    SHeightField field;
    const bool bRead = ReadHeightFile(strPath.c_str(), field);
    Require(counter.Take() == (bRead ? 0U : 1U));
    Require(bRead == (field.pHeights != nullptr));
    for (size_t i = 0; i < field.GetCount(); ++i)
    {
        Require(std::isfinite(field.pHeights[i]));
    }
}

using FDecode = bool (*)(std::span<const uint8_t>, SSampleGrid&, std::string&);

void FuzzSamples(FDecode pDecode, std::span<const uint8_t> bytes)
{
    SSampleGrid grid;
    std::string strFault;
    const bool bRead = pDecode(bytes, grid, strFault);
    Require(bRead == strFault.empty() && strFault.find('\n') == std::string::npos);
    Require(grid.samples.size() == size_t{grid.uColumns} * grid.uRows);
    // Filling takes a pass for each ring of a hole; larger grids would only be slow.
    constexpr size_t MAX_FILLED = 1 << 16;
    const bool bFilled = grid.samples.size() <= MAX_FILLED && FillVoids(grid) < grid.samples.size();
    for (const float fSample : grid.samples)
    {
        Require(std::isfinite(fSample) || (std::isnan(fSample) && !bFilled));
    }
}

// The first byte gives the layout.
bool DecodeAnyRaw(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    SRawLayout layout;
    if (!bytes.empty())
    {
        layout.bFloat = (bytes[0] & 1U) != 0;
        layout.eByteOrder = (bytes[0] & 2U) != 0 ? EByteOrder::Big : EByteOrder::Little;
        layout.uColumns = bytes[0] >> 5U;
        layout.uRows = bytes[0] >> 2U & 7U;
        bytes = bytes.subspan(1);
    }
    return DecodeRaw(bytes, layout, grid, strFault);
}

} // namespace

// The first byte chooses the reader.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nBytes)
{
    if (nBytes == 0)
    {
        return 0;
    }
    const std::span<const uint8_t> bytes(pData + 1, nBytes - 1);
    constexpr FDecode DECODERS[] = {
        &DecodeNpy, &DecodeHgt, &DecodeGreyPng, &DecodeAnyRaw, &DecodeGeoTiff, &DecodeAsciiGrid};
    const size_t nReader = pData[0] % (2 + std::size(DECODERS));
    if (nReader < 2)
    {
        FuzzHeightFile({bytes.begin(), bytes.end()}, nReader == 1);
    }
    else
    {
        FuzzSamples(DECODERS[nReader - 2], bytes);
    }
    return 0;
}
