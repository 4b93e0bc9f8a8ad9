#include "editor/core/CTextCatalogue.h"

#include "host/FileBytes.h"
#include "host/Log.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <set>
#include <vector>

namespace
{

constexpr uint64_t MOST_BYTES = uint64_t{16} << 20U; // a hundred times what all texts take
constexpr std::string_view BOM = "\xEF\xBB\xBF";

struct SLine
{
    size_t nNumber = 0; // from 1
    std::string_view strRaw;
    std::string strText; // without its escapes
};

bool IsUtf8(std::string_view strText)
{
    for (size_t i = 0; i < strText.size();)
    {
        const auto uLead = static_cast<unsigned char>(strText[i]);
        const size_t nMore = uLead < 0x80                    ? 0
                             : uLead >= 0xC2 && uLead < 0xE0 ? 1
                             : uLead >= 0xE0 && uLead < 0xF0 ? 2
                             : uLead >= 0xF0 && uLead < 0xF5 ? 3
                                                             : strText.size();
        if (nMore >= strText.size() - i)
        {
            return false;
        }
        for (size_t iNext = i + 1; iNext <= i + nMore; ++iNext)
        {
            if ((static_cast<unsigned char>(strText[iNext]) & 0xC0U) != 0x80U)
            {
                return false;
            }
        }
        i += nMore + 1;
    }
    return true;
}

// Takes the escapes away: "\n", "\s" (a blank at an end, which editors of texts drop), "\#" and
// "\\".
bool ReadEscapes(std::string_view strRaw, std::string& strText)
{
    for (size_t i = 0; i < strRaw.size(); ++i)
    {
        if (strRaw[i] != '\\')
        {
            strText += strRaw[i];
            continue;
        }
        const char c = ++i < strRaw.size() ? strRaw[i] : '\0';
        if (c != 'n' && c != 's' && c != '#' && c != '\\')
        {
            return false;
        }
        strText += c == 'n' ? '\n' : c == 's' ? ' ' : c;
    }
    return true;
}

// What both texts have to have: the places that a program fills in, "%1" and the like, and the
// patterns of files, "*.level". Their order is the language's.
std::set<std::string_view> GetPlaces(std::string_view strText)
{
    std::set<std::string_view> places;
    for (size_t i = 0; i + 1 < strText.size(); ++i)
    {
        const bool bPlace =
            strText[i] == '%' && std::isdigit(static_cast<unsigned char>(strText[i + 1])) != 0;
        if (bPlace || strText.substr(i, 2) == "*.")
        {
            const size_t nEnd = std::min(strText.find_first_of(" )", i), strText.size());
            places.insert(strText.substr(i, bPlace ? 2 : nEnd - i));
        }
    }
    return places;
}

// The lines that follow one another; nullptr or why they are no pair, with the line at fault.
const char* FindFault(std::vector<SLine>& lines, size_t& nNumber)
{
    for (SLine& line : lines)
    {
        nNumber = line.nNumber;
        if (!IsUtf8(line.strRaw))
        {
            return "is no UTF-8";
        }
        if (!ReadEscapes(line.strRaw, line.strText))
        {
            return R"(a \ stands before n, s, # or \ only)";
        }
    }
    if (lines.size() > 2)
    {
        nNumber = lines[2].nNumber;
        return "a third line, a pair ends with an empty one";
    }
    if (lines.size() == 2 && GetPlaces(lines[0].strText) != GetPlaces(lines[1].strText))
    {
        return "the lines differ in what is filled in, such as %1, or in *.NAME";
    }
    return nullptr;
}

bool IsBlank(std::string_view strLine)
{
    return strLine.find_first_not_of(" \t") == std::string_view::npos;
}

} // namespace

bool CTextCatalogue::Read(const std::string& strFile)
{
    SFileBytes bytes;
    std::string strError;
    if (ReadFileBytes(strFile.c_str(), MOST_BYTES, bytes, strError) != EFileRead::Done)
    {
        CrashLog("[CTextCatalogue::Read] %s\n", strError.c_str());
        return false;
    }
    std::string_view strRest(reinterpret_cast<const char*>(bytes.pBytes.get()), bytes.nCount);
    strRest.remove_prefix(strRest.starts_with(BOM) ? BOM.size() : 0);
    std::vector<SLine> pair;
    const auto takePair = [&]
    {
        size_t nNumber = 0;
        const char* pszFault = FindFault(pair, nNumber);
        // A lone line waits for its text: the list of all texts is a file, too.
        if (pszFault == nullptr && pair.size() == 2 &&
            !m_Texts.try_emplace(pair[0].strText, pair[1].strText).second)
        {
            nNumber = pair[0].nNumber;
            pszFault = "stands there twice, the first one counts";
        }
        if (pszFault != nullptr)
        {
            CrashLog(
                "[CTextCatalogue::Read] %s, line %zu: %s\n", strFile.c_str(), nNumber, pszFault);
        }
        pair.clear();
    };
    for (size_t nLine = 1; !strRest.empty(); ++nLine)
    {
        const size_t nEnd = std::min(strRest.find('\n'), strRest.size());
        std::string_view strLine = strRest.substr(0, nEnd);
        strRest.remove_prefix(std::min(nEnd + 1, strRest.size()));
        strLine.remove_suffix(strLine.ends_with('\r') ? 1 : 0);
        if (IsBlank(strLine))
        {
            takePair();
        }
        else if (strLine.front() != '#')
        {
            pair.push_back({nLine, strLine, {}});
        }
    }
    takePair();
    return true;
}

const char* CTextCatalogue::Find(std::string_view strEnglish) const
{
    const auto found = m_Texts.find(strEnglish);
    return found != m_Texts.end() ? found->second.c_str() : nullptr;
}

std::string GetCatalogueFile(const std::string& strLanguage)
{
    const bool bName =
        std::all_of(strLanguage.begin(),
                    strLanguage.end(),
                    [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '_'; });
    return bName && !strLanguage.empty() ? "data/texts/" + strLanguage + ".texts" : std::string();
}
