#include "engine/files/CNewFile.h"

#include "engine/files/CSignalsHeld.h"
#include "engine/files/Temporaries.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

namespace fs
{

namespace
{

constexpr mode_t PERMISSIONS = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t NEW_FILE = 0666; // the process's mask takes its part

std::string GetDescriptorPath(int iDescriptor)
{
    return "/proc/self/fd/" + std::to_string(iDescriptor);
}

} // namespace

CNewFile::~CNewFile()
{
    Discard();
}

CNewFile::CNewFile(CNewFile&& other) noexcept
    : m_Descriptor(std::exchange(other.m_Descriptor, -1))
    , m_Target(std::move(other.m_Target))
    , m_Folder(std::move(other.m_Folder))
    , m_Temporary(std::exchange(other.m_Temporary, std::string()))
    , m_Unnamed(std::exchange(other.m_Unnamed, false))
    , m_WasAbsent(other.m_WasAbsent)
{
}

CNewFile& CNewFile::operator=(CNewFile&& other) noexcept
{
    if (this != &other)
    {
        Discard();
        m_Descriptor = std::exchange(other.m_Descriptor, -1);
        m_Target = std::move(other.m_Target);
        m_Folder = std::move(other.m_Folder);
        m_Temporary = std::exchange(other.m_Temporary, std::string());
        m_Unnamed = std::exchange(other.m_Unnamed, false);
        m_WasAbsent = other.m_WasAbsent;
    }
    return *this;
}

int CNewFile::Create(const std::string& strTarget, const struct stat* pTarget)
{
    Discard();
    m_Target = strTarget;
    m_Folder = GetFolderOf(strTarget);
    m_Folder = m_Folder.empty() ? "." : m_Folder;
    RemoveDeadTemporaries(m_Folder, pTarget != nullptr ? pTarget->st_uid : ::geteuid());
    // Owner only, until the group is that of the target.
    const mode_t mode = pTarget != nullptr ? pTarget->st_mode & S_IRWXU : NEW_FILE;
    m_Descriptor = ::open(m_Folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
    m_Unnamed = m_Descriptor >= 0;
    // Without /proc there is no way to give a name later.
    if (m_Unnamed && ::access(GetDescriptorPath(m_Descriptor).c_str(), F_OK) != 0)
    {
        Discard();
    }
    const int iFault = m_Unnamed ? 0 : CreateNamed(mode);
    if (iFault != 0 || pTarget == nullptr)
    {
        return iFault;
    }
    // The group before the mode, so that what the mode grants goes to the target's group at once.
    KeepOwner(*pTarget);
    const mode_t kept = pTarget->st_mode & PERMISSIONS;
    // A super-user with few rights may give a file away and then not touch it any more.
    if (::fchmod(m_Descriptor, kept) != 0 &&
        (::fchown(m_Descriptor, ::geteuid(), ::getegid()) != 0 ||
         ::fchmod(m_Descriptor, kept) != 0))
    {
        const int iModeFault = errno;
        Discard();
        return iModeFault;
    }
    KeepAttributes();
    return 0;
}

int CNewFile::CreateNamed(mode_t mode)
{
    constexpr int FLAGS = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    do
    {
        Forget();
        m_Temporary = MakeTemporaryName(m_Target);
        // Noted before the file is made, so that a signal between the two leaves nothing behind.
        NoteTemporary(m_Temporary);
        m_Descriptor = ::open(m_Temporary.c_str(), FLAGS, mode);
    } while (m_Descriptor >= 0 ? !LockTemporary(m_Descriptor) : errno == EEXIST);
    if (m_Descriptor < 0)
    {
        const int iFault = errno;
        Forget();
        return iFault;
    }
    return 0;
}

// A group that this user is not in stays out; so does an owner, unless this is the super-user.
void CNewFile::KeepOwner(const struct stat& target) const
{
    constexpr uid_t AS_IT_IS = static_cast<uid_t>(-1);
    struct stat info = {};
    if (::fstat(m_Descriptor, &info) != 0 ||
        (info.st_uid == target.st_uid && info.st_gid == target.st_gid))
    {
        return;
    }
    if (::fchown(m_Descriptor, target.st_uid, target.st_gid) != 0)
    {
        [[maybe_unused]] const int iGroupOnly = ::fchown(m_Descriptor, AS_IT_IS, target.st_gid);
    }
}

// Access lists are among them. Those that the system keeps for itself are refused.
void CNewFile::KeepAttributes() const
{
    constexpr size_t MAX_BYTES = 65536; // the system's own limit of a list and of a value
    std::vector<char> names(MAX_BYTES);
    const ssize_t nNames = ::listxattr(m_Target.c_str(), names.data(), names.size());
    if (nNames <= 0)
    {
        return;
    }
    std::vector<char> value(MAX_BYTES);
    const char* pEnd = names.data() + nNames;
    for (const char* pszName = names.data(); pszName < pEnd; pszName += std::strlen(pszName) + 1)
    {
        const ssize_t nValue = ::getxattr(m_Target.c_str(), pszName, value.data(), value.size());
        if (nValue >= 0)
        {
            ::fsetxattr(m_Descriptor, pszName, value.data(), static_cast<size_t>(nValue), 0);
        }
    }
}

int CNewFile::Sync()
{
    return ::fsync(m_Descriptor) == 0 ? 0 : errno;
}

int CNewFile::Link(const std::string& strName) const
{
    // Linking by the name in /proc needs no special right, linking by the descriptor does.
    const std::string strOpen = GetDescriptorPath(m_Descriptor);
    return ::linkat(AT_FDCWD, strOpen.c_str(), AT_FDCWD, strName.c_str(), AT_SYMLINK_FOLLOW) == 0
               ? 0
               : errno;
}

int CNewFile::Name()
{
    if (!m_Unnamed)
    {
        return 0;
    }
    // Locked before it has a name: whoever clears the folder must find it in use.
    LockTemporary(m_Descriptor);
    std::string strName;
    int iFault = EEXIST;
    while (iFault == EEXIST)
    {
        strName = MakeTemporaryName(m_Target);
        iFault = Link(strName);
    }
    if (iFault == 0)
    {
        m_Temporary = std::move(strName); // a copy may find no memory, and the name would stay
        m_Unnamed = false;
    }
    return iFault;
}

int CNewFile::Place()
{
    // A name that Name gives is not noted for signals, so they wait until it is gone.
    const CSignalsHeld held;
    // A name that is free is taken at once: no moment in which there is a temporary one.
    const int iLinkFault = m_Unnamed ? Link(m_Target) : EEXIST;
    if (iLinkFault != 0)
    {
        const int iFault = iLinkFault == EEXIST ? Name() : iLinkFault;
        if (iFault != 0)
        {
            return iFault;
        }
        if (::rename(m_Temporary.c_str(), m_Target.c_str()) != 0)
        {
            return errno;
        }
    }
    SyncFolder();
    Forget();
    return 0;
}

int CNewFile::PlaceKeepingOld()
{
    struct stat info = {};
    m_WasAbsent = ::lstat(m_Target.c_str(), &info) != 0;
    if (!m_WasAbsent && S_ISREG(info.st_mode))
    {
        // Exchanging both names is one step for every reader; the temporary name then has the old
        // file.
        if (::renameat2(
                AT_FDCWD, m_Temporary.c_str(), AT_FDCWD, m_Target.c_str(), RENAME_EXCHANGE) == 0)
        {
            return 0;
        }
        // These three say that the file system cannot exchange names.
        if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP)
        {
            return errno;
        }
    }
    std::string strOld;
    if (!m_WasAbsent)
    {
        // The old file gets a second name, under which it outlives the rename. Without one there is
        // no way back, which PutBack answers when it is asked.
        strOld = MakeTemporaryName(m_Target);
        if (::link(m_Target.c_str(), strOld.c_str()) != 0)
        {
            strOld.clear();
        }
    }
    if (::rename(m_Temporary.c_str(), m_Target.c_str()) != 0)
    {
        const int iFault = errno;
        ::unlink(strOld.c_str());
        return iFault;
    }
    ForgetTemporary(m_Temporary);
    // From here on Discard removes the old file.
    m_Temporary = std::move(strOld);
    return 0;
}

int CNewFile::PutBack()
{
    if (!m_WasAbsent && m_Temporary.empty())
    {
        return ENOTSUP;
    }
    // The rename puts the old file over the new one, which is gone with that.
    const bool bBack = m_WasAbsent ? ::unlink(m_Target.c_str()) == 0
                                   : ::rename(m_Temporary.c_str(), m_Target.c_str()) == 0;
    const int iFault = bBack ? 0 : errno;
    if (bBack)
    {
        Forget();
    }
    return iFault;
}

// The new file is complete and in place by now: a folder that cannot be synced is no failure.
void CNewFile::SyncFolder() const
{
    const int iFolder = ::open(m_Folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (iFolder >= 0)
    {
        ::fsync(iFolder);
        ::close(iFolder);
    }
}

void CNewFile::Discard()
{
    if (!m_Temporary.empty())
    {
        ::unlink(m_Temporary.c_str());
    }
    Forget();
}

void CNewFile::Forget()
{
    if (m_Descriptor >= 0)
    {
        ::close(m_Descriptor);
    }
    m_Descriptor = -1;
    ForgetTemporary(m_Temporary);
    m_Temporary.clear();
    m_Unnamed = false;
}

} // namespace fs
