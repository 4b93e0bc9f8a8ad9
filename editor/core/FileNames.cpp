#include "editor/core/FileNames.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

std::string ShortenName(const std::string& strName, size_t nMost)
{
    constexpr unsigned CONTINUATION_MASK = 0xC0;
    constexpr unsigned CONTINUATION = 0x80;
    if (strName.size() <= nMost)
    {
        return strName;
    }
    // Back to where a character begins: half of one is no text.
    size_t nLength = nMost;
    while (nLength > 0 &&
           (static_cast<unsigned char>(strName[nLength]) & CONTINUATION_MASK) == CONTINUATION)
    {
        --nLength;
    }
    return strName.substr(0, nLength);
}

std::string FindFreeName(const std::string& strPrefix, const char* pszSuffix, size_t& uNumber)
{
    struct stat info = {};
    std::string strName;
    do
    {
        strName = strPrefix + std::to_string(++uNumber) + pszSuffix;
    } while (::lstat(strName.c_str(), &info) == 0);
    return strName;
}

bool IsOwnFolder(const std::string& strFolder)
{
    struct stat info = {};
    return ::lstat(strFolder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::geteuid();
}

int MakeNewFile(const char* pszPath)
{
    return ::open(pszPath,
                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_APPEND | O_CLOEXEC,
                  S_IRUSR | S_IWUSR);
}

bool WriteAll(int iFile, const void* pData, size_t nBytes)
{
    const char* pNext = static_cast<const char*>(pData);
    while (nBytes > 0)
    {
        const ssize_t nWritten = ::write(iFile, pNext, nBytes);
        if (nWritten < 0 && errno == EINTR)
        {
            continue;
        }
        if (nWritten <= 0)
        {
            return false;
        }
        pNext += nWritten;
        nBytes -= static_cast<size_t>(nWritten);
    }
    return true;
}
