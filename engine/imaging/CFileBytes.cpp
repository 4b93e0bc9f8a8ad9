#include "engine/imaging/CFileBytes.h"

#include "host/FileSystem.h"

#include <new>

namespace
{

// No picture that passes the size check is longer.
constexpr uint64_t MAX_FILE_BYTES = uint64_t{2} << 30;

} // namespace

bool CFileBytes::Read(const char* pszPath, std::string& strFault)
{
    fs::file File;
    if (!File.open(pszPath, fs::mode_read))
    {
        strFault = File.last_error().get_error_text();
        return false;
    }
    const uint64_t nBytes = File.length();
    if (nBytes > MAX_FILE_BYTES)
    {
        strFault = std::string(pszPath) + ": the file is too long for a picture";
        return false;
    }
    m_Count = static_cast<size_t>(nBytes);
    m_Bytes.reset(new (std::nothrow) uint8_t[m_Count]);
    if (!m_Bytes)
    {
        strFault = std::string(pszPath) + ": not enough memory";
        return false;
    }
    if (File.read(m_Bytes.get(), m_Count) != m_Count)
    {
        const std::string strReason = File.last_error().get_error_text();
        strFault = strReason.empty() ? std::string(pszPath) + ": cannot be read" : strReason;
        return false;
    }
    return true;
}

bool WriteFileBytes(const char* pszPath, std::span<const uint8_t> Bytes, std::string& strFault)
{
    fs::file File;
    if (File.open(pszPath, fs::mode_write) &&
        File.write(Bytes.data(), Bytes.size()) == Bytes.size() && File.close())
    {
        return true;
    }
    strFault = File.last_error().get_error_text();
    return false;
}
