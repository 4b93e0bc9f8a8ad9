#include "engine/imaging/DdsHeader.h"

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

namespace
{

constexpr size_t HEADER_END = 128;
constexpr size_t EXTENDED_HEADER_END = 148;
constexpr size_t PIXEL_FORMAT = 76; // position of the pixel format record

constexpr uint32_t FLAG_ALPHA = 0x1;
constexpr uint32_t FLAG_ALPHA_ONLY = 0x2;
constexpr uint32_t FLAG_CODE = 0x4;
constexpr uint32_t FLAG_RGB = 0x40;
constexpr uint32_t FLAG_LUMINANCE = 0x20000;

constexpr uint32_t MakeCode(char c0, char c1, char c2, char c3)
{
    return static_cast<uint32_t>(c0) | static_cast<uint32_t>(c1) << 8 |
           static_cast<uint32_t>(c2) << 16 | static_cast<uint32_t>(c3) << 24;
}

// Pixels that a code names: the four characters of the old header or the number of the extended
// one.
struct SNamedPixels
{
    uint32_t uCode;
    EDdsPixels ePixels;
    uint32_t uPixelBytes;
    bool bRedFirst;
    bool bHasAlpha;
};

constexpr SNamedPixels FOUR_CHARACTER_CODES[] = {
    {MakeCode('D', 'X', 'T', '1'), EDdsPixels::Bc1, 0, false, false},
    {MakeCode('D', 'X', 'T', '3'), EDdsPixels::Bc2, 0, false, false},
    {MakeCode('D', 'X', 'T', '5'), EDdsPixels::Bc3, 0, false, false},
};

// Each kind also has a number for colours that are to be shown as sRGB; the bytes are the same.
constexpr SNamedPixels EXTENDED_CODES[] = {
    {28, EDdsPixels::Plain, 4, true, true},
    {29, EDdsPixels::Plain, 4, true, true},
    {61, EDdsPixels::Plain, 1, false, false},
    {71, EDdsPixels::Bc1, 0, false, false},
    {72, EDdsPixels::Bc1, 0, false, false},
    {74, EDdsPixels::Bc2, 0, false, false},
    {75, EDdsPixels::Bc2, 0, false, false},
    {77, EDdsPixels::Bc3, 0, false, false},
    {78, EDdsPixels::Bc3, 0, false, false},
    {87, EDdsPixels::Plain, 4, false, true},
    {88, EDdsPixels::Plain, 4, false, false},
    {91, EDdsPixels::Plain, 4, false, true},
    {93, EDdsPixels::Plain, 4, false, false},
};

bool ReadNamedPixels(uint32_t uCode, std::span<const SNamedPixels> table, SDdsHeader& header)
{
    for (const SNamedPixels& named : table)
    {
        if (named.uCode == uCode)
        {
            header.ePixels = named.ePixels;
            header.uPixelBytes = named.uPixelBytes;
            header.bRedFirst = named.bRedFirst;
            header.bHasAlpha = named.bHasAlpha;
            return true;
        }
    }
    return false;
}

// The pixel format record without a code: flags, bits and masks. Only whole bytes are known.
bool ReadPlainPixels(const uint8_t* pFormat, SDdsHeader& header)
{
    const uint32_t uFlags = ReadLe32(pFormat + 4);
    const uint32_t uBits = ReadLe32(pFormat + 12);
    const uint32_t uRed = ReadLe32(pFormat + 16);
    const uint32_t uGreen = ReadLe32(pFormat + 20);
    const uint32_t uBlue = ReadLe32(pFormat + 24);
    const uint32_t uAlpha = (uFlags & FLAG_ALPHA) != 0 ? ReadLe32(pFormat + 28) : 0;
    header.uPixelBytes = uBits / 8;
    // Grey of one byte needs no masks.
    if ((uFlags & FLAG_LUMINANCE) != 0)
    {
        return uBits == 8;
    }
    header.bRedFirst = uRed == 0xFF && uBlue == 0xFF0000;
    header.bHasAlpha = uBits == 32 && uAlpha == 0xFF000000;
    const bool bOrder = header.bRedFirst || (uRed == 0xFF0000 && uBlue == 0xFF);
    return (uFlags & FLAG_RGB) != 0 && (uFlags & FLAG_ALPHA_ONLY) == 0 && bOrder &&
           uGreen == 0xFF00 && (uAlpha == 0 || header.bHasAlpha) && (uBits == 24 || uBits == 32);
}

bool ReadPixelFormat(std::span<const uint8_t> data, SDdsHeader& header)
{
    const uint8_t* pFormat = &data[PIXEL_FORMAT];
    const uint32_t uFlags = ReadLe32(pFormat + 4);
    const uint32_t uCode = ReadLe32(pFormat + 8);
    header.nPixelPosition = HEADER_END;
    if ((uFlags & FLAG_CODE) == 0)
    {
        return ReadPlainPixels(pFormat, header);
    }
    // This code says that a second header follows, whose number names the pixels.
    if (uCode != MakeCode('D', 'X', '1', '0'))
    {
        return ReadNamedPixels(uCode, FOUR_CHARACTER_CODES, header);
    }
    header.nPixelPosition = EXTENDED_HEADER_END;
    return data.size() >= EXTENDED_HEADER_END &&
           ReadNamedPixels(ReadLe32(&data[HEADER_END]), EXTENDED_CODES, header);
}

} // namespace

uint64_t SDdsHeader::GetSurfaceBytes() const
{
    if (ePixels == EDdsPixels::Plain)
    {
        return uint64_t{uWidth} * uHeight * uPixelBytes;
    }
    // The packed kinds store whole blocks of 4 x 4 pixels, also where the picture ends within one.
    const uint64_t nBlocks = ((uint64_t{uWidth} + 3) / 4) * ((uint64_t{uHeight} + 3) / 4);
    return nBlocks * (ePixels == EDdsPixels::Bc1 ? 8 : 16);
}

bool ReadDdsHeader(std::span<const uint8_t> data, SDdsHeader& header, std::string& strFault)
{
    if (data.size() < HEADER_END)
    {
        strFault = "damaged DDS file: the file ends too early";
        return false;
    }
    if (ReadLe32(&data[4]) != HEADER_END - 4)
    {
        strFault = "damaged DDS file: unknown header";
        return false;
    }
    header.uHeight = ReadLe32(&data[12]);
    header.uWidth = ReadLe32(&data[16]);
    if (!ReadPixelFormat(data, header))
    {
        strFault = "damaged DDS file, or a pixel format that is not supported";
        return false;
    }
    if (!CheckImageSize(header.uWidth, header.uHeight, strFault))
    {
        return false;
    }
    if (header.GetSurfaceBytes() > data.size() - header.nPixelPosition)
    {
        strFault = "damaged DDS file: the file ends too early";
        return false;
    }
    return true;
}
