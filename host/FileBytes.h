#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace fs
{

// The content of a file. Not zeroed before it is read: files may be gigabytes.
struct file_bytes
{
    std::unique_ptr<uint8_t[]> bytes;
    size_t count = 0;

    std::span<const uint8_t> get() const { return {bytes.get(), count}; }
};

enum class read_result : uint32_t
{
    done,
    not_opened,
    too_long,
    no_memory,
    not_read, // to its end
};

// Reads a whole file through fs::file. Nothing is taken for one that is longer than nMost bytes.
// strError: the file's last error as fs::file tells it; empty where it has none. bytes: the
// caller's, replaced only by what is read whole. Implemented by the engine library. UI thread.
TELLUR_API read_result read_file(const char* pszPath,
                                 uint64_t nMost,
                                 file_bytes& bytes,
                                 std::string& strError);

} // namespace fs
