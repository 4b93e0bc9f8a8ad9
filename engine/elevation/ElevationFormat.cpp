#include "engine/elevation/ElevationFormat.h"

#include "engine/elevation/NpyReader.h"
#include "engine/imaging/PngCodec.h"
#include "host/FileSystem.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

namespace
{

struct SExtension
{
    const char* pszExtension;
    EElevationFormat eFormat;
    const char* pszName;
};

constexpr SExtension EXTENSIONS[] = {
    {".height", EElevationFormat::Height, "height file"},
    {".png", EElevationFormat::Png, "grey PNG"},
    {".r16", EElevationFormat::Raw16, "raw 16-bit"},
    {".r32", EElevationFormat::Raw32, "raw 32-bit float"},
    {".npy", EElevationFormat::Npy, "NumPy array"},
    {".hgt", EElevationFormat::Hgt, "HGT tile"},
    {".tif", EElevationFormat::Tiff, "GeoTIFF"},
    {".tiff", EElevationFormat::Tiff, "GeoTIFF"},
    {".asc", EElevationFormat::AsciiGrid, "ASCII grid"},
};

bool BeginsWith(std::span<const uint8_t> bytes, std::string_view strSignature)
{
    return bytes.size() >= strSignature.size() &&
           std::memcmp(bytes.data(), strSignature.data(), strSignature.size()) == 0;
}

bool IsTiff(std::span<const uint8_t> bytes)
{
    // Classic and big, in both byte orders.
    constexpr std::string_view SIGNATURES[] = {
        {"II*\0", 4}, {"MM\0*", 4}, {"II+\0", 4}, {"MM\0+", 4}};
    return std::any_of(std::begin(SIGNATURES),
                       std::end(SIGNATURES),
                       [bytes](std::string_view str) { return BeginsWith(bytes, str); });
}

// The header's words come in any order, but nearly all files start with one of these.
bool IsAsciiGrid(std::span<const uint8_t> bytes)
{
    const auto* pStart = std::find_if_not(
        bytes.data(), bytes.data() + bytes.size(), [](uint8_t u) { return std::isspace(u) != 0; });
    std::string strWord(pStart, std::min(pStart + 5, bytes.data() + bytes.size()));
    std::transform(strWord.begin(),
                   strWord.end(),
                   strWord.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return strWord == "ncols" || strWord == "nrows";
}

} // namespace

const char* GetElevationFormatName(EElevationFormat eFormat)
{
    const SExtension* pFound =
        std::find_if(std::begin(EXTENSIONS),
                     std::end(EXTENSIONS),
                     [eFormat](const SExtension& e) { return e.eFormat == eFormat; });
    return pFound != std::end(EXTENSIONS) ? pFound->pszName : "unknown";
}

EElevationFormat FindFormatByName(const char* pszPath)
{
    const size_t nLength = std::strlen(pszPath);
    for (const SExtension& extension : EXTENSIONS)
    {
        const size_t nExtension = std::strlen(extension.pszExtension);
        if (nLength > nExtension &&
            strcasecmp(pszPath + nLength - nExtension, extension.pszExtension) == 0)
        {
            return extension.eFormat;
        }
    }
    return EElevationFormat::Unknown;
}

EElevationFormat RecogniseElevation(std::span<const uint8_t> bytes, const char* pszPath)
{
    if (BeginsWith(bytes, "HEIGHTF1"))
    {
        return EElevationFormat::Height;
    }
    if (IsPng(bytes))
    {
        return EElevationFormat::Png;
    }
    if (IsNpy(bytes))
    {
        return EElevationFormat::Npy;
    }
    if (IsTiff(bytes))
    {
        return EElevationFormat::Tiff;
    }
    return IsAsciiGrid(bytes) ? EElevationFormat::AsciiGrid : FindFormatByName(pszPath);
}

EElevationFormat FindFormatOfFile(const char* pszPath)
{
    uint8_t aBytes[64];
    fs::file file;
    const size_t nRead =
        file.open(pszPath, fs::mode_read) ? file.read(aBytes, sizeof(aBytes)) : size_t{0};
    return RecogniseElevation({aBytes, nRead}, pszPath);
}

bool HoldsCodes(EElevationFormat eFormat, bool bWhiteIsSaid)
{
    return eFormat == EElevationFormat::Png || eFormat == EElevationFormat::Raw16 ||
           (eFormat == EElevationFormat::Raw32 && bWhiteIsSaid);
}
