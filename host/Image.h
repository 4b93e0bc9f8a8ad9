#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>

// The image library. Pixels lie row by row, top row first, no padding between rows. Colour channels
// are stored red first. Implemented by the engine library. Plain functions without an order, UI
// thread; they read and write files through fs, log and report progress, and call nothing else.
// Images and palettes are the caller's, who deletes them through these interfaces.

constexpr uint32_t IMAGE_MAX_SIDE = 32768; // pixels

enum class EImageFormat : uint32_t
{
    Unknown = 0,
    Rgb24 = 1,     // 3 bytes: red, green, blue
    Rgba32 = 2,    // 4 bytes: red, green, blue, alpha
    Indexed8 = 14, // 1 byte: palette index, or grey when the image has no palette
};

// The colours of an indexed image, 1 to 256 of them.
class IPalette
{
public:
    virtual ~IPalette() = default;
    virtual uint32_t GetCount() const = 0; // 1 to 256
    // Red, green, blue of one entry, borrowed; null for an index at or above the count.
    virtual const uint8_t* GetEntry(uint32_t uIndex) const = 0;
    // The first entry with exactly these three bytes, else the nearest one (squared distance).
    virtual uint8_t FindIndex(uint8_t u0, uint8_t u1, uint8_t u2) const = 0;
    virtual IPalette* Clone() const = 0; // owned by the caller
};

class IImage
{
public:
    virtual ~IImage() = default;
    virtual uint32_t GetWidth() const = 0;        // pixels, 1 to 32768
    virtual uint32_t GetHeight() const = 0;       // as the width
    virtual uint32_t GetBitsPerPixel() const = 0; // 8, 24 or 32
    virtual EImageFormat GetFormat() const = 0;   // never Unknown
    // width * height * bits / 8 bytes, the image's; null when there are none.
    virtual uint8_t* GetRawData() = 0;
    virtual const uint8_t* GetRawData() const = 0;
};

// Reads a picture of any format with a codec, told by content. The result is owned by the caller
// (delete it); null with one logged line that names the file and the fault. 16-bit grey is cut to 8
// bits, grey with alpha and anything else that is not 8-bit becomes RGB or RGBA. Paletted files
// give Indexed8 with their indices; IL_LoadPalette gives the colours.
TELLUR_API IImage* IL_LoadImage(const char* pszPath);

// Reads the palette of a paletted file, which the caller owns. Null, without a line, when the file
// has none or cannot be read.
TELLUR_API IPalette* IL_LoadPalette(const char* pszPath);

// Makes a copy in the given format (Unknown: the source's own), which the caller owns. Colour to
// Indexed8 gives grey (luminance); Indexed8 to colour repeats the byte. Null for a null image, and
// when there is no memory.
TELLUR_API IImage* IL_CreateImageFromImage(const IImage* pImage,
                                           EImageFormat eFormat = EImageFormat::Unknown);

// Makes an image, which the caller owns, with a copy of the buffer of width * height * bits / 8
// bytes; a null buffer gives zeros. Null when a size is 0 or above 32768, when the format is not
// one of the table, and when there is no memory.
TELLUR_API IImage* IL_CreateImageFromBufferFormat(uint32_t uWidth,
                                                  uint32_t uHeight,
                                                  EImageFormat eFormat,
                                                  const uint8_t* pBuffer);
TELLUR_API IImage* IL_CreateImageFromBufferBPP(uint32_t uWidth,
                                               uint32_t uHeight,
                                               uint32_t uBitsPerPixel,
                                               const uint8_t* pBuffer);

// Writes the format that the extension names, of those that have a codec. pPalette: may be null;
// with one, an Indexed8 image is written paletted, with the entries in the same order. False with
// one logged line; the old file then stays.
TELLUR_API bool IL_SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette);
