#include "engine/elevation/NpyReader.h"

#include "engine/elevation/NpyHeader.h"
#include "engine/elevation/SampleCopy.h"

#include <utility>

namespace
{

constexpr uint8_t MAGIC[] = {0x93, 'N', 'U', 'M', 'P', 'Y'};
constexpr size_t LENGTH_AT = sizeof(MAGIC) + 2; // after the version

// Where the header text and the samples lie.
struct SLayout
{
    std::string_view strHeader;
    std::span<const uint8_t> samples;
};

bool FindLayout(std::span<const uint8_t> bytes, SLayout& layout, std::string& strFault)
{
    if (bytes.size() < LENGTH_AT + 2)
    {
        strFault = "shorter than a header";
        return false;
    }
    const uint8_t uVersion = bytes[sizeof(MAGIC)];
    if (uVersion < 1 || uVersion > 3)
    {
        strFault = "version " + std::to_string(uVersion) + " is not known";
        return false;
    }
    // The length of the header has two bytes in version 1 and four in later ones.
    const size_t nStart = LENGTH_AT + (uVersion == 1 ? 2 : 4);
    if (bytes.size() < nStart)
    {
        strFault = "shorter than a header";
        return false;
    }
    uint32_t uLength = 0;
    std::memcpy(&uLength, bytes.data() + LENGTH_AT, nStart - LENGTH_AT);
    if (uLength > bytes.size() - nStart)
    {
        strFault = "shorter than its header says";
        return false;
    }
    layout.strHeader = {reinterpret_cast<const char*>(bytes.data()) + nStart, uLength};
    layout.samples = bytes.subspan(nStart + uLength);
    return true;
}

struct SSampleType
{
    std::string_view strName; // without the byte order
    size_t nBytes = 0;
    ESampleType eType = ESampleType::Float;
    void (*pCopy)(std::span<const uint8_t> bytes,
                  bool bSwap,
                  std::vector<float>& samples) = nullptr;
};

constexpr SSampleType TYPES[] = {
    {"i2", 2, ESampleType::Signed, &CopySamples<int16_t>},
    {"u2", 2, ESampleType::Unsigned, &CopySamples<uint16_t>},
    {"f4", 4, ESampleType::Float, &CopySamples<float>},
    {"f8", 8, ESampleType::Float, &CopySamples<double>},
};

// Null when it is none of the table.
const SSampleType* FindType(std::string_view strType)
{
    // The first character is the byte order: little, big, or the processor's own, which is little.
    if (strType.empty() || (strType[0] != '<' && strType[0] != '>' && strType[0] != '='))
    {
        return nullptr;
    }
    const SSampleType* pFound = std::find_if(std::begin(TYPES),
                                             std::end(TYPES),
                                             [strType](const SSampleType& type)
                                             { return type.strName == strType.substr(1); });
    return pFound != std::end(TYPES) ? pFound : nullptr;
}

// A text of the file as a message may show it.
std::string MakePrintable(const std::string& strText)
{
    std::string strShown = strText.substr(0, 40);
    std::replace_if(
        strShown.begin(), strShown.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return strShown;
}

// The fault of a header that is no terrain's, empty for a good one.
std::string FindHeaderFault(const SNpyHeader& header, const SSampleType* pType)
{
    if (pType == nullptr)
    {
        return "type \"" + MakePrintable(header.strType) +
               "\" is not int16, uint16, float32 or float64";
    }
    if (header.shape.size() != 2)
    {
        return "has " + std::to_string(header.shape.size()) + " dimensions, not 2";
    }
    for (const uint64_t uSize : header.shape)
    {
        if (uSize < MIN_SAMPLES || uSize > MAX_SAMPLES)
        {
            return "has " + std::to_string(header.shape[0]) + " rows and " +
                   std::to_string(header.shape[1]) + " columns, not 2 to 65535 of each";
        }
    }
    return header.bFortranOrder ? "is in Fortran order, not in C order" : "";
}

bool CheckLength(uint64_t uExpected, size_t nBytes, std::string& strFault)
{
    if (nBytes != uExpected)
    {
        strFault = std::string(nBytes < uExpected ? "shorter" : "longer") + " than its shape says";
    }
    return nBytes == uExpected;
}

} // namespace

bool IsNpy(std::span<const uint8_t> bytes)
{
    return bytes.size() >= sizeof(MAGIC) && std::memcmp(bytes.data(), MAGIC, sizeof(MAGIC)) == 0;
}

bool DecodeNpy(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    if (!IsNpy(bytes))
    {
        strFault = "not a .npy file (wrong magic)";
        return false;
    }
    SLayout layout;
    if (!FindLayout(bytes, layout, strFault))
    {
        return false;
    }
    SNpyHeader header;
    if (!ParseNpyHeader(layout.strHeader, header))
    {
        strFault = "its header is not one of a plain array";
        return false;
    }
    const SSampleType* pType = FindType(header.strType);
    strFault = FindHeaderFault(header, pType);
    if (!strFault.empty())
    {
        return false;
    }
    // Compared with the bytes before memory is taken.
    const uint64_t uCount = header.shape[0] * header.shape[1];
    if (!CheckLength(uCount * pType->nBytes, layout.samples.size(), strFault))
    {
        return false;
    }
    SSampleGrid read;
    read.uRows = static_cast<uint32_t>(header.shape[0]);
    read.uColumns = static_cast<uint32_t>(header.shape[1]);
    read.eType = pType->eType;
    read.uBits = static_cast<uint32_t>(8 * pType->nBytes);
    read.eByteOrder = header.strType[0] == '>' ? EByteOrder::Big : EByteOrder::Little;
    read.samples.resize(uCount);
    pType->pCopy(layout.samples, read.eByteOrder == EByteOrder::Big, read.samples);
    if (!CheckSamples(read, strFault))
    {
        return false;
    }
    grid = std::move(read);
    return true;
}
