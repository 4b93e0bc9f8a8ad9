#pragma once

#include "framework/drawing/CBitmap.h"

#include <vector>

class CDrawContext;

// Small pictures of one size with transparency, counted from 0, such as a list view shows beside
// its rows. Owned by whoever made it; a list view borrows it.
class TELLUR_API CImageList
{
public:
    // Begins an empty list. cx, cy: pixels of an image. Room for nInitial images is made, then for
    // nGrow at a time. Answers false and keeps the list as it was for a size that is no picture's
    // (CPixelBuffer::MAX_SIDE) or a negative number.
    bool Create(int cx, int cy, int nInitial, int nGrow);

    // Takes as many images side by side as the bitmap is wide, from its top rows; a rest that is
    // narrower than an image is left. Pixels of the colour uTransparent become transparent, others
    // keep the bitmap's own transparency. Returns the index of the first new image, or -1 and adds
    // nothing when the bitmap is smaller than an image, the list was not created or memory is
    // short. Nothing is logged: whoever asks says what for.
    int Add(const CBitmap& bitmap, ColorRef uTransparent);

    int GetImageCount() const { return static_cast<int>(m_Images.size()); }

    SSize GetImageSize() const { return m_Size; } // 0 by 0 before Create

    // Blends an image in at its size. Answers false when there is no such image.
    bool Draw(CDrawContext& context, int iImage, SPoint at) const;

    // Copies an image at 32 bits, with its opacity in the fourth byte. Answers false and keeps
    // pixels as they are when there is no such image or memory is short.
    bool GetImage(int iImage, CPixelBuffer& pixels) const;

private:
    bool CutImage(const CBitmap& bitmap, int iLeft, ColorRef uTransparent, CBitmap& image) const;

    SSize m_Size;
    size_t m_Grow = 0;
    std::vector<CBitmap> m_Images;
};
