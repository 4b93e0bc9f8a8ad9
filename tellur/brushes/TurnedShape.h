#pragma once

class IImage;
struct SPointForm;

// Fills dest with source as the form turns it: at an offset from its middle, which is the pixel at
// half its side as footprints have it, dest has what source has at the offset times the form's
// matrix, blended of four pixels, and black where that lies beyond source. Both are square, of
// equal size, with one byte a pixel, and not the same image.
void TurnShape(const IImage& source, const SPointForm& form, IImage& dest);
