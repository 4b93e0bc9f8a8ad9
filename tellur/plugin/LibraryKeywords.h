#pragma once

#include <string>

class CTCPARSE_KEYWORD;
struct SScriptParts;

// The keywords that change the library of brushes, or take a brush of it by its place, from 0.
// False with one line without a line feed in strWhy when a keyword is refused; while a drag runs
// all of them are. The panel's list follows. Nothing is saved: scripts have save_brushes for that.

// As a click on the brush in the panel's list.
bool PlayTakeBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy);

// These can be taken back.
bool PlayRenameBrush(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy);
bool PlayDuplicateBrush(const SScriptParts& parts,
                        const CTCPARSE_KEYWORD& keyword,
                        std::string& strWhy);
bool PlayRemoveBrush(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy);
bool PlayMoveBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy);

bool PlayUndoBrushes(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy);
bool PlayRedoBrushes(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy);
