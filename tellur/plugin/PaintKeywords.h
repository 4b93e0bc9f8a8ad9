#pragma once

#include "host/ScriptKeywords.h"

#include <span>
#include <string>

namespace fs
{
class ifile;
}
class CModeEditTerrainType;
class CTCPARSE_PARAM;
class CTerrain2DDrawDlg;

// The keywords that paint: each goes the way of the draw dialog's control of that name, so what a
// script proves is the dialog.

struct SPaintKeyword
{
    SScriptKeyword keyword;
    // False with one line in strWhy when it is refused. pParam: the first argument, of the types
    // that the keyword names.
    bool (*pPlay)(CTerrain2DDrawDlg& dialog,
                  CModeEditTerrainType& mode,
                  const CTCPARSE_PARAM* pParam,
                  std::string& strWhy) = nullptr;
};

std::span<const SPaintKeyword> GetPaintKeywords();

// Writes what a script needs before it switches painting on: the mode paints nothing without a
// shape.
void WritePaintBrush(fs::ifile& file, CModeEditTerrainType& mode);
// Writes the rest, which has to come after painting was switched on: loading the bitmap sets some
// of it anew.
void WritePaintState(fs::ifile& file,
                     const CTerrain2DDrawDlg& dialog,
                     const CModeEditTerrainType& mode);
