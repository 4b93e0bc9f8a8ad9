#include "engine/files/CFileWriter.h"

#include "engine/files/CommitGroup.h"
#include "engine/files/Temporaries.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <utility>

namespace fs
{

namespace
{

constexpr size_t BUFFER_BYTES = 65536;
constexpr int LINKS_FOLLOWED = 40;
constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;

// A path as /dev/stdout becomes once its links are followed. -1 for any other.
int GetOwnDescriptor(const std::string& strPath)
{
    int iDescriptor = -1;
    int nEnd = 0;
    const std::string strOwn = "/proc/" + std::to_string(::getpid()) + "/fd/";
    for (const std::string& strFolder : {std::string("/proc/self/fd/"), strOwn})
    {
        if (strPath.starts_with(strFolder) &&
            std::sscanf(strPath.c_str() + strFolder.size(), "%9d%n", &iDescriptor, &nEnd) == 1 &&
            strFolder.size() + static_cast<size_t>(nEnd) == strPath.size())
        {
            return iDescriptor;
        }
    }
    return -1;
}

int FollowLinks(std::string& strTarget)
{
    for (int i = 0; i < LINKS_FOLLOWED; ++i)
    {
        // The folder of /dev/fd is a link itself. What stands behind such a name is no path.
        const std::string strFolder = GetFolderOf(strTarget);
        if (strFolder == "/dev/fd/")
        {
            strTarget = "/proc/self/fd/" + strTarget.substr(strFolder.size());
        }
        char szLink[PATH_MAX];
        const ssize_t nLength = GetOwnDescriptor(strTarget) >= 0
                                    ? 0
                                    : ::readlink(strTarget.c_str(), szLink, sizeof szLink);
        if (nLength <= 0)
        {
            return 0;
        }
        const std::string strLink(szLink, static_cast<size_t>(nLength));
        strTarget = strLink.front() == '/' ? strLink : strFolder + strLink;
    }
    return ELOOP;
}

} // namespace

CFileWriter::~CFileWriter()
{
    Discard();
}

int CFileWriter::Open(const std::string& strTarget)
{
    Discard();
    if (strTarget.empty() || strTarget.back() == '/')
    {
        return strTarget.empty() ? ENOENT : EISDIR;
    }
    std::string strReal = strTarget;
    const int iFault = FollowLinks(strReal);
    if (iFault != 0)
    {
        return iFault;
    }
    if (GetOwnDescriptor(strReal) >= 0)
    {
        return OpenStream(strReal);
    }
    struct stat info = {};
    if (::stat(strReal.c_str(), &info) != 0)
    {
        return errno == ENOENT ? m_File.Create(strReal, nullptr) : errno;
    }
    if (S_ISDIR(info.st_mode))
    {
        return EISDIR;
    }
    if ((info.st_mode & ANY_WRITE) == 0 || ::access(strReal.c_str(), W_OK) != 0)
    {
        return EROFS;
    }
    return S_ISREG(info.st_mode) ? m_File.Create(strReal, &info) : OpenStream(strReal);
}

int CFileWriter::OpenStream(const std::string& strTarget)
{
    const int iOwn = GetOwnDescriptor(strTarget);
    // Opened again, a plain file behind the descriptor would be written from its start.
    m_Stream = iOwn >= 0 ? ::fcntl(iOwn, F_DUPFD_CLOEXEC, 0)
                         : ::open(strTarget.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (m_Stream < 0)
    {
        return errno;
    }
    if (iOwn < 0)
    {
        // A pipe without a reader is no reason to wait, a full one is.
        ::fcntl(m_Stream, F_SETFL, ::fcntl(m_Stream, F_GETFL) & ~O_NONBLOCK);
    }
    return 0;
}

int CFileWriter::Write(const void* pSource, size_t nBytes)
{
    if (m_Fault != 0)
    {
        return m_Fault;
    }
    if (m_Buffer == nullptr)
    {
        m_Buffer = std::make_unique<char[]>(BUFFER_BYTES);
    }
    if (nBytes > BUFFER_BYTES - m_Buffered && Flush() != 0)
    {
        return m_Fault;
    }
    if (nBytes > BUFFER_BYTES)
    {
        return WriteDirect(static_cast<const char*>(pSource), nBytes);
    }
    if (nBytes > 0)
    {
        std::memcpy(m_Buffer.get() + m_Buffered, pSource, nBytes);
        m_Buffered += nBytes;
    }
    return 0;
}

int CFileWriter::Seek(uint64_t nPosition)
{
    if (Flush() != 0 || nPosition == m_Position)
    {
        return m_Fault;
    }
    if (m_Stream >= 0 && ::lseek(m_Stream, static_cast<off_t>(nPosition), SEEK_SET) < 0)
    {
        m_Fault = errno; // a pipe
        return m_Fault;
    }
    m_Position = nPosition;
    return 0;
}

uint64_t CFileWriter::GetLength() const
{
    return std::max(m_Length, GetPosition());
}

int CFileWriter::Truncate()
{
    if (Flush() != 0)
    {
        return m_Fault;
    }
    if (::ftruncate(GetDescriptor(), static_cast<off_t>(m_Position)) != 0)
    {
        m_Fault = errno;
        return m_Fault;
    }
    m_Length = m_Position;
    return 0;
}

int CFileWriter::Flush()
{
    const size_t nBytes = m_Buffered;
    m_Buffered = 0;
    return m_Fault == 0 && nBytes > 0 ? WriteDirect(m_Buffer.get(), nBytes) : m_Fault;
}

int CFileWriter::WriteDirect(const char* pSource, size_t nBytes)
{
    const bool bStream = m_Stream >= 0;
    const int iDescriptor = GetDescriptor();
    size_t nDone = 0;
    while (nDone < nBytes)
    {
        const ssize_t nStep = bStream ? ::write(iDescriptor, pSource + nDone, nBytes - nDone)
                                      : ::pwrite(iDescriptor,
                                                 pSource + nDone,
                                                 nBytes - nDone,
                                                 static_cast<off_t>(m_Position + nDone));
        if (nStep < 0 && errno != EINTR)
        {
            m_Fault = errno;
            return m_Fault;
        }
        nDone += nStep > 0 ? static_cast<size_t>(nStep) : 0;
    }
    m_Position += nBytes;
    m_Length = std::max(m_Length, m_Position);
    return 0;
}

int CFileWriter::Commit(const std::string& strName)
{
    int iFault = Flush();
    if (iFault == 0 && m_Stream < 0)
    {
        iFault = m_File.Sync();
        if (iFault == 0)
        {
            iFault = PlaceOrHold(std::move(m_File), strName);
        }
    }
    Discard();
    return iFault;
}

void CFileWriter::Discard()
{
    m_File.Discard();
    if (m_Stream >= 0)
    {
        ::close(m_Stream);
    }
    m_Stream = -1;
    m_Fault = 0;
    m_Position = 0;
    m_Length = 0;
    m_Buffered = 0;
}

} // namespace fs
