#include "editor/core/AutosaveFiles.h"

#include "editor/core/UserFolders.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <system_error>

namespace
{

constexpr char HEIGHT_EXTENSION[] = ".height";
constexpr char LEVEL_EXTENSION[] = ".level";
constexpr char DECLARATIONS[] = "!autosave_of( s )\n!autosave_heights( s )\n"
                                "!autosave_process( i, s )\n";
constexpr int FIELD_START = 20; // of /proc/PID/stat, counted behind the name
constexpr mode_t FILE_MODE = 0600;

// When the process began, in the system's ticks; empty when there is none. A number of a process is
// given again after its end, so the number alone says nothing.
std::string GetStartTime(int32_t iProcess)
{
    std::ifstream file("/proc/" + std::to_string(iProcess) + "/stat");
    std::string strText{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    size_t iPlace = strText.rfind(')');
    for (int i = 0; i < FIELD_START && iPlace != std::string::npos; ++i)
    {
        iPlace = strText.find(' ', iPlace + 1);
    }
    return iPlace != std::string::npos
               ? strText.substr(iPlace + 1, strText.find(' ', iPlace + 1) - iPlace - 1)
               : "";
}

bool ReadAutosave(const std::string& strFile, SRecoverable& entry)
{
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile(strFile.c_str()));
    std::string strOwner;
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        const char* pszText = GetStringValue(pKey->params);
        if (IsKeyword(pKey, "autosave_of") && pszText != nullptr)
        {
            entry.level.strPath = pszText;
        }
        if (IsKeyword(pKey, "autosave_heights") && pszText != nullptr)
        {
            entry.strHeightFile = pszText;
        }
        if (IsKeyword(pKey, "autosave_process") && pKey->params != nullptr)
        {
            const char* pszStart = GetStringValue(pKey->params->next);
            strOwner = pszStart != nullptr ? pszStart : "";
            const std::string strRunning = GetStartTime(GetIntValue(pKey->params));
            strOwner = strRunning == strOwner ? strOwner : "";
        }
    }
    entry.strFile = strFile;
    if (!strOwner.empty() || entry.strHeightFile.empty())
    {
        return false;
    }
    const std::string strLevel = entry.level.strPath;
    entry.level.Read(pFirst.get()); // a level that was never saved names no height map
    entry.level.strPath = strLevel;
    struct stat state = {};
    const bool bThere = ::stat(entry.strHeightFile.c_str(), &state) == 0;
    entry.iWritten = state.st_mtime;
    return bThere;
}

class CRawFile
{
public:
    explicit CRawFile(const char* pszTemp)
        : m_File(::open(pszTemp, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, FILE_MODE))
    {
    }

    bool IsOpen() const { return m_File >= 0; }

    bool Write(const void* pData, size_t nBytes)
    {
        const char* pNext = static_cast<const char*>(pData);
        while (nBytes > 0)
        {
            const ssize_t nWritten = ::write(m_File, pNext, nBytes);
            if (nWritten < 0 && errno == EINTR)
            {
                continue;
            }
            if (nWritten <= 0)
            {
                return false;
            }
            pNext += nWritten;
            nBytes -= static_cast<size_t>(nWritten);
        }
        return true;
    }

    bool Finish(const char* pszTemp, const char* pszFile)
    {
        const bool bDone = ::fsync(m_File) == 0;
        return ::close(m_File) == 0 && bDone && ::rename(pszTemp, pszFile) == 0;
    }

private:
    int m_File;
};

bool WriteHeights(const SAutosaveJob& job)
{
    constexpr size_t HEADER_WORDS = 8;
    constexpr size_t PIECE = size_t{1} << 22U; // bytes
    uint32_t header[HEADER_WORDS] = {};
    std::memcpy(header, "HEIGHTF1", 8);
    header[2] = job.uVerticesX;
    header[3] = job.uVerticesZ;
    std::memcpy(header + 4, &job.size, sizeof(job.size));
    const auto* pBytes = reinterpret_cast<const unsigned char*>(job.pHeights);
    size_t nLeft = size_t{job.uVerticesX} * job.uVerticesZ * sizeof(float);
    CRawFile file(job.pszHeightTemp);
    uLong uSum = ::crc32(0, reinterpret_cast<const unsigned char*>(header), sizeof(header));
    bool bDone = file.IsOpen() && file.Write(header, sizeof(header));
    while (bDone && nLeft > 0)
    {
        const size_t nPiece = std::min(nLeft, PIECE);
        uSum = ::crc32(uSum, pBytes, static_cast<uInt>(nPiece));
        bDone = file.Write(pBytes, nPiece);
        pBytes += nPiece;
        nLeft -= nPiece;
    }
    const auto uWritten = static_cast<uint32_t>(uSum);
    return bDone && file.Write(&uWritten, sizeof(uWritten)) &&
           file.Finish(job.pszHeightTemp, job.pszHeightFile);
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
        std::filesystem::create_directories(strFolder, error);
        if (::access(strFolder.c_str(), W_OK) == 0)
        {
            return strFolder;
        }
    }
    return {};
}

std::string MakeAutosaveText(const SLevelText& level, const std::string& strHeightFile)
{
    const auto iProcess = static_cast<int32_t>(::getpid());
    std::string strText = DECLARATIONS;
    strText += "autosave_of( " + QuoteText(level.strPath) + " )\n";
    strText += "autosave_heights( " + QuoteText(strHeightFile) + " )\n";
    strText += "autosave_process( " + std::to_string(iProcess) + ", " +
               QuoteText(GetStartTime(iProcess)) + " )\n\n";
    SLevelText absolute = level;
    absolute.strPath.clear(); // nothing is relative to where the copy lies
    return strText + absolute.Write();
}

void FindAutosaves(const std::string& strFolder, std::vector<SRecoverable>& found)
{
    std::error_code error;
    for (const auto& file : std::filesystem::directory_iterator(strFolder, error))
    {
        SRecoverable entry;
        if (file.path().extension() == LEVEL_EXTENSION && ReadAutosave(file.path().string(), entry))
        {
            found.push_back(entry);
        }
    }
}

int WriteAutosave(const SAutosaveJob& job)
{
    if (!WriteHeights(job))
    {
        return errno != 0 ? errno : EIO;
    }
    CRawFile text(job.pszTextTemp);
    const bool bDone = text.IsOpen() && text.Write(job.pszText, job.nText) &&
                       text.Finish(job.pszTextTemp, job.pszTextFile);
    return bDone ? 0 : (errno != 0 ? errno : EIO);
}
