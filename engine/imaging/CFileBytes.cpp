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
    fs::file file;
    if (!file.open(pszPath, fs::mode_read))
    {
        strFault = file.last_error().get_error_text();
        return false;
    }
    const uint64_t nBytes = file.length();
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
    if (file.read(m_Bytes.get(), m_Count) != m_Count)
    {
        const std::string strReason = file.last_error().get_error_text();
        strFault = strReason.empty() ? std::string(pszPath) + ": cannot be read" : strReason;
        return false;
    }
    return true;
}

bool WriteFileBytes(const char* pszPath, std::span<const uint8_t> bytes, std::string& strFault)
{
    fs::file file;
    if (file.open(pszPath, fs::mode_write) &&
        file.write(bytes.data(), bytes.size()) == bytes.size() && file.close())
    {
        return true;
    }
    strFault = file.last_error().get_error_text();
    return false;
}
