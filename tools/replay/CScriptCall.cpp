#include "tools/replay/CScriptCall.h"

#include "parser/CTCParseNodes.h"

#include <cstdio>
#include <cstring>

namespace
{

constexpr size_t MOST_TEXT_BYTES = 120;
constexpr char TYPE_LETTERS[] = "ifsvw"; // by type code

std::string GetParamText(const CTCPARSE_PARAM& param)
{
    char szText[MOST_TEXT_BYTES] = {};
    if (param.type == tcparse_int)
    {
        std::snprintf(szText, sizeof(szText), "%d", static_cast<const CTCPARSE_INT&>(param).value);
    }
    else if (param.type == tcparse_float)
    {
        const double fValue = static_cast<const CTCPARSE_FLOAT&>(param).value;
        std::snprintf(szText, sizeof(szText), "%.9g", fValue);
    }
    else if (param.type == tcparse_string)
    {
        const char* pszValue = static_cast<const CTCPARSE_STRING&>(param).value;
        std::snprintf(szText, sizeof(szText), "\"%s\"", pszValue);
    }
    else if (param.type == tcparse_vec3)
    {
        const auto& vec = static_cast<const CTCPARSE_VEC3&>(param);
        std::snprintf(szText,
                      sizeof(szText),
                      "[ %.9g, %.9g, %.9g ]",
                      static_cast<double>(vec.x),
                      static_cast<double>(vec.y),
                      static_cast<double>(vec.z));
    }
    return szText;
}

} // namespace

CScriptCall::CScriptCall(const CTCPARSE_KEYWORD& keyword)
    : m_Keyword(keyword)
{
}

bool CScriptCall::HasTypes(const char* pszTypes) const
{
    const CTCPARSE_PARAM* pParam = m_Keyword.params;
    for (; *pszTypes != '\0' && pParam != nullptr; ++pszTypes, pParam = pParam->next)
    {
        if (TYPE_LETTERS[pParam->type] != *pszTypes)
        {
            return false;
        }
    }
    return *pszTypes == '\0' && pParam == nullptr;
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
