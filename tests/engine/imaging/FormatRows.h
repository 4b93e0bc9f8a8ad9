#pragma once

#include "engine/imaging/CodecTable.h"
#include "tests/engine/imaging/ImageSamples.h"

#include <algorithm>

// What the tests of all formats know of each.

// Makes a PNG's chunk of 17 bytes at 12 whole again.
inline void FixPngHeader(Bytes& Data)
{
    uint32_t uCrc = 0xFFFFFFFF;
    for (size_t i = 12; i < 29; ++i)
    {
        uCrc ^= Data[i];
        for (int iBit = 0; iBit < 8; ++iBit)
        {
            uCrc = uCrc >> 1 ^ (uCrc & 1 ? 0xEDB88320 : 0);
        }
    }
    for (size_t i = 0; i < 4; ++i)
    {
        Data[29 + i] = static_cast<uint8_t>(~uCrc >> (24 - 8 * i));
    }
}

// Two sides, one behind the other.
inline Bytes PutSides(Bytes Data, size_t nFirst, uint32_t uSide, size_t nBytes, bool bBigEndian)
{
    for (size_t i = 0; i < 2 * nBytes; ++i)
    {
        const size_t nByte = i % nBytes;
        const size_t nShift = 8 * (bBigEndian ? nBytes - 1 - nByte : nByte);
        Data[nFirst + i] = static_cast<uint8_t>(uSide >> nShift);
    }
    return Data;
}

// Little-endian sides at their place in the header.
template <size_t FIRST, size_t BYTES> Bytes ClaimAt(Bytes Whole, uint32_t uSide)
{
    return PutSides(std::move(Whole), FIRST, uSide, BYTES, false);
}

inline size_t FindJpegFrame(const Bytes& Jpeg)
{
    const std::string strBytes(Jpeg.begin(), Jpeg.end());
    return std::min(strBytes.find("\xFF\xC0"), strBytes.find("\xFF\xC2"));
}

struct SForeignSample
{
    const char* Name;      // of the file, before the dot
    const char* Arguments; // what makes the independent program write it
    const char* Prefix = "";
};

struct SFormatRow
{
    const char* Extension;           // the codec's first
    std::vector<EImageFormat> Exact; // what comes back byte for byte
    bool GreyIsRamp;                 // no grey of its own: it comes back with a ramp as its palette
    std::vector<SForeignSample> Samples; // to be damaged

    // The same file with other sides in its header, all check values right.
    Bytes (*ClaimSides)(Bytes Whole, uint32_t uSide);

    const SImageCodec& GetCodec() const
    {
        const auto Codecs = GetImageCodecs();
        return *std::find_if(Codecs.begin(),
                             Codecs.end(),
                             [this](const SImageCodec& Codec)
                             { return std::string(Extension) == Codec.extensions[0]; });
    }

    bool HasPalettes() const { return GetCodec().pMayHavePalette != nullptr; }
};

inline const std::vector<EImageFormat> ALL_FORMATS = {
    EImageFormat::Rgb24, EImageFormat::Rgba32, EImageFormat::Indexed8};

// A row for each codec, in the order of their table.
inline const std::vector<SFormatRow> FORMAT_ROWS = {
    {"png",
     ALL_FORMATS,
     false,
     {{"rgb", "-define png:color-type=2"},
      {"rgba", "-interlace PNG -define png:color-type=6"},
      {"palette", "-define png:color-type=3"},
      {"grey", "-colorspace Gray -define png:color-type=0 -depth 16"}},
     [](Bytes Whole, uint32_t uSide)
     {
         Bytes Data = PutSides(std::move(Whole), 16, uSide, 4, true);
         FixPngHeader(Data);
         return Data;
     }},
    {"jpg",
     {},
     false,
     {{"photo", ""}, {"steps", "-interlace JPEG -colorspace Gray"}},
     [](Bytes Whole, uint32_t uSide)
     {
         return PutSides(Whole, FindJpegFrame(Whole) + 5, uSide, 2, true);
     }},
    {"tga",
     ALL_FORMATS,
     false,
     {{"plain", ""}, {"runs", "-compress RLE"}, {"mapped", "-type Palette -compress RLE"}},
     ClaimAt<12, 2>},
    {"bmp",
     ALL_FORMATS,
     true,
     {{"rgb", "", "BMP3:"},
      {"alpha", "-alpha on"},
      {"palette", "-type Palette -compress none", "BMP3:"},
      {"runs", "-type Palette -compress RLE", "BMP3:"}},
     ClaimAt<18, 4>},
    {"dds",
     ALL_FORMATS,
     false,
     {{"plain", "-define dds:compression=none"}, {"blocks", "-define dds:compression=dxt5"}},
     ClaimAt<12, 4>},
};
