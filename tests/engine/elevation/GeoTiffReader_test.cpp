#include "engine/elevation/GeoTiffReader.h"
#include "tests/support/CTempFolder.h"

#include <tiffio.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace
{

constexpr uint32_t COLUMNS = 37;
constexpr uint32_t ROWS = 21;
constexpr size_t ODD_ONE = 2 * COLUMNS + 3; // the sample that a case may replace

struct STiff
{
    const char* pszMode = "wl"; // byte order
    uint16_t uFormat = SAMPLEFORMAT_INT;
    uint16_t uBits = 16;
    uint32_t uTile = 0; // side; 0: strips of seven rows
    uint16_t uCompression = COMPRESSION_NONE;
    uint16_t uOrientation = ORIENTATION_TOPLEFT;
    const char* pszNoData = nullptr;
    uint16_t uModel = 0; // of the geographic keys; 0: no geographic tags
    std::optional<double> odd = {};
};

// Different everywhere, so that no flip, swap or shift looks like another; fits in 16 bits.
double GetHeight(uint32_t uColumn, uint32_t uRow)
{
    return uRow * 401 + uColumn * uColumn * 3 + uColumn + 7;
}

void StoreSample(const STiff& tiff, double dValue, uint8_t* pDest)
{
    const auto fValue = static_cast<float>(dValue);
    const auto iValue = static_cast<int64_t>(std::isfinite(dValue) ? std::fmod(dValue, 1e9) : 0.0);
    const void* const pFloat =
        tiff.uBits == 32 ? static_cast<const void*>(&fValue) : static_cast<const void*>(&dValue);
    std::memcpy(pDest, tiff.uFormat == SAMPLEFORMAT_IEEEFP ? pFloat : &iValue, tiff.uBits / 8);
}

void SetTags(TIFF* pTiff, const STiff& tiff)
{
    static char s_szName[] = "tag";
    static const TIFFFieldInfo s_Fields[] = {
        {33550, -3, -3, TIFF_DOUBLE, FIELD_CUSTOM, 1, 1, s_szName},
        {34735, -3, -3, TIFF_SHORT, FIELD_CUSTOM, 1, 1, s_szName},
        {42113, -1, -1, TIFF_ASCII, FIELD_CUSTOM, 1, 0, s_szName},
    };
    TIFFMergeFieldInfo(pTiff, s_Fields, 3);
    const std::pair<uint32_t, uint32_t> aTags[] = {
        {TIFFTAG_IMAGEWIDTH, COLUMNS},
        {TIFFTAG_IMAGELENGTH, ROWS},
        {TIFFTAG_SAMPLESPERPIXEL, 1},
        {TIFFTAG_BITSPERSAMPLE, tiff.uBits},
        {TIFFTAG_SAMPLEFORMAT, tiff.uFormat},
        {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK},
        {TIFFTAG_COMPRESSION, tiff.uCompression},
        {TIFFTAG_ORIENTATION, tiff.uOrientation},
        {tiff.uTile != 0 ? TIFFTAG_TILEWIDTH : TIFFTAG_ROWSPERSTRIP, tiff.uTile + 7 * !tiff.uTile},
    };
    for (const auto& [uTag, uValue] : aTags)
    {
        TIFFSetField(pTiff, uTag, uValue);
    }
    const double aScale[] = {30.0, 25.5, 0.0};
    const uint16_t aKeys[] = {1, 1, 0, 2, 1025, 0, 1, 1, 1024, 0, 1, tiff.uModel};
    if (tiff.uModel != 0)
    {
        TIFFSetField(pTiff, 33550, 3, aScale);
        TIFFSetField(pTiff, 34735, 12, aKeys);
    }
    if (tiff.pszNoData != nullptr)
    {
        TIFFSetField(pTiff, 42113, tiff.pszNoData);
    }
}

std::vector<uint8_t> MakeTiff(const STiff& tiff)
{
    const CTempFolder folder;
    TIFF* const pTiff = TIFFOpen(folder.Path("a.tif").c_str(), tiff.pszMode);
    SetTags(pTiff, tiff);
    const uint32_t uWidth = tiff.uTile != 0 ? tiff.uTile : COLUMNS;
    const uint32_t uLength = tiff.uTile != 0 ? tiff.uTile : 7;
    if (tiff.uTile != 0)
    {
        TIFFSetField(pTiff, TIFFTAG_TILELENGTH, uLength);
    }
    auto* const pWrite = tiff.uTile != 0 ? TIFFWriteEncodedTile : TIFFWriteEncodedStrip;
    std::vector<uint8_t> block(size_t{uWidth} * uLength * tiff.uBits / 8);
    const uint32_t uAcross = (COLUMNS + uWidth - 1) / uWidth;
    for (uint32_t uBlock = 0; uBlock < uAcross * ((ROWS + uLength - 1) / uLength); ++uBlock)
    {
        for (uint32_t i = 0; i < uWidth * uLength; ++i)
        {
            const uint32_t x = uBlock % uAcross * uWidth + i % uWidth;
            const uint32_t z = uBlock / uAcross * uLength + i / uWidth;
            const bool bOdd = tiff.odd && z * COLUMNS + x == ODD_ONE;
            StoreSample(
                tiff, bOdd ? *tiff.odd : GetHeight(x, z), block.data() + i * tiff.uBits / 8);
        }
        EXPECT_GT(pWrite(pTiff, uBlock, block.data(), static_cast<tmsize_t>(block.size())), 0);
    }
    TIFFClose(pTiff);
    const std::string strBytes = ReadBytes(folder.Path("a.tif"));
    return {strBytes.begin(), strBytes.end()};
}

constexpr uint16_t FLOATS = SAMPLEFORMAT_IEEEFP;
constexpr uint16_t WHOLE = SAMPLEFORMAT_UINT;
constexpr uint16_t DEFLATE = COMPRESSION_ADOBE_DEFLATE;
constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double LOWEST = std::numeric_limits<float>::lowest();
// And whether the odd sample is a void.
const std::pair<STiff, bool> LAYOUTS[] = {
    {{}, false},
    {{.pszMode = "wb"}, false},
    {{.pszMode = "wb", .uTile = 16, .uCompression = DEFLATE}, false},
    {{.pszMode = "wb8", .uFormat = FLOATS, .uBits = 32, .uTile = 64}, false},
    {{.uFormat = WHOLE, .uCompression = COMPRESSION_LZW}, false},
    {{.uFormat = SAMPLEFORMAT_VOID, .uTile = 32}, false},
    {{.uFormat = WHOLE, .uBits = 32, .uTile = 16}, false},
    {{.uBits = 32, .uCompression = DEFLATE}, false},
    {{.pszMode = "wb", .uFormat = FLOATS, .uBits = 32}, false},
    {{.uFormat = FLOATS, .uBits = 64, .uTile = 16}, false},
    {{.uFormat = WHOLE, .uBits = 8}, false},
    {{.uBits = 8, .uTile = 16}, false},
    {{.uOrientation = ORIENTATION_BOTLEFT}, false},
    {{.uTile = 16, .uOrientation = ORIENTATION_TOPRIGHT}, false},
    {{.uTile = 16, .uOrientation = ORIENTATION_BOTRIGHT}, false},
    {{.pszNoData = " -9999 ", .uModel = 1, .odd = -9999}, true},
    {{.pszNoData = "-9999.0", .uModel = 2, .odd = -9999}, true},
    {{.pszNoData = "none", .odd = -9999}, false},
    {{.odd = -32768}, true},
    {{.uBits = 32, .odd = -32768}, false},
    {{.uFormat = FLOATS, .uBits = 32, .odd = NO_NUMBER}, true},
    // Digits lost on the way through another program.
    {{.uFormat = FLOATS, .uBits = 32, .pszNoData = "-3.402823466e+38", .odd = LOWEST}, true},
};

TEST(GeoTiffReader, EveryLayoutGivesEverySampleNorthRowFirstAndWhatTheTagsSay)
{
    int nCase = 0;
    for (const auto& [tiff, bVoid] : LAYOUTS)
    {
        SCOPED_TRACE(nCase++);
        SSampleGrid grid;
        std::string strFault;
        ASSERT_TRUE(DecodeGeoTiff(MakeTiff(tiff), grid, strFault)) << strFault;
        ASSERT_EQ(grid.uColumns, COLUMNS);
        ASSERT_EQ(grid.uRows, ROWS);
        ASSERT_EQ(grid.samples.size(), size_t{COLUMNS} * ROWS);
        const bool bSouth = tiff.uOrientation >= ORIENTATION_BOTRIGHT;
        const bool bEast =
            tiff.uOrientation == ORIENTATION_TOPRIGHT || tiff.uOrientation == ORIENTATION_BOTRIGHT;
        for (uint32_t i = 0; i < COLUMNS * ROWS; ++i)
        {
            const uint32_t x = bEast ? COLUMNS - 1 - i % COLUMNS : i % COLUMNS;
            const uint32_t z = bSouth ? ROWS - 1 - i / COLUMNS : i / COLUMNS;
            const double dHeight = tiff.odd && i == ODD_ONE ? *tiff.odd : GetHeight(x, z);
            const int iByte = static_cast<int>(GetHeight(x, z)) % 256;
            const int iSigned = tiff.uFormat == WHOLE || iByte < 128 ? iByte : iByte - 256;
            ASSERT_EQ(std::isnan(grid.samples[i]), bVoid && i == ODD_ONE) << i;
            ASSERT_TRUE((bVoid && i == ODD_ONE) ||
                        grid.samples[i] == (tiff.uBits == 8 ? iSigned : dHeight))
                << x << ", " << z;
        }
        EXPECT_EQ(grid.uBits, tiff.uBits);
        EXPECT_EQ(grid.eType == ESampleType::Float, tiff.uFormat == FLOATS);
        EXPECT_EQ(grid.eType == ESampleType::Signed, tiff.uFormat == SAMPLEFORMAT_INT);
        EXPECT_EQ(grid.eByteOrder == EByteOrder::None, tiff.uBits == 8);
        EXPECT_EQ(grid.eByteOrder == EByteOrder::Big, tiff.pszMode[1] == 'b');
        EXPECT_EQ(grid.dSpacingX, tiff.uModel != 0 ? 30.0 : 0.0);
        EXPECT_EQ(grid.dSpacingZ, tiff.uModel != 0 ? 25.5 : 0.0);
        EXPECT_EQ(grid.bInDegrees, tiff.uModel == 2);
    }
}

// The fault, after checking that the grid is untouched.
std::string GetFault(std::span<const uint8_t> bytes)
{
    SSampleGrid grid;
    grid.uColumns = 12345;
    std::string strFault;
    EXPECT_FALSE(DecodeGeoTiff(bytes, grid, strFault));
    EXPECT_EQ(grid.uColumns, 12345U);
    EXPECT_TRUE(grid.samples.empty());
    EXPECT_EQ(strFault.find('\n'), std::string::npos);
    return strFault;
}

// Another value for a tag of one number, little-endian.
void Patch(std::vector<uint8_t>& bytes, uint32_t uTag, uint32_t uValue)
{
    uint32_t uDirectory = 0;
    std::memcpy(&uDirectory, &bytes[4], 4);
    size_t i = uDirectory + 2;
    while (std::memcmp(&bytes.at(i), &uTag, 2) != 0)
    {
        i += 12;
    }
    bytes[i + 2] = TIFF_LONG;
    std::memcpy(&bytes[i + 8], &uValue, 4);
}

TEST(GeoTiffReader, RefusesWhatIsNoElevationOrClaimsMoreThanThereIs)
{
    constexpr uint32_t WIDE = TIFFTAG_IMAGEWIDTH;
    constexpr uint32_t HIGH = TIFFTAG_IMAGELENGTH;
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    const STiff packed = {.uCompression = COMPRESSION_ADOBE_DEFLATE};
    const STiff tiled = {.uTile = 16};
    const STiff packedTiles = {.uTile = 16, .uCompression = COMPRESSION_ADOBE_DEFLATE};
    const STiff infinite = {.uFormat = SAMPLEFORMAT_IEEEFP, .uBits = 32, .odd = INFINITE};
    const std::string strPicture = "3 samples a pixel: elevations have one, this is a picture";
    const std::string strFormat = "samples of 16 bits in TIFF's format 3 are not supported";
    const std::string strLarge = "the file is too short for 65535 x 65535 samples";
    const std::string strTile = "the file is too short for a tile of 1048576 x 1048576 samples";
    using Patches = std::vector<std::pair<uint32_t, uint32_t>>;
    const Patches large = {{WIDE, 65535}, {HIGH, 65535}};
    const Patches largeTile = {{TIFFTAG_TILEWIDTH, 1U << 20}, {TIFFTAG_TILELENGTH, 1U << 20}};
    const std::tuple<STiff, Patches, std::string> aCases[] = {
        {{}, {{TIFFTAG_SAMPLESPERPIXEL, 3}}, strPicture},
        {{}, {{TIFFTAG_SAMPLEFORMAT, 3}}, strFormat},
        {{}, {{TIFFTAG_ORIENTATION, 5}}, "orientation 5: rows must run east and west"},
        {{}, {{HIGH, 1}}, "37 x 1 samples: a side must have 2 to 65535"},
        {packed, {{HIGH, 65536}}, "37 x 65536 samples: a side must have 2 to 65535"},
        {infinite, {}, "row 3 has a sample that is infinite"},
        {{}, large, strLarge},
        {packed, large, strLarge},
        {tiled, largeTile, strTile},
        {packedTiles, largeTile, strTile},
    };
    for (const auto& [tiff, patches, strFault] : aCases)
    {
        std::vector<uint8_t> bytes = MakeTiff(tiff);
        for (const auto& [uTag, uValue] : patches)
        {
            Patch(bytes, uTag, uValue);
        }
        EXPECT_EQ(GetFault(bytes), strFault);
    }
}

TEST(GeoTiffReader, DamagedFilesEndInOneFault)
{
    for (const STiff& tiff : {STiff{.pszMode = "wb", .pszNoData = "-1", .uModel = 2},
                              STiff{.uTile = 16, .uCompression = COMPRESSION_ADOBE_DEFLATE},
                              STiff{.uCompression = COMPRESSION_LZW}})
    {
        const std::vector<uint8_t> bytes = MakeTiff(tiff);
        for (size_t nBytes = 0; nBytes < bytes.size(); nBytes += 97)
        {
            const std::vector<uint8_t> cut(bytes.data(), bytes.data() + nBytes);
            EXPECT_NE(GetFault(cut), "");
        }
        for (size_t i = 0; i < bytes.size(); i += 3)
        {
            std::vector<uint8_t> wrong = bytes;
            wrong[i] ^= 0xFF;
            SSampleGrid grid;
            std::string strFault;
            const bool bRead = DecodeGeoTiff(wrong, grid, strFault);
            EXPECT_EQ(strFault.empty(), bRead);
        }
    }
}

} // namespace
