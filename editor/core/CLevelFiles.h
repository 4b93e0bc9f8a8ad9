#pragma once

#include "editor/core/CFileStamp.h"
#include "parser/CTCParseText.h"

#include <string>
#include <vector>

class CTerrain;
struct SLevelText;

// A file that a save would replace without having been asked about it.
struct SReplacedFile
{
    std::string strPath;
    bool bOwn = false; // the level's, changed by another hand since it was read or saved here
};

// The files of the open level, its text, its heights and its protection: what they were when this
// program last read or wrote them, and how they are written again. Paths are full. Owned by the
// document.
class CLevelFiles
{
public:
    // Looks at the text, then reads it. Messages as those of TCParseFile.
    ETCParseStatus ReadText(const std::string& strPath, SLevelText& text);

    // Looks at the heights: before they are read, or after this program has written them.
    void NoteHeights(const std::string& strPath) { m_Heights = CFileStamp(strPath); }

    // The same of the picture of what is protected; an empty path for none.
    void NoteProtection(const std::string& strPath);

    // From now on all files count as changed by another hand, whatever is in them.
    void Distrust();

    // Lists what a save to these paths would replace. strConfirmed: what a person has agreed to
    // already.
    std::vector<SReplacedFile> FindReplaced(const std::vector<std::string>& targets,
                                            const std::string& strConfirmed) const;

    // Writes heights, protection and text to the paths that the text names; all take their places
    // at the end. Where nothing is protected any more, the picture that this program has read or
    // written for it goes. False after one logged line.
    bool Write(CTerrain& terrain, const SLevelText& text);

    // For a person, after a Write that failed: which files are new and which are as they were.
    const std::string& GetOutcome() const { return m_Outcome; }

private:
    void NoteSavedProtection(const SLevelText& text, bool bDone);

    CTCParseText m_Kept; // what the file said when it was read; empty for a level without one
    CFileStamp m_Text;
    CFileStamp m_Heights;
    CFileStamp m_Protection;
    std::string m_ProtectedText; // the level file that m_Protection belongs to
    std::string m_Outcome;
};
