#pragma once

#include "parser/CTCParseNodes.h"
#include "parser/ITCParseErrors.h"
#include "parser/TCParseCharacters.h"

#include <cstddef>
#include <memory>
#include <string_view>

// The text of one file and the place in it that is read next: characters, blanks and comments,
// words, and the count of lines. Owns the text. Positions are bytes from its start.
class CTCParseReader
{
public:
    using NameBuffer = char[CTCPARSE_KEYWORD::NAME_BYTES];

    // Holds an empty text until Load. errors: borrowed as long as this lives.
    explicit CTCParseReader(ITCParseErrors& errors);
    CTCParseReader(const CTCParseReader&) = delete;
    CTCParseReader& operator=(const CTCParseReader&) = delete;

    // Reads the whole file; once. False, without a message, when it cannot be read: the text is
    // then empty.
    bool Load(const char* pszPath);

    // Takes the next character; -1 at the end of the text. UngetChar puts back the one that was
    // taken last and does nothing for -1.
    int GetChar() { return m_pCursor != m_pEnd ? static_cast<unsigned char>(*m_pCursor++) : -1; }

    void UngetChar(int nChar) { m_pCursor -= nChar >= 0 ? 1 : 0; }

    // Skips blanks and comments. True at the end of the text.
    bool SkipSpace()
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

    // SkipSpace, then GetChar.
    int NextChar()
    {
        SkipSpace();
        return GetChar();
    }

    // Reads a word of letters, digits and '_' at the cursor; it may be empty. Returns 0, or what
    // failed: 1 when the word is too long, which is reported, and -1 when it runs into the end of
    // the text. The buffer holds what was read, with zeros behind it, in each case.
    int ReadWord(NameBuffer& szWord);
    static void MakeLower(NameBuffer& szWord);

    // For readers that scan bytes by themselves. Zeros follow the text, so a scan for characters
    // of a class ends there without looking at the end. pCursor: between the cursor and the end.
    const char* GetCursor() const { return m_pCursor; }

    void SetCursor(const char* pCursor) { m_pCursor = pCursor; }

    const char* GetEnd() const { return m_pEnd; }

    size_t GetPosition() const { return static_cast<size_t>(m_pCursor - m_Text.get()); }

    // The whole text, and the line at the cursor without its break, cut at a NUL, which ends what a
    // log can show. Both are valid until Load.
    std::string_view GetText() const;
    std::string_view GetLineText() const;

    // The number of the line at the cursor, from 1. Lines are counted on from the last call, so the
    // cursor must not be before the place that it had then.
    int GetLine();

    // Whether the text ends within a comment; known when it has been read.
    bool EndsInComment() const { return m_bOpenComment; }

private:
    bool SkipComment();

    ITCParseErrors& m_Errors;
    std::unique_ptr<char[]> m_Text; // with the zeros behind it
    const char* m_pEnd = nullptr;
    const char* m_pCursor = nullptr;

    // Lines are counted from call to call and to a message, each time from where it was known last.
    const char* m_pCounted = nullptr;
    ptrdiff_t m_nCountedLine = 1;
    bool m_bOpenComment = false;
};
