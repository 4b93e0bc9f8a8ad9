#include "framework/core/CRegText.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace
{

constexpr std::string_view BLANKS = " \t\r";
constexpr std::string_view DWORD_MARK = "dword:";
constexpr size_t DWORD_DIGITS = 8; // never fewer: a cut line must not read as a small number

std::string Fold(std::string_view text)
{
    std::string strFolded(text);
    for (char& c : strFolded)
    {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return strFolded;
}

std::string_view Trim(std::string_view text)
{
    const size_t iFirst = std::min(text.find_first_not_of(BLANKS), text.size());
    // For nothing but blanks the length wraps around, which does no harm at the end of the text.
    return text.substr(iFirst, text.find_last_not_of(BLANKS) + 1 - iFirst);
}

// Takes a quoted text off the front of rest. False when there is none.
bool TakeQuoted(std::string_view& rest, std::string& strText)
{
    if (rest.empty() || rest.front() != '"')
    {
        return false;
    }
    for (size_t i = 1; i < rest.size(); ++i)
    {
        if (rest[i] == '"')
        {
            rest.remove_prefix(i + 1);
            return true;
        }
        if (rest[i] != '\\')
        {
            strText += rest[i];
        }
        else if (++i < rest.size())
        {
            strText += rest[i] == 'n' ? '\n' : rest[i] == 'r' ? '\r' : rest[i];
        }
    }
    return false;
}

std::string Quote(const std::string& strText)
{
    // A name may hold what would end its line or the quoted text.
    std::string strQuoted = "\"";
    for (const char c : strText)
    {
        if (c == '\n' || c == '\r')
        {
            strQuoted += c == '\n' ? "\\n" : "\\r";
            continue;
        }
        strQuoted += c == '"' || c == '\\' ? "\\" : "";
        strQuoted += c;
    }
    return strQuoted + "\"";
}

std::string FormatDWord(uint32_t uValue)
{
    char szText[24];
    std::snprintf(szText, sizeof(szText), "dword:%08x", uValue);
    return szText;
}

} // namespace

CRegText::CRegText(std::string strText)
    : m_Text(std::move(strText))
{
    Parse();
}

std::string CRegText::NormalizePath(std::string_view strPath)
{
    const auto isControl = [](char c)
    {
        return static_cast<unsigned char>(c) < ' ';
    };
    if (std::any_of(strPath.begin(), strPath.end(), isControl))
    {
        return {};
    }
    std::string strNormal;
    for (const char c : strPath)
    {
        if (c != '\\' || (!strNormal.empty() && strNormal.back() != '\\'))
        {
            strNormal += c;
        }
    }
    if (strNormal.ends_with('\\'))
    {
        strNormal.pop_back();
    }
    return strNormal;
}

void CRegText::Parse()
{
    m_Sections.clear();
    m_Entries.clear();
    m_FirstDamage = 0;
    size_t nLine = 0;
    for (size_t iStart = 0; iStart < m_Text.size();)
    {
        const size_t iEnd = std::min(m_Text.find('\n', iStart), m_Text.size());
        const size_t iNext = std::min(iEnd + 1, m_Text.size());
        ++nLine;
        if (!ParseLine(iStart, iEnd, iNext) && m_FirstDamage == 0)
        {
            m_FirstDamage = nLine;
        }
        iStart = iNext;
    }
}

bool CRegText::ParseLine(size_t iStart, size_t iEnd, size_t iNext)
{
    const std::string_view line = Trim(std::string_view(m_Text).substr(iStart, iEnd - iStart));
    if (line.empty() || line.front() == ';' || line.front() == '#')
    {
        return true;
    }
    if (line.front() == '[')
    {
        // What follows a broken one belongs to no key, and never to the one before.
        const bool bClosed = line.size() > 1 && line.back() == ']';
        const std::string strPath =
            bClosed ? NormalizePath(line.substr(1, line.size() - 2)) : std::string();
        m_Sections.push_back({Fold(strPath), iNext});
        return !strPath.empty();
    }
    SEntry entry;
    if (m_Sections.empty() || !ParseEntry(line, entry))
    {
        return false;
    }
    entry.iSection = m_Sections.size() - 1;
    m_Sections.back().iNextLine = iNext;
    m_Entries.push_back(std::move(entry));
    return true;
}

bool CRegText::ParseEntry(std::string_view line, SEntry& entry) const
{
    std::string_view rest = line;
    std::string strName;
    if (!TakeQuoted(rest, strName))
    {
        return false;
    }
    rest = Trim(rest);
    if (rest.empty() || rest.front() != '=')
    {
        return false;
    }
    rest = Trim(rest.substr(1));
    entry.strName = Fold(strName);
    entry.iValue = static_cast<size_t>(rest.data() - m_Text.data());
    entry.iEnd = entry.iValue + rest.size();
    const std::string strMark = Fold(rest.substr(0, std::min(rest.size(), DWORD_MARK.size())));
    if (strMark == DWORD_MARK)
    {
        const char* pEnd = rest.data() + rest.size();
        const auto [pRead, eFault] =
            std::from_chars(rest.data() + DWORD_MARK.size(), pEnd, entry.uValue, 16);
        entry.bDWord = true;
        return eFault == std::errc() && pRead == pEnd &&
               rest.size() == DWORD_MARK.size() + DWORD_DIGITS;
    }
    // Values of other types are only told from damage, by their shape: "hex:", "hex(7):" and the
    // like, or a quoted text.
    std::string strIgnored;
    return (strMark.starts_with("hex") && rest.find(':') != std::string_view::npos) ||
           (TakeQuoted(rest, strIgnored) && rest.empty());
}

bool CRegText::HasKey(const std::string& strKey) const
{
    const std::string strFolded = Fold(strKey);
    return std::any_of(m_Sections.begin(),
                       m_Sections.end(),
                       [&strFolded](const SSection& section) {
                           return section.strPath == strFolded ||
                                  section.strPath.starts_with(strFolded + '\\');
                       });
}

const CRegText::SEntry* CRegText::FindEntry(const std::string& strKey,
                                            const std::string& strName) const
{
    const std::string strFoldedKey = Fold(strKey);
    const std::string strFoldedName = Fold(strName);
    const auto found = std::find_if(m_Entries.rbegin(),
                                    m_Entries.rend(),
                                    [&](const SEntry& entry) {
                                        return entry.strName == strFoldedName &&
                                               m_Sections[entry.iSection].strPath == strFoldedKey;
                                    });
    return found != m_Entries.rend() ? &*found : nullptr;
}

const CRegText::SSection* CRegText::FindSection(const std::string& strKey) const
{
    const std::string strFolded = Fold(strKey);
    const auto found =
        std::find_if(m_Sections.rbegin(),
                     m_Sections.rend(),
                     [&](const SSection& section) { return section.strPath == strFolded; });
    return found != m_Sections.rend() ? &*found : nullptr;
}

bool CRegText::AddKey(const std::string& strKey)
{
    if (HasKey(strKey))
    {
        return false;
    }
    AppendSection(strKey);
    return true;
}

void CRegText::AppendSection(const std::string& strKey)
{
    if (m_Text.empty())
    {
        m_Text = "; what the programs remember for this user\n";
    }
    // The line feed in front ends a last line that lacks one; elsewhere it leaves a blank line.
    m_Text += "\n[" + strKey + "]\n";
    Parse();
}

bool CRegText::SetDWord(const std::string& strKey, const std::string& strName, uint32_t uValue)
{
    const std::string strValue = FormatDWord(uValue);
    if (const SEntry* pEntry = FindEntry(strKey, strName))
    {
        if (pEntry->bDWord && pEntry->uValue == uValue)
        {
            return false;
        }
        m_Text.replace(pEntry->iValue, pEntry->iEnd - pEntry->iValue, strValue);
        Parse();
        return true;
    }
    // A new value goes below the last readable line of its section. Positions behind every change
    // move, so the text, which is small, is parsed anew.
    if (FindSection(strKey) == nullptr)
    {
        AppendSection(strKey);
    }
    const size_t iPlace = FindSection(strKey)->iNextLine;
    // The last line of the text may lack its line feed.
    const bool bOpenLine = iPlace > 0 && m_Text[iPlace - 1] != '\n';
    m_Text.insert(iPlace, (bOpenLine ? "\n" : "") + Quote(strName) + "=" + strValue + "\n");
    Parse();
    return true;
}
