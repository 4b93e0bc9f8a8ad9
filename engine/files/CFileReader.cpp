#include "engine/files/CFileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

namespace fs
{

namespace
{

constexpr size_t BUFFER_BYTES = 65536;

} // namespace

CFileReader::~CFileReader()
{
    Close();
}

int CFileReader::Open(const std::string& strPath)
{
    Close();
    // Without waiting: a pipe without a writer would hold the program for ever.
    const int iDescriptor = ::open(strPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (iDescriptor < 0)
    {
        return errno;
    }
    struct stat info = {};
    int iFault = ::fstat(iDescriptor, &info) == 0 ? 0 : errno;
    if (iFault == 0 && !S_ISREG(info.st_mode))
    {
        iFault = S_ISDIR(info.st_mode) ? EISDIR : ENOTSUP;
    }
    if (iFault != 0)
    {
        ::close(iDescriptor);
        return iFault;
    }
    m_Descriptor = iDescriptor;
    m_Length = static_cast<uint64_t>(info.st_size);
    return 0;
}

void CFileReader::Close()
{
    if (IsOpen())
    {
        ::close(m_Descriptor);
    }
    m_Descriptor = -1;
    m_Position = 0;
    m_Length = 0;
    m_BufferSize = 0;
}

int CFileReader::Read(void* pDest, size_t nBytes, size_t& nRead)
{
    nRead = TakeFromBuffer(pDest, nBytes);
    char* pRest = static_cast<char*>(pDest) + nRead;
    const size_t nRest = nBytes - nRead;
    if (nRest == 0)
    {
        return 0;
    }
    size_t nMore = 0;
    int iFault = 0;
    // A large read goes past the buffer, which keeps what it has for its own positions.
    if (nRest >= BUFFER_BYTES)
    {
        iFault = ReadDirect(pRest, nRest, nMore);
        m_Position += nMore;
    }
    else
    {
        if (m_Buffer == nullptr)
        {
            m_Buffer.reset(new (std::nothrow) char[BUFFER_BYTES]);
            if (m_Buffer == nullptr)
            {
                return ENOMEM;
            }
        }
        // Filled from the reading position on, however little was asked for.
        m_BufferStart = m_Position;
        iFault = ReadDirect(m_Buffer.get(), BUFFER_BYTES, m_BufferSize);
        // What came before a fault is handed out all the same.
        nMore = TakeFromBuffer(pRest, nRest);
    }
    nRead += nMore;
    return iFault;
}

size_t CFileReader::TakeFromBuffer(void* pDest, size_t nBytes)
{
    if (m_Position < m_BufferStart || m_Position - m_BufferStart >= m_BufferSize)
    {
        return 0;
    }
    const size_t iStart = static_cast<size_t>(m_Position - m_BufferStart);
    const size_t nTaken = std::min(nBytes, m_BufferSize - iStart);
    std::memcpy(pDest, m_Buffer.get() + iStart, nTaken);
    m_Position += nTaken;
    return nTaken;
}

int CFileReader::ReadDirect(void* pDest, size_t nBytes, size_t& nRead)
{
    nRead = 0;
    while (nRead < nBytes)
    {
        // The position is the caller's alone: seeking costs no call of the system.
        const ssize_t nStep = ::pread(m_Descriptor,
                                      static_cast<char*>(pDest) + nRead,
                                      nBytes - nRead,
                                      static_cast<off_t>(m_Position + nRead));
        if (nStep < 0 && errno != EINTR)
        {
            return errno;
        }
        // The end, which may have moved since the file was opened.
        if (nStep == 0)
        {
            return 0;
        }
        nRead += nStep > 0 ? static_cast<size_t>(nStep) : 0;
    }
    return 0;
}

} // namespace fs
