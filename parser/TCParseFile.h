#pragma once

#include "parser/CTCParseNodes.h"
#include "parser/STCParseCallbacks.h"
#include "parser/STCParseOutline.h"

// How reading a file ended, for callers that tell an empty file from a bad one.
enum ETCParseStatus
{
    tcparse_done,       // also for a file without calls
    tcparse_failed,     // the file has an error; it is logged
    tcparse_unreadable, // no such file, or it could not be read; nothing is logged
};

// Reads a file of keyword calls. Returns the first node of its tree, which the caller owns and
// deletes; null for a file with an error, without calls, or that cannot be read. Nothing of a file
// with an error is handed out. Messages go to the log; the file goes on after some of them (see
// CTCParse). UI thread only.
CTCPARSE_KEYWORD* TCParseFile(const char* pszPath,
                              TCParseIntVarCallback pIntVar = nullptr,
                              TCParseFloatVarCallback pFloatVar = nullptr,
                              TCParseVec3VarCallback pVec3Var = nullptr,
                              TCParseVec4VarCallback pVec4Var = nullptr,
                              TCParseStringVarCallback pStringVar = nullptr,
                              ETCParseStatus* pStatus = nullptr);

// Reads a file that names no variables, and fills outline, which is empty before, with where
// everything stands in the text.
CTCPARSE_KEYWORD*
TCParseFile(const char* pszPath, STCParseOutline& outline, ETCParseStatus& eStatus);
