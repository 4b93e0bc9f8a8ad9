#pragma once

#include "parser/CTCParseNodes.h"

#include <strings.h>

// Reading keywords of a parsed block: names without regard to case, parameters only when they are
// of the expected type. All pointers are borrowed from the tree.

inline bool IsKey(const CTCPARSE_KEYWORD* pKey, const char* pszName)
{
    return strcasecmp(pKey->name, pszName) == 0;
}

// The first parameter's text, or null when it is no string.
inline const char* GetStringParam(const CTCPARSE_KEYWORD* pKey)
{
    const CTCPARSE_PARAM* pParam = pKey->params;
    return pParam != nullptr && pParam->type == tcparse_string
               ? static_cast<const CTCPARSE_STRING*>(pParam)->value
               : nullptr;
}

// The first parameter's number, or 0 when it is no float.
inline float GetFloatParam(const CTCPARSE_KEYWORD* pKey)
{
    const CTCPARSE_PARAM* pParam = pKey->params;
    return pParam != nullptr && pParam->type == tcparse_float
               ? static_cast<const CTCPARSE_FLOAT*>(pParam)->value
               : 0.0F;
}
