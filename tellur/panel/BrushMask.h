#pragma once

#include <string>

class CTellurBrush;

// Asks for a picture to mask the current brush with, beginning at strFrom. Empty when cancelled,
// and when another brush has become current meanwhile.
std::string BrowseForMask(const std::string& strFrom);

// Gives a brush, which is the current one, the picture as its mask and switches the mask on.
// Preview and overlay follow.
void SetBrushMask(CTellurBrush& brush, const std::string& strPath);
