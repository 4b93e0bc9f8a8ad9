#pragma once

#include "engine/imaging/CImage.h"
#include "engine/imaging/CPalette.h"
#include "host/TerrainSize.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

// The file formats of the image library, on memory: no file is opened and no line is logged here.
//
// Decoders: data is borrowed for the call and may hold anything. False leaves a fault in strFault,
// a phrase without the file's name and without a line feed; picture is then of no use. What a file
// claims is compared with the bytes it has before pixels are allocated.
//
// Encoders: the image passes CheckImageSize and has pixels; pPalette is null or goes with an
// Indexed8 image, has 1 to 256 entries and one for every index (the caller checks all that). out is
// empty and receives the whole file. False leaves a fault in strFault.

// What a decoder makes.
struct SPicture
{
    std::unique_ptr<CImage> pImage;
    std::unique_ptr<CPalette> pPalette; // null unless the file is a paletted one
};

enum class EImageFile
{
    Unknown,
    Png,
    Jpeg,
    Tga,
    Bmp,
    Dds,
};

// More pixels than this are refused, whatever the format: as many as the largest terrain has
// vertices. A few packed bytes can claim any number, and what is painted needs twelve bytes a
// pixel.
constexpr uint64_t MAX_PIXELS = uint64_t{TERRAIN_MAX_VERTICES} * TERRAIN_MAX_VERTICES;

// By the first bytes. TGA has no mark at its start: its footer counts, else the file's extension.
EImageFile RecogniseImage(std::span<const uint8_t> data, const char* pszPath);
EImageFile GetImageFileOfExtension(const char* pszPath);

// A look at fixed header bytes only, so that a palette is not searched where none can be.
bool MayHavePalette(EImageFile eFile, std::span<const uint8_t> data);

bool DecodeImage(EImageFile eFile,
                 std::span<const uint8_t> data,
                 SPicture& picture,
                 std::string& strFault);
bool EncodeImage(EImageFile eFile,
                 const IImage& image,
                 const IPalette* pPalette,
                 std::vector<uint8_t>& out,
                 std::string& strFault);

bool DecodePng(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool DecodeJpeg(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool DecodeBmp(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool DecodeTga(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);
bool DecodeDds(std::span<const uint8_t> data, SPicture& picture, std::string& strFault);

bool EncodePng(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& strFault);
bool EncodeJpeg(const IImage& image, std::vector<uint8_t>& out, std::string& strFault);
void EncodeBmp(const IImage& image, const IPalette* pPalette, std::vector<uint8_t>& out);
void EncodeTga(const IImage& image, const IPalette* pPalette, std::vector<uint8_t>& out);
void EncodeDds(const IImage& image, std::vector<uint8_t>& out);

// For the decoders, as soon as they know the size: false with a fault that names size and limit
// when a side is 0 or too long, or there are too many pixels.
bool CheckImageSize(uint64_t uWidth, uint64_t uHeight, std::string& strFault);

// For the decoders: CheckImageSize, then an image whose pixels are still to be filled.
bool MakeImage(SPicture& picture,
               uint32_t uWidth,
               uint32_t uHeight,
               EImageFormat eFormat,
               std::string& strFault);

// For the encoders, inside callbacks of libraries that no exception may pass: false without memory.
bool AppendBytes(std::vector<uint8_t>& out, const uint8_t* pData, size_t nBytes);
