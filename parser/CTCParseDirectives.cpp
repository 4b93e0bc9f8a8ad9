#include "host/Log.h"
#include "parser/CTCParse.h"

#include <cstring>
#include <memory>

// A letter and, for vectors, the digit that must follow at once. False when nChar names no type.
bool CTCParse::ReadType(int nChar, ETCParseType* pType)
{
    switch (nChar)
    {
    case 'i':
    case 'I':
    case 'n':
    case 'N':
        *pType = tcparse_int;
        return true;
    case 'f':
    case 'F':
        *pType = tcparse_float;
        return true;
    case 's':
    case 'S':
        *pType = tcparse_string;
        return true;
    case 'v':
    case 'V':
    {
        const int nDigit = GetChar();
        *pType = nDigit == '3' ? tcparse_vec3 : tcparse_vec4;
        return nDigit == '3' || nDigit == '4';
    }
    default:
        return false;
    }
}

void CTCParse::ReadDeclaration(SVocabulary& vocabulary, int32_t* pError, CTCPARSE_KEYWORD** ppNodes)
{
    auto pNode = std::make_unique<CTCPARSE_KEYWORD>();
    if (ReadWord(pNode->name) != 0)
    {
        Fail(pError, "error in typedef");
        return;
    }
    MakeLower(pNode->name);
    const bool bOpened = NextChar() == '(';
    std::unique_ptr<CTCPARSE_STRING> pFileName;
    if (strcmp(pNode->name, "include") == 0)
    {
        pFileName.reset(ReadInclude(bOpened, pError));
    }
    else if (strcmp(pNode->name, "include_if_int") == 0)
    {
        pFileName.reset(ReadIncludeIf(bOpened, pNode->name, &CTCParse::ReadInt, pError));
    }
    else if (strcmp(pNode->name, "include_if_float") == 0)
    {
        pFileName.reset(ReadIncludeIf(bOpened, pNode->name, &CTCParse::ReadFloat, pError));
    }
    else if (!bOpened)
    {
        Fail(pError, "left bracked expected in typedef");
    }
    else if (ReadTypes(*pNode, pError))
    {
        vocabulary.declarations.Add(pNode.release());
    }
    if (pFileName != nullptr && pFileName->value[0] != '\0')
    {
        *ppNodes = Include(*pFileName, vocabulary, pError);
    }
}

// Behind the bracket. Whatever follows the letter of a type is skipped, so that types may be
// spelled out: "int", "float", "string".
bool CTCParse::ReadTypes(CTCPARSE_KEYWORD& declaration, int32_t* pError)
{
    CTCPARSE_PARAM** ppLink = &declaration.params;
    bool bTypeExpected = true;
    for (int nChar = NextChar(); nChar >= 0; nChar = NextChar())
    {
        const bool bFirst = declaration.params == nullptr;
        if (nChar == ')' && (bFirst || !bTypeExpected))
        {
            return true;
        }
        if (!bTypeExpected)
        {
            bTypeExpected = nChar == ',';
            continue;
        }
        ETCParseType eType = tcparse_int;
        if (!ReadType(nChar, &eType))
        {
            break;
        }
        *ppLink = new CTCPARSE_PARAM(eType);
        ppLink = &(*ppLink)->next;
        bTypeExpected = false;
    }
    Fail(pError, "unexpected character in typedef");
    return false;
}

CTCPARSE_STRING* CTCParse::ReadInclude(bool bOpened, int32_t* pError)
{
    if (!bOpened)
    {
        Fail(pError, "left bracked expected in include");
        return nullptr;
    }
    // A name that cannot be read has had its message; the file goes on behind it, on purpose.
    int32_t nNameError = 0;
    std::unique_ptr<CTCPARSE_STRING> pFileName(ReadIncludeName(&nNameError));
    if (pFileName == nullptr)
    {
        return nullptr;
    }
    if (NextChar() != ')')
    {
        Fail(pError, "right bracked expected in include");
        return nullptr;
    }
    return pFileName.release();
}

