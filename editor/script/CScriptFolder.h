#pragma once

#include <cstdint>
#include <string>

class CScriptKeywords;
class CTCPARSE_KEYWORD;
enum class EKeywordFile : uint8_t;

// The folder that relative paths of a script count from.
class CScriptFolder
{
public:
    // keywords: borrowed; what they say about files is asked for at each call.
    CScriptFolder(const std::string& strScriptPath, const CScriptKeywords& keywords);

    // The path a name in the script means: absolute ones stay, others count from the folder.
    std::string GetPath(const std::string& strName) const;

    // Lets the files that a keyword of the plug-in and its block name be those beside the script:
    // always for one that is written, and for one that is read where there is such a file; other
    // names stay, and are looked for in the roots.
    void LocateFiles(CTCPARSE_KEYWORD& keyword) const;

    // Whether a keyword from that one on reads or writes the file. strPath: absolute.
    bool Names(const CTCPARSE_KEYWORD* pFirst, const std::string& strPath) const;

    // Whether the keyword would write over the script that it stands in.
    bool WouldReplaceScript(const CTCPARSE_KEYWORD& keyword) const;

private:
    bool NamesWithin(const CTCPARSE_KEYWORD* pFirst, const std::string& strPath, int nDepth) const;
    void LocateWithin(CTCPARSE_KEYWORD* pFirst, int nDepth) const;
    void LocateFile(CTCPARSE_KEYWORD& keyword, int nDepth) const;
    // nDepth: how many blocks may be further in. Null for a keyword that names none.
    const char* GetFile(const CTCPARSE_KEYWORD& keyword, int nDepth) const;
    EKeywordFile GetUse(const CTCPARSE_KEYWORD& keyword, int nDepth) const;

    const CScriptKeywords& m_Keywords;
    std::string m_Script; // absolute
    std::string m_Folder; // with its separator
};
