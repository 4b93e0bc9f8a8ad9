#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace fs
{

// The reading half of fs::file: small reads come from a buffer, large ones go straight into the
// caller's memory. Failures return the system's error number, 0 is success.
class CFileReader
{
public:
    CFileReader() = default;
    ~CFileReader();
    CFileReader(const CFileReader&) = delete;
    CFileReader& operator=(const CFileReader&) = delete;

    int Open(const std::string& strPath); // a path of the system; EISDIR: a folder, ENOTSUP: a pipe
    void Close();

    // Reads from the position on. nRead: bytes read, fewer than asked at the end of the file and on
    // a fault.
    int Read(void* pDest, size_t nBytes, size_t& nRead);

    void Seek(uint64_t nPosition) { m_Position = nPosition; }

    bool IsOpen() const { return m_Descriptor >= 0; }

    uint64_t GetPosition() const { return m_Position; }

    uint64_t GetLength() const { return m_Length; }

private:
    int ReadDirect(void* pDest, size_t nBytes, size_t& nRead);
    size_t TakeFromBuffer(void* pDest, size_t nBytes);

    int m_Descriptor = -1;
    uint64_t m_Position = 0;
    uint64_t m_Length = 0; // when it was opened
    std::unique_ptr<char[]> m_Buffer;
    uint64_t m_BufferStart = 0;
    size_t m_BufferSize = 0; // valid bytes
};

} // namespace fs
