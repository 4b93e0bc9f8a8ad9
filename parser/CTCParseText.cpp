#include "parser/CTCParseText.h"

#include "host/FileSystem.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace
{

using SSpan = STCParseOutline::SSpan;

std::string GetTypeText(ETCParseType eType)
{
    constexpr const char* LETTERS[] = {"i", "f", "s", "v3", "v4"};
    return LETTERS[eType];
}

// Whether the arguments begin with these values.
bool HasValues(const CTCPARSE_PARAM* pParam, const CTCParseText::SCall& call)
{
    for (const CTCParseText::SValue& value : call.values)
    {
        // Compared as they are written: what would read back the same leaves its bytes alone.
        if (pParam == nullptr || pParam->type != value.eType ||
            MakeValueText(*pParam) != value.strText)
        {
            return false;
        }
        pParam = pParam->next;
    }
    return true;
}

// Whether the parameters begin with these types; pEnd is the first one behind them.
bool HasTypes(const CTCPARSE_PARAM* pParam,
              const CTCParseText::SCall& call,
              const CTCPARSE_PARAM*& pEnd)
{
    for (const CTCParseText::SValue& value : call.values)
    {
        if (pParam == nullptr || pParam->type != value.eType)
        {
            return false;
        }
        pParam = pParam->next;
    }
    pEnd = pParam;
    return true;
}

// fPart: of each value.
template <class TPart>
std::string Join(const std::vector<CTCParseText::SValue>& values, const TPart& fPart)
{
    std::string strJoined;
    for (const CTCParseText::SValue& value : values)
    {
        strJoined += (strJoined.empty() ? "( " : ", ") + fPart(value);
    }
    return strJoined + " )";
}

std::filesystem::path GetFolder(const std::string& strPath)
{
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::path(strPath).parent_path();
    // Links are followed, so that two spellings of one folder do not count as a move.
    std::filesystem::path real = std::filesystem::weakly_canonical(folder, error);
    return error ? folder : real;
}

} // namespace

std::string CTCParseText::SCall::GetText() const
{
    return pszName + Join(values, [](const SValue& value) { return value.strText; });
}

ETCParseStatus CTCParseText::Read(const char* pszPath)
{
    ETCParseStatus eStatus = tcparse_done;
    m_Tree.reset(TCParseFile(pszPath, m_Outline, eStatus));
    m_Path = fs::root_path(pszPath);
    return eStatus;
}

const CTCPARSE_KEYWORD* CTCParseText::FindLast(const char* pszName) const
{
    const CTCPARSE_KEYWORD* pLast = nullptr;
    for (const CTCPARSE_KEYWORD* pCall = m_Tree.get(); pCall != nullptr; pCall = pCall->next)
    {
        pLast = IsKeyword(pCall, pszName) ? pCall : pLast;
    }
    return pLast;
}

std::string CTCParseText::Update(const std::vector<SCall>& calls, const std::string& strPath) const
{
    std::vector<SEdit> edits;
    std::vector<const SCall*> added;
    MoveIncludes(strPath, edits);
    for (const SCall& call : calls)
    {
        if (!Change(call, edits))
        {
            added.push_back(&call);
        }
    }
    // Edits hold positions of the text as it was read, and none of them overlaps another.
    std::sort(edits.begin(),
              edits.end(),
              [](const SEdit& a, const SEdit& b) { return a.span.iStart > b.span.iStart; });
    std::string strText = m_Outline.strText;
    for (const SEdit& edit : edits) // from the end, so that positions before it stay good
    {
        strText.replace(edit.span.iStart, edit.span.iEnd - edit.span.iStart, edit.strText);
    }
    if (!added.empty())
    {
        // The edits all stand before iEnd, so what is behind it is still as long as it was.
        const size_t nBehind = m_Outline.strText.size() - m_Outline.iEnd;
        strText.insert(strText.size() - nBehind, MakeAddition(added));
    }
    return strText;
}

