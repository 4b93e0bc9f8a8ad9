#include "engine/files/CFileWriter.h"

#include "engine/files/CommitGroup.h"
#include "engine/files/Paths.h"
#include "engine/files/Streams.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

namespace fs
{

namespace
{

constexpr size_t BUFFER_BYTES = 65536;

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
    // The new file replaces what a link leads to, so that the link stays one.
    std::string strReal = strTarget;
    const int iFault = FollowLinks(strReal);
    if (iFault != 0)
    {
        return iFault;
    }
    // Asked first: behind a descriptor of this process there may be a plain file, which is not
    // replaced.
    if (GetOwnDescriptor(strReal) >= 0)
    {
        return OpenStream(strReal, m_Stream);
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
    // Taking a name needs no right to the file that has it, so its bits must be asked for.
    if (IsWriteProtected(strReal, info))
    {
        return EROFS;
    }
    return S_ISREG(info.st_mode) ? m_File.Create(strReal, &info) : OpenStream(strReal, m_Stream);
}

int CFileWriter::Write(const void* pSource, size_t nBytes)
{
    if (m_Fault != 0)
    {
        return m_Fault;
    }
    if (m_Buffer == nullptr)
    {
        m_Buffer.reset(new (std::nothrow) char[BUFFER_BYTES]);
        if (m_Buffer == nullptr)
        {
            m_Fault = ENOMEM;
            return m_Fault;
        }
    }
    if (nBytes > BUFFER_BYTES - m_Buffered && Flush() != 0)
    {
        return m_Fault;
    }
    // Large data skips the buffer, which is empty by now, so the order in the file is kept.
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
    // Writes into a file of its own name their place; only a stream has one that must be moved.
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
    // Empty even when the write fails: the fault sticks, and nothing is written twice.
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
        // A stream may be a pipe, which has no positions.
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
        // Synced before it has its name: a crash of the system leaves the old file or the whole new
        // one.
        iFault = m_File.Sync();
        if (iFault == 0)
        {
            iFault = PlaceOrHold(std::move(m_File), strName);
        }
    }
    // The file has been taken over or is of no use: what is left here goes.
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
