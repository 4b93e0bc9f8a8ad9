#include "host/FileBytes.h"

#include "host/FileSystem.h"

#include <new>
#include <utility>

EFileRead
ReadFileBytes(const char* pszPath, uint64_t nMost, SFileBytes& bytes, std::string& strError)
{
    fs::file file;
    const bool bOpen = file.open(pszPath, fs::mode_read);
    strError = file.last_error().get_error_text();
    if (!bOpen)
    {
        return EFileRead::NotOpened;
    }
    if (file.length() > nMost)
    {
        return EFileRead::TooLong;
    }
    SFileBytes read;
    read.nCount = static_cast<size_t>(file.length());
    read.pBytes.reset(new (std::nothrow) uint8_t[read.nCount]);
    if (read.pBytes == nullptr)
    {
        return EFileRead::NoMemory;
    }
    if (file.read(read.pBytes.get(), read.nCount) != read.nCount)
    {
        strError = file.last_error().get_error_text();
        return EFileRead::NotRead;
    }
    bytes = std::move(read);
    return EFileRead::Done;
}
