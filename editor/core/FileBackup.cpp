#include "editor/core/FileBackup.h"

#include "host/FileSystem.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
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

bool PutBackFile(const std::string& strBackup, const std::string& strPath)
{
    // A link takes no room and no time, but not every file system has them. One to a link of the
    // other kind would be written through.
    return ::linkat(AT_FDCWD, strBackup.c_str(), AT_FDCWD, strPath.c_str(), AT_SYMLINK_FOLLOW) ==
               0 ||
           CopyFile(strBackup, strPath);
}
