#include "engine/elevation/GeoTiffReader.h"

#include "engine/elevation/CTiffFile.h"
#include "engine/elevation/DecodeGrid.h"
#include "engine/elevation/GeoTiffTags.h"
#include "host/Progress.h"

#include <tiffio.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace
{

constexpr char TASK[] = "Reading the height map"; // as progress shows it
// Beyond what deflate and LZW can pack into a byte. Stronger packers reach more only with pictures
// that are all one value; those pass when they are small.
constexpr uint64_t MAX_PACKING = 1400;
constexpr uint64_t SMALL_BYTES = uint64_t{16} << 20;

constexpr float VOID_SAMPLE = std::numeric_limits<float>::quiet_NaN();

// Converts samples in the processor's byte order. False for an infinite one.
using FnConvert = bool (*)(const uint8_t* pSource,
                           size_t nSamples,
                           const std::optional<double>& noData,
                           float* pDest);

template <class T>
bool Convert(const uint8_t* pSource,
             size_t nSamples,
             const std::optional<double>& noData,
             float* pDest)
{
    // Floats are compared as floats: the text of the no-data value need not be exact in double.
    using TCompared = std::conditional_t<std::is_same_v<T, float>, float, double>;
    const bool bHasNoData = noData.has_value();
    const auto tNoData = static_cast<TCompared>(noData.value_or(0.0));
    bool bFinite = true;
    for (size_t i = 0; i < nSamples; ++i)
    {
        T tSample;
        std::memcpy(&tSample, pSource + i * sizeof(T), sizeof(T));
        bool bVoid = bHasNoData && static_cast<TCompared>(tSample) == tNoData;
        if constexpr (std::is_same_v<T, int16_t>)
        {
            // A void as in HGT tiles, also where the file names no such value.
            bVoid |= tSample == std::numeric_limits<int16_t>::min();
        }
        else if constexpr (std::is_floating_point_v<T>)
        {
            bVoid |= std::isnan(tSample);
        }
        const auto fSample = static_cast<float>(tSample);
        bFinite &= bVoid || std::isfinite(fSample);
        pDest[i] = bVoid ? VOID_SAMPLE : fSample;
    }
    return bFinite;
}

struct SSampleFormat
{
    uint16_t uFormat;
    uint16_t uBits;
    ESampleType eType;
    FnConvert pConvert;
};

constexpr SSampleFormat FORMATS[] = {
    {SAMPLEFORMAT_UINT, 8, ESampleType::Unsigned, Convert<uint8_t>},
    {SAMPLEFORMAT_UINT, 16, ESampleType::Unsigned, Convert<uint16_t>},
    {SAMPLEFORMAT_UINT, 32, ESampleType::Unsigned, Convert<uint32_t>},
    {SAMPLEFORMAT_INT, 8, ESampleType::Signed, Convert<int8_t>},
    {SAMPLEFORMAT_INT, 16, ESampleType::Signed, Convert<int16_t>},
    {SAMPLEFORMAT_INT, 32, ESampleType::Signed, Convert<int32_t>},
    {SAMPLEFORMAT_IEEEFP, 32, ESampleType::Float, Convert<float>},
    {SAMPLEFORMAT_IEEEFP, 64, ESampleType::Float, Convert<double>},
};

class CGeoTiffDecoder
{
public:
    explicit CGeoTiffDecoder(std::span<const uint8_t> bytes)
        : m_File(bytes, bytes.size() * MAX_PACKING + SMALL_BYTES)
        , m_FileBytes(bytes.size())
    {
    }

    bool Decode()
    {
        // What the file claims is checked before memory is taken for tags and pixels.
        return m_File.Open() && ReadLayout() && CheckBytes() && ReadTags() &&
               (TIFFIsTiled(m_File.Get()) != 0 ? ReadTiles() : ReadStrips()) && TurnNorthUp();
    }

    SSampleGrid& GetGrid() { return m_Grid; }

    const std::string& GetFault() const { return m_File.GetFault(); }

private:
    bool ReadLayout();
    bool CheckBytes();
    bool ReadTags();
    bool ReadStrips();
    bool ReadTiles();
    bool ReadTileRow(uint32_t uRow, uint32_t uRows, std::vector<uint8_t>& tile);
    bool TurnNorthUp();
    bool ConvertSamples(const uint8_t* pSource, size_t nSamples, uint32_t uRow, float* pDest);
    // Appends void rows. The memory for the whole grid is reserved at once but touched only as rows
    // arrive, so that a file that ends early costs little.
    float* AddRows(uint32_t uRows);

    template <class T> T GetTag(uint32_t uTag, T tDefault)
    {
        T tValue = tDefault;
        return TIFFGetFieldDefaulted(m_File.Get(), uTag, &tValue) != 0 ? tValue : tDefault;
    }

    CTiffFile m_File;
    uint64_t m_FileBytes;
    SSampleGrid m_Grid;
    const SSampleFormat* m_Format = nullptr;
    uint16_t m_Orientation = ORIENTATION_TOPLEFT;
    std::optional<double> m_NoData;
};

bool CGeoTiffDecoder::ReadLayout()
{
    m_Grid.uColumns = GetTag<uint32_t>(TIFFTAG_IMAGEWIDTH, 0);
    m_Grid.uRows = GetTag<uint32_t>(TIFFTAG_IMAGELENGTH, 0);
    const auto uSamples = GetTag<uint16_t>(TIFFTAG_SAMPLESPERPIXEL, 1);
    const auto uBits = GetTag<uint16_t>(TIFFTAG_BITSPERSAMPLE, 1);
    auto uFormat = GetTag<uint16_t>(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    // An undefined format is read like a missing one, as unsigned numbers.
    uFormat = uFormat == SAMPLEFORMAT_VOID ? uint16_t{SAMPLEFORMAT_UINT} : uFormat;
    m_Orientation = GetTag<uint16_t>(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    if (std::min(m_Grid.uColumns, m_Grid.uRows) < MIN_SAMPLES ||
        std::max(m_Grid.uColumns, m_Grid.uRows) > MAX_SAMPLES)
    {
        return m_File.Fail(std::to_string(m_Grid.uColumns) + " x " + std::to_string(m_Grid.uRows) +
                           " samples: a side must have " + std::to_string(MIN_SAMPLES) + " to " +
                           std::to_string(MAX_SAMPLES));
    }
    if (uSamples != 1)
    {
        return m_File.Fail(std::to_string(uSamples) +
                           " samples a pixel: elevations have one, this is a picture");
    }
    m_Format = std::find_if(std::begin(FORMATS),
                            std::end(FORMATS),
                            [&](const SSampleFormat& format)
                            { return format.uFormat == uFormat && format.uBits == uBits; });
    if (m_Format == std::end(FORMATS))
    {
        return m_File.Fail("samples of " + std::to_string(uBits) + " bits in TIFF's format " +
                           std::to_string(uFormat) + " are not supported");
    }
    if (m_Orientation < ORIENTATION_TOPLEFT || m_Orientation > ORIENTATION_BOTLEFT)
    {
        return m_File.Fail("orientation " + std::to_string(m_Orientation) +
                           ": rows must run east and west");
    }
    m_Grid.eType = m_Format->eType;
    m_Grid.uBits = uBits;
    const bool bBig = TIFFIsBigEndian(m_File.Get()) != 0;
    m_Grid.eByteOrder = bBig ? EByteOrder::Big : EByteOrder::Little;
    m_Grid.eByteOrder = uBits == 8 ? EByteOrder::None : m_Grid.eByteOrder;
    return true;
}

// What the file claims against the bytes it has, before memory is taken for it.
bool CGeoTiffDecoder::CheckBytes()
{
    const uint64_t nSample = m_Grid.uBits / 8;
    const bool bPacked = GetTag<uint16_t>(TIFFTAG_COMPRESSION, 0) != COMPRESSION_NONE;
    const uint64_t nLimit = bPacked ? m_FileBytes * MAX_PACKING + SMALL_BYTES : m_FileBytes;
    if (nSample * m_Grid.uColumns * m_Grid.uRows > nLimit)
    {
        return m_File.Fail("the file is too short for " + std::to_string(m_Grid.uColumns) + " x " +
                           std::to_string(m_Grid.uRows) + " samples");
    }
    if (TIFFIsTiled(m_File.Get()) == 0)
    {
        // libtiff must write no more into a row than the buffer for one holds.
        return static_cast<uint64_t>(TIFFScanlineSize(m_File.Get())) == nSample * m_Grid.uColumns ||
               m_File.Fail("unexpected row length");
    }
    const uint64_t uWidth = GetTag<uint32_t>(TIFFTAG_TILEWIDTH, 0);
    const uint64_t uLength = GetTag<uint32_t>(TIFFTAG_TILELENGTH, 0);
    // A file may hold less than its one tile's worth only when that is packed.
    if (uWidth == 0 || uLength == 0 || uLength > nLimit / nSample / uWidth ||
        static_cast<uint64_t>(TIFFTileSize(m_File.Get())) != nSample * uWidth * uLength)
    {
        return m_File.Fail("the file is too short for a tile of " + std::to_string(uWidth) + " x " +
                           std::to_string(uLength) + " samples");
    }
    return true;
}

// Always true: a tag that makes no sense counts as absent.
bool CGeoTiffDecoder::ReadTags()
{
    constexpr uint32_t TAG_NO_DATA = 42113; // a number as text
    ReadGeoTags(m_File, m_Grid);
    const auto text = m_File.GetArray<char>(TAG_NO_DATA, TIFF_ASCII);
    const char* const pEnd = text.data() + text.size();
    const char* const pStart =
        std::find_if(text.data(), pEnd, [](char c) { return c != ' ' && c != '+'; });
    double dValue = 0.0;
    // Whatever stands behind the number, such as the NUL of the text, does not matter.
    if (std::from_chars(pStart, pEnd, dValue).ec == std::errc())
    {
        m_NoData = dValue;
        m_Grid.geo.noData = dValue;
    }
    return true;
}

bool CGeoTiffDecoder::ConvertSamples(const uint8_t* pSource,
                                     size_t nSamples,
                                     uint32_t uRow,
                                     float* pDest)
{
    return m_Format->pConvert(pSource, nSamples, m_NoData, pDest) ||
           m_File.Fail("row " + std::to_string(uRow + 1) + " has a sample that is infinite");
}

float* CGeoTiffDecoder::AddRows(uint32_t uRows)
{
    const size_t nBefore = m_Grid.samples.size();
    m_Grid.samples.reserve(size_t{m_Grid.uColumns} * m_Grid.uRows);
    m_Grid.samples.resize(nBefore + size_t{m_Grid.uColumns} * uRows, VOID_SAMPLE);
    return m_Grid.samples.data() + nBefore;
}

bool CGeoTiffDecoder::ReadStrips()
{
    std::vector<uint8_t> row(size_t{m_Grid.uColumns} * (m_Grid.uBits / 8));
    CProgressSteps progress(TASK, m_Grid.uRows);
    for (uint32_t z = 0; z < m_Grid.uRows; ++z)
    {
        if (!progress.Reach(z))
        {
            return m_File.Fail("cancelled");
        }
        if (TIFFReadScanline(m_File.Get(), row.data(), z, 0) != 1)
        {
            return m_File.Fail("row " + std::to_string(z + 1) + " cannot be read");
        }
        if (!ConvertSamples(row.data(), m_Grid.uColumns, z, AddRows(1)))
        {
            return false;
        }
    }
    return true;
}

bool CGeoTiffDecoder::ReadTiles()
{
    std::vector<uint8_t> tile(static_cast<size_t>(TIFFTileSize(m_File.Get())));
    const auto uLength = GetTag<uint32_t>(TIFFTAG_TILELENGTH, 0);
    CProgressSteps progress(TASK, m_Grid.uRows);
    for (uint32_t z = 0; z < m_Grid.uRows; z += std::min(uLength, m_Grid.uRows - z))
    {
        if (!progress.Reach(z))
        {
            return m_File.Fail("cancelled");
        }
        if (!ReadTileRow(z, std::min(uLength, m_Grid.uRows - z), tile))
        {
            return false;
        }
    }
    return true;
}

bool CGeoTiffDecoder::ReadTileRow(uint32_t uRow, uint32_t uRows, std::vector<uint8_t>& tile)
{
    const auto uWidth = GetTag<uint32_t>(TIFFTAG_TILEWIDTH, 0);
    const size_t nTileRow = size_t{uWidth} * (m_Grid.uBits / 8);
    const auto nTile = static_cast<tmsize_t>(tile.size());
    float* const pRows = AddRows(uRows);
    uint32_t uUsed = 0;
    for (uint32_t x = 0; x < m_Grid.uColumns; x += uUsed)
    {
        // Tiles at the far borders reach beyond the grid; what they have there is dropped.
        uUsed = std::min(uWidth, m_Grid.uColumns - x);
        const uint32_t uTile = TIFFComputeTile(m_File.Get(), x, uRow, 0, 0);
        if (TIFFReadEncodedTile(m_File.Get(), uTile, tile.data(), nTile) != nTile)
        {
            return m_File.Fail("tile " + std::to_string(uTile) + " cannot be read");
        }
        for (uint32_t z = 0; z < uRows; ++z)
        {
            if (!ConvertSamples(tile.data() + z * nTileRow,
                                uUsed,
                                uRow + z,
                                pRows + size_t{z} * m_Grid.uColumns + x))
            {
                return false;
            }
        }
    }
    return true;
}

bool CGeoTiffDecoder::TurnNorthUp()
{
    // The orientation says which corner the first sample is: rows may begin in the east, or the
    // first of them in the south.
    float* const pSamples = m_Grid.samples.data();
    const size_t nRow = m_Grid.uColumns;
    if (m_Orientation != ORIENTATION_TOPLEFT)
    {
        // Programs do not agree whether the place is that of the first sample or of the corner in
        // the north-west.
        m_Grid.geo = {};
    }
    if (m_Orientation == ORIENTATION_TOPRIGHT || m_Orientation == ORIENTATION_BOTRIGHT)
    {
        for (size_t z = 0; z < m_Grid.uRows; ++z)
        {
            std::reverse(pSamples + z * nRow, pSamples + (z + 1) * nRow);
        }
    }
    if (m_Orientation == ORIENTATION_BOTLEFT || m_Orientation == ORIENTATION_BOTRIGHT)
    {
        for (size_t z = 0; z < m_Grid.uRows / 2; ++z)
        {
            std::swap_ranges(pSamples + z * nRow,
                             pSamples + (z + 1) * nRow,
                             pSamples + (m_Grid.uRows - 1 - z) * nRow);
        }
    }
    return true;
}

} // namespace

bool IsTiff(std::span<const uint8_t> bytes)
{
    constexpr char SIGNATURES[][4] = {
        {'I', 'I', '*', 0}, {'M', 'M', 0, '*'}, {'I', 'I', '+', 0}, {'M', 'M', 0, '+'}};
    return bytes.size() >= sizeof(SIGNATURES[0]) &&
           std::any_of(std::begin(SIGNATURES),
                       std::end(SIGNATURES),
                       [bytes](const char(&aSignature)[4])
                       { return std::memcmp(bytes.data(), aSignature, sizeof(aSignature)) == 0; });
}

bool DecodeGeoTiff(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    return DecodeGrid<CGeoTiffDecoder>(bytes, grid, strFault);
}
