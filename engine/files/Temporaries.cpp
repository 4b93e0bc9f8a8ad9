#include "engine/files/Temporaries.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace fs
{

namespace
{

constexpr size_t NAME_BYTES_KEPT = 200; // leaves room for the suffix in a system's 255
constexpr const char* SUFFIX = ".tmp-";

constexpr size_t NOTED_FILES = 16;

// The name is whole before the flag is set and stays until it is cleared.
struct SNoted
{
    volatile std::sig_atomic_t iUsed = 0;
    char szPath[PATH_MAX] = "";
};

SNoted g_Noted[NOTED_FILES];

struct SMaker
{
    pid_t process = 0;
    uint64_t uStart = 0; // 0: not known
};

// False when the system does not tell: no such process, or no right to ask.
bool ReadStart(const std::string& strProcess, uint64_t& uStart)
{
    std::FILE* pFile = std::fopen(("/proc/" + strProcess + "/stat").c_str(), "re");
    if (pFile == nullptr)
    {
        return false;
    }
    char szText[1024] = "";
    const size_t nRead = std::fread(szText, 1, sizeof szText - 1, pFile);
    std::fclose(pFile);
    szText[nRead] = '\0';
    // A program's name is in brackets and may hold anything, so the fields are counted from behind
    // it: the first is the state, the twentieth the start.
    const char* pszAfterName = std::strrchr(szText, ')');
    char cState = 0;
    unsigned long long uRead = 0;
    constexpr const char* FORMAT = ") %c %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s"
                                   " %*s %*s %*s %*s %llu";
    if (pszAfterName == nullptr || std::sscanf(pszAfterName, FORMAT, &cState, &uRead) != 2)
    {
        return false;
    }
    constexpr uint64_t NEVER = ~uint64_t{0};
    uStart = cState == 'Z' || cState == 'X' ? NEVER : uRead; // a zombie writes no more
    return true;
}

template <typename TNumber> bool TakeNumber(std::string_view& text, TNumber& number)
{
    const auto [pEnd, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    const size_t nTaken = static_cast<size_t>(pEnd - text.data());
    if (fault != std::errc() || text.front() == '-')
    {
        return false;
    }
    text.remove_prefix(nTaken);
    return true;
}

bool TakeDash(std::string_view& text)
{
    const bool bDash = !text.empty() && text.front() == '-';
    text.remove_prefix(bDash ? 1 : 0);
    return bDash;
}

// Names without the start of the process are those of earlier versions.
bool ParseName(std::string_view name, SMaker& maker)
{
    if (name.empty() || name.front() != '.')
    {
        return false;
    }
    // The last one, because the name of the target may have it as well.
    const size_t iSuffix = name.rfind(SUFFIX);
    if (iSuffix == std::string_view::npos || iSuffix < 2)
    {
        return false;
    }
    name.remove_prefix(iSuffix + std::strlen(SUFFIX));
    unsigned uCounter = 0;
    uint64_t uSecond = 0;
    if (!TakeNumber(name, maker.process) || maker.process <= 0 || !TakeDash(name) ||
        !TakeNumber(name, uSecond))
    {
        return false;
    }
    if (TakeDash(name))
    {
        maker.uStart = uSecond;
        return TakeNumber(name, uCounter) && name.empty();
    }
    return name.empty();
}

bool IsLiving(const SMaker& maker)
{
    uint64_t uStart = 0;
    if (!ReadStart(std::to_string(maker.process), uStart))
    {
        // When in doubt it lives: only a system that knows no such process is believed.
        return ::kill(maker.process, 0) == 0 || errno != ESRCH;
    }
    // Another start means another process that got the same id.
    return maker.uStart == 0 || maker.uStart == uStart;
}

bool IsAbandoned(int iFolder, const char* pszName, uid_t uOwner)
{
    // Whatever has such a name may be a link or a pipe, which is neither followed nor waited for.
    constexpr int FLAGS = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int iFile = ::openat(iFolder, pszName, FLAGS);
    if (iFile < 0)
    {
        return false;
    }
    struct stat info = {};
    const bool bOurs = ::fstat(iFile, &info) == 0 && S_ISREG(info.st_mode) &&
                       (info.st_uid == ::geteuid() || (::geteuid() == 0 && info.st_uid == uOwner));
    // Process ids of another machine, or of another container, say nothing here: a lock does.
    const bool bAbandoned = bOurs && ::flock(iFile, LOCK_EX | LOCK_NB) == 0;
    ::close(iFile);
    return bAbandoned;
}

} // namespace

std::string GetFolderOf(const std::string& strPath)
{
    return strPath.substr(0, strPath.find_last_of('/') + 1);
}

std::string MakeTemporaryName(const std::string& strTarget)
{
    static unsigned s_Counter = 0;
    uint64_t uStart = 0;
    ReadStart("self", uStart);
    const std::string strFolder = GetFolderOf(strTarget);
    const std::string strName = strTarget.substr(strFolder.size(), NAME_BYTES_KEPT);
    return strFolder + "." + strName + SUFFIX + std::to_string(::getpid()) + "-" +
           std::to_string(uStart) + "-" + std::to_string(++s_Counter);
}

bool LockTemporary(int iDescriptor)
{
    struct stat info = {};
    // A file system without locks has nobody who could remove it either.
    return ::flock(iDescriptor, LOCK_EX | LOCK_NB) == 0
               ? ::fstat(iDescriptor, &info) != 0 || info.st_nlink > 0
               : errno != EWOULDBLOCK;
}

void NoteTemporary(const std::string& strPath)
{
    for (SNoted& noted : g_Noted)
    {
        if (noted.iUsed == 0 && strPath.size() < sizeof(noted.szPath))
        {
            std::memcpy(noted.szPath, strPath.c_str(), strPath.size() + 1);
            std::atomic_signal_fence(std::memory_order_release);
            noted.iUsed = 1;
            return;
        }
    }
}

void ForgetTemporary(const std::string& strPath)
{
    for (SNoted& noted : g_Noted)
    {
        if (noted.iUsed != 0 && strPath == noted.szPath)
        {
            noted.iUsed = 0;
        }
    }
}

void RemoveNotedTemporaries()
{
    for (const SNoted& noted : g_Noted)
    {
        if (noted.iUsed != 0)
        {
            ::unlink(noted.szPath);
        }
    }
}

void RemoveDeadTemporaries(const std::string& strFolder, uid_t uOwner)
{
    const auto close = [](DIR* pOpen)
    {
        ::closedir(pOpen);
    };
    const std::unique_ptr<DIR, decltype(close)> pFolder(::opendir(strFolder.c_str()), close);
    if (pFolder == nullptr)
    {
        return;
    }
    const int iFolder = ::dirfd(pFolder.get());
    while (const dirent* pEntry = ::readdir(pFolder.get()))
    {
        SMaker maker;
        if (ParseName(pEntry->d_name, maker) && !IsLiving(maker) &&
            IsAbandoned(iFolder, pEntry->d_name, uOwner))
        {
            ::unlinkat(iFolder, pEntry->d_name, 0);
        }
    }
}

} // namespace fs
