#pragma once

#include "host/FileBytes.h"

#include <cstdint>
#include <span>
#include <string>

// A whole file in memory, through the file-system library.
class CFileBytes
{
public:
    // False with strFault, one line without a line feed that names the file and the fault.
    bool Read(const char* pszPath, std::string& strFault);

    // Borrowed until the object is gone.
    std::span<const uint8_t> GetBytes() const { return m_Bytes.Get(); }

private:
    SFileBytes m_Bytes;
};

// Replaces the file. False with strFault as above; the old file then stays.
bool WriteFileBytes(const char* pszPath, std::span<const uint8_t> bytes, std::string& strFault);
