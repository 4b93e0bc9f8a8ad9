#include "editor/autosave/AutosaveFiles.h"

#include "editor/core/FileBackup.h"
#include "editor/core/FileNames.h"
#include "editor/core/Processes.h"
#include "editor/core/UserFolders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace
{

constexpr char TEXT[] = ".level";
constexpr char TEXT_TEMP[] = ".level.tmp";
constexpr char HEIGHTS[] = ".height";
constexpr char TEXELS[] = ".tga";
constexpr char JOURNAL[] = ".tellur";
constexpr size_t TITLE_BYTES_KEPT = 200; // leaves room for the rest in a system's 255

std::string GetNumbered(const std::string& strStem, uint32_t uNumber, const char* pszExtension)
{
    return strStem + "." + std::to_string(uNumber) + pszExtension;
}

// Splits "NAME-PID.K.height" and its likes. Number 0: the text.
bool SplitName(const std::string& strName, std::string& strStem, uint32_t& uNumber)
{
    uNumber = 0;
    if (strName.ends_with(TEXT))
    {
        strStem = strName.substr(0, strName.size() - (sizeof(TEXT) - 1));
        return true;
    }
    for (const std::string_view strEnd : {TEXT_TEMP, HEIGHTS, TEXELS, JOURNAL})
    {
        // The title may have dots, too, so the number is behind the last one before the ending.
        const size_t iDot = strName.rfind('.', strName.size() - strEnd.size() - 1);
        if (strName.ends_with(strEnd) && iDot != std::string::npos && iDot > 0)
        {
            uNumber = static_cast<uint32_t>(std::strtoul(strName.c_str() + iDot + 1, nullptr, 10));
            strStem = strName.substr(0, iDot);
            return uNumber > 0;
        }
    }
    return false;
}

struct SFile
{
    std::string strPath;
    std::string strStem; // with its folder
    uint32_t uNumber = 0;
};

std::vector<SFile> ListFiles(const std::string& strFolder)
{
    std::vector<SFile> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(strFolder, error))
    {
        SFile file;
        if (SplitName(entry.path().filename().string(), file.strStem, file.uNumber))
        {
            file.strPath = entry.path().string();
            file.strStem.insert(0, strFolder + "/");
            files.push_back(file);
        }
    }
    return files;
}

std::string GetFolder(const std::string& strStem)
{
    return std::filesystem::path(strStem).parent_path().string();
}

bool IsThere(const std::string& strFile)
{
    struct stat info = {};
    return ::lstat(strFile.c_str(), &info) == 0;
}

// What processes have left that ended between two files: a text that is alone has no step and no
// copy, and without the text nobody knows what the others are.
void Sweep(const std::string& strFolder)
{
    const std::vector<SFile> files = ListFiles(strFolder);
    for (const SFile& file : files)
    {
        // The process's number is behind the last '-'; a "_2" behind it ends the number.
        const int iProcess = std::atoi(file.strStem.c_str() + file.strStem.rfind('-') + 1);
        const bool bAlone = std::count_if(files.begin(),
                                          files.end(),
                                          [&file](const SFile& other)
                                          { return other.strStem == file.strStem; }) == 1;
        if (iProcess > 0 && GetProcessStart(iProcess).empty() &&
            (bAlone || !IsThere(GetAutosaveText(file.strStem))))
        {
            ::unlink(file.strPath.c_str());
        }
    }
}

} // namespace

std::string GetStateAutosaveFolder()
{
    return GetUserStateFolder() + "/autosave";
}

std::string MakeAutosaveFolder(const std::string& strLevelPath)
{
    std::vector<std::string> folders;
    if (!strLevelPath.empty())
    {
        folders.push_back(
            (std::filesystem::path(strLevelPath).parent_path() / AUTOSAVE_FOLDER).string());
    }
    folders.push_back(GetStateAutosaveFolder());
    for (const std::string& strFolder : folders)
    {
        std::error_code error;
        std::filesystem::create_directories(GetFolder(strFolder), error);
        // A folder of somebody else, or a link, could lead the copies to where others read or
        // change them: the next folder is tried instead.
        ::mkdir(strFolder.c_str(), PRIVATE_FOLDER_MODE);
        if (IsOwnFolder(strFolder) && ::access(strFolder.c_str(), W_OK) == 0)
        {
            return strFolder;
        }
    }
    return {};
}

