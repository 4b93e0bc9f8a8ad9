#pragma once

#include "parser/CTCParseNodes.h"

#include <strings.h>

// Taking values out of a parse tree: names without regard to case, a parameter only when it is
// there and of the expected type. All pointers are borrowed from the tree; pParam may be null.

inline bool IsKeyword(const CTCPARSE_KEYWORD* pKeyword, const char* pszName)
{
    return strcasecmp(pKeyword->name, pszName) == 0;
}

// The text, or null when it is no string.
inline const char* GetStringValue(const CTCPARSE_PARAM* pParam)
{
    return pParam != nullptr && pParam->type == tcparse_string
               ? static_cast<const CTCPARSE_STRING*>(pParam)->value
               : nullptr;
}

// The number, or 0 when it is no float.
inline float GetFloatValue(const CTCPARSE_PARAM* pParam)
{
    return pParam != nullptr && pParam->type == tcparse_float
               ? static_cast<const CTCPARSE_FLOAT*>(pParam)->value
               : 0.0F;
}

// The number, or 0 when it is no int.
inline int32_t GetIntValue(const CTCPARSE_PARAM* pParam)
{
    return pParam != nullptr && pParam->type == tcparse_int
               ? static_cast<const CTCPARSE_INT*>(pParam)->value
               : 0;
}
