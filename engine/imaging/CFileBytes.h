#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

// A whole file in memory, through the file-system library.
class CFileBytes
{
public:
    // False with strFault, one line without a line feed that names the file and the fault.
    bool Read(const char* pszPath, std::string& strFault);

    // Borrowed until the object is gone.
    std::span<const uint8_t> GetBytes() const { return {m_Bytes.get(), m_Count}; }

private:
    std::unique_ptr<uint8_t[]> m_Bytes;
    size_t m_Count = 0;
};

// Replaces the file. False with strFault as above; the old file then stays.
bool WriteFileBytes(const char* pszPath, std::span<const uint8_t> bytes, std::string& strFault);
