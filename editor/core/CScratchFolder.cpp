#include "editor/core/CScratchFolder.h"

#include "editor/core/FileNames.h"
#include "editor/core/UserFolders.h"
#include "host/Log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

namespace
{

constexpr char PREFIX[] = ".tellur-scratch-";
constexpr char LOCK_NAME[] = "/lock";
constexpr char FILE_NAME[] = "/unnamed";
constexpr int ATTEMPTS = 3;
constexpr mode_t FILE_MODE = 0600;

// A name that nobody else can have taken, also in a folder where everybody may write.
std::string MakeName()
{
    std::random_device device;
    return PREFIX + std::to_string(::getpid()) + "-" + std::to_string(device()) +
           std::to_string(device());
}

// The lock goes last: without it nobody would know whose a folder is that is not empty.
void RemoveFolder(const std::string& strFolder)
{
    std::error_code error; // what stays is tried again next time
    std::filesystem::directory_iterator entry(strFolder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
    {
        if (entry->path().string() != strFolder + LOCK_NAME)
        {
            std::filesystem::remove_all(entry->path(), error);
        }
    }
    std::filesystem::remove_all(strFolder, error);
}

// Removes a folder whose process is gone.
void RemoveIfDead(const std::string& strFolder)
{
    const int iLock = ::open((strFolder + LOCK_NAME).c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (iLock < 0)
    {
        ::rmdir(strFolder.c_str()); // only an empty one goes
        return;
    }
    if (::flock(iLock, LOCK_EX | LOCK_NB) == 0)
    {
        RemoveFolder(strFolder);
    }
    ::close(iLock);
}

} // namespace

CScratchFolder::CScratchFolder(const std::string& strBase)
    : m_Base(strBase)
    , m_Path(strBase + "/" + MakeName())
{
}

CScratchFolder::~CScratchFolder()
{
    if (m_Lock >= 0)
    {
        RemoveFolder(m_Path);
        ::close(m_Lock);
    }
}

bool CScratchFolder::Make()
{
    if (m_Lock >= 0)
    {
        return true;
    }
    std::error_code error; // what is wrong shows below
    std::filesystem::create_directories(m_Base, error);
    RemoveDead();
    for (int i = 0; i < ATTEMPTS; ++i) // another process may take it for one that was left
    {
        if (::mkdir(m_Path.c_str(), PRIVATE_FOLDER_MODE) == 0 && Lock())
        {
            return true;
        }
    }
    CrashLog("[CScratchFolder::Make] %s: %s\n", m_Path.c_str(), std::strerror(errno));
    return false;
}

bool CScratchFolder::Lock()
{
    m_Lock = ::open((m_Path + LOCK_NAME).c_str(),
                    O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                    FILE_MODE);
    if (m_Lock >= 0 && ::flock(m_Lock, LOCK_EX | LOCK_NB) == 0)
    {
        return true;
    }
    // The message that follows tells what failed here, and closing may set another fault.
    const int iFault = errno;
    if (m_Lock >= 0)
    {
        ::close(m_Lock);
        m_Lock = -1;
    }
    errno = iFault;
    return false;
}

void CScratchFolder::RemoveDead() const
{
    std::error_code error;
    std::filesystem::directory_iterator entry(m_Base, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
    {
        if (entry->path().filename().string().starts_with(PREFIX) &&
            IsOwnFolder(entry->path().string()))
        {
            RemoveIfDead(entry->path().string());
        }
    }
}

int CScratchFolder::OpenUnnamed()
{
    if (!Make())
    {
        return -1;
    }
    const int iFile = ::open(m_Path.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, FILE_MODE);
    if (iFile >= 0)
    {
        return iFile;
    }
    // Not every file system has files without a name.
    const std::string strFile = m_Path + FILE_NAME;
    const int iNamed =
        ::open(strFile.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, FILE_MODE);
    if (iNamed >= 0)
    {
        ::unlink(strFile.c_str());
    }
    return iNamed;
}
