#pragma once

#include "engine/terrain/CVertexProtection.h"

#include <string>

// The squares of a protection as scripts and autosaves have them: "all", "none", or 16 hexadecimal
// digits a row, the first row first.
std::string
MakeSquareText(const CVertexProtection& protection, uint32_t uSquareX, uint32_t uSquareZ);
// Takes a square over. iColumn, iRow: its first vertex. False, and nothing has changed, when the
// terrain has no such square or the text is none.
bool ReadSquareText(const char* pszText, int iColumn, int iRow, CVertexProtection& protection);

// The calls that make one protection of another, a line a square. One of another size counts as
// protecting nothing. pszKeyword: of the calls.
std::string
GetSquareCalls(const CVertexProtection& from, const CVertexProtection& to, const char* pszKeyword);
