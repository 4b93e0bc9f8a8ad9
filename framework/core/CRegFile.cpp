#include "framework/core/CRegFile.h"

#include "framework/core/CRegText.h"
#include "host/Log.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace
{

constexpr size_t MAX_BYTES = 4U << 20U; // settings of windows are a few kilobytes
// A circle of links ends here; the file that is left cannot be opened then.
constexpr int LINKS_FOLLOWED = 40;
constexpr mode_t PRIVATE_FILE = 0600;
constexpr mode_t PRIVATE_FOLDER = 0700;
constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t PERMISSIONS = S_IRWXU | S_IRWXG | S_IRWXO;

// Closes its file, and gives back a lock on it, at the end.
class CDescriptor
{
public:
    explicit CDescriptor(int iDescriptor)
        : m_Descriptor(iDescriptor)
    {
    }

    ~CDescriptor()
    {
        if (IsOpen())
        {
            ::close(m_Descriptor);
        }
    }

    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    bool IsOpen() const { return m_Descriptor >= 0; }

    int Get() const { return m_Descriptor; }

private:
    int m_Descriptor;
};

// Only an absolute path names a folder for settings.
std::string GetPathFromEnvironment()
{
    const char* pszConfig = std::getenv("XDG_CONFIG_HOME");
    if (pszConfig != nullptr && pszConfig[0] == '/')
    {
        return std::string(pszConfig) + "/tellur/registry.ini";
    }
    const char* pszHome = std::getenv("HOME");
    return pszHome != nullptr && pszHome[0] == '/'
               ? std::string(pszHome) + "/.config/tellur/registry.ini"
               : std::string();
}

std::string GetFolderOf(const std::string& strPath)
{
    return strPath.substr(0, strPath.find_last_of('/') + 1);
}

bool ReadAll(int iDescriptor, std::string& strText)
{
    char buffer[16384];
    for (;;)
    {
        const ssize_t nStep = ::read(iDescriptor, buffer, sizeof(buffer));
        if (nStep == 0)
        {
            return true;
        }
        // A signal that interrupts the call before it has done anything is no failure.
        if (nStep < 0 && errno != EINTR)
        {
            return false;
        }
        strText.append(buffer, nStep > 0 ? static_cast<size_t>(nStep) : 0);
        if (strText.size() > MAX_BYTES)
        {
            return false;
        }
    }
}

bool WriteAll(int iDescriptor, const std::string& strText)
{
    for (size_t nDone = 0; nDone < strText.size();)
    {
        const ssize_t nStep = ::write(iDescriptor, strText.data() + nDone, strText.size() - nDone);
        if (nStep < 0 && errno != EINTR)
        {
            return false;
        }
        nDone += nStep > 0 ? static_cast<size_t>(nStep) : 0;
    }
    return true;
}

// The new file is in place by now: a folder that cannot be synced is no failure.
void SyncFolderOf(const std::string& strPath)
{
    const CDescriptor folder(
        ::open(GetFolderOf(strPath).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen())
    {
        ::fsync(folder.Get());
    }
}

// Every query reads the file, and none shall fill the log.
void ReportDamageOnce(const std::string& strPath, size_t nLine)
{
    static std::string s_Reported;
    if (nLine != 0 && s_Reported != strPath)
    {
        s_Reported = strPath;
        CrashLog(
            "[CRegFile::Read] '%s': line %zu is unreadable and skipped\n", strPath.c_str(), nLine);
    }
}

} // namespace

CRegFile::CRegFile()
    : m_Path(GetPathFromEnvironment())
    , m_Target(m_Path)
{
    FollowLinks();
}

void CRegFile::FollowLinks()
{
    for (int i = 0; i < LINKS_FOLLOWED; ++i)
    {
        char szLink[PATH_MAX];
        const ssize_t nLength = ::readlink(m_Target.c_str(), szLink, sizeof(szLink));
        if (nLength <= 0)
        {
            return;
        }
        const std::string strLink(szLink, static_cast<size_t>(nLength));
        // A link that is no absolute path counts from the folder that the link lies in.
        m_Target = strLink.front() == '/' ? strLink : GetFolderOf(m_Target) + strLink;
    }
}

bool CRegFile::Read(CRegText& text) const
{
    if (m_Target.empty())
    {
        return false;
    }
    // Without waiting: a pipe without a writer would hold the program for ever.
    const CDescriptor file(::open(m_Target.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.IsOpen())
    {
        const bool bMissing = errno == ENOENT;
        text = CRegText();
        return bMissing;
    }
    struct stat info = {};
    std::string strText;
    if (::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode) || !ReadAll(file.Get(), strText))
    {
        return false;
    }
    text = CRegText(std::move(strText));
    ReportDamageOnce(m_Path, text.GetFirstDamage());
    return true;
}

bool CRegFile::Update(const FChange& change) const
{
    if (m_Target.empty())
    {
        return false;
    }
    MakeFolders();
    const CDescriptor lock(OpenLock());
    CRegText text;
    if (!lock.IsOpen() || !Read(text))
    {
        return false;
    }
    return !change(text) || Replace(text.GetText());
}

void CRegFile::MakeFolders() const
{
    for (size_t i = m_Path.find('/', 1); i != std::string::npos; i = m_Path.find('/', i + 1))
    {
        // Most of them are there already. What cannot be made shows when the lock is opened.
        ::mkdir(m_Path.substr(0, i).c_str(), PRIVATE_FOLDER);
    }
}

// Waits until nobody else holds the lock. Whoever removes the lock file while it is held would let
// two writers in, so the one that is held has to be the one that is there.
int CRegFile::OpenLock() const
{
    const std::string strLock = m_Target + ".lock";
    for (;;)
    {
        // A link in the lock file's place is refused, since the file would be made where it leads.
        const int iLock = ::open(strLock.c_str(),
                                 O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                                 PRIVATE_FILE);
        if (iLock < 0)
        {
            return -1;
        }
        int iFault = 0;
        do
        {
            iFault = ::flock(iLock, LOCK_EX) == 0 ? 0 : errno;
        } while (iFault == EINTR);
        struct stat held = {};
        struct stat there = {};
        if (iFault != 0 || ::fstat(iLock, &held) != 0)
        {
            ::close(iLock);
            return -1;
        }
        if (::stat(strLock.c_str(), &there) == 0 && held.st_ino == there.st_ino &&
            held.st_dev == there.st_dev)
        {
            return iLock;
        }
        ::close(iLock);
    }
}

bool CRegFile::Replace(const std::string& strText) const
{
    struct stat old = {};
    const bool bOld = ::stat(m_Target.c_str(), &old) == 0;
    // Renaming over a file asks only whether the folder may be written, so a file that somebody has
    // protected is found out here. A super-user may write every file, hence the look at its mode.
    const bool bReadOnly =
        bOld && ((old.st_mode & ANY_WRITE) == 0 || ::access(m_Target.c_str(), W_OK) != 0);
    if (bReadOnly || strText.size() > MAX_BYTES)
    {
        return false;
    }
    const std::string strTemporary = m_Target + ".tmp";
    ::unlink(strTemporary.c_str()); // of a writer that was killed: only one holds the lock
    const CDescriptor file(
        ::open(strTemporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, PRIVATE_FILE));
    if (!file.IsOpen())
    {
        return false;
    }
    // A super-user's program must not take a user's file away from him.
    const bool bOwner =
        !bOld || old.st_uid == ::geteuid() || ::fchown(file.Get(), old.st_uid, old.st_gid) == 0;
    // The bytes are on the disk before the name changes hands: after a crash there is the old file
    // or the whole new one.
    const mode_t uMode = bOld ? old.st_mode & PERMISSIONS : PRIVATE_FILE;
    if (!bOwner || ::fchmod(file.Get(), uMode) != 0 || !WriteAll(file.Get(), strText) ||
        ::fsync(file.Get()) != 0 || ::rename(strTemporary.c_str(), m_Target.c_str()) != 0)
    {
        ::unlink(strTemporary.c_str());
        return false;
    }
    SyncFolderOf(m_Target);
    return true;
}
