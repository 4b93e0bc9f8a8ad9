#include "editor/core/FileBackup.h"

#include "host/FileSystem.h"
#include "host/Log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <vector>

namespace
{

constexpr size_t BLOCK = size_t{1} << 20U; // bytes

bool CopyFile(const std::string& strFrom, const std::string& strTo)
{
    fs::file from;
    fs::file to;
    if (!from.open(strFrom.c_str(), fs::mode_read) || !to.open(strTo.c_str(), fs::mode_write))
    {
        return false;
    }
    std::vector<char> block(BLOCK);
    for (uint64_t nLeft = from.length(); nLeft > 0;)
    {
        const auto nBytes = static_cast<size_t>(std::min(nLeft, uint64_t{BLOCK}));
        if (from.read(block.data(), nBytes) != nBytes || to.write(block.data(), nBytes) != nBytes)
        {
            return false;
        }
        nLeft -= nBytes;
    }
    return to.close();
}

} // namespace

bool LinkFile(const std::string& strFile, const std::string& strLink)
{
    return ::linkat(AT_FDCWD, strFile.c_str(), AT_FDCWD, strLink.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool PutBackFile(const std::string& strBackup, const std::string& strPath)
{
    // A second name takes no time; the copy is for file systems that have none.
    if (LinkFile(strBackup, strPath) || CopyFile(strBackup, strPath))
    {
        return true;
    }
    CrashLog("[PutBackFile] what is in %s cannot be written to %s\n",
             strBackup.c_str(),
             strPath.c_str());
    return false;
}

std::string KeepBeside(const std::string& strFile)
{
    std::error_code error;
    struct stat info = {};
    std::string strKept = strFile + ".bak";
    for (int i = 2; ::lstat(strKept.c_str(), &info) == 0; ++i)
    {
        if (std::filesystem::equivalent(strKept, strFile, error))
        {
            return strKept;
        }
        strKept = strFile + ".bak" + std::to_string(i);
    }
    return PutBackFile(strFile, strKept) ? strKept : std::string();
}
