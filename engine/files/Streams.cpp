#include "engine/files/Streams.h"

#include "engine/files/Temporaries.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>

namespace fs
{

namespace
{

constexpr int LINKS_FOLLOWED = 40;

} // namespace

int GetOwnDescriptor(const std::string& strPath)
{
    const std::string strFolder = GetFolderOf(strPath);
    const char* pEnd = strPath.data() + strPath.size();
    int iDescriptor = -1;
    const auto [pRead, fault] =
        std::from_chars(strPath.data() + strFolder.size(), pEnd, iDescriptor);
    // Only the folder is resolved, which turns /dev/fd and /proc/self/fd into one name: the number
    // itself would lead on to the file behind it.
    char szFolder[PATH_MAX];
    if (fault != std::errc() || pRead != pEnd || ::realpath(strFolder.c_str(), szFolder) == nullptr)
    {
        return -1;
    }
    // That of a thread is longer.
    const std::string strReal = szFolder;
    const std::string strOwn = "/proc/" + std::to_string(::getpid()) + "/";
    return strReal.starts_with(strOwn) && strReal.ends_with("/fd") ? iDescriptor : -1;
}

int FollowLinks(std::string& strPath)
{
    for (int i = 0; i < LINKS_FOLLOWED; ++i)
    {
        // A descriptor is no link to follow: behind a pipe or a removed file there is no path.
        char szLink[PATH_MAX];
        const ssize_t nLength =
            GetOwnDescriptor(strPath) >= 0 ? 0 : ::readlink(strPath.c_str(), szLink, sizeof szLink);
        if (nLength <= 0)
        {
            return 0;
        }
        const std::string strLink(szLink, static_cast<size_t>(nLength));
        const std::string strFolder = strLink.front() == '/' ? "" : GetFolderOf(strPath);
        strPath = strFolder + strLink;
    }
    return ELOOP;
}

int OpenStream(const std::string& strPath, int& iDescriptor)
{
    const int iOwn = GetOwnDescriptor(strPath);
    if (iOwn >= 0)
    {
        // Opened again, a plain file behind it would be written from its start.
        iDescriptor = ::fcntl(iOwn, F_DUPFD_CLOEXEC, 0);
        return iDescriptor >= 0 ? 0 : errno;
    }
    // Without waiting, so that a pipe without a reader is refused and holds nobody up.
    iDescriptor = ::open(strPath.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (iDescriptor < 0)
    {
        return errno;
    }
    // A full pipe is waited for.
    ::fcntl(iDescriptor, F_SETFL, ::fcntl(iDescriptor, F_GETFL) & ~O_NONBLOCK);
    return 0;
}

} // namespace fs
