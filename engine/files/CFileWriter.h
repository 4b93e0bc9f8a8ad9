#pragma once

#include "engine/files/CNewFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace fs
{

// The writing half of fs::file: everything goes to a new file, which Commit makes durable and puts
// into the target's place. The target is never seen half written, whatever happens. What is no
// plain file (a device, a pipe, a descriptor of this process under /dev/fd) is written through.
// Failures return the system's error number, 0 is success; a fault of Write sticks until Commit or
// Discard.
class CFileWriter
{
public:
    CFileWriter() = default;
    ~CFileWriter(); // discards
    CFileWriter(const CFileWriter&) = delete;
    CFileWriter& operator=(const CFileWriter&) = delete;

    // Starts a new file for strTarget, a path of the system. A link is followed, so that it stays
    // one. EROFS for a target whose bits allow nobody to write.
    int Open(const std::string& strTarget);
    int Write(const void* pSource, size_t nBytes);
    int Truncate(); // at the current position

    // Ends the writing, also on a fault. strName: the path for messages of a commit group.
    int Commit(const std::string& strName);
    void Discard();

    int Seek(uint64_t nPosition);

    bool IsOpen() const { return GetDescriptor() >= 0; }

    uint64_t GetPosition() const { return m_Position + m_Buffered; }

    uint64_t GetLength() const;

private:
    int Flush();
    int WriteDirect(const char* pSource, size_t nBytes);

    int GetDescriptor() const { return m_Stream >= 0 ? m_Stream : m_File.GetDescriptor(); }

    int m_Stream = -1; // written through
    CNewFile m_File;
    int m_Fault = 0;
    uint64_t m_Position = 0; // of the buffer's first byte
    uint64_t m_Length = 0;   // of what has left the buffer
    std::unique_ptr<char[]> m_Buffer;
    size_t m_Buffered = 0;
};

} // namespace fs
