#pragma once

#include "host/Log.h"

#include <string>
#include <utility>
#include <vector>

// Takes the log of the process while it lives. Catchers nest; each gives the log back to the one
// before.
class CLogCatcher : public ILogSink
{
public:
    CLogCatcher()
        : m_Previous(SetLogSink(this))
    {
    }

    ~CLogCatcher() override { SetLogSink(m_Previous); }

    CLogCatcher(const CLogCatcher&) = delete;
    CLogCatcher& operator=(const CLogCatcher&) = delete;

    void Write(const char* pszText) override { m_Text += pszText; }

    const std::string& GetText() const { return m_Text; }

    void Clear() { m_Text.clear(); }

    // The lines so far without their line feeds, and clears. A text that does not end in one gives
    // a last line that ends in "<no line feed>", so that no comparison overlooks it.
    std::vector<std::string> TakeLines()
    {
        std::vector<std::string> lines;
        size_t iStart = 0;
        for (size_t iEnd = m_Text.find('\n'); iEnd != std::string::npos;
             iEnd = m_Text.find('\n', iStart))
        {
            lines.push_back(m_Text.substr(iStart, iEnd - iStart));
            iStart = iEnd + 1;
        }
        if (iStart < m_Text.size())
        {
            lines.push_back(m_Text.substr(iStart) + "<no line feed>");
        }
        m_Text.clear();
        return lines;
    }

private:
    ILogSink* m_Previous;
    std::string m_Text;
};
