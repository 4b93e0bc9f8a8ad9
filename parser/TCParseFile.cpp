#include "parser/TCParseFile.h"

#include "host/Log.h"
#include "parser/CTCParse.h"

#include <memory>

static CTCPARSE_KEYWORD* ReadTree(CTCParse& parse, const char* pszFile, ETCParseStatus& eStatus)
{
    int32_t nError = 0;
    std::unique_ptr<CTCPARSE_KEYWORD> pTree(parse.Parse(&nError));
    eStatus = parse.IsLoaded() ? tcparse_done : tcparse_unreadable;
    if (nError != 0)
    {
        // What was read before the error is dropped: half a file would pass for a whole one.
        CrashLog("Parser: cant parse file '%s'\n", pszFile);
        pTree.reset();
        eStatus = tcparse_failed;
    }
    return pTree.release();
}

CTCPARSE_KEYWORD* TCParseFile(const char* pszPath,
                              TCParseIntVarCallback pIntVar,
                              TCParseFloatVarCallback pFloatVar,
                              TCParseVec3VarCallback pVec3Var,
                              TCParseVec4VarCallback pVec4Var,
                              TCParseStringVarCallback pStringVar,
                              ETCParseStatus* pStatus)
{
    const char* pszFile = pszPath != nullptr ? pszPath : "";
    CTCParse parse(pszFile, false);
    parse.SetCallbacks({pIntVar, pFloatVar, pVec3Var, pVec4Var, pStringVar});
    ETCParseStatus eStatus = tcparse_done;
    CTCPARSE_KEYWORD* pTree = ReadTree(parse, pszFile, eStatus);
    if (pStatus != nullptr)
    {
        *pStatus = eStatus;
    }
    return pTree;
}

CTCPARSE_KEYWORD*
TCParseFile(const char* pszPath, STCParseOutline& outline, ETCParseStatus& eStatus)
{
    CTCParse parse(pszPath, false);
    parse.SetOutline(&outline);
    return ReadTree(parse, pszPath, eStatus);
}
