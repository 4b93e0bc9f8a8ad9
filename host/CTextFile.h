#pragma once

#include "host/FileSystem.h"

#include <string>

// Takes what is written to it as text: for whoever has an operation write to a file that it does
// not want on the disk. Is open from the start; write, then GetText; any thread.
class CTextFile : public fs::ifile
{
public:
    size_t write(const void* pSource, size_t nBytes) override
    {
        m_Text.append(static_cast<const char*>(pSource), nBytes);
        return nBytes;
    }

    const std::string& GetText() const { return m_Text; }

private:
    std::string m_Text;
};
