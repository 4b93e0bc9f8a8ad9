#include "engine/imaging/CFileBytes.h"

#include "host/FileSystem.h"

namespace
{

// No picture that passes the size check is longer.
constexpr uint64_t MAX_FILE_BYTES = uint64_t{2} << 30;

} // namespace

bool CFileBytes::Read(const char* pszPath, std::string& strFault)
{
    const EFileRead eResult = ReadFileBytes(pszPath, MAX_FILE_BYTES, m_Bytes, strFault);
    switch (eResult)
    {
    case EFileRead::Done:
    case EFileRead::NotOpened:
        break;
    case EFileRead::TooLong:
        strFault = std::string(pszPath) + ": the file is too long for a picture";
        break;
    case EFileRead::NoMemory:
        strFault = std::string(pszPath) + ": not enough memory";
        break;
    case EFileRead::NotRead:
        strFault = strFault.empty() ? std::string(pszPath) + ": cannot be read" : strFault;
        break;
    }
    return eResult == EFileRead::Done;
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