CTCPARSE_STRING* CTCParse::ReadIncludeName(int32_t* pError)
{
    SkipSpace();
    const size_t iStart = GetPosition();
    CTCPARSE_STRING* pName = ReadString(pError);
    m_bCutInclude = pName == nullptr && m_pCursor == m_pEnd;
    if (m_pOutline != nullptr && pName != nullptr)
    {
        m_pOutline->includes.push_back({{iStart, GetPosition()}, pName->value});
    }
    return pName;
}

template <class TValue> static bool Compare(TValue a, int nOperator, TValue b)
{
    switch (nOperator)
    {
    case 1:
        return a == b;
    case 2:
        return a != b;
    case 3:
        return a > b;
    case 4:
        return a < b;
    case 5:
        return a >= b;
    case 6:
        return a <= b;
    default:
        return false;
    }
}

// Null also when the condition does not hold. TValue: CTCPARSE_INT or CTCPARSE_FLOAT.
template <class TValue>
CTCPARSE_STRING* CTCParse::ReadIncludeIf(bool bOpened,
                                         const char* pszDirective,
                                         TValue* (CTCParse::*pReadValue)(int32_t*),
                                         int32_t* pError)
{
    const auto fail = [&](const char* pszWhat) -> CTCPARSE_STRING*
    {
        Error("%s expected in '%s'", pszWhat, pszDirective);
        *pError = 1;
        return nullptr;
    };
    if (!bOpened)
    {
        return fail("left bracked");
    }
    SkipSpace();
    const std::unique_ptr<TValue> pLeft((this->*pReadValue)(pError));
    if (pLeft == nullptr)
    {
        return fail("int"); // for floats too
    }
    SkipSpace();
    const int nOperator = ReadOperator();
    if (nOperator == 0)
    {
        return fail("operator");
    }
    SkipSpace();
    const std::unique_ptr<TValue> pRight((this->*pReadValue)(pError));
    if (pRight == nullptr)
    {
        return fail("int");
    }
    if (NextChar() != ',')
    {
        return fail("comma");
    }
    std::unique_ptr<CTCPARSE_STRING> pFileName(ReadIncludeName(pError));
    if (pFileName == nullptr)
    {
        return fail("string");
    }
    if (NextChar() != ')')
    {
        return fail("right bracked");
    }
    return Compare(pLeft->value, nOperator, pRight->value) ? pFileName.release() : nullptr;
}

// The code of Compare; 0 when the two characters are no operator.
int CTCParse::ReadOperator()
{
    const int nFirst = GetChar();
    const int nSecond = GetChar();
    if (nFirst < 0 || nSecond < 0)
    {
        return 0;
    }
    if (nSecond == '=')
    {
        switch (nFirst)
        {
        case '=':
            return 1;
        case '!':
            return 2;
        case '>':
            return 5;
        case '<':
            return 6;
        default:
            return 0;
        }
    }
    if (nFirst == '>' || nFirst == '<')
    {
        UngetChar(nSecond);
        return nFirst == '>' ? 3 : 4;
    }
    return 0;
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
    included.m_Callbacks = m_Callbacks;
    included.m_Constants = std::move(m_Constants);
    CTCPARSE_KEYWORD* pNodes = included.ReadBlock(vocabulary, pError);
    // Its own constants and ours.
    m_Constants = included.m_Constants;
    return pNodes;
}

// Reads "name( type, value )".
void CTCParse::ReadConstDef(int32_t* pError)
{
    auto pNode = std::make_unique<CTCPARSE_KEYWORD>();
    if (ReadWord(pNode->name) != 0)
    {
        Fail(pError, "error in const def");
        return;
    }
    MakeLower(pNode->name);
    if (NextChar() != '(')
    {
        Fail(pError, "left bracked expected in const def");
        return;
    }
    ETCParseType eType = tcparse_int;
    if (!ReadType(NextChar(), &eType) || NextChar() != ',')
    {
        Fail(pError, "unexpected character in typedef");
        return;
    }
    SkipSpace();
    pNode->params = ReadValue(eType, pError);
    if (*pError != 0)
    {
        return;
    }
    if (pNode->params == nullptr)
    {
        // A vector named a constant that nobody defined.
        Fail(pError, "error in const def");
        return;
    }
    if (NextChar() != ')')
    {
        Fail(pError, "unexpected character in typedef");
        return;
    }
    m_Constants.Add(pNode.release());
}
