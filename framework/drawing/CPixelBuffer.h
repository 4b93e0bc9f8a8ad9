#pragma once

#include "framework/drawing/ColorRef.h"
#include "framework/drawing/Geometry.h"
#include "host/Export.h"
#include "host/Image.h"

#include <cstddef>
#include <memory>

// The pixels that drawing goes to: a window's surface, a bitmap, an image of a list. Owned by
// whoever shows them. Top row first, rows padded to 4 bytes; a pixel has
//   16 bits: red in the top 5, green in the middle 6, blue in the low 5, low byte first
//   24 bits: the bytes blue, green, red
//   32 bits: the bytes blue, green, red and a fourth, which is 255 unless the pixels are a picture
//            with transparency
class TELLUR_API CPixelBuffer
{
public:
    static constexpr int MAX_SIDE = IMAGE_MAX_SIDE; // a picture of any image fits

    CPixelBuffer() = default;
    ~CPixelBuffer() = default;
    CPixelBuffer(CPixelBuffer&& other) noexcept; // the other is then empty
    CPixelBuffer& operator=(CPixelBuffer&& other) noexcept;
    CPixelBuffer(const CPixelBuffer&) = delete;
    CPixelBuffer& operator=(const CPixelBuffer&) = delete;

    // Replaces the pixels by black ones. False, with the old pixels kept, for a side that is not
    // within 1 to MAX_SIDE, for another depth than the three and when memory is short. Silent:
    // the caller knows what for.
    bool Create(int iWidth, int iHeight, int nBitsPerPixel);
    // False, with the old pixels kept, when memory is short or the other is empty.
    bool CopyFrom(const CPixelBuffer& other);

    bool IsEmpty() const { return m_Pixels == nullptr; }

    int GetWidth() const { return m_Width; }

    int GetHeight() const { return m_Height; }

    SRect GetBounds() const { return {0, 0, m_Width, m_Height}; }

    int GetBitsPerPixel() const { return m_Bits; } // 0 when empty

    int GetStride() const { return m_Stride; } // bytes from row to row

    // Borrowed until the pixels are replaced; null for a row that is not there.
    uint8_t* GetRow(int y);
    const uint8_t* GetRow(int y) const;

    // Black outside. 5 and 6 bits are spread over 8, so that full stays full.
    ColorRef GetPixel(int x, int y) const;
    // Outside nothing happens. At 16 bits the low bits are dropped; at 32 the fourth byte is 255.
    void SetPixel(int x, int y, ColorRef uColor);

private:
    std::unique_ptr<uint8_t[]> m_Pixels;
    int m_Width = 0;
    int m_Height = 0;
    int m_Bits = 0;
    int m_Stride = 0;
};
