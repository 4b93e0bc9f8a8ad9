#pragma once

class CBrushContainer;

// Writes the predefined brushes to their library. Until that has succeeded the old file lies beside
// it as a copy ("name__Copy.ini"), so that one of both is there whatever happens on the way; a
// process that ends in between leaves the copy, which RecoverBrushFile takes back. False when the
// brushes may not be saved or could not be written; the old file is then in its place again.
bool SaveBrushesWithCopy(CBrushContainer& brushes, const char* pszPath);
