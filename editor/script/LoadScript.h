#pragma once

#include <memory>
#include <string>

class CTCPARSE_KEYWORD;

// How playing a script ended; the programs that play scripts make exit codes of it: 0, 1 for
// one that was not played to its end, 2.
enum class EScriptEnd
{
    Played,
    Stopped,  // by a person, before its end
    Failed,   // a call of the script
    Unusable, // cannot be read or parsed
};

// Reads a replay script; a relative path counts from the current folder. pFirst is null for one
// without calls. False, with one line in strFault, when it cannot be read or parsed.
bool LoadScript(const std::string& strPath,
                std::unique_ptr<CTCPARSE_KEYWORD>& pFirst,
                std::string& strFault);
