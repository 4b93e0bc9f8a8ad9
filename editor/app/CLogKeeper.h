#pragma once

#include "host/Log.h"

#include <string>

// Keeps the last of what the process has logged, as it was logged, for a report of a fault. Takes
// the log while it lives and hands every piece on to the sink before. Owned by the editor.
class CLogKeeper : public ILogSink
{
public:
    static constexpr size_t MOST = size_t{1} << 18; // bytes; older lines go

    CLogKeeper();
    ~CLogKeeper() override;
    CLogKeeper(const CLogKeeper&) = delete;
    CLogKeeper& operator=(const CLogKeeper&) = delete;

    void Write(const char* pszText) override;

    const std::string& GetText() const { return m_Text; } // whole lines but the last

private:
    ILogSink* m_pBefore; // null: stderr
    std::string m_Text;
};