std::string MakeAutosaveStem(const std::string& strFolder, const std::string& strTitle)
{
    Sweep(strFolder);
    const std::string strName = strFolder + "/" + ShortenName(strTitle, TITLE_BYTES_KEPT) + "-" +
                                std::to_string(::getpid());
    std::string strStem = strName;
    const std::vector<SFile> files = ListFiles(strFolder);
    const auto isTaken = [&files](const std::string& strTried)
    {
        for (const SFile& file : files) // of a process of the same number, or somebody else's
        {
            if (file.strStem == strTried)
            {
                return true;
            }
        }
        return false;
    };
    for (int i = 2; isTaken(strStem); ++i)
    {
        strStem = strName + "_" + std::to_string(i);
    }
    return strStem;
}

std::string GetAutosaveText(const std::string& strStem)
{
    return strStem + TEXT;
}

std::string GetAutosaveTextTemp(const std::string& strStem, uint32_t uNumber)
{
    return GetNumbered(strStem, uNumber, TEXT_TEMP);
}

std::string GetAutosaveHeights(const std::string& strStem, uint32_t uNumber)
{
    return GetNumbered(strStem, uNumber, HEIGHTS);
}

std::string GetAutosaveTexels(const std::string& strStem, uint32_t uNumber)
{
    return GetNumbered(strStem, uNumber, TEXELS);
}

std::string GetAutosaveJournal(const std::string& strStem, uint32_t uNumber)
{
    return GetNumbered(strStem, uNumber, JOURNAL);
}

std::vector<uint32_t> ListAutosaveJournals(const std::string& strStem)
{
    std::vector<uint32_t> numbers;
    for (const SFile& file : ListFiles(GetFolder(strStem)))
    {
        if (file.strStem == strStem && file.strPath.ends_with(JOURNAL))
        {
            numbers.push_back(file.uNumber);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

void RemoveAutosave(const std::string& strStem)
{
    // What it all belongs to goes first: half of it then means nothing to anybody.
    ::unlink(GetAutosaveText(strStem).c_str());
    for (const SFile& file : ListFiles(GetFolder(strStem)))
    {
        if (file.strStem == strStem)
        {
            ::unlink(file.strPath.c_str());
        }
    }
    ::rmdir(GetFolder(strStem).c_str()); // when it is empty
}

void RemoveOlderAutosave(const std::string& strStem, uint32_t uNumber)
{
    for (const SFile& file : ListFiles(GetFolder(strStem)))
    {
        if (file.strStem == strStem && file.uNumber > 0 && file.uNumber < uNumber)
        {
            ::unlink(file.strPath.c_str());
        }
    }
}

void RemoveAutosaveCopy(const std::string& strStem, uint32_t uNumber)
{
    ::unlink(GetAutosaveTextTemp(strStem, uNumber).c_str());
    ::unlink(GetAutosaveHeights(strStem, uNumber).c_str());
    ::unlink(GetAutosaveTexels(strStem, uNumber).c_str());
}

std::string GetHeightStamp(const std::string& strFile)
{
    uint32_t uChecksum = 0;
    struct stat info = {};
    // Without O_NONBLOCK a pipe of this name would hold the editor up.
    const int iFile = ::open(strFile.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const bool bRead = iFile >= 0 && ::fstat(iFile, &info) == 0 && S_ISREG(info.st_mode) &&
                       info.st_size > static_cast<off_t>(sizeof(uChecksum)) &&
                       ::pread(iFile,
                               &uChecksum,
                               sizeof(uChecksum),
                               info.st_size - static_cast<off_t>(sizeof(uChecksum))) ==
                           static_cast<ssize_t>(sizeof(uChecksum));
    if (iFile >= 0)
    {
        ::close(iFile);
    }
    return bRead ? std::to_string(info.st_size) + " " + std::to_string(uChecksum) : "";
}

bool LinkHeights(const std::string& strFile,
                 const std::string& strStamp,
                 const std::string& strLink)
{
    if (!LinkFile(strFile, strLink))
    {
        return false;
    }
    // Another program may have replaced the file before it was linked. What has the second name
    // cannot be exchanged any more, so the stamp is looked at there.
    const bool bSame = GetHeightStamp(strLink) == strStamp;
    if (!bSame)
    {
        ::unlink(strLink.c_str());
    }
    return bSame;
}

std::string GetFileStamp(const std::string& strFile)
{
    struct stat info = {};
    return ::stat(strFile.c_str(), &info) == 0
               ? std::to_string(info.st_size) + " " + std::to_string(info.st_mtim.tv_sec) + "." +
                     std::to_string(info.st_mtim.tv_nsec)
               : "";
}
