#pragma once

#include <png.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// Reads one PNG from memory; lives as long as that read. libpng reports a fault with longjmp: every
// step that calls it runs through Guard and keeps nothing with a destructor on its stack.
class CPngReader
{
public:
    // How samples arrive. Bytes: 8 bits a channel, palette indices one a byte. Words: 16 bits in
    // the byte order of the processor, fewer bits scaled up to the full range.
    enum class ESamples
    {
        Bytes,
        Words,
    };

    // data: borrowed until the reader is gone.
    explicit CPngReader(std::span<const uint8_t> data);
    ~CPngReader();
    CPngReader(const CPngReader&) = delete;
    CPngReader& operator=(const CPngReader&) = delete;

    // These three are called in this order, each once; false leaves a fault, which ends the read.
    // ReadHeader takes everything before the pixels, and refuses a size that needs more data than
    // there is. Prepare fixes the samples: a palette's transparency is dropped, that of other
    // colour types becomes an alpha channel, which turns grey into RGB. ReadPixels takes the rest
    // of the file. pDest: height rows of GetRowBytes bytes.
    bool ReadHeader();
    bool Prepare(ESamples eSamples);
    bool ReadPixels(uint8_t* pDest);

    uint32_t GetWidth() const { return m_Width; }

    uint32_t GetHeight() const { return m_Height; }

    bool IsPaletted() const { return m_ColorType == PNG_COLOR_TYPE_PALETTE; }

    // Grey without alpha of any kind.
    bool IsGrey() const { return m_ColorType == PNG_COLOR_TYPE_GRAY && !m_HasTransparency; }

    // Channels and bytes a row of the pixels that ReadPixels gives, after Prepare.
    uint32_t GetChannels() const { return m_Channels; }

    size_t GetRowBytes() const { return m_RowBytes; }

    // Red, green, blue of each entry, borrowed until the reader is gone; empty without a palette.
    std::span<const uint8_t> GetPaletteColors() const;

    std::string GetFault() const;

private:
    bool Guard(void (*pStep)(CPngReader&));
    void ReadHeaderStep();
    void PrepareStep();
    void ReadPixelsStep();
    static void OnRead(png_structp pPng, png_bytep pDest, size_t nBytes);
    [[noreturn]] static void OnError(png_structp pPng, png_const_charp pszText);
    static void OnWarning(png_structp pPng, png_const_charp pszText);

    std::span<const uint8_t> m_Data;
    size_t m_Position = 0;
    png_structp m_Png = nullptr;
    png_infop m_Info = nullptr;
    ESamples m_Samples = ESamples::Bytes;
    uint8_t* m_Dest = nullptr;
    uint32_t m_Width = 0;
    uint32_t m_Height = 0;
    int m_BitDepth = 0;
    int m_ColorType = 0;
    bool m_HasTransparency = false;
    uint32_t m_Channels = 0;
    size_t m_RowBytes = 0;
    bool m_bCancelled = false;
    char m_Fault[160] = {};
};
