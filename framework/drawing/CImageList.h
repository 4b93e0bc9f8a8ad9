#pragma once

#include "framework/drawing/CBitmap.h"

#include <vector>

class CDrawContext;

// Small pictures of one size with transparency, counted from 0, such as a list view shows beside
// its rows. Owned by whoever made it; a list view borrows it.
class TELLUR_API CImageList
{
public:
    // cx, cy: pixels of an image. Room for nInitial images is made, then for nGrow at a time.
    // False, with the list kept, for a size that is no picture's (CPixelBuffer::MAX_SIDE) or a
    // negative number. The list is then empty.
    bool Create(int cx, int cy, int nInitial, int nGrow);

    // Takes as many images side by side as the bitmap is wide, from its top rows; a rest that is
    // narrower than an image is left. Pixels of the colour uTransparent become transparent, others
    // keep the bitmap's own transparency. Returns the index of the first, -1 with nothing added
    // when the bitmap is smaller than an image, the list was not created or memory is short.
    // Silent: who asks says what for.
    int Add(const CBitmap& bitmap, ColorRef uTransparent);

    int GetImageCount() const { return static_cast<int>(m_Images.size()); }

    SSize GetImageSize() const { return m_Size; } // 0 by 0 before Create

    // Blends an image in at its size; false when the image is not there.
    bool Draw(CDrawContext& context, int iImage, SPoint at) const;

    // Copies an image of 32 bits, opacity in the fourth byte. False, with the target kept, when it
    // is not there or memory is short.
    bool GetImage(int iImage, CPixelBuffer& pixels) const;

private:
    bool CutImage(const CBitmap& bitmap, int iLeft, ColorRef uTransparent, CBitmap& image) const;

    SSize m_Size;
    size_t m_Grow = 0;
    std::vector<CBitmap> m_Images;
};
