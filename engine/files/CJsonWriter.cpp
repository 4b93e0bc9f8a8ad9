#include "engine/files/CJsonWriter.h"

#include "host/NumberText.h"

#include <algorithm>
#include <cmath>

namespace
{

// Deeper lines are not indented further: the text of a very deep tree would consist of blanks.
constexpr size_t DEEPEST_INDENT = 40;

constexpr int FLOAT_DIGITS = 9;

} // namespace

void CJsonWriter::Begin(char cBegin, char cEnd, bool bLines, size_t nIndent)
{
    BeginValue();
    // Indentation adds up from level to level.
    const size_t nAround = m_Levels.empty() ? 0 : m_Levels.back().nIndent;
    m_Levels.push_back({cEnd, bLines, nAround + nIndent, true});
    m_Text += cBegin;
}

void CJsonWriter::End()
{
    const SLevel level = m_Levels.back();
    m_Levels.pop_back();
    if (level.bLines)
    {
        StartLine(m_Levels.empty() ? 0 : m_Levels.back().nIndent);
    }
    m_Text += level.cEnd;
    m_Text += m_Levels.empty() ? "\n" : "";
}

void CJsonWriter::BeginValue()
{
    // Behind a key the comma and the line have been written with the key.
    if (m_Levels.empty() || m_bHasKey)
    {
        m_bHasKey = false;
        return;
    }
    SLevel& level = m_Levels.back();
    if (!level.bEmpty)
    {
        m_Text += level.bLines ? "," : ", ";
    }
    level.bEmpty = false;
    if (level.bLines)
    {
        StartLine(level.nIndent);
    }
}

void CJsonWriter::StartLine(size_t nIndent)
{
    m_Text += '\n';
    m_Text.append(std::min(nIndent, DEEPEST_INDENT), ' ');
}

void CJsonWriter::WriteKey(const char* pszKey)
{
    BeginValue();
    WriteQuoted(pszKey);
    m_Text += ": ";
    m_bHasKey = true;
}

void CJsonWriter::WriteText(const char* pszText)
{
    BeginValue();
    WriteQuoted(pszText);
}

void CJsonWriter::Write(const std::string& strValue)
{
    BeginValue();
    m_Text += strValue;
}

void CJsonWriter::WriteNumber(float fValue)
{
    if (std::isfinite(fValue))
    {
        Write(FormatNumber(static_cast<double>(fValue), FLOAT_DIGITS, std::chars_format::general));
        return;
    }
    // JSON has no word for these; readers turn a number beyond their range into an infinite one.
    const char* pszInfinite = fValue < 0.0F ? "-1e999" : "1e999";
    Write(std::isnan(fValue) ? "null" : pszInfinite);
}

void CJsonWriter::WriteFixed(double fValue, int iDecimals)
{
    Write(FormatNumber(fValue, iDecimals));
}

void CJsonWriter::WriteQuoted(const char* pszText)
{
    constexpr char HEX[] = "0123456789abcdef";
    m_Text += '"';
    for (; *pszText != '\0'; ++pszText)
    {
        const auto uByte = static_cast<unsigned char>(*pszText);
        if (uByte < 0x20 || uByte > 0x7E)
        {
            m_Text.append("\\u00").append({HEX[uByte / 16], HEX[uByte % 16]});
            continue;
        }
        m_Text += uByte == '"' || uByte == '\\' ? "\\" : "";
        m_Text += *pszText;
    }
    m_Text += '"';
}
