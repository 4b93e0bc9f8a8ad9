#include "editor/core/CHeightStore.h"

#include "editor/core/CScratchFolder.h"
#include "host/Log.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

namespace
{

// All bytes by one of the system's calls, which may do it in pieces.
template <typename TCall> bool Transfer(TCall call, int iFile, char* pBytes, size_t nBytes)
{
    for (size_t nDone = 0; nDone < nBytes;)
    {
        const ssize_t nStep =
            call(iFile, pBytes + nDone, nBytes - nDone, static_cast<off_t>(nDone));
        if (nStep == 0 || (nStep < 0 && errno != EINTR))
        {
            errno = nStep == 0 ? EIO : errno;
            return false;
        }
        nDone += nStep > 0 ? static_cast<size_t>(nStep) : 0;
    }
    return true;
}

size_t GetBytes(const SHeightField& field)
{
    return field.GetCount() * sizeof(float);
}

} // namespace

CHeightStore::~CHeightStore()
{
    Close();
}

void CHeightStore::Put(SHeightField&& field, CScratchFolder& folder)
{
    bool bWritten = false;
    try
    {
        bWritten = Write(field, folder);
    }
    catch (const std::bad_alloc&)
    {
        Close(); // names of files take memory, too
    }
    m_Field = std::move(field);
    // The sizes stay here when the heights are in the file.
    if (bWritten)
    {
        m_Field.pHeights.reset();
    }
}

bool CHeightStore::Write(const SHeightField& field, CScratchFolder& folder)
{
    Close();
    m_File = folder.OpenUnnamed();
    if (m_File >= 0 &&
        Transfer(::pwrite, m_File, reinterpret_cast<char*>(field.pHeights.get()), GetBytes(field)))
    {
        return true;
    }
    Close();
    return false;
}

bool CHeightStore::Take(SHeightField& field)
{
    if (m_File < 0)
    {
        field = std::move(m_Field);
        return true;
    }
    // Read apart, so that field is as it was when this fails.
    SHeightField read;
    if (!read.Allocate(m_Field.uSizeX, m_Field.uSizeZ))
    {
        CrashLog("[CHeightStore::Take] no memory for %u x %u vertices\n",
                 m_Field.uSizeX,
                 m_Field.uSizeZ);
        return false;
    }
    read.size = m_Field.size;
    read.protection = m_Field.protection;
    read.geo = m_Field.geo;
    if (!Transfer(::pread, m_File, reinterpret_cast<char*>(read.pHeights.get()), GetBytes(read)))
    {
        CrashLog("[CHeightStore::Take] the heights of before cannot be read: %s\n",
                 std::strerror(errno));
        return false;
    }
    field = std::move(read);
    return true;
}

size_t CHeightStore::GetMemory() const
{
    return m_Field.pHeights != nullptr ? GetBytes(m_Field) : 0;
}

void CHeightStore::Close()
{
    if (m_File >= 0)
    {
        ::close(m_File);
        m_File = -1;
    }
}
