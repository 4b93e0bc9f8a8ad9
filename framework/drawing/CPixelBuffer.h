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
    CPixelBuffer(CPixelBuffer&& other) noexcept; // the other buffer becomes empty
    CPixelBuffer& operator=(CPixelBuffer&& other) noexcept;
    CPixelBuffer(const CPixelBuffer&) = delete;
    CPixelBuffer& operator=(const CPixelBuffer&) = delete;

    // Replaces the pixels by black ones. Answers false and keeps the old pixels for a side that is
    // not within 1 to MAX_SIDE, for another depth than the three and when memory is short. Nothing
    // is logged: the caller knows what the pixels are for.
    bool Create(int iWidth, int iHeight, int nBitsPerPixel);
    // Copies size, depth and pixels. Answers false and keeps the old pixels when memory is short or
    // the other buffer is empty.
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

    // Outside of the pixels it is black. 5 and 6 bits are spread over 8, so that full stays full.
    ColorRef GetPixel(int x, int y) const;
    // Outside of the pixels nothing happens. At 16 bits the low bits are dropped; at 32 the fourth
    // byte becomes 255.
    void SetPixel(int x, int y, ColorRef uColor);

private:
    std::unique_ptr<uint8_t[]> m_Pixels;
    int m_Width = 0;
    int m_Height = 0;
    int m_Bits = 0;
    int m_Stride = 0;
};
