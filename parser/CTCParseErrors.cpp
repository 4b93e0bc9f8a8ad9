#include "host/Log.h"
#include "parser/CTCParse.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>

static constexpr size_t MESSAGE_BYTES = 8192;
static constexpr size_t LONGEST_LINE_BYTES = INT_MAX / 2; // a precision is an int

static bool IsLineBreak(char cChar)
{
    return cChar == '\n' || cChar == '\r';
}

void CTCParse::Error(const char* pszFormat, ...)
{
    char szMessage[MESSAGE_BYTES];
    va_list arguments;
    va_start(arguments, pszFormat);
    vsnprintf(szMessage, sizeof(szMessage), pszFormat, arguments);
    va_end(arguments);

    if (m_pErrorListener != nullptr)
    {
        m_pErrorListener->Error("%s", szMessage);
    }
    CrashLog("[CTCParse] ");
    CrashLog("%s", szMessage);
    CrashLog(": in file '%s' in line %d\n", m_strFileName.c_str(), GetLine());

    const char* pLine = m_pCursor;
    while (pLine != m_Text.get() && !IsLineBreak(pLine[-1]))
    {
        --pLine;
    }
    // A NUL ends what a log can show of the line.
    const char* pLineEnd =
        std::find_if(pLine, m_pEnd, [](char cChar) { return IsLineBreak(cChar) || cChar == '\0'; });
    const auto nLength = static_cast<size_t>(pLineEnd - pLine);
    CrashLog("%.*s", static_cast<int>(std::min(nLength, LONGEST_LINE_BYTES)), pLine);
    CrashLog("\n");
}

void CTCParse::Fail(int32_t* pError, const char* pszMessage)
{
    Error("%s", pszMessage);
    *pError = 1;
}

int CTCParse::GetLine()
{
    // What is given back never reaches back behind a message or the start of a call.
    m_nCountedLine += std::count(m_pCounted, m_pCursor, '\n');
    m_pCounted = m_pCursor;
    return static_cast<int>(std::min<ptrdiff_t>(m_nCountedLine, INT_MAX));
}
