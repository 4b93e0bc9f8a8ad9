#pragma once

#include "framework/drawing/CPixelBuffer.h"

class CDrawContext;
struct SResourceModule;

// A picture to draw from or, selected into a memory context, to draw into. Owned by whoever makes
// it; a context that has it selected only borrows it. A picture with transparency has 32 bits and
// its opacity (0 to 255, colours not multiplied by it) in the fourth byte; CDrawContext::DrawBitmap
// blends with it, the plain copies ignore it.
class TELLUR_API CBitmap
{
public:
    // pBits: the rows one after the other without padding, in the pixel layout of CPixelBuffer,
    // borrowed for the call; the fourth byte at 32 bits is ignored. Null makes a black picture.
    // Answers false and keeps the bitmap for other planes than 1 and for what CPixelBuffer::Create
    // refuses. Nothing is logged: whoever asks says what could not be shown.
    bool CreateBitmap(int iWidth, int iHeight, int nPlanes, int nBitsPerPixel, const void* pBits);

    // Makes a black picture of the depth of the context, and fails as CreateBitmap does.
    bool CreateCompatibleBitmap(const CDrawContext& context, int iWidth, int iHeight);

    // Loads a bitmap resource at 32 bits: from pModule alone, or with null from the resource
    // modules in their order. fScale: 1 is 100 %. The picture gets round(size at 100 % * scale)
    // pixels a side; above 1 the one of double size is the source when there is one. Answers false,
    // with one logged line, and keeps the bitmap when the resource is not there, is no PNG picture
    // or does not get a size from 1 to 4096 pixels.
    bool LoadBitmap(uint32_t uId, double fScale, const SResourceModule* pModule = nullptr);

    // Both take over the pixels, the second with their transparency. They answer false and leave
    // everything as it is when the pixels are empty, the second also when they have not 32 bits.
    bool SetPixels(CPixelBuffer&& pixels);
    bool SetAlphaPixels(CPixelBuffer&& pixels);

    // Copies the pixels with their transparency, and fails as CPixelBuffer::CopyFrom does.
    bool CopyFrom(const CBitmap& other);
    void Delete(); // makes the bitmap empty, as it was made

    bool HasAlpha() const { return m_Alpha; }

    int GetWidth() const { return m_Pixels.GetWidth(); } // 0 when empty

    int GetHeight() const { return m_Pixels.GetHeight(); }

    int GetBitsPerPixel() const { return m_Pixels.GetBitsPerPixel(); }

    CPixelBuffer& GetPixels() { return m_Pixels; }

    const CPixelBuffer& GetPixels() const { return m_Pixels; }

private:
    CPixelBuffer m_Pixels;
    bool m_Alpha = false;
};
