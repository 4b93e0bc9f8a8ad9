#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightImport.h"
#include "engine/elevation/HgtReader.h"
#include "engine/elevation/ReportText.h"
#include "engine/elevation/TileSet.h"
#include "engine/terrain/HeightFile.h"
#include "host/FileBytes.h"
#include "host/Log.h"
#include "host/Progress.h"

#include <cmath>
#include <new>
#include <utility>

namespace
{

// Longer than the largest grid of numbers of 8 bytes, and than any text that memory could hold as
// samples.
constexpr uint64_t MAX_FILE_BYTES = uint64_t{64} << 30;

// False with the whole line.
bool LoadBytes(const char* pszPath, SFileBytes& bytes, std::string& strLine)
{
    const EFileRead eResult = ReadFileBytes(pszPath, MAX_FILE_BYTES, bytes, strLine);
    switch (eResult)
    {
    case EFileRead::Done:
    case EFileRead::NotOpened:
        break;
    case EFileRead::TooLong:
        strLine = std::string(pszPath) + ": the file is too long for a height map";
        break;
    case EFileRead::NoMemory:
        strLine = std::string(pszPath) + ": not enough memory";
        break;
    case EFileRead::NotRead:
        strLine = std::string(pszPath) + ": cannot be read to its end";
        break;
    }
    return eResult == EFileRead::Done;
}

// False when ReadHeightFile has logged why.
bool ReadOwnFile(const char* pszPath, SSampleGrid& grid, SVec3& size)
{
    SHeightField field;
    if (!ReadHeightFile(pszPath, field))
    {
        return false;
    }
    grid.uColumns = field.uSizeX;
    grid.uRows = field.uSizeZ;
    grid.samples.assign(field.pHeights.get(), field.pHeights.get() + field.GetCount());
    grid.eByteOrder = EByteOrder::Little;
    grid.dSpacingX = std::fabs(static_cast<double>(field.size.x)) / (field.uSizeX - 1);
    grid.dSpacingZ = std::fabs(static_cast<double>(field.size.z)) / (field.uSizeZ - 1);
    size = field.size;
    return true;
}

void AddLines(const SImportOptions& options, const SSampleGrid& grid, SImportReport& report)
{
    std::vector<std::string>& lines = report.lines; // of tiles, what was made of them
    lines.insert(
        lines.begin(),
        MakeText("%s: %u x %u samples", report.strPath.c_str(), grid.uColumns, grid.uRows));
    lines.push_back(
        MakeText("format: %s, %s", report.pFormat->pszName, GetSampleTypeText(grid).c_str()));
    // A raw file says nothing of itself, so what was taken for granted is told.
    const bool bRaw = report.pFormat->bRaw;
    if (bRaw && options.eByteOrder == EByteOrder::None)
    {
        lines.emplace_back("assumed: little-endian byte order");
    }
    if (bRaw && options.uColumns == 0 && options.uRows == 0)
    {
        lines.push_back(
            MakeText("assumed: a square of %u x %u samples", grid.uColumns, grid.uRows));
    }
    if (grid.bBadPlace)
    {
        lines.emplace_back("warning: the place that the file says cannot be, and is not used");
    }
    if (grid.uBits <= 8 && grid.eType != ESampleType::Float)
    {
        lines.push_back(MakeText("warning: %u bits tell only %u heights apart, slopes become "
                                 "terraces",
                                 grid.uBits,
                                 1U << grid.uBits));
    }
}

// Finds the range of the samples and counts the voids. False when the user cancelled.
bool LookAtSamples(const SSampleGrid& grid, SImportReport& report)
{
    CProgressSteps progress("Looking at the heights", grid.uRows);
    float fLow = INFINITY;
    float fHigh = -INFINITY;
    size_t nVoids = 0;
    for (uint32_t z = 0; z < grid.uRows; ++z)
    {
        if (!progress.Reach(z))
        {
            return false;
        }
        const float* pRow = grid.samples.data() + size_t{z} * grid.uColumns;
        for (uint32_t x = 0; x < grid.uColumns; ++x)
        {
            // In this order a void, which is no number, changes neither.
            fLow = pRow[x] < fLow ? pRow[x] : fLow;
            fHigh = pRow[x] > fHigh ? pRow[x] : fHigh;
            nVoids += std::isnan(pRow[x]) ? 1 : 0;
        }
    }
    report.fLow = fLow;
    report.fHigh = fHigh;
    report.nVoids = nVoids;
    return true;
}

// False with the whole line, or with none when it is logged already.
bool ReadFile(const char* pszPath,
              const SImportOptions& options,
              SSampleGrid& grid,
              SImportReport& report,
              std::string& strLine)
{
    report.pFormat = FindFormatOfFile(pszPath);
    if (report.pFormat != nullptr && report.pFormat->bTerrain)
    {
        return ReadOwnFile(pszPath, grid, report.size);
    }
    SFileBytes bytes;
    if (!LoadBytes(pszPath, bytes, strLine))
    {
        return false;
    }
    std::string strFault;
    if (report.pFormat == nullptr)
    {
        strFault = "is no height map that can be read (" + ListElevationFormats(false) + ")";
    }
    if (report.pFormat == nullptr || !report.pFormat->pDecode(bytes.Get(), options, grid, strFault))
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    if (report.pFormat->bDegreeTile)
    {
        PlaceTile(pszPath, grid);
    }
    return true;
}

// The same of a whole set when the file is the first tile of one. Such terrains are no sets.
bool ReadAll(const char* pszPath,
             const SImportOptions& options,
             SSampleGrid& grid,
             SImportReport& report,
             std::string& strLine)
{
    STileSet tiles;
    const SElevationFormat* pFormat = FindFormatOfFile(pszPath);
    if ((pFormat != nullptr && pFormat->bTerrain) || !tiles.Find(pszPath))
    {
        report.strPath = pszPath;
        return ReadFile(pszPath, options, grid, report, strLine);
    }
    report.strPath = tiles.strPath;
    const auto readTile = [&](const std::string& strTile, SSampleGrid& tile)
    {
        return ReadFile(strTile.c_str(), options, tile, report, strLine);
    };
    return tiles.Join(readTile, grid, report.lines, strLine);
}

// As ReadFile, with all that the report says.
bool Read(const char* pszPath,
          const SImportOptions& options,
          SSampleGrid& grid,
          SImportReport& report,
          std::string& strLine)
{
    SSampleGrid read;
    SImportReport made;
    if (!ReadAll(pszPath, options, read, made, strLine))
    {
        return false;
    }
    if (!LookAtSamples(read, made))
    {
        strLine = std::string(pszPath) + ": cancelled";
        return false;
    }
    if (made.nVoids == read.samples.size())
    {
        strLine = std::string(pszPath) + ": has no sample that is not void";
        return false;
    }
    AddLines(options, read, made);
    grid = std::move(read);
    report = std::move(made);
    return true;
}

} // namespace

bool ReadElevation(const char* pszPath,
                   const SImportOptions& options,
                   SSampleGrid& grid,
                   SImportReport& report)
{
    if (pszPath == nullptr)
    {
        CrashLog("[ReadElevation] no path\n");
        return false;
    }
    try
    {
        std::string strLine;
        if (Read(pszPath, options, grid, report, strLine))
        {
            return true;
        }
        if (!strLine.empty())
        {
            CrashLog("[ReadElevation] %s\n", strLine.c_str());
        }
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[ReadElevation] %s: not enough memory\n", pszPath);
    }
    return false;
}
