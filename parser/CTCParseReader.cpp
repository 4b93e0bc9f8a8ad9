#include "parser/CTCParseReader.h"

#include "host/FileSystem.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

// Behind the text: words are taken a whole buffer's length at a time.
static constexpr size_t TEXT_PADDING = CTCPARSE_KEYWORD::NAME_BYTES;

static bool IsLineBreak(char cChar)
{
    return cChar == '\n' || cChar == '\r';
}

CTCParseReader::CTCParseReader(ITCParseErrors& errors)
    : m_Errors(errors)
    , m_Text(std::make_unique<char[]>(TEXT_PADDING))
    , m_pEnd(m_Text.get())
    , m_pCursor(m_Text.get())
    , m_pCounted(m_Text.get())
{
}

bool CTCParseReader::Load(const char* pszPath)
{
    fs::file file;
    if (!file.open(pszPath, fs::mode_read))
    {
        return false;
    }
    const uint64_t nLength = file.length();
    // Keeps the sum with the padding below from wrapping.
    if (nLength > SIZE_MAX / 2)
    {
        return false;
    }
    // Read aside, so that a file which fails leaves the empty text of before.
    std::unique_ptr<char[]> text(new (std::nothrow) char[nLength + TEXT_PADDING]);
    if (text == nullptr || file.read(text.get(), nLength) != nLength)
    {
        return false;
    }
    memset(text.get() + nLength, 0, TEXT_PADDING);
    m_Text = std::move(text);
    m_pEnd = m_Text.get() + nLength;
    m_pCursor = m_Text.get();
    m_pCounted = m_pCursor;
    file.close();
    return true;
}

// At a '/'. False, and nothing skipped, when it begins no comment.
bool CTCParseReader::SkipComment()
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
        // Whoever adds statements to the text must close such a comment first.
        m_bOpenComment = pClosing == m_pEnd;
        return true;
    }
    return false;
}

int CTCParseReader::ReadWord(NameBuffer& szWord)
{
    constexpr size_t MOST = sizeof(NameBuffer) - 1;
    const char* pStart = m_pCursor;
    size_t nLength = 0;
    // The scan needs no look at the end of the text: the zeros behind it belong to no word.
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
            // May read behind the word and even behind the text: the padding is as long as a name.
            memcpy(&uBytes, pStart + i, sizeof(uBytes));
            const size_t nKept = std::min(nLength - i, sizeof(uBytes));
            uBytes &= ~uint64_t{0} >> (8 * (sizeof(uBytes) - nKept));
        }
        memcpy(szWord + i, &uBytes, sizeof(uBytes));
    }
    if (TCParseIs(*m_pCursor, TCPARSE_WORD))
    {
        m_Errors.Error("word limit exceeded");
        return 1;
    }
    return m_pCursor != m_pEnd ? 0 : -1;
}

void CTCParseReader::MakeLower(NameBuffer& szWord)
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

std::string_view CTCParseReader::GetText() const
{
    return {m_Text.get(), static_cast<size_t>(m_pEnd - m_Text.get())};
}

std::string_view CTCParseReader::GetLineText() const
{
    // Only messages ask for the line, so its start is looked for then and not kept while reading.
    const char* pLine = m_pCursor;
    while (pLine != m_Text.get() && !IsLineBreak(pLine[-1]))
    {
        --pLine;
    }
    const char* pLineEnd =
        std::find_if(pLine, m_pEnd, [](char cChar) { return IsLineBreak(cChar) || cChar == '\0'; });
    return {pLine, static_cast<size_t>(pLineEnd - pLine)};
}

int CTCParseReader::GetLine()
{
    // What is given back never reaches back behind a message or the start of a call.
    m_nCountedLine += std::count(m_pCounted, m_pCursor, '\n');
    m_pCounted = m_pCursor;
    return static_cast<int>(std::min<ptrdiff_t>(m_nCountedLine, INT_MAX));
}
