#include "editor/autosave/Recovery.h"

#include "editor/autosave/AutosaveFiles.h"
#include "editor/core/FileNames.h"
#include "editor/core/Processes.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "host/Progress.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <tuple>

namespace
{

constexpr char TEXT_EXTENSION[] = ".level";

bool IsRunning(const SAutosaveText& text)
{
    const std::string strRunning = GetProcessStart(text.iProcess);
    return !strRunning.empty() && strRunning == text.strStart;
}

// The steps of the base's journal and of those that go on from it.
void ReadSteps(SRecoverable& entry)
{
    entry.uLastNumber = entry.text.uNumber;
    for (const uint32_t uNumber : ListAutosaveJournals(entry.strStem))
    {
        // Numbers below are of journals that the base holds already. A journal that is damaged, or
        // begins anew, ends the chain: what follows stands on ground that cannot be given back.
        SJournal journal;
        if (uNumber < entry.text.uNumber)
        {
            continue;
        }
        const bool bRead = ReadJournal(GetAutosaveJournal(entry.strStem, uNumber), journal);
        const bool bContinues = uNumber == entry.text.uNumber || journal.bContinues;
        entry.bCut = journal.bCut && (bContinues || !bRead);
        if (!bRead || !bContinues)
        {
            return;
        }
        entry.steps.insert(entry.steps.end(), journal.steps.begin(), journal.steps.end());
        entry.iWritten = std::max(entry.iWritten, journal.iWritten);
        entry.uLastNumber = uNumber;
    }
}

// Both are there, and the second is older.
bool IsNewer(const std::string& strFile, const std::string& strCopy)
{
    struct stat file = {};
    struct stat copy = {};
    return ::stat(strFile.c_str(), &file) == 0 && ::stat(strCopy.c_str(), &copy) == 0 &&
           std::tie(file.st_mtim.tv_sec, file.st_mtim.tv_nsec) >
               std::tie(copy.st_mtim.tv_sec, copy.st_mtim.tv_nsec);
}

// Another content than that of the base, or files that were written after the copy.
bool IsSavedSince(const SAutosaveText& text)
{
    if (text.strStamp.empty())
    {
        return IsNewer(text.level.strPath, text.strHeights) ||
               IsNewer(text.level.strHeightMap, text.strHeights);
    }
    const std::string strStamp = GetHeightStamp(text.level.strHeightMap);
    return !strStamp.empty() && strStamp != text.strStamp;
}

// Whether the bitmap that a step begins to paint on is another one by now; none: it begins none.
std::optional<bool> IsOtherBitmap(const std::string& strStep, std::string& strFile)
{
    std::string strStamp;
    return ReadBitmapNote(strStep, strFile, strStamp)
               ? std::optional(GetFileStamp(fs::root_path(strFile.c_str())) != strStamp)
               : std::nullopt;
}

// The bitmap on which the last of the steps paint, when that is another one by now.
std::string FindOtherBitmap(const std::vector<std::string>& steps)
{
    std::string strOther;
    std::string strFile;
    for (const std::string& strStep : steps)
    {
        if (const std::optional<bool> bOther = IsOtherBitmap(strStep, strFile))
        {
            strOther = *bOther ? strFile : std::string();
        }
    }
    return strOther;
}

bool ReadRecoverable(const std::string& strFile, SRecoverable& entry)
{
    struct stat info = {};
    if (::lstat(strFile.c_str(), &info) != 0 || !S_ISREG(info.st_mode) ||
        info.st_uid != ::geteuid() || !entry.text.Read(strFile) || IsRunning(entry.text))
    {
        return false;
    }
    entry.strStem = strFile.substr(0, strFile.size() - (sizeof(TEXT_EXTENSION) - 1));
    const int64_t iText = info.st_mtime; // it is written anew when a run takes it over
    ReadSteps(entry);
    const std::string& strHeights = entry.text.strHeights;
    const bool bOwn = !entry.text.strStamp.empty();
    // The steps can only be played on the very heights that they were made on.
    if (bOwn && GetHeightStamp(strHeights) != entry.text.strStamp)
    {
        entry.strFault = entry.text.level.strHeightMap + " is not what it was when they were made";
    }
    const bool bCopy = entry.text.IsCopy();
    entry.bSavedSince = IsSavedSince(entry.text);
    entry.bBitmapSavedSince =
        !entry.text.strBitmap.empty() &&
        IsNewer(fs::root_path(entry.text.strBitmap.c_str()), entry.text.strTexels);
    // Without its copy the text gives nothing back.
    if (bCopy && ::lstat(strHeights.c_str(), &info) != 0)
    {
        return false;
    }
    entry.iWritten = std::max(entry.iWritten, bCopy ? int64_t{info.st_mtime} : 0);
    entry.iWritten = entry.iWritten > 0 ? entry.iWritten : iText;
    entry.strLeftOut = FindOtherBitmap(entry.steps);
    const bool bAny = bCopy || !entry.steps.empty() || !entry.text.strBitmap.empty();
    if (!bAny) // the level's own files are all there is to give back
    {
        if (entry.bCut)
        {
            WarnLog("[FindRecoverable] the first step after the last save of %s was cut off while "
                    "it was written and is lost\n",
                    entry.text.level.strPath.empty() ? "a level without a file"
                                                     : entry.text.level.strPath.c_str());
        }
        RemoveAutosave(entry.strStem);
    }
    return bAny;
}

// Leaves out calls that paint while the bitmap's file is another one than the steps began with.
class CPaintFilter
{
public:
    // Each call of a step begins its line, which nothing inside a block does.
    std::string Filter(const std::string& strStep)
    {
        std::string strFile;
        if (const std::optional<bool> bOther = IsOtherBitmap(strStep, strFile))
        {
            // The note stands before the call that loads the bitmap; until the next one all is
            // painted on it.
            m_bChanged = *bOther;
            if (m_bChanged)
            {
                WarnLog("[PlaySteps] %s has changed since: what was painted on it is left out\n",
                        strFile.c_str());
            }
        }
        std::string strKept;
        for (size_t iLine = 0; iLine < strStep.size();)
        {
            const size_t iEnd = std::min(strStep.find('\n', iLine), strStep.size() - 1);
            const std::string strLine = strStep.substr(iLine, iEnd + 1 - iLine);
            strKept += IsLeftOut(strLine) ? "" : strLine;
            iLine = iEnd + 1;
        }
        return strKept;
    }

private:
    bool IsLeftOut(const std::string& strLine)
    {
        if (strLine.starts_with("mode("))
        {
            m_bPainting = strLine.find("edit_terrain_type") != std::string::npos;
            return m_bChanged && m_bPainting;
        }
        // The mouse paints only while the mode is the one that paints; the same calls sculpt
        // otherwise.
        const bool bMouse = strLine.starts_with("press") || strLine.starts_with("move") ||
                            strLine.starts_with("release");
        return m_bChanged && (strLine.starts_with("paint_") || (bMouse && m_bPainting));
    }

