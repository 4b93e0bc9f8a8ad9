#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

// The content of a file. Not zeroed before it is read: files may be gigabytes.
struct SFileBytes
{
    std::unique_ptr<uint8_t[]> pBytes;
    size_t nCount = 0;

    std::span<const uint8_t> Get() const { return {pBytes.get(), nCount}; }
};

enum class EFileRead : uint32_t
{
    Done,
    NotOpened,
    TooLong,
    NoMemory,
    NotRead, // to its end
};

// Reads a whole file through fs::file. Nothing is taken for one that is longer than nMost bytes.
// strError: the file's last error as fs::file tells it; empty where it has none. bytes: the
// caller's, replaced only by what is read whole. Implemented by the engine library. UI thread.
TELLUR_API EFileRead ReadFileBytes(const char* pszPath,
                                   uint64_t nMost,
                                   SFileBytes& bytes,
                                   std::string& strError);
