#include "parser/CTCParseDirectives.h"

#include <cstring>
#include <utility>

CTCParseDirectives::CTCParseDirectives(CTCParseReader& reader,
                                       CTCParseConstants& constants,
                                       CTCParseValues& values,
                                       ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Constants(constants)
    , m_Values(values)
    , m_Errors(errors)
    , m_Includes(reader, values, errors)
{
}

std::unique_ptr<CTCPARSE_STRING> CTCParseDirectives::ReadDeclaration(CTCParseNameList& declarations,
                                                                     int32_t* pError)
{
    auto pNode = std::make_unique<CTCPARSE_KEYWORD>();
    if (m_Reader.ReadWord(pNode->name) != 0)
    {
        m_Errors.Fail(pError, "error in typedef");
        return nullptr;
    }
    CTCParseReader::MakeLower(pNode->name);
    // The bracket is read before the name is looked at; each directive has a message of its own for
    // a missing one.
    const bool bOpened = m_Reader.NextChar() == '(';
    std::unique_ptr<CTCPARSE_STRING> pFileName;
    if (strcmp(pNode->name, "include") == 0)
    {
        pFileName = m_Includes.ReadInclude(bOpened, pError);
    }
    else if (strcmp(pNode->name, "include_if_int") == 0)
    {
        pFileName = m_Includes.ReadIncludeIfInt(bOpened, pError);
    }
    else if (strcmp(pNode->name, "include_if_float") == 0)
    {
        pFileName = m_Includes.ReadIncludeIfFloat(bOpened, pError);
    }
    else if (!bOpened)
    {
        m_Errors.Fail(pError, "left bracked expected in typedef");
    }
    else if (ReadTypes(*pNode, pError))
    {
        declarations.Add(pNode.release());
    }
    // An empty name includes nothing, without a message.
    const bool bFile = pFileName != nullptr && pFileName->value[0] != '\0';
    return bFile ? std::move(pFileName) : nullptr;
}

// Behind the bracket. Whatever follows the letter of a type is skipped, so that types may be
// spelled out: "int", "float", "string".
bool CTCParseDirectives::ReadTypes(CTCPARSE_KEYWORD& declaration, int32_t* pError)
{
    CTCPARSE_PARAM** ppLink = &declaration.params;
    bool bTypeExpected = true;
    for (int nChar = m_Reader.NextChar(); nChar >= 0; nChar = m_Reader.NextChar())
    {
        const bool bFirst = declaration.params == nullptr;
        // The bracket may close an empty list or follow a type, but not a comma.
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
    m_Errors.Fail(pError, "unexpected character in typedef");
    return false;
}

// A letter and, for vectors, the digit that must follow at once. False when nChar names no type.
bool CTCParseDirectives::ReadType(int nChar, ETCParseType* pType)
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
        const int nDigit = m_Reader.GetChar();
        *pType = nDigit == '3' ? tcparse_vec3 : tcparse_vec4;
        return nDigit == '3' || nDigit == '4';
    }
    default:
        return false;
    }
}

// Reads "name( type, value )".
void CTCParseDirectives::ReadConstDef(int32_t* pError)
{
    auto pNode = std::make_unique<CTCPARSE_KEYWORD>();
    if (m_Reader.ReadWord(pNode->name) != 0)
    {
        m_Errors.Fail(pError, "error in const def");
        return;
    }
    CTCParseReader::MakeLower(pNode->name);
    if (m_Reader.NextChar() != '(')
    {
        m_Errors.Fail(pError, "left bracked expected in const def");
        return;
    }
    ETCParseType eType = tcparse_int;
    if (!ReadType(m_Reader.NextChar(), &eType) || m_Reader.NextChar() != ',')
    {
        m_Errors.Fail(pError, "unexpected character in typedef");
        return;
    }
    m_Reader.SkipSpace();
    pNode->params = m_Values.ReadValue(eType, pError);
    if (*pError != 0)
    {
        return;
    }
    if (pNode->params == nullptr)
    {
        // A vector named a constant that nobody defined.
        m_Errors.Fail(pError, "error in const def");
        return;
    }
    if (m_Reader.NextChar() != ')')
    {
        m_Errors.Fail(pError, "unexpected character in typedef");
        return;
    }
    m_Constants.Add(pNode.release());
}
