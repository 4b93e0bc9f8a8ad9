#include "editor/app/CLogKeeper.h"

#include <cstdio>

CLogKeeper::CLogKeeper()
    : m_pBefore(SetLogSink(this))
{
}

CLogKeeper::~CLogKeeper()
{
    SetLogSink(m_pBefore);
}

void CLogKeeper::Write(const char* pszText)
{
    if (m_pBefore != nullptr)
    {
        m_pBefore->Write(pszText);
    }
    else
    {
        std::fputs(pszText, stderr);
    }
    m_Text += pszText;
    if (m_Text.size() > 2 * MOST) // seldom, since all that stays is moved
    {
        m_Text.erase(0, m_Text.find('\n', m_Text.size() - MOST) + 1);
    }
}
