#include "tools/height/SampleFile.h"

#include "host/FileSystem.h"
#include "host/Log.h"
#include "tools/height/HgtReader.h"
#include "tools/height/NpyReader.h"

#include <strings.h>

#include <new>

namespace
{

bool HasExtension(const std::string& strPath, const std::string& strExtension)
{
    return strPath.size() > strExtension.size() &&
           strcasecmp(strPath.c_str() + strPath.size() - strExtension.size(),
                      strExtension.c_str()) == 0;
}

bool LoadBytes(const std::string& strPath, std::vector<uint8_t>& bytes, std::string& strFault)
{
    fs::file file;
    if (!file.open(strPath.c_str(), fs::mode_read))
    {
        CrashLog("[ReadSamples] %s\n", file.last_error().get_error_text());
        return false;
    }
    bytes.resize(file.length());
    if (file.read(bytes.data(), bytes.size()) != bytes.size())
    {
        strFault = "cannot be read to its end";
    }
    return strFault.empty();
}

bool Decode(const std::string& strPath,
            const std::vector<uint8_t>& bytes,
            SSampleGrid& grid,
            std::string& strFault)
{
    if (IsNpy(bytes) || HasExtension(strPath, ".npy"))
    {
        return DecodeNpy(bytes, grid, strFault);
    }
    if (HasExtension(strPath, ".hgt"))
    {
        return DecodeHgt(bytes, grid, strFault);
    }
    strFault = "neither a .npy nor a .hgt file";
    return false;
}

} // namespace

bool ReadSamples(const std::string& strPath, SSampleGrid& grid)
{
    std::string strFault;
    bool bRead = false;
    try
    {
        std::vector<uint8_t> bytes;
        bRead = LoadBytes(strPath, bytes, strFault) && Decode(strPath, bytes, grid, strFault);
    }
    catch (const std::bad_alloc&)
    {
        strFault = "not enough memory";
    }
    if (!bRead && !strFault.empty())
    {
        CrashLog("[ReadSamples] %s: %s\n", strPath.c_str(), strFault.c_str());
    }
    return bRead;
}
