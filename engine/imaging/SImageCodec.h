#pragma once

#include "host/Image.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

struct SPicture;

struct SImageSize
{
    uint32_t uWidth = 0; // pixels
    uint32_t uHeight = 0;
};

// One file format of the image library: what it is called, how its files are told, and the
// functions that read and write them. The rows of the table in CodecTable.cpp, which live as long
// as the process.
//
// Decoders: data is borrowed for the call and may hold anything. False leaves a fault in strFault,
// a phrase without the file's name and without a line feed; picture is then of no use. What a file
// claims is compared with the bytes it has before pixels are allocated.
//
// Encoders: the image passes CheckImageSize and has pixels; pPalette is null or goes with an
// Indexed8 image, has 1 to 256 entries and one for every index, and is null always where no file of
// the format has one (the caller checks all that). out is empty and receives the whole file. False
// leaves a fault in strFault.
struct SImageCodec
{
    const char* pszName = nullptr; // as people write it: "PNG"

    // Without the dot, in lower case; the first is the usual one. Null from the first that is not
    // there.
    std::array<const char*, 3> extensions{};

    // Whether the bytes carry the mark of the format.
    bool (*pRecognise)(std::span<const uint8_t> data) = nullptr;

    // Files without the mark are taken for this format when their extension says so. Such a format
    // is asked after all others, because its mark is none that the others could not have.
    bool bMarkIsOptional = false;

    // A look at fixed header bytes only, so that a palette is not searched where none can be; null
    // when no file of the format has a palette.
    bool (*pMayHavePalette)(std::span<const uint8_t> data) = nullptr;

    // The size that the file claims, pixels, by a look at its headers only; both 0 where those are
    // not all there. data: the file or as much of its beginning as was read.
    SImageSize (*pPeekSize)(std::span<const uint8_t> data) = nullptr;

    bool (*pDecode)(std::span<const uint8_t> data,
                    SPicture& picture,
                    std::string& strFault) = nullptr;

    // Null when the format is read only.
    bool (*pEncode)(const IImage& image,
                    const IPalette* pPalette,
                    std::vector<uint8_t>& out,
                    std::string& strFault) = nullptr;
};
