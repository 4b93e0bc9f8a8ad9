#include "framework/drawing/CPixelBuffer.h"

#include "framework/drawing/PixelFormat.h"

#include <new>
#include <utility>

CPixelBuffer::CPixelBuffer(CPixelBuffer&& other) noexcept
    : m_Pixels(std::move(other.m_Pixels))
    , m_Width(std::exchange(other.m_Width, 0))
    , m_Height(std::exchange(other.m_Height, 0))
    , m_Bits(std::exchange(other.m_Bits, 0))
    , m_Stride(std::exchange(other.m_Stride, 0))
{
}

CPixelBuffer& CPixelBuffer::operator=(CPixelBuffer&& other) noexcept
{
    CPixelBuffer taken(std::move(other));
    std::swap(m_Pixels, taken.m_Pixels);
    std::swap(m_Width, taken.m_Width);
    std::swap(m_Height, taken.m_Height);
    std::swap(m_Bits, taken.m_Bits);
    std::swap(m_Stride, taken.m_Stride);
    return *this;
}

bool CPixelBuffer::Create(int iWidth, int iHeight, int nBitsPerPixel)
{
    if (iWidth <= 0 || iHeight <= 0 || iWidth > MAX_SIDE || iHeight > MAX_SIDE ||
        !IsPixelDepth(nBitsPerPixel))
    {
        return false;
    }
    const int iStride = (iWidth * (nBitsPerPixel / 8) + 3) & ~3;
    const size_t nBytes = static_cast<size_t>(iStride) * static_cast<size_t>(iHeight);
    std::unique_ptr<uint8_t[]> pixels(new (std::nothrow) uint8_t[nBytes]());
    if (pixels == nullptr)
    {
        return false;
    }
    for (size_t i = 3; nBitsPerPixel == 32 && i < nBytes; i += 4)
    {
        pixels[i] = 255;
    }
    m_Pixels = std::move(pixels);
    m_Width = iWidth;
    m_Height = iHeight;
    m_Bits = nBitsPerPixel;
    m_Stride = iStride;
    return true;
}

bool CPixelBuffer::CopyFrom(const CPixelBuffer& other)
{
    CPixelBuffer copy;
    if (!copy.Create(other.m_Width, other.m_Height, other.m_Bits))
    {
        return false;
    }
    std::memcpy(copy.m_Pixels.get(),
                other.m_Pixels.get(),
                static_cast<size_t>(copy.m_Stride) * static_cast<size_t>(copy.m_Height));
    *this = std::move(copy);
    return true;
}

uint8_t* CPixelBuffer::GetRow(int y)
{
    return y >= 0 && y < m_Height
               ? m_Pixels.get() + static_cast<size_t>(m_Stride) * static_cast<size_t>(y)
               : nullptr;
}

const uint8_t* CPixelBuffer::GetRow(int y) const
{
    return y >= 0 && y < m_Height
               ? m_Pixels.get() + static_cast<size_t>(m_Stride) * static_cast<size_t>(y)
               : nullptr;
}

ColorRef CPixelBuffer::GetPixel(int x, int y) const
{
    if (!GetBounds().Contains({x, y}))
    {
        return 0;
    }
    return DecodePixel(LoadPixel(GetPixelOf(GetRow(y), x, m_Bits), m_Bits), m_Bits);
}

void CPixelBuffer::SetPixel(int x, int y, ColorRef uColor)
{
    if (GetBounds().Contains({x, y}))
    {
        StorePixel(GetPixelOf(GetRow(y), x, m_Bits), EncodePixel(uColor, m_Bits), m_Bits);
    }
}
