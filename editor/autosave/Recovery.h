#pragma once

#include "editor/autosave/JournalText.h"
#include "editor/autosave/SAutosaveText.h"

#include <functional>
#include <string>
#include <vector>

class CTCPARSE_KEYWORD;

// What a run that did not end properly has left of a level: a base, and the steps since.
struct SRecoverable
{
    std::string strStem; // of its files
    SAutosaveText text;
    std::vector<std::string> steps;
    uint32_t uLastNumber = 1; // of the journals that the steps come from
    int64_t iWritten = 0;     // the last of it, seconds since 1970
    bool bSavedSince = false; // the level was, after what was kept
    bool bBitmapSavedSince = false;
    bool bCut = false;      // behind the steps there is the beginning of one more
    std::string strLeftOut; // a bitmap that is not what it was: steps that paint on it are left out
    std::string strFault;   // why it cannot be given back, one line; empty when it can
};

// What interrupted runs have left of these levels (full paths) and of levels without a file, newest
// first. What running programs keep is none of it, damaged files neither.
std::vector<SRecoverable> FindRecoverable(const std::vector<std::string>& levels);

// How many steps of a history the first ones of an entry come to: what a person has taken back, or
// what has changed nothing, is none.
size_t CountHistorySteps(const SRecoverable& entry, size_t nFirst);

// Plays the calls of one step into the plug-in. False with one line in strFault.
using FPlayStep = std::function<bool(CTCPARSE_KEYWORD* pFirst, std::string& strFault)>;

// Is told which bitmap the level names from a step on.
using FNameBitmap = std::function<void(const std::string& strBitmap)>;

// Plays steps one after the other, the painting on a bitmap only where its file is still what it
// was. strDeclarations: of all keywords that they may have. nPlayed: how many. False, with one line
// in strFault, when one fails or the user cancels.
bool PlaySteps(const SRecoverable& entry,
               const std::string& strDeclarations,
               const FPlayStep& play,
               const FNameBitmap& nameBitmap,
               size_t& nPlayed,
               std::string& strFault);
