#pragma once

#include <cstdint>
#include <string>

class CTCPARSE_KEYWORD;
enum class EKeywordFile : uint8_t;

// The folder that relative paths of a script count from.
class CScriptFolder
{
public:
    explicit CScriptFolder(const std::string& strScriptPath);

    // The path a name in the script means: absolute ones stay, others count from the folder.
    std::string GetPath(const std::string& strName) const;

    // Lets the files that a keyword of the plug-in names be those beside the script: always for one
    // that is written, and for one that is read (a brush library, the image and the mask of a brush
    // block, a bitmap and a brush shape to paint with) where there is such a file; other names
    // stay, and are looked for in the roots.
    void LocateFiles(CTCPARSE_KEYWORD& keyword) const;

    // Whether a keyword from that one on reads or writes the file. strPath: absolute.
    bool Names(const CTCPARSE_KEYWORD* pFirst, const std::string& strPath) const;

    // Whether the keyword would write over the script that it stands in.
    bool WouldReplaceScript(const CTCPARSE_KEYWORD& keyword) const;

private:
    bool NamesWithin(const CTCPARSE_KEYWORD* pFirst, const std::string& strPath, int nDepth) const;
    void LocateBrushFiles(CTCPARSE_KEYWORD* pFirst) const;
    void LocateNamed(CTCPARSE_KEYWORD* pFirst, const char* pszName) const;
    void LocateFile(CTCPARSE_KEYWORD& keyword, EKeywordFile eUse) const;

    std::string m_Script; // absolute
    std::string m_Folder; // with its separator
};
