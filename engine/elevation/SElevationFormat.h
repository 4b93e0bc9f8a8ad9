#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "engine/elevation/SSampleView.h"
#include "host/HostTypes.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

class CExportRows;
struct SExportPlan;
struct SImportOptions;

namespace fs
{
class file;
}

// Whether samples of a format are codes of heights, so that full white has a height.
enum class ECodes : uint8_t
{
    Never,
    WhenWhiteIsSaid,
    Always,
};

// One format of height maps: what it is called, how its files are told, the functions that read and
// write them, and what else differs. The rows of the table in ElevationFormats.cpp, which live as
// long as the process.
struct SElevationFormat
{
    const char* pszName = nullptr; // for people, such as "raw 16-bit"

    // Without the dot, in lower case; the first is the usual one. Null from the first that is not
    // there.
    std::array<const char*, 3> extensions{};

    // Whether the first bytes of a file (64 are enough) are the signature; null for a format
    // without one.
    bool (*pRecognise)(std::span<const uint8_t> bytes) = nullptr;

    // Decodes a whole file. bytes is borrowed for the call and may hold anything. False leaves a
    // fault in strFault, a phrase without the file's name and without a line feed, and the grid as
    // it was. What a file claims is compared with the bytes it has before memory is taken. Null for
    // the terrain's own files.
    bool (*pDecode)(std::span<const uint8_t> bytes,
                    const SImportOptions& options,
                    SSampleGrid& grid,
                    std::string& strFault) = nullptr;

    // One of these two, or none when the format is read only.
    // pWrite: writes a whole file into one that is open and empty; the caller closes it. A write
    // fault sticks in the file. False with the fault when there is another one, without when the
    // user cancelled.
    // pSave: opens and closes the file itself. False when the reason is logged.
    bool (*pWrite)(fs::file& file,
                   CExportRows& rows,
                   const SExportPlan& plan,
                   std::string& strFault) = nullptr;
    bool (*pSave)(const char* pszPath,
                  const SSampleView& heights,
                  const SVec3& size,
                  const SExportPlan& plan) = nullptr;

    // Where only square grids can be written: what a file of the format is called in the fault,
    // "an HGT tile". Else null.
    const char* pszSquareFile = nullptr;

    // What is written: 16 bits a sample, or floats of 32 bits.
    ESampleType eSamples = ESampleType::Float;
    ECodes eCodes = ECodes::Never;
    EByteOrder eByteOrder = EByteOrder::Little;

    bool bTerrain = false; // the engine's own: scale, spacing and maximum height are the file's
    bool bRaw = false;     // bare samples: whoever reads them must know shape and byte order
    bool bHalves = false;  // floats may be written in 16 bits, too
    bool bKeepsSpacing = false; // of an export, and the place on the map
    bool bNorthUp = false;      // of that place no more than a corner and the size of cells
    bool bDegreeTile = false;   // a file covers one degree each way; its name says which
};

inline bool HoldsCodes(const SElevationFormat& format, bool bWhiteIsSaid)
{
    return format.eCodes == ECodes::Always ||
           (format.eCodes == ECodes::WhenWhiteIsSaid && bWhiteIsSaid);
}
