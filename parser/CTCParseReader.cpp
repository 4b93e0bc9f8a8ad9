#include "parser/CTCParse.h"
#include "parser/TCParseCharacters.h"

#include <algorithm>
#include <cstring>

bool CTCParse::SkipSpace()
{
    do
    {
        // The byte behind the text is no blank.
        while (TCParseIs(*m_pCursor, TCPARSE_SPACE))
        {
            ++m_pCursor;
        }
    } while (*m_pCursor == '/' && SkipComment());
    return m_pCursor == m_pEnd;
}

// At a '/'. False, and nothing skipped, when it begins no comment.
bool CTCParse::SkipComment()
{
    const char* pBody = m_pCursor + 2;
    if (m_pCursor[1] == '/')
    {
        const auto nRest = static_cast<size_t>(m_pEnd - pBody);
        const auto* pLineEnd = static_cast<const char*>(memchr(pBody, '\n', nRest));
        m_pCursor = pLineEnd != nullptr ? pLineEnd + 1 : m_pEnd;
        return true;
    }
    if (m_pCursor[1] == '*')
    {
        static constexpr char CLOSING[] = {'*', '/'};
        const char* pClosing = std::search(pBody, m_pEnd, CLOSING, CLOSING + sizeof(CLOSING));
        m_pCursor = pClosing != m_pEnd ? pClosing + sizeof(CLOSING) : m_pEnd;
        m_bOpenComment = pClosing == m_pEnd;
        return true;
    }
    return false;
}

int CTCParse::NextChar()
{
    SkipSpace();
    return GetChar();
}

int CTCParse::ReadWord(NameBuffer& szWord)
{
    constexpr size_t MOST = sizeof(NameBuffer) - 1;
    const char* pStart = m_pCursor;
    size_t nLength = 0;
    while (nLength < MOST && TCParseIs(pStart[nLength], TCPARSE_WORD))
    {
        ++nLength;
    }
    m_pCursor = pStart + nLength;

    // Eight bytes at a time, zero from the end of the word on.
    for (size_t i = 0; i < sizeof(NameBuffer); i += sizeof(uint64_t))
    {
        uint64_t uBytes = 0;
        if (i < nLength)
        {
            memcpy(&uBytes, pStart + i, sizeof(uBytes));
            const size_t nKept = std::min(nLength - i, sizeof(uBytes));
            uBytes &= ~uint64_t{0} >> (8 * (sizeof(uBytes) - nKept));
        }
        memcpy(szWord + i, &uBytes, sizeof(uBytes));
    }
    if (TCParseIs(*m_pCursor, TCPARSE_WORD))
    {
        Error("word limit exceeded");
        return 1;
    }
    return m_pCursor != m_pEnd ? 0 : -1;
}

void CTCParse::MakeLower(NameBuffer& szWord)
{
    // Words consist of digits (0x30 to 0x39), letters (0x41 to 0x5A, 0x61 to 0x7A) and '_' (0x5F):
    // every byte with 0x40 becomes lower case with 0x20, except '_', whose low five bits are set.
    constexpr uint64_t ALL = 0x0101010101010101U;
    for (size_t i = 0; i < sizeof(NameBuffer); i += sizeof(uint64_t))
    {
        uint64_t uBytes = 0;
        memcpy(&uBytes, szWord + i, sizeof(uBytes));
        const uint64_t uLetters = (uBytes >> 1) & (0x20 * ALL);
        const uint64_t uUnderlines = ((uBytes & (0x1F * ALL)) + ALL) & (0x20 * ALL);
        uBytes |= uLetters & ~uUnderlines;
        memcpy(szWord + i, &uBytes, sizeof(uBytes));
    }
}
