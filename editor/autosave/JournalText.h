#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The text of a journal: a replay script whose steps end in a comment each, "// step N CHECKSUM".
// What stands behind the last one was cut off and counts for nothing. The first part, number 0, is
// the declarations and the call that brings the terrain.

// One step with the comment that ends it. strText: whole lines, without that comment.
std::string MakeJournalPart(const std::string& strText, size_t nStep);

// The part that a journal begins with. strDeclarations: of all keywords. strOpen: the call that
// brings the terrain; empty for none. bContinues: the steps go on from the journal of the number
// before, so that the one after the other can be played.
std::string
MakeJournalHead(const std::string& strDeclarations, const std::string& strOpen, bool bContinues);

// A line that says of which file the script's next paint_bitmap is, and what is in it.
std::string MakeBitmapNote(const std::string& strFile, const std::string& strStamp);
// Finds such a line in the text of a step. False when the text has none.
bool ReadBitmapNote(const std::string& strText, std::string& strFile, std::string& strStamp);

// A line that a step begins with: which bitmap the level names once it is done; empty for none.
std::string MakeLevelBitmapNote(const std::string& strBitmap);
// False when the step has no such line.
bool ReadLevelBitmapNote(const std::string& strText, std::string& strBitmap);

// A line that ends a step after which the history is as it was before.
std::string MakeIdleNote();
// Follows how many steps are done in the history of whoever plays this one.
void FollowHistory(const std::string& strStep, size_t& nDone);

struct SJournal
{
    bool bContinues = false;
    std::vector<std::string> steps; // calls alone
    int64_t iWritten = 0;           // seconds since 1970
    bool bCut = false;              // a step, or the head, was begun behind them and has no end
};

// Reads the steps of a journal up to the first one that was cut off. False when there is no such
// file, or not even its head is whole, which bCut tells apart.
bool ReadJournal(const std::string& strFile, SJournal& journal);
