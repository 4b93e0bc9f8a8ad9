#pragma once

#include <string>

class CTellurBrush;

// Asks for a picture to mask the current brush with, beginning at strFrom. Empty when cancelled,
// and when another brush has become current meanwhile.
std::string BrowseForMask(const std::string& strFrom);

// The current brush has the picture as its mask, which is switched on.
void SetBrushMask(CTellurBrush& brush, const std::string& strPath);
