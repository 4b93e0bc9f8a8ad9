#include "engine/files/Paths.h"

#include "host/FileSystem.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace fs
{

namespace
{

std::string g_UserRoot;
std::string g_DataRoot;

// Only letters of ASCII: what is the same name must not depend on the process's locale.
char LowerAscii(char cLetter)
{
    return cLetter >= 'A' && cLetter <= 'Z' ? static_cast<char>(cLetter - 'A' + 'a') : cLetter;
}

bool EqualsIgnoringCase(const std::string& strLeft, const char* pszRight)
{
    size_t i = 0;
    while (i < strLeft.size() && LowerAscii(strLeft[i]) == LowerAscii(pszRight[i]))
    {
        ++i;
    }
    return i == strLeft.size() && pszRight[i] == '\0';
}

bool IsAbsolute(const std::string& strPath)
{
    return !strPath.empty() && strPath.front() == '/';
}

// A link that leads nowhere is there too: writing goes through it.
bool IsThere(const std::string& strPath)
{
    struct stat info = {};
    return ::lstat(strPath.c_str(), &info) == 0;
}

std::string Join(const std::string& strFolder, const std::string& strName)
{
    const bool bSlash = !strFolder.empty() && strFolder.back() != '/';
    return strFolder + (bSlash ? "/" : "") + strName;
}

std::vector<std::string> SplitPath(const std::string& strPath)
{
    std::vector<std::string> parts;
    size_t iStart = 0;
    while (iStart < strPath.size())
    {
        const size_t iEnd = std::min(strPath.find('/', iStart), strPath.size());
        if (iEnd > iStart)
        {
            parts.push_back(strPath.substr(iStart, iEnd - iStart));
        }
        iStart = iEnd + 1;
    }
    return parts;
}

// Entries of the folder that are called strName: the exact one first, then in byte order.
std::vector<std::string> FindEntries(const std::string& strFolder, const std::string& strName)
{
    std::vector<std::string> names;
    DIR* pFolder = ::opendir(strFolder.c_str());
    if (pFolder != nullptr)
    {
        while (const dirent* pEntry = ::readdir(pFolder))
        {
            if (EqualsIgnoringCase(strName, pEntry->d_name) && strName != pEntry->d_name)
            {
                names.emplace_back(pEntry->d_name);
            }
        }
        ::closedir(pFolder);
    }
    std::sort(names.begin(), names.end());
    // Asked for by name: a folder that may be entered but not listed still has its files.
    if (IsThere(Join(strFolder, strName)))
    {
        names.insert(names.begin(), strName);
    }
    return names;
}

// Goes back to the next spelling of a folder when the first one does not hold the rest: systems
// that ignore case have one folder where there may be two here.
std::string
FindIgnoringCase(const std::string& strFolder, const std::vector<std::string>& parts, size_t iPart)
{
    if (iPart == parts.size())
    {
        return strFolder;
    }
    for (const std::string& strName : FindEntries(strFolder, parts[iPart]))
    {
        std::string strFound = FindIgnoringCase(Join(strFolder, strName), parts, iPart + 1);
        if (!strFound.empty())
        {
            return strFound;
        }
    }
    return {};
}

std::string FindBelow(const std::string& strRoot, const std::string& strPath)
{
    // The name as written costs one call; folders are listed only where nothing has it.
    std::string strExact = IsAbsolute(strPath) ? strPath : Join(strRoot, strPath);
    return IsThere(strExact) ? strExact : FindIgnoringCase(strRoot, SplitPath(strPath), 0);
}

std::string MakeAbsoluteFolder(const char* pszFolder)
{
    std::string strFolder = ToNative(pszFolder);
    if (strFolder.empty() || IsAbsolute(strFolder))
    {
        return strFolder;
    }
    std::error_code fault;
    const std::filesystem::path absolute = std::filesystem::absolute(strFolder, fault);
    return fault ? strFolder : absolute.string();
}

std::string GetUserRoot()
{
    if (!g_UserRoot.empty())
    {
        return g_UserRoot;
    }
    std::error_code fault;
    const std::filesystem::path current = std::filesystem::current_path(fault);
    return fault ? "." : current.string();
}

std::string GetFolderPart(const std::string& strPath)
{
    const size_t iSlash = strPath.find_last_of('/');
    return iSlash == std::string::npos ? std::string() : strPath.substr(0, iSlash);
}

} // namespace

std::string ToNative(const char* pszPath)
{
    std::string strPath = pszPath != nullptr ? pszPath : "";
    std::replace(strPath.begin(), strPath.end(), '\\', '/');
    return strPath;
}

std::string FindWritable(const std::string& strPath)
{
    if (strPath.empty())
    {
        return {};
    }
    return FindBelow(IsAbsolute(strPath) ? "/" : GetUserRoot(), strPath);
}

std::string FindExisting(const std::string& strPath)
{
    std::string strFound = FindWritable(strPath);
    if (strFound.empty() && !strPath.empty() && !IsAbsolute(strPath) && !g_DataRoot.empty())
    {
        strFound = FindBelow(g_DataRoot, strPath);
    }
    return strFound;
}

std::string GetWriteTarget(const std::string& strPath)
{
    std::string strFound = FindWritable(strPath);
    if (!strFound.empty() || strPath.empty())
    {
        return strFound;
    }
    const size_t iSlash = strPath.find_last_of('/');
    if (iSlash == std::string::npos)
    {
        return Join(GetUserRoot(), strPath);
    }
    if (iSlash == 0)
    {
        return strPath;
    }
    // The folder by the same rules: a new file goes where its neighbours of another spelling are.
    return Join(GetWriteTarget(strPath.substr(0, iSlash)), strPath.substr(iSlash + 1));
}

void MakeOverlayFolders(const std::string& strPath)
{
    const std::string strFolder = GetFolderPart(strPath);
    if (strFolder.empty() || IsAbsolute(strPath) || !FindWritable(strFolder).empty())
    {
        return;
    }
    std::error_code fault;
    if (std::filesystem::is_directory(FindExisting(strFolder), fault))
    {
        // A failure shows when the file itself is made.
        std::filesystem::create_directories(GetWriteTarget(strFolder), fault);
    }
}

void path_normalize(std::string& strDest, const char* pszSource, bool bLower)
{
    const std::string strSource = ToNative(pszSource);
    const bool bAbsolute = IsAbsolute(strSource);
    std::vector<std::string> kept;
    for (const std::string& strPart : SplitPath(strSource))
    {
        // Leading ".." stay in a relative path, whose folder is not known; above the root is
        // nothing.
        if (strPart == ".." && !kept.empty() && kept.back() != "..")
        {
            kept.pop_back();
        }
        else if (strPart != "." && !(strPart == ".." && bAbsolute))
        {
            kept.push_back(strPart);
        }
    }
    std::string strResult = bAbsolute ? "/" : "";
    for (const std::string& strPart : kept)
    {
        strResult = Join(strResult, strPart);
    }
    if (bLower)
    {
        std::transform(strResult.begin(), strResult.end(), strResult.begin(), LowerAscii);
    }
    strDest = std::move(strResult);
}

bool IsWriteProtected(const std::string& strPath, const struct stat& info)
{
    constexpr mode_t ANY_WRITE = S_IWUSR | S_IWGRP | S_IWOTH;
    return (info.st_mode & ANY_WRITE) == 0 || ::access(strPath.c_str(), W_OK) != 0;
}

void set_user_root(const char* pszFolder)
{
    g_UserRoot = MakeAbsoluteFolder(pszFolder);
}

void set_data_root(const char* pszFolder)
{
    g_DataRoot = MakeAbsoluteFolder(pszFolder);
}

std::string get_user_root()
{
    return g_UserRoot.empty() ? MakeAbsoluteFolder(".") : g_UserRoot;
}

std::string get_data_root()
{
    return g_DataRoot;
}

} // namespace fs
