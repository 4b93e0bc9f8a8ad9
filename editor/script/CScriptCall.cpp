#include "editor/script/CScriptCall.h"

#include "parser/CTCParseNodes.h"

#include <charconv>

namespace
{

constexpr size_t MOST_TEXT_BYTES = 120;
constexpr char TYPE_LETTERS[] = "ifsvw"; // by type code

// The shortest text that reads back to the same bits.
std::string GetFloatText(float fValue)
{
    char szText[32];
    const std::to_chars_result result = std::to_chars(szText, szText + sizeof(szText), fValue);
    return {szText, result.ptr};
}

std::string GetParamText(const CTCPARSE_PARAM& param)
{
    switch (param.type)
    {
    case tcparse_int:
        return std::to_string(static_cast<const CTCPARSE_INT&>(param).value);
    case tcparse_float:
        return GetFloatText(static_cast<const CTCPARSE_FLOAT&>(param).value);
    case tcparse_string:
    {
        const std::string strValue = static_cast<const CTCPARSE_STRING&>(param).value;
        return "\"" + strValue.substr(0, MOST_TEXT_BYTES) + "\"";
    }
    case tcparse_vec3:
    {
        const auto& vec = static_cast<const CTCPARSE_VEC3&>(param);
        return "[ " + GetFloatText(vec.x) + ", " + GetFloatText(vec.y) + ", " +
               GetFloatText(vec.z) + " ]";
    }
    case tcparse_vec4:
    {
        const auto& vec = static_cast<const CTCPARSE_VEC4&>(param);
        return "[ " + GetFloatText(vec.x) + ", " + GetFloatText(vec.y) + ", " +
               GetFloatText(vec.z) + ", " + GetFloatText(vec.w) + " ]";
    }
    default:
        return "?";
    }
}

} // namespace

CScriptCall::CScriptCall(CTCPARSE_KEYWORD& keyword)
    : m_Keyword(keyword)
{
}

bool CScriptCall::HasTypes(std::string_view strTypes) const
{
    const CTCPARSE_PARAM* pParam = m_Keyword.params;
    for (const char cType : strTypes)
    {
        if (pParam == nullptr || TYPE_LETTERS[pParam->type] != cType)
        {
            return false;
        }
        pParam = pParam->next;
    }
    return pParam == nullptr;
}

int32_t CScriptCall::GetInt(size_t iPlace) const
{
    return static_cast<const CTCPARSE_INT*>(GetParam(iPlace))->value;
}

float CScriptCall::GetFloat(size_t iPlace) const
{
    return static_cast<const CTCPARSE_FLOAT*>(GetParam(iPlace))->value;
}

const char* CScriptCall::GetString(size_t iPlace) const
{
    return static_cast<const CTCPARSE_STRING*>(GetParam(iPlace))->value;
}

SVec3 CScriptCall::GetVec3(size_t iPlace) const
{
    const auto* pVec = static_cast<const CTCPARSE_VEC3*>(GetParam(iPlace));
    return {pVec->x, pVec->y, pVec->z};
}

SVec4 CScriptCall::GetVec4(size_t iPlace) const
{
    const auto* pVec = static_cast<const CTCPARSE_VEC4*>(GetParam(iPlace));
    return {pVec->x, pVec->y, pVec->z, pVec->w};
}

std::string CScriptCall::GetText() const
{
    std::string strText = m_Keyword.name;
    strText += '(';
    const CTCPARSE_PARAM* pParam = m_Keyword.params;
    for (; pParam != nullptr && strText.size() < MOST_TEXT_BYTES; pParam = pParam->next)
    {
        strText += strText.back() == '(' ? " " : ", ";
        strText += GetParamText(*pParam);
    }
    strText += pParam != nullptr ? ", ..." : "";
    strText += m_Keyword.params != nullptr ? " )" : ")";
    return GetOneLine(strText);
}

const CTCPARSE_PARAM* CScriptCall::GetParam(size_t iPlace) const
{
    const CTCPARSE_PARAM* pParam = m_Keyword.params;
    for (; iPlace > 0; --iPlace)
    {
        pParam = pParam->next;
    }
    return pParam;
}

std::string GetOneLine(const std::string& strText)
{
    std::string strLine = strText;
    for (char& character : strLine)
    {
        const auto uByte = static_cast<unsigned char>(character);
        character = uByte < 0x20 || uByte == 0x7F ? '?' : character;
    }
    return strLine;
}
