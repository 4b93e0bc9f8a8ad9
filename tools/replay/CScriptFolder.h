#pragma once

#include <string>

class CTCPARSE_KEYWORD;

// The folder that relative paths of a script count from.
class CScriptFolder
{
public:
    explicit CScriptFolder(const std::string& strScriptPath);

    // The path a name in the script means: absolute ones stay, others count from the folder.
    std::string GetPath(const std::string& strName) const;

    // Lets the image and the mask of a brush block name the file beside the script where there is
    // one; names without such a file stay, and are looked for in the roots.
    void LocateBrushFiles(CTCPARSE_KEYWORD& brush) const;

private:
    void LocateFiles(CTCPARSE_KEYWORD* pFirst, const char* pszName) const;
    void LocateFile(CTCPARSE_KEYWORD& keyword) const;

    std::string m_Folder; // with its separator
};
