#include "parser/CTCParse.h"

#include "host/FileSystem.h"
#include "host/Log.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <memory>

static constexpr size_t MESSAGE_BYTES = 8192;
static constexpr size_t LONGEST_LINE_BYTES = INT_MAX / 2; // a precision is an int

static double g_fTotalSeconds = 0.0;

CTCParse::CTCParse(const char* pszPath, bool bDebug)
    : m_bDebug(bDebug)
    , m_strFileName(pszPath)
    , m_Reader(*this)
    , m_bLoaded(m_Reader.Load(pszPath))
    , m_Constants(m_Reader, *this)
    , m_Variables(m_Reader, *this)
    , m_Values(m_Reader, m_Constants, m_Variables, *this)
    , m_Directives(m_Reader, m_Constants, m_Values, *this)
    , m_Calls(m_Reader, m_Values, *this)
{
    m_strDirectory = fs::root_path(pszPath);
    const size_t nSeparator = m_strDirectory.find_last_of("/\\");
    m_strDirectory.resize(nSeparator != std::string::npos ? nSeparator + 1 : 0);
}

CTCParse::~CTCParse() = default;

void CTCParse::Error(const char* pszFormat, ...)
{
    char szMessage[MESSAGE_BYTES];
    va_list arguments;
    va_start(arguments, pszFormat);
    vsnprintf(szMessage, sizeof(szMessage), pszFormat, arguments);
    va_end(arguments);

    if (m_pErrorListener != nullptr)
    {
        // Made up already, and no format any more: names in it may have per cent signs.
        m_pErrorListener->Error("%s", szMessage);
    }
    CrashLog("[CTCParse] ");
    CrashLog("%s", szMessage);
    CrashLog(": in file '%s' in line %d\n", m_strFileName.c_str(), m_Reader.GetLine());
    const std::string_view line = m_Reader.GetLineText();
    CrashLog("%.*s", static_cast<int>(std::min(line.size(), LONGEST_LINE_BYTES)), line.data());
    CrashLog("\n");
}

CTCPARSE_KEYWORD* CTCParse::Parse(int32_t* pError)
{
    const auto start = std::chrono::steady_clock::now();
    SVocabulary vocabulary;
    *pError = 0;
    std::unique_ptr<CTCPARSE_KEYWORD> pNodes(ReadBlock(vocabulary, pError));
    if (m_pOutline != nullptr)
    {
        m_pOutline->strText = m_Reader.GetText();
        m_pOutline->declarations = std::move(vocabulary.declarations);
    }
    const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
    g_fTotalSeconds += spent.count();
    return pNodes.release();
}

double CTCParse::GetTotalSeconds()
{
    return g_fTotalSeconds;
}

CTCPARSE_KEYWORD* CTCParse::ReadBlock(SVocabulary& vocabulary, int32_t* pError)
{
    CTCParseTree tree;
    size_t iStart = 0; // of the statement
    // One loop reads nested blocks too, which may be deeper than the stack would allow: the tree
    // keeps where the outer ones go on.
    while (*pError == 0 && !m_Reader.SkipSpace())
    {
        iStart = m_Reader.GetPosition();
        const int nChar = m_Reader.GetChar();
        switch (nChar)
        {
        case '$':
            m_Directives.ReadConstDef(pError);
            break;
        case '!':
            if (const auto pFileName =
                    m_Directives.ReadDeclaration(vocabulary.declarations, pError))
            {
                tree.Append(Include(*pFileName, vocabulary, pError));
            }
            break;
        case '}':
            if (!tree.CloseBlock())
            {
                Fail(pError, "unexpected closing curly bracket");
            }
            break;
        default:
            m_Reader.UngetChar(nChar);
            ReadCall(vocabulary.declarations, tree, pError);
            break;
        }
    }
    NoteEnd(iStart, tree.GetDepth());
    return tree.Release();
}

void CTCParse::ReadCall(const CTCParseNameList& declarations, CTCParseTree& tree, int32_t* pError)
{
    m_Arguments.clear();
    auto* pArguments = m_pOutline != nullptr ? &m_Arguments : nullptr;
    CTCPARSE_KEYWORD* pCall = m_Calls.ReadCall(declarations, pArguments, pError);
    if (pCall == nullptr)
    {
        return;
    }
    tree.Append(pCall);
    // A call inside a block belongs to the call around it and is none that can be rewritten.
    if (m_pOutline != nullptr && tree.GetDepth() == 0)
    {
        m_pOutline->calls.push_back({pCall, m_Arguments});
    }
    ReadAfterCall(*pCall, tree, pError);
}

void CTCParse::ReadAfterCall(CTCPARSE_KEYWORD& call, CTCParseTree& tree, int32_t* pError)
{
    const int nChar = m_Reader.NextChar();
    switch (nChar)
    {
    case '{':
        if (tree.GetDepth() == BLOCK_DEPTH_LIMIT)
        {
            Fail(pError, "block depth limit exceeded");
            break;
        }
        tree.OpenBlock(call);
        break;
    case ';':
        // No failure: files written by hand have it.
        Error("its not c!");
        break;
    default:
        m_Reader.UngetChar(nChar);
        break;
    }
}

CTCPARSE_KEYWORD*
CTCParse::Include(const CTCPARSE_STRING& fileName, SVocabulary& vocabulary, int32_t* pError)
{
    if (m_bDebug)
    {
        CrashLog("[parser debug] including file: %s\n", fileName.value);
    }
    if (m_nIncludeDepth == INCLUDE_DEPTH_LIMIT)
    {
        Fail(pError, "include depth limit exceeded");
        return nullptr;
    }
    // The depth alone is no limit: a file that includes itself twice doubles at each level.
    if (++vocabulary.nIncludes > INCLUDE_COUNT_LIMIT)
    {
        Fail(pError, "include count limit exceeded");
        return nullptr;
    }
    // A name with a folder is meant relative to this file, a bare name is not.
    std::string strPath = fileName.value;
    if (strPath.find_first_of("/\\") != std::string::npos)
    {
        strPath.insert(0, m_strDirectory);
    }
    CTCParse included(strPath.c_str(), m_bDebug);
    included.m_nIncludeDepth = m_nIncludeDepth + 1;
    included.m_pErrorListener = this;
    included.SetCallbacks(m_Variables.GetCallbacks());
    // This file reads nothing meanwhile, so its constants can be lent out and come back as a copy.
    included.m_Constants.TakeFrom(m_Constants);
    CTCPARSE_KEYWORD* pNodes = included.ReadBlock(vocabulary, pError);
    included.m_Constants.CopyTo(m_Constants);
    return pNodes;
}

void CTCParse::NoteEnd(size_t iStart, size_t nOpenBlocks)
{
    if (m_pOutline == nullptr)
    {
        return;
    }
    const CTCParseIncludes& includes = m_Directives.GetIncludes();
    m_pOutline->includes = includes.GetNames();
    // What stands behind the start of a name without its closing quote is part of that name.
    const bool bCutOff = includes.IsCutOff();
    m_pOutline->iEnd = bCutOff ? iStart : m_Reader.GetPosition();
    m_pOutline->bOpenComment = m_Reader.EndsInComment() && !bCutOff;
    m_pOutline->nOpenBlocks = nOpenBlocks;
}
