#pragma once

#include "host/Image.h"

#include <memory>

// The one image type of the engine: a block of pixels that the image owns. Made by the factory
// only, so every object has at least one pixel and a format of the table.
class CImage final : public IImage
{
public:
    // Width and height in pixels, 1 to this.
    static constexpr uint32_t MAX_SIDE = IMAGE_MAX_SIDE;

    // Makes an image whose pixels are left as the memory was: the caller fills them all. Null for a
    // bad size or format, and when there is no memory.
    static std::unique_ptr<CImage> Create(uint32_t uWidth, uint32_t uHeight, EImageFormat eFormat);

    // 0 for a format that is not one of the table.
    static uint32_t GetBytesPerPixel(EImageFormat eFormat);

    uint32_t GetWidth() const override { return m_Width; }

    uint32_t GetHeight() const override { return m_Height; }

    uint32_t GetBitsPerPixel() const override { return GetBytesPerPixel(m_Format) * 8; }

    EImageFormat GetFormat() const override { return m_Format; }

    uint8_t* GetRawData() override { return m_Pixels.get(); }

    const uint8_t* GetRawData() const override { return m_Pixels.get(); }

    // Bytes from one row to the next.
    size_t GetStride() const { return size_t{m_Width} * GetBytesPerPixel(m_Format); }

    size_t GetByteCount() const { return GetStride() * m_Height; }

    uint8_t* GetRow(uint32_t uRow) { return m_Pixels.get() + GetStride() * uRow; }

private:
    CImage() = default;

    uint32_t m_Width = 0;
    uint32_t m_Height = 0;
    EImageFormat m_Format = EImageFormat::Unknown;
    std::unique_ptr<uint8_t[]> m_Pixels;
};
