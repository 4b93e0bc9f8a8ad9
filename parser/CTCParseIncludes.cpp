#include "parser/CTCParseIncludes.h"

#include <utility>

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

CTCParseIncludes::CTCParseIncludes(CTCParseReader& reader,
                                   CTCParseValues& values,
                                   ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Values(values)
    , m_Errors(errors)
{
}

std::unique_ptr<CTCPARSE_STRING> CTCParseIncludes::ReadInclude(bool bOpened, int32_t* pError)
{
    if (!bOpened)
    {
        m_Errors.Fail(pError, "left bracked expected in include");
        return nullptr;
    }
    // A name that cannot be read has had its message; the file goes on behind it, on purpose.
    int32_t nNameError = 0;
    std::unique_ptr<CTCPARSE_STRING> pFileName = ReadName(&nNameError);
    if (pFileName == nullptr)
    {
        return nullptr;
    }
    if (m_Reader.NextChar() != ')')
    {
        m_Errors.Fail(pError, "right bracked expected in include");
        return nullptr;
    }
    return pFileName;
}

std::unique_ptr<CTCPARSE_STRING> CTCParseIncludes::ReadName(int32_t* pError)
{
    m_Reader.SkipSpace();
    const size_t iStart = m_Reader.GetPosition();
    std::unique_ptr<CTCPARSE_STRING> pName(m_Values.ReadString(pError));
    // A name without its closing quote takes the rest of the text: nothing can be added behind it.
    m_bCutOff = pName == nullptr && m_Reader.GetCursor() == m_Reader.GetEnd();
    if (pName != nullptr)
    {
        // Kept before the condition is known: a file that is moved needs all its names moved.
        m_Names.push_back({{iStart, m_Reader.GetPosition()}, pName->value});
    }
    return pName;
}

std::unique_ptr<CTCPARSE_STRING> CTCParseIncludes::ReadIncludeIfInt(bool bOpened, int32_t* pError)
{
    return ReadIncludeIf(bOpened, "include_if_int", &CTCParseValues::ReadInt, pError);
}

std::unique_ptr<CTCPARSE_STRING> CTCParseIncludes::ReadIncludeIfFloat(bool bOpened, int32_t* pError)
{
    return ReadIncludeIf(bOpened, "include_if_float", &CTCParseValues::ReadFloat, pError);
}

// TValue: CTCPARSE_INT or CTCPARSE_FLOAT.
template <class TValue>
std::unique_ptr<CTCPARSE_STRING>
CTCParseIncludes::ReadIncludeIf(bool bOpened,
                                const char* pszDirective,
                                TValue* (CTCParseValues::*pReadValue)(int32_t*),
                                int32_t* pError)
{
    const auto fail = [&](const char* pszWhat) -> std::unique_ptr<CTCPARSE_STRING>
    {
        m_Errors.Error("%s expected in '%s'", pszWhat, pszDirective);
        *pError = 1;
        return nullptr;
    };
    if (!bOpened)
    {
        return fail("left bracked");
    }
    m_Reader.SkipSpace();
    const std::unique_ptr<TValue> pLeft((m_Values.*pReadValue)(pError));
    if (pLeft == nullptr)
    {
        return fail("int"); // for floats too
    }
    m_Reader.SkipSpace();
    const int nOperator = ReadOperator();
    if (nOperator == 0)
    {
        return fail("operator");
    }
    m_Reader.SkipSpace();
    const std::unique_ptr<TValue> pRight((m_Values.*pReadValue)(pError));
    if (pRight == nullptr)
    {
        return fail("int");
    }
    if (m_Reader.NextChar() != ',')
    {
        return fail("comma");
    }
    std::unique_ptr<CTCPARSE_STRING> pFileName = ReadName(pError);
    if (pFileName == nullptr)
    {
        return fail("string");
    }
    if (m_Reader.NextChar() != ')')
    {
        return fail("right bracked");
    }
    // Compared last: the whole directive has to make sense whether its condition holds or not.
    return Compare(pLeft->value, nOperator, pRight->value) ? std::move(pFileName) : nullptr;
}

// The code of Compare; 0 when the two characters are no operator.
int CTCParseIncludes::ReadOperator()
{
    // Two characters are taken at once; behind a lone '>' or '<' the second one goes back.
    const int nFirst = m_Reader.GetChar();
    const int nSecond = m_Reader.GetChar();
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
        m_Reader.UngetChar(nSecond);
        return nFirst == '>' ? 3 : 4;
    }
    return 0;
}
