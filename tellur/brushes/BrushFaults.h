#pragma once

#include <vector>

class CTCPARSE_KEYWORD;
class CTellurBrush;
struct SBrushFault;

// What of a brush() of a library did not become a part of the brush that was loaded from it, or
// will not come back from the library that it is saved to. bLoaded: whether the brush was taken at
// all.
void FindBrushFaults(const CTCPARSE_KEYWORD& written,
                     const CTellurBrush& brush,
                     bool bLoaded,
                     std::vector<SBrushFault>& faults);

// Whether a library that holds the path could not be read any more: paths are written without
// escaping what ends a string.
bool BreaksBrushFile(const char* pszPath);
