#include "host/FileBytes.h"
#include "host/FileSystem.h"

#include <new>
#include <utility>

namespace fs
{

read_result read_file(const char* pszPath, uint64_t nMost, file_bytes& bytes, std::string& strError)
{
    file input;
    const bool bOpen = input.open(pszPath, mode_read);
    strError = input.last_error().get_error_text();
    if (!bOpen)
    {
        return read_result::not_opened;
    }
    if (input.length() > nMost)
    {
        return read_result::too_long;
    }
    file_bytes read;
    read.count = static_cast<size_t>(input.length());
    read.bytes.reset(new (std::nothrow) uint8_t[read.count]);
    if (read.bytes == nullptr)
    {
        return read_result::no_memory;
    }
    if (input.read(read.bytes.get(), read.count) != read.count)
    {
        strError = input.last_error().get_error_text();
        return read_result::not_read;
    }
    bytes = std::move(read);
    return read_result::done;
}

} // namespace fs
