#pragma once

#include "host/Export.h"
#include "host/Image.h"

#include <cstdint>
#include <memory>
#include <string>

// A picture as a dialog shows it before it is chosen.
struct SPicturePreview
{
    uint32_t uWidth = 0; // pixels, as the file claims them; 0 where it says nothing
    uint32_t uHeight = 0;
    std::unique_ptr<IImage> pImage;     // null where there is no picture to show
    std::unique_ptr<IPalette> pPalette; // of a paletted one
    std::string strWhy;                 // there is none; a phrase without the file's name
    bool bSkipped = false; // it was not read, being large: there may be a picture all the same
};

// Reads a picture to be looked at. One of more pixels than nMost is told by its size, of which the
// beginning of the file is enough; nothing is logged. Throws nothing. UI thread.
TELLUR_API SPicturePreview LoadPicturePreview(const char* pszPath, uint64_t nMost);
