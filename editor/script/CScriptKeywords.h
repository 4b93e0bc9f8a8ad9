#pragma once

#include "host/ScriptKeywords.h"

#include <string>
#include <vector>

class CTCPARSE_KEYWORD;
class IPlugin;

// The keywords that scripts have with one plug-in: those that the host plays, and those that the
// plug-in hands out. Their texts are the plug-in's, so this goes before its library does.
class CScriptKeywords
{
public:
    // pPlugin: null for none; one without IPluginScript has no keywords. Of a name that both have
    // the host's counts, and one line is logged.
    explicit CScriptKeywords(IPlugin* pPlugin);

    // The declarations of all, as a script starts with them.
    std::string GetDeclarations() const;

    // By its name, letter by letter; null for none of them.
    const SScriptKeyword* FindOfPlugin(const char* pszName) const;

    // What the first argument of a keyword names; without regard to case, as blocks are read.
    EKeywordFile GetFileUse(const CTCPARSE_KEYWORD& keyword) const;
    EKeywordFile GetFileUseInBlock(const CTCPARSE_KEYWORD& keyword) const;

private:
    std::vector<SScriptKeyword> m_Host;
    std::vector<SScriptKeyword> m_Plugin;
    std::vector<SScriptKeyword> m_Blocks; // the plug-in's
};
