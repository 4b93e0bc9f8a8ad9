#include "tools/parse/CJsonWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

// Deeper lines are not indented further: the text of a very deep tree would consist of blanks.
static constexpr size_t DEEPEST_INDENT = 40;

const std::string& CJsonWriter::Write(const CTCPARSE_KEYWORD* pTree)
{
    std::vector<const CTCPARSE_KEYWORD*> around; // nodes whose block is being written
    const CTCPARSE_KEYWORD* pNode = pTree;
    m_strText.assign(1, '[');
    while (pNode != nullptr)
    {
        WriteNode(*pNode, around.size());
        if (pNode->block != nullptr)
        {
            m_strText += ", \"block\": [";
            around.push_back(pNode);
            pNode = pNode->block;
            continue;
        }
        m_strText += '}';
        while (pNode->next == nullptr && !around.empty())
        {
            pNode = around.back();
            around.pop_back();
            StartLine(around.size() + 1);
            m_strText += "]}";
        }
        pNode = pNode->next;
        m_strText += pNode != nullptr ? "," : "\n";
    }
    m_strText += "]\n";
    return m_strText;
}

void CJsonWriter::WriteNode(const CTCPARSE_KEYWORD& node, size_t nDepth)
{
    StartLine(nDepth + 1);
    m_strText += "{\"name\": ";
    WriteString(node.name);
    m_strText += ", \"params\": [";
    for (const CTCPARSE_PARAM* pParam = node.params; pParam != nullptr; pParam = pParam->next)
    {
        WriteParam(*pParam);
        m_strText += pParam->next != nullptr ? ", " : "";
    }
    m_strText += ']';
}

void CJsonWriter::WriteParam(const CTCPARSE_PARAM& param)
{
    static constexpr const char* NAMES[] = {"int", "float", "string", "vec3", "vec4"};
    m_strText += "{\"type\": \"";
    m_strText += NAMES[param.type];
    m_strText += "\", \"value\": ";
    switch (param.type)
    {
    case tcparse_int:
        m_strText += std::to_string(static_cast<const CTCPARSE_INT&>(param).value);
        break;
    case tcparse_float:
        WriteFloat(static_cast<const CTCPARSE_FLOAT&>(param).value);
        break;
    case tcparse_string:
        WriteString(static_cast<const CTCPARSE_STRING&>(param).value);
        break;
    case tcparse_vec3:
    {
        const auto& vector = static_cast<const CTCPARSE_VEC3&>(param);
        WriteFloats({vector.x, vector.y, vector.z});
        break;
    }
    case tcparse_vec4:
    {
        const auto& vector = static_cast<const CTCPARSE_VEC4&>(param);
        WriteFloats({vector.x, vector.y, vector.z, vector.w});
        break;
    }
    }
    m_strText += '}';
}

void CJsonWriter::WriteFloats(std::initializer_list<float> values)
{
    const char* pszBefore = "[";
    for (const float fValue : values)
    {
        m_strText += pszBefore;
        WriteFloat(fValue);
        pszBefore = ", ";
    }
    m_strText += ']';
}

void CJsonWriter::WriteFloat(float fValue)
{
    if (std::isnan(fValue))
    {
        m_strText += "null";
        return;
    }
    if (std::isinf(fValue))
    {
        // JSON has no word for it; readers turn a number beyond their range into it.
        m_strText += fValue < 0.0F ? "-1e999" : "1e999";
        return;
    }
    char szText[32];
    snprintf(szText, sizeof(szText), "%.9g", fValue);
    m_strText += szText;
}

// Bytes above 127 have the number of their character in Latin-1.
void CJsonWriter::WriteString(const char* pszText)
{
    m_strText += '"';
    for (; *pszText != '\0'; ++pszText)
    {
        const auto uByte = static_cast<unsigned char>(*pszText);
        if (uByte == '"' || uByte == '\\')
        {
            m_strText += '\\';
            m_strText += *pszText;
        }
        else if (uByte < 0x20 || uByte > 0x7E)
        {
            char szEscape[8];
            snprintf(szEscape, sizeof(szEscape), "\\u%04x", uByte);
            m_strText += szEscape;
        }
        else
        {
            m_strText += *pszText;
        }
    }
    m_strText += '"';
}

void CJsonWriter::StartLine(size_t nDepth)
{
    m_strText += '\n';
    m_strText.append(std::min(nDepth, DEEPEST_INDENT), ' ');
}
