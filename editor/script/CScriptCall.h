#pragma once

#include "host/HostTypes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class CTCPARSE_KEYWORD;
class CTCPARSE_PARAM;

// The arguments of one parsed keyword. The keyword is borrowed for the life of the object.
class CScriptCall
{
public:
    explicit CScriptCall(CTCPARSE_KEYWORD& keyword);

    // Whether the arguments are exactly of these types, as those of SScriptKeyword.
    bool HasTypes(std::string_view strTypes) const;

    // The value of the argument at that place, which must be there and of that type (see HasTypes).
    int32_t GetInt(size_t iPlace) const;
    float GetFloat(size_t iPlace) const;
    const char* GetString(size_t iPlace) const;
    SVec3 GetVec3(size_t iPlace) const;
    SVec4 GetVec4(size_t iPlace) const;

    // The call as a person reads it, as in "move( 1, 2.5, 3 )"; long ones are cut. One line.
    std::string GetText() const;

private:
    const CTCPARSE_PARAM* GetParam(size_t iPlace) const;

    CTCPARSE_KEYWORD& m_Keyword;
};

// The text with every control character replaced, so that it stays one line.
std::string GetOneLine(const std::string& strText);
