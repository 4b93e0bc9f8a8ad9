#include "engine/elevation/GreyPngReader.h"

#include "engine/imaging/CPngReader.h"
#include "engine/imaging/PngCodec.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

constexpr size_t BIT_DEPTH_AT = 24; // in the header, which is always the first chunk

// Codes of one type at the end of the samples' own memory become the samples: sample i ends before
// code i + 1 begins, so nothing is overwritten before it is read. Saves a picture's second copy.
template <typename TCode> void SpreadCodes(std::vector<float>& samples, uint32_t uDivisor)
{
    const size_t nOffset = samples.size() * (sizeof(float) - sizeof(TCode));
    const auto* pCodes = reinterpret_cast<const uint8_t*>(samples.data()) + nOffset;
    for (size_t i = 0; i < samples.size(); ++i)
    {
        TCode uCode = 0;
        std::memcpy(&uCode, pCodes + i * sizeof(TCode), sizeof(TCode));
        const uint32_t uWhole = uCode / uDivisor; // a multiple, nothing is lost
        samples[i] = static_cast<float>(uWhole);
    }
}

} // namespace

bool DecodeGreyPng(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    if (!IsPng(bytes) || bytes.size() <= BIT_DEPTH_AT)
    {
        strFault = IsPng(bytes) ? "shorter than a header" : "not a PNG file";
        return false;
    }
    const uint32_t uBits = bytes[BIT_DEPTH_AT];
    CPngReader reader(bytes);
    if (!reader.ReadHeader() ||
        !reader.Prepare(uBits == 16 ? CPngReader::ESamples::Words : CPngReader::ESamples::Bytes))
    {
        strFault = reader.GetFault();
        return false;
    }
    if (!reader.IsGrey())
    {
        strFault = "not a PNG file of plain grey";
        return false;
    }
    SSampleGrid read;
    read.uColumns = reader.GetWidth();
    read.uRows = reader.GetHeight();
    if (std::min(read.uColumns, read.uRows) < MIN_SAMPLES)
    {
        strFault = "has only one row or column";
        return false;
    }
    read.eType = ESampleType::Unsigned;
    read.uBits = uBits;
    read.eByteOrder = uBits == 16 ? EByteOrder::Big : EByteOrder::None;
    read.samples.resize(size_t{read.uColumns} * read.uRows);
    const size_t nPixelBytes = reader.GetRowBytes() * read.uRows;
    if (!reader.ReadPixels(reinterpret_cast<uint8_t*>(read.samples.data() + read.samples.size()) -
                           nPixelBytes))
    {
        strFault = reader.GetFault();
        return false;
    }
    // Fewer than 8 bits arrive scaled up to full bytes.
    uBits == 16 ? SpreadCodes<uint16_t>(read.samples, 1)
                : SpreadCodes<uint8_t>(read.samples, 255U / ((1U << uBits) - 1U));
    grid = std::move(read);
    return true;
}
