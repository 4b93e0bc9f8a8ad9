#pragma once

#include "host/Image.h"

#include <memory>

// The bitmap as it is painted on and as it is written. Null for null images and where memory is
// short.

// The bitmap as texels of 32 bits. An entry (e0, e1, e2) of the palette becomes the texel (e2, e1,
// e0, 255), an index without an entry (0, 0, 0, 0).
std::unique_ptr<IImage> MakeWorkImage(const IImage& bitmap, const IPalette* pPalette);

// The picture to write, in eFormat. With a palette it has, whatever the format, the indices of the
// entries that are nearest to bytes 2, 1, 0 of the texels.
std::unique_ptr<IImage>
MakeImageToSave(const IImage& work, const IPalette* pPalette, EImageFormat eFormat);
