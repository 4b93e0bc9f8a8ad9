#include "engine/elevation/RawReader.h"

#include "engine/elevation/SampleCopy.h"

#include <cmath>
#include <utility>

namespace
{

// What a file of bare samples does not say of itself.
struct SRawLayout
{
    bool bFloat = false;                        // 32-bit floats, else unsigned 16-bit
    EByteOrder eByteOrder = EByteOrder::Little; // not None
    uint32_t uColumns = 0;                      // 0: what the rows leave; a square without both
    uint32_t uRows = 0;
};

SRawLayout GetLayout(const SImportOptions& options, bool bFloat)
{
    return {bFloat,
            options.eByteOrder == EByteOrder::Big ? EByteOrder::Big : EByteOrder::Little,
            options.uColumns,
            options.uRows};
}

bool IsSideValid(uint64_t uSide)
{
    return uSide >= MIN_SAMPLES && uSide <= MAX_SAMPLES;
}

// Columns and rows; their product is not yet compared with the file.
std::pair<uint64_t, uint64_t> GetShape(const SRawLayout& layout, uint64_t uCount)
{
    if (layout.uColumns > 0)
    {
        return {layout.uColumns, layout.uRows > 0 ? layout.uRows : uCount / layout.uColumns};
    }
    if (layout.uRows > 0)
    {
        return {uCount / layout.uRows, layout.uRows};
    }
    const auto uSide = static_cast<uint64_t>(std::llround(std::sqrt(static_cast<double>(uCount))));
    return {uSide, uSide};
}

std::string MakeShapeFault(const SRawLayout& layout, size_t nBytes)
{
    std::string strShape = "square of";
    if (layout.uColumns > 0 || layout.uRows > 0)
    {
        const auto getText = [](uint32_t uSide)
        {
            return uSide > 0 ? std::to_string(uSide) : std::string("?");
        };
        strShape = "grid of " + getText(layout.uColumns) + " x " + getText(layout.uRows);
    }
    return "its " + std::to_string(nBytes) + " bytes are no " + strShape + " " +
           (layout.bFloat ? "32-bit" : "16-bit") + " samples";
}

bool DecodeRaw(std::span<const uint8_t> bytes,
               const SRawLayout& layout,
               SSampleGrid& grid,
               std::string& strFault)
{
    const size_t nSampleBytes = layout.bFloat ? sizeof(float) : sizeof(uint16_t);
    const uint64_t uCount = bytes.size() / nSampleBytes;
    const auto [uColumns, uRows] = GetShape(layout, uCount);
    // Sides that were divided or rooted out of the count need not give it back.
    if (!IsSideValid(uColumns) || !IsSideValid(uRows) ||
        uColumns * uRows * nSampleBytes != bytes.size())
    {
        strFault = MakeShapeFault(layout, bytes.size());
        return false;
    }
    SSampleGrid read;
    read.uColumns = static_cast<uint32_t>(uColumns);
    read.uRows = static_cast<uint32_t>(uRows);
    read.eType = layout.bFloat ? ESampleType::Float : ESampleType::Unsigned;
    read.uBits = static_cast<uint32_t>(8 * nSampleBytes);
    read.eByteOrder = layout.eByteOrder;
    read.samples.resize(uCount);
    const bool bSwap = layout.eByteOrder == EByteOrder::Big;
    layout.bFloat ? CopySamples<float>(bytes, bSwap, read.samples)
                  : CopySamples<uint16_t>(bytes, bSwap, read.samples);
    if (!CheckSamples(read, strFault))
    {
        return false;
    }
    grid = std::move(read);
    return true;
}

} // namespace

bool DecodeRaw16(std::span<const uint8_t> bytes,
                 const SImportOptions& options,
                 SSampleGrid& grid,
                 std::string& strFault)
{
    return DecodeRaw(bytes, GetLayout(options, false), grid, strFault);
}

bool DecodeRaw32(std::span<const uint8_t> bytes,
                 const SImportOptions& options,
                 SSampleGrid& grid,
                 std::string& strFault)
{
    return DecodeRaw(bytes, GetLayout(options, true), grid, strFault);
}
