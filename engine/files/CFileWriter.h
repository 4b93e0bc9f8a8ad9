#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace fs
{

// The writing half of fs::file: everything goes to a new file beside the target, which Commit makes
// durable and renames over it. The target is never seen half written, whatever happens. Failures
// return the system's error number, 0 is success; a fault of Write sticks until Commit or Discard.
class CFileWriter
{
public:
    CFileWriter() = default;
    ~CFileWriter(); // discards
    CFileWriter(const CFileWriter&) = delete;
    CFileWriter& operator=(const CFileWriter&) = delete;

    // strTarget: a path of the system. A link is followed, so that it stays one. EROFS for a target
    // whose bits allow nobody to write. A device is written directly.
    int Open(const std::string& strTarget);
    int Write(const void* pSource, size_t nBytes);
    int Truncate(); // at the current position
    int Commit();   // ends the writing, also on a fault
    void Discard();

    int Seek(uint64_t nPosition);

    bool IsOpen() const { return m_Descriptor >= 0; }

    uint64_t GetPosition() const { return m_Position + m_Buffered; }

    uint64_t GetLength() const;

private:
    int FollowLinks(const std::string& strTarget);
    int OpenBeside(const struct stat* pTarget);
    int Flush();
    int WriteDirect(const char* pSource, size_t nBytes);
    int Finish();
    void SyncFolder() const;
    void Close();

    int m_Descriptor = -1;
    int m_Fault = 0;
    std::string m_Target;
    std::string m_Temporary; // empty when the target is a device
    uint64_t m_Position = 0; // of the buffer's first byte
    uint64_t m_Length = 0;   // of what has left the buffer
    std::unique_ptr<char[]> m_Buffer;
    size_t m_Buffered = 0;
};

} // namespace fs