// False when no call of the file itself can say it.
bool CTCParseText::Change(const SCall& call, std::vector<SEdit>& edits) const
{
    const CTCPARSE_KEYWORD* pLast = FindLast(call.pszName);
    // Values that are there already stay as the person has written them.
    if (pLast == nullptr || HasValues(pLast->params, call))
    {
        return pLast != nullptr;
    }
    const CTCPARSE_PARAM* pEnd = nullptr;
    // The last call of a name decides. When it stands in an included file, this text cannot change
    // it, and a new call has to be added behind.
    const auto own = std::find_if(m_Outline.calls.begin(),
                                  m_Outline.calls.end(),
                                  [pLast](const auto& known) { return known.pCall == pLast; });
    if (own == m_Outline.calls.end() || !HasTypes(pLast->params, call, pEnd))
    {
        return false;
    }
    for (size_t i = 0; i < call.values.size(); ++i)
    {
        edits.push_back({own->arguments[i], call.values[i].strText});
    }
    return true;
}

// A name with a folder counts from the file that includes it.
void CTCParseText::MoveIncludes(const std::string& strPath, std::vector<SEdit>& edits) const
{
    const std::filesystem::path from = GetFolder(m_Path);
    const std::filesystem::path to = GetFolder(strPath);
    if (from == to)
    {
        return;
    }
    for (const STCParseOutline::SInclude& include : m_Outline.includes)
    {
        // Only names with a folder move: a bare one means the same file from everywhere.
        std::string strName = include.strName;
        std::replace(strName.begin(), strName.end(), '\\', '/');
        if (strName.find('/') != std::string::npos)
        {
            // Behind a folder even in the folder itself: a bare name counts from elsewhere.
            const std::string strMoved = "./" + std::filesystem::path(from.string() + "/" + strName)
                                                    .lexically_normal()
                                                    .lexically_relative(to)
                                                    .string();
            edits.push_back({include.span, QuoteText(strMoved)});
        }
    }
}

bool CTCParseText::IsDeclared(const SCall& call) const
{
    char szName[CTCPARSE_KEYWORD::NAME_BYTES] = {};
    std::strncpy(szName, call.pszName, sizeof(szName) - 1);
    const CTCPARSE_KEYWORD* pDeclaration = m_Outline.declarations.Find(szName);
    const CTCPARSE_PARAM* pEnd = nullptr;
    return pDeclaration != nullptr && HasTypes(pDeclaration->params, call, pEnd) && pEnd == nullptr;
}

std::string CTCParseText::MakeAddition(const std::vector<const SCall*>& calls) const
{
    // The addition ends its lines as the first line of the file does.
    const std::string strText = m_Outline.strText.substr(0, m_Outline.iEnd);
    const size_t iLine = strText.find('\n');
    const bool bReturn = iLine != std::string::npos && iLine > 0 && strText[iLine - 1] == '\r';
    const std::string strEnd = bReturn ? "\r\n" : "\n";
    // What the text leaves open is closed first: a comment, then the blocks around the end.
    std::string strAddition = m_Outline.bOpenComment ? "*/" : "";
    // Behind a comment that was closed, and behind an unfinished line, a new line begins.
    const bool bLine = strAddition.empty() && (strText.empty() || strText.back() == '\n');
    strAddition += (bLine ? "" : strEnd) + std::string(m_Outline.nOpenBlocks, '}');
    strAddition += m_Outline.nOpenBlocks > 0 ? strEnd : "";
    for (const SCall* pCall : calls)
    {
        const std::string strTypes =
            Join(pCall->values, [](const SValue& value) { return GetTypeText(value.eType); });
        // A call without a declaration of exactly these types would make the whole file unreadable.
        if (!IsDeclared(*pCall))
        {
            strAddition.append("!").append(pCall->pszName).append(strTypes).append(strEnd);
        }
        strAddition.append(pCall->GetText()).append(strEnd);
    }
    return strAddition;
}
