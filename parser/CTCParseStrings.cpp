#include "parser/CTCParse.h"

#include <cstring>

CTCPARSE_STRING* CTCParse::ReadString(int32_t* pError)
{
    const int nChar = GetChar();
    if (nChar == '"')
    {
        return ReadQuoted(pError);
    }
    NameBuffer szName;
    if (nChar == '%')
    {
        if (!ReadVariable(m_Callbacks.pString != nullptr, szName, pError))
        {
            return nullptr;
        }
        char szText[TCPARSE_STRING_VARIABLE_BYTES] = {};
        if (!m_Callbacks.pString(szText, szName))
        {
            Error("string variable '%s' not found!\n", szName);
            *pError = 1;
            return nullptr;
        }
        auto* pValue = new CTCPARSE_STRING(szText, strnlen(szText, sizeof(szText) - 1));
        pValue->SetRefName(szName);
        return pValue;
    }
    UngetChar(nChar);
    if (const CTCPARSE_PARAM* pConst = ReadConst(tcparse_string, szName, pError))
    {
        return new CTCPARSE_STRING(static_cast<const CTCPARSE_STRING*>(pConst)->value);
    }
    return WarnUnknownConst(szName, *pError) ? new CTCPARSE_STRING("???parser error???") : nullptr;
}

// Behind the opening quote. Most strings have no escape and are taken as they stand.
CTCPARSE_STRING* CTCParse::ReadQuoted(int32_t* pError)
{
    const char* pStart = m_pCursor;
    const auto nRest = static_cast<size_t>(m_pEnd - pStart);
    const auto* pQuote = static_cast<const char*>(memchr(pStart, '"', nRest));
    const size_t nLength = pQuote != nullptr ? static_cast<size_t>(pQuote - pStart) : nRest;
    if (memchr(pStart, '\\', nLength) != nullptr)
    {
        return ReadEscaped(pError);
    }
    if (pQuote == nullptr)
    {
        m_pCursor = m_pEnd;
        Fail(pError, "expected ending \"");
        return nullptr;
    }
    m_pCursor = pQuote + 1;
    return new CTCPARSE_STRING(pStart, nLength);
}

CTCPARSE_STRING* CTCParse::ReadEscaped(int32_t* pError)
{
    if (m_Scratch == nullptr)
    {
        m_Scratch.reset(new char[static_cast<size_t>(m_pEnd - m_Text.get())]);
    }
    char* pDest = m_Scratch.get(); // no escape is longer decoded than written
    for (int nChar = GetChar(); nChar >= 0; nChar = GetChar())
    {
        if (nChar == '"')
        {
            const auto nLength = static_cast<size_t>(pDest - m_Scratch.get());
            return new CTCPARSE_STRING(m_Scratch.get(), nLength);
        }
        if (nChar == '\\')
        {
            nChar = GetChar();
            switch (nChar)
            {
            case 'n':
                *pDest++ = '\r';
                nChar = '\n';
                break;
            case 't':
                nChar = '\t';
                break;
            case '\r':
                // A continued line keeps one line break. A lone CR or LF stays what it is.
                nChar = *m_pCursor == '\n' ? GetChar() : nChar;
                break;
            default:
                break;
            }
        }
        *pDest++ = static_cast<char>(nChar);
    }
    Fail(pError, "expected ending \"");
    return nullptr;
}