    bool m_bChanged = false;
    bool m_bPainting = false;
};

// Parses text that no file has: the parser reads files, so the text becomes one in memory.
bool Parse(const std::string& strText, std::unique_ptr<CTCPARSE_KEYWORD>& pFirst)
{
    const int iFile = ::memfd_create("steps", MFD_CLOEXEC);
    const bool bWritten = iFile >= 0 && WriteAll(iFile, strText.data(), strText.size());
    ETCParseStatus eStatus = tcparse_unreadable;
    if (bWritten)
    {
        const std::string strPath = "/proc/self/fd/" + std::to_string(iFile);
        pFirst.reset(
            TCParseFile(strPath.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    }
    if (iFile >= 0)
    {
        ::close(iFile);
    }
    return eStatus == tcparse_done;
}

} // namespace

std::vector<SRecoverable> FindRecoverable(const std::vector<std::string>& levels)
{
    std::vector<std::string> folders = {GetStateAutosaveFolder()};
    for (const std::string& strLevel : levels)
    {
        std::error_code error; // a folder by two names is one
        const std::filesystem::path folder =
            std::filesystem::weakly_canonical(std::filesystem::path(strLevel).parent_path(), error);
        const std::string strFolder = (folder / AUTOSAVE_FOLDER).string();
        if (std::find(folders.begin(), folders.end(), strFolder) == folders.end())
        {
            folders.push_back(strFolder);
        }
    }
    std::vector<SRecoverable> found;
    for (const std::string& strFolder : folders)
    {
        std::error_code error;
        // A folder of somebody else could offer anything as this user's own work.
        const std::string strListed = IsOwnFolder(strFolder) ? strFolder : std::string();
        for (const auto& file : std::filesystem::directory_iterator(strListed, error))
        {
            SRecoverable entry;
            if (file.path().extension() == TEXT_EXTENSION &&
                ReadRecoverable(file.path().string(), entry))
            {
                found.push_back(entry);
            }
        }
    }
    std::stable_sort(found.begin(),
                     found.end(),
                     [](const SRecoverable& a, const SRecoverable& b)
                     { return a.iWritten > b.iWritten; });
    return found;
}

size_t CountHistorySteps(const SRecoverable& entry, size_t nFirst)
{
    size_t nDone = 0;
    for (size_t i = 0; i < std::min(nFirst, entry.steps.size()); ++i)
    {
        FollowHistory(entry.steps[i], nDone);
    }
    return nDone;
}

bool PlaySteps(const SRecoverable& entry,
               const std::string& strDeclarations,
               const FPlayStep& play,
               const FNameBitmap& nameBitmap,
               size_t& nPlayed,
               std::string& strFault)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pFirst;
    nPlayed = 0;
    // The strokes that the copy holds come first, because the steps go on painting over them.
    if (!entry.text.strBitmap.empty() &&
        (!Parse(strDeclarations + "paint_restore( " + QuoteText(entry.text.strBitmap) + ", " +
                    QuoteText(entry.text.strTexels) + " )\n",
                pFirst) ||
         !play(pFirst.get(), strFault)))
    {
        return false;
    }
    CPaintFilter filter;
    std::string strBitmap;
    CProgressSteps progress("Giving steps back", entry.steps.size());
    for (const std::string& strStep : entry.steps)
    {
        if (!progress.Reach(nPlayed))
        {
            strFault = "cancelled";
            return false;
        }
        if (!Parse(strDeclarations + filter.Filter(strStep), pFirst))
        {
            strFault = "step " + std::to_string(nPlayed + 1) + " cannot be parsed, see the log";
            return false;
        }
        if (!play(pFirst.get(), strFault))
        {
            return false;
        }
        if (ReadLevelBitmapNote(strStep, strBitmap))
        {
            nameBitmap(strBitmap);
        }
        ++nPlayed;
    }
    return true;
}
