#include "engine/files/CFileWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

namespace fs
{

namespace
{

constexpr size_t BUFFER_BYTES = 65536;
constexpr size_t NAME_BYTES_KEPT = 200; // leaves room for the suffix in a system's 255
constexpr int LINKS_FOLLOWED = 40;
constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t PERMISSIONS = S_IRWXU | S_IRWXG | S_IRWXO;

std::string GetFolderOf(const std::string& strPath)
{
    return strPath.substr(0, strPath.find_last_of('/') + 1);
}

std::string MakeTemporaryName(const std::string& strTarget)
{
    static unsigned s_Counter = 0;
    const std::string strFolder = GetFolderOf(strTarget);
    const std::string strName = strTarget.substr(strFolder.size(), NAME_BYTES_KEPT);
    return strFolder + "." + strName + ".tmp-" + std::to_string(::getpid()) + "-" +
           std::to_string(++s_Counter);
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
    const int iFault = FollowLinks(strTarget);
    if (iFault != 0)
    {
        return iFault;
    }
    struct stat info = {};
    if (::stat(m_Target.c_str(), &info) != 0)
    {
        return errno == ENOENT ? OpenBeside(nullptr) : errno;
    }
    if (S_ISDIR(info.st_mode))
    {
        return EISDIR;
    }
    if ((info.st_mode & ANY_WRITE) == 0 || ::access(m_Target.c_str(), W_OK) != 0)
    {
        return EROFS;
    }
    if (S_ISREG(info.st_mode))
    {
        return OpenBeside(&info);
    }
    m_Descriptor = ::open(m_Target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    return IsOpen() ? 0 : errno;
}

int CFileWriter::FollowLinks(const std::string& strTarget)
{
    m_Target = strTarget;
    for (int i = 0; i < LINKS_FOLLOWED; ++i)
    {
        char szLink[PATH_MAX];
        const ssize_t nLength = ::readlink(m_Target.c_str(), szLink, sizeof szLink);
        if (nLength <= 0)
        {
            return 0;
        }
        const std::string strLink(szLink, static_cast<size_t>(nLength));
        m_Target = strLink.front() == '/' ? strLink : GetFolderOf(m_Target) + strLink;
    }
    return ELOOP;
}

int CFileWriter::OpenBeside(const struct stat* pTarget)
{
    constexpr mode_t NEW_FILE = 0666; // the process's mask takes its part
    int iDescriptor = -1;
    do
    {
        m_Temporary = MakeTemporaryName(m_Target);
        iDescriptor =
            ::open(m_Temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, NEW_FILE);
    } while (iDescriptor < 0 && errno == EEXIST);
    if (iDescriptor < 0)
    {
        m_Temporary.clear();
        return errno;
    }
    m_Descriptor = iDescriptor;
    if (pTarget != nullptr && ::fchmod(m_Descriptor, pTarget->st_mode & PERMISSIONS) != 0)
    {
        const int iFault = errno;
        Discard();
        return iFault;
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
    if (Flush() == 0)
    {
        m_Position = nPosition;
    }
    return m_Fault;
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
    if (::ftruncate(m_Descriptor, static_cast<off_t>(m_Position)) != 0)
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
    const bool bDevice = m_Temporary.empty();
    size_t nDone = 0;
    while (nDone < nBytes)
    {
        const ssize_t nStep = bDevice ? ::write(m_Descriptor, pSource + nDone, nBytes - nDone)
                                      : ::pwrite(m_Descriptor,
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

int CFileWriter::Commit()
{
    const int iFault = Finish();
    if (iFault != 0)
    {
        Discard();
    }
    return iFault;
}

int CFileWriter::Finish()
{
    if (Flush() != 0)
    {
        return m_Fault;
    }
    if (m_Temporary.empty())
    {
        Close();
        return 0;
    }
    if (::fsync(m_Descriptor) != 0)
    {
        return errno;
    }
    const int iDescriptor = m_Descriptor;
    m_Descriptor = -1;
    if (::close(iDescriptor) != 0 && errno != EINTR)
    {
        return errno;
    }
    if (::rename(m_Temporary.c_str(), m_Target.c_str()) != 0)
    {
        return errno;
    }
    SyncFolder();
    m_Temporary.clear();
    Close();
    return 0;
}

// The new file is complete and in place by now: a folder that cannot be synced is no failure.
void CFileWriter::SyncFolder() const
{
    const std::string strFolder = GetFolderOf(m_Target);
    const int iFolder =
        ::open(strFolder.empty() ? "." : strFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (iFolder >= 0)
    {
        ::fsync(iFolder);
        ::close(iFolder);
    }
}

void CFileWriter::Discard()
{
    if (!m_Temporary.empty())
    {
        ::unlink(m_Temporary.c_str());
        m_Temporary.clear();
    }
    Close();
}

void CFileWriter::Close()
{
    if (IsOpen())
    {
        ::close(m_Descriptor);
    }
    m_Descriptor = -1;
    m_Fault = 0;
    m_Position = 0;
    m_Length = 0;
    m_Buffered = 0;
}

} // namespace fs
