#include "editor/core/FileNames.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::string ShortenName(const std::string& strName, size_t nMost)
{
    constexpr unsigned CONTINUATION_MASK = 0xC0;
    constexpr unsigned CONTINUATION = 0x80;
    if (strName.size() <= nMost)
    {
        return strName;
    }
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

int MakeNewFile(const char* pszPath)
{
    return ::open(pszPath,
                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_APPEND | O_CLOEXEC,
                  S_IRUSR | S_IWUSR);
}
