#include "host/FileSystem.h"

#include "engine/files/Paths.h"
#include "engine/files/Streams.h"
#include "engine/files/Temporaries.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace fs
{

namespace
{

bool IsSameFile(const std::string& strLeft, const std::string& strRight)
{
    struct stat left = {};
    struct stat right = {};
    return ::lstat(strLeft.c_str(), &left) == 0 && ::lstat(strRight.c_str(), &right) == 0 &&
           left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

} // namespace

bool exists(const char* pszPath)
{
    struct stat info = {};
    const std::string strFound = FindExisting(ToNative(pszPath));
    return !strFound.empty() && ::stat(strFound.c_str(), &info) == 0;
}

bool read_only(const char* pszPath)
{
    struct stat info = {};
    // A file of the data root that a relative path means is overlaid by a write, never refused.
    const std::string strFound = FindWritable(ToNative(pszPath));
    if (strFound.empty() || ::stat(strFound.c_str(), &info) != 0)
    {
        return false;
    }
    return IsWriteProtected(strFound, info);
}

std::string root_path(const char* pszPath)
{
    const std::string strPath = ToNative(pszPath);
    std::string strFound = FindExisting(strPath);
    return strFound.empty() ? GetWriteTarget(strPath) : strFound;
}

namespace
{

// Nothing is there yet: the names say what will be.
bool WillBeSameFile(const std::string& strLeft, const std::string& strRight)
{
    struct stat left = {};
    struct stat right = {};
    const std::string strLeftFolder = GetFolderOf(strLeft);
    const std::string strRightFolder = GetFolderOf(strRight);
    // Without regard to case, as a file that is there would be found.
    return ::strcasecmp(strLeft.c_str() + strLeftFolder.size(),
                        strRight.c_str() + strRightFolder.size()) == 0 &&
           ::stat(strLeftFolder.c_str(), &left) == 0 &&
           ::stat(strRightFolder.c_str(), &right) == 0 && left.st_dev == right.st_dev &&
           left.st_ino == right.st_ino;
}

} // namespace

bool same_file(const char* pszLeft, const char* pszRight)
{
    std::string strLeft = root_path(pszLeft);
    std::string strRight = root_path(pszRight);
    if (strLeft.empty() || strRight.empty() || FollowLinks(strLeft) != 0 ||
        FollowLinks(strRight) != 0)
    {
        return false;
    }
    struct stat left = {};
    struct stat right = {};
    const bool bLeft = ::stat(strLeft.c_str(), &left) == 0;
    const bool bRight = ::stat(strRight.c_str(), &right) == 0;
    if (!bLeft || !bRight)
    {
        return !bLeft && !bRight && WillBeSameFile(strLeft, strRight);
    }
    const bool bBothStreams = GetOwnDescriptor(strLeft) >= 0 && GetOwnDescriptor(strRight) >= 0;
    return S_ISREG(left.st_mode) && left.st_dev == right.st_dev && left.st_ino == right.st_ino &&
           !bBothStreams;
}

int open_stream(const char* pszPath)
{
    std::string strPath = root_path(pszPath);
    struct stat info = {};
    int iDescriptor = -1;
    int iFault = strPath.empty() ? ENOENT : FollowLinks(strPath);
    if (iFault == 0 && GetOwnDescriptor(strPath) < 0 &&
        (::stat(strPath.c_str(), &info) != 0 || S_ISREG(info.st_mode)))
    {
        iFault = EINVAL;
    }
    iFault = iFault == 0 ? OpenStream(strPath, iDescriptor) : iFault;
    errno = iFault;
    return iFault == 0 ? iDescriptor : -1;
}

int rename(const char* pszFrom, const char* pszTo)
{
    const std::string strFrom = FindWritable(ToNative(pszFrom));
    const std::string strTo = ToNative(pszTo);
    if (strFrom.empty() || strTo.empty())
    {
        errno = ENOENT;
        return -1;
    }
    std::string strTarget = GetWriteTarget(strTo);
    const std::string strExisting = FindExisting(strTo);
    if (!strExisting.empty() && IsSameFile(strExisting, strFrom))
    {
        // Only the spelling changes: what was found as the target is the file itself, as it is
        // spelled now.
        strTarget = GetFolderOf(strTarget) + strTo.substr(strTo.find_last_of('/') + 1);
    }
    else if (!strExisting.empty())
    {
        errno = EEXIST;
        return -1;
    }
    return ::rename(strFrom.c_str(), strTarget.c_str());
}

int remove(const char* pszPath)
{
    const std::string strFound = FindWritable(ToNative(pszPath));
    if (strFound.empty())
    {
        errno = ENOENT;
        return -1;
    }
    return ::unlink(strFound.c_str());
}

} // namespace fs
