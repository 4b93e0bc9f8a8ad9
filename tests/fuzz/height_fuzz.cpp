#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightExport.h"
#include "engine/elevation/SImportOptions.h"
#include "engine/elevation/VoidFiller.h"
#include "engine/terrain/HeightFile.h"
#include "host/FileBytes.h"
#include "host/Log.h"
#include "tests/fuzz/Seeds.h"

#include <sys/mman.h>
#include <unistd.h>
#include <zlib.h>

#include <cmath>
#include <cstdio>
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

// uOptions: what is said of a file that does not say it itself.
void FuzzSamples(const SElevationFormat& format, uint8_t uOptions, std::span<const uint8_t> bytes)
{
    SImportOptions options;
    options.eByteOrder = (uOptions & 1U) != 0 ? EByteOrder::Big : EByteOrder::Little;
    options.uColumns = uOptions >> 5U;
    options.uRows = uOptions >> 2U & 7U;
    if (format.pRecognise != nullptr)
    {
        format.pRecognise(bytes);
    }
    SSampleGrid grid;
    std::string strFault;
    const bool bRead = format.pDecode(bytes, options, grid, strFault);
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

// Through a file, because that is how formats are written.
void PutSeed(const std::string& strFolder, const SElevationFormat& format, char cFirst)
{
    const float aHeights[] = {0, 1, 2, 3, 4, 5, 6, 7, 9};
    const SSampleView heights{aHeights, 3, 3};
    const std::string strPath = strFolder + "/whole." + format.extensions[0];
    SExportPlan plan;
    SFileBytes file;
    std::string strFault;
    Require(PlanExport(strPath.c_str(), heights, {4, 9, 4}, {}, plan) &&
            ExportHeights(strPath.c_str(), heights, {4, 9, 4}, plan) &&
            ReadFileBytes(strPath.c_str(), 1 << 16, file, strFault) == EFileRead::Done);
    std::remove(strPath.c_str());
    WriteSeed(strFolder + "/" + format.extensions[0], {cFirst, 0}, file.Get());
}

} // namespace

// With "--seeds FOLDER" a small file of each format that can be written is put there.
extern "C" int LLVMFuzzerInitialize(int* pArgumentCount, char*** pArguments)
{
    if (const char* pszFolder = FindSeedFolder(*pArgumentCount, *pArguments))
    {
        char cFirst = 0;
        for (const SElevationFormat& format : GetElevationFormats())
        {
            if (IsWritten(&format))
            {
                PutSeed(pszFolder, format, cFirst);
            }
            ++cFirst;
        }
        std::exit(0);
    }
    return 0;
}

// The first byte chooses the format, the second one what else is said.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, size_t nBytes)
{
    if (nBytes < 2)
    {
        return 0;
    }
    const std::span<const SElevationFormat> formats = GetElevationFormats();
    const SElevationFormat& format = formats[pData[0] % formats.size()];
    const std::span<const uint8_t> bytes(pData + 2, nBytes - 2);
    if (format.bTerrain)
    {
        FuzzHeightFile({bytes.begin(), bytes.end()}, (pData[1] & 1U) != 0);
    }
    else
    {
        FuzzSamples(format, pData[1], bytes);
    }
    return 0;
}
