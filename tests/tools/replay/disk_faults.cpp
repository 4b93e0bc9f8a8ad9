// Put before a program with LD_PRELOAD, or linked into one: the disk fails it, or it is ended, at
// the n-th call that changes a file. TELLUR_FAULT is "kill N", "term N" (the signal that asks),
// "full N" (no byte is written from the n-th call on) or "readonly N" (nothing at all is changed
// from the n-th call on). N counts from 1; "none" is no fault. A "plain" behind it stands for a
// file system without files that have no name and without the exchange of two names.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

enum class EChange
{
    Bytes,
    Names,
};

bool IsPlain()
{
    const char* pszFault = std::getenv("TELLUR_FAULT");
    return pszFault != nullptr && std::strstr(pszFault, " plain") != nullptr;
}

// Counts the call. True when it must fail; errno is then set.
bool Fails(EChange eChange)
{
    static int s_Calls = 0;
    const char* pszFault = std::getenv("TELLUR_FAULT");
    char szKind[16] = "";
    int iAt = 0;
    if (pszFault == nullptr || std::sscanf(pszFault, "%15s %d", szKind, &iAt) != 2 ||
        ++s_Calls < iAt)
    {
        return false;
    }
    if (std::strcmp(szKind, "kill") == 0)
    {
        raise(SIGKILL);
    }
    if (std::strcmp(szKind, "term") == 0)
    {
        return s_Calls == iAt && raise(SIGTERM) != 0;
    }
    const bool bReadOnly = std::strcmp(szKind, "readonly") == 0;
    errno = bReadOnly ? EROFS : ENOSPC;
    return bReadOnly || eChange == EChange::Bytes;
}

template <typename TFunction> TFunction* FindNext(TFunction*, const char* pszName)
{
    return reinterpret_cast<TFunction*>(dlsym(RTLD_NEXT, pszName));
}

} // namespace

#define NEXT(name) FindNext(&name, #name)

extern "C"
{
    int open(const char* pszPath, int iFlags, ...)
    {
        va_list arguments;
        va_start(arguments, iFlags);
        const bool bMakes = (iFlags & O_CREAT) != 0 || (iFlags & O_TMPFILE) == O_TMPFILE;
        const mode_t mode = bMakes ? va_arg(arguments, mode_t) : 0;
        va_end(arguments);
        if ((iFlags & O_TMPFILE) == O_TMPFILE && IsPlain())
        {
            errno = EOPNOTSUPP;
            return -1;
        }
        return bMakes && Fails(EChange::Names) ? -1 : NEXT(open)(pszPath, iFlags, mode);
    }

    ssize_t pwrite(int iFile, const void* pBytes, size_t nBytes, off_t position)
    {
        return Fails(EChange::Bytes) ? -1 : NEXT(pwrite)(iFile, pBytes, nBytes, position);
    }

    int fsync(int iFile)
    {
        return Fails(EChange::Bytes) ? -1 : NEXT(fsync)(iFile);
    }

    int rename(const char* pszFrom, const char* pszTo)
    {
        return Fails(EChange::Names) ? -1 : NEXT(rename)(pszFrom, pszTo);
    }

    int renameat2(int iFrom, const char* pszFrom, int iTo, const char* pszTo, unsigned uFlags)
    {
        if (IsPlain())
        {
            errno = EINVAL;
            return -1;
        }
        return Fails(EChange::Names) ? -1 : NEXT(renameat2)(iFrom, pszFrom, iTo, pszTo, uFlags);
    }

    int link(const char* pszFrom, const char* pszTo)
    {
        return Fails(EChange::Names) ? -1 : NEXT(link)(pszFrom, pszTo);
    }

    int linkat(int iFrom, const char* pszFrom, int iTo, const char* pszTo, int iFlags)
    {
        return Fails(EChange::Names) ? -1 : NEXT(linkat)(iFrom, pszFrom, iTo, pszTo, iFlags);
    }

    int unlink(const char* pszPath)
    {
        return Fails(EChange::Names) ? -1 : NEXT(unlink)(pszPath);
    }

    int unlinkat(int iFolder, const char* pszPath, int iFlags)
    {
        return Fails(EChange::Names) ? -1 : NEXT(unlinkat)(iFolder, pszPath, iFlags);
    }

    int ftruncate(int iFile, off_t nBytes)
    {
        return Fails(EChange::Bytes) ? -1 : NEXT(ftruncate)(iFile, nBytes);
    }

    int fchmod(int iFile, mode_t mode)
    {
        return Fails(EChange::Names) ? -1 : NEXT(fchmod)(iFile, mode);
    }
}
