#include "editor/autosave/JournalText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace
{

constexpr char STEP[] = "// step ";
constexpr char CONTINUES[] = "// continues\n";
constexpr char BEGINS[] = "// begins\n";
constexpr char BITMAP[] = "// bitmap ";
constexpr char LEVEL_BITMAP[] = "// level bitmap ";
constexpr char IDLE[] = "// idle\n";
constexpr size_t PIECE = size_t{1} << 20U;

uint32_t GetChecksum(std::string_view strText)
{
    return static_cast<uint32_t>(
        ::crc32_z(0, reinterpret_cast<const unsigned char*>(strText.data()), strText.size()));
}

std::string MakeMark(std::string_view strText, size_t nStep)
{
    char szMark[64];
    std::snprintf(szMark, sizeof(szMark), "%s%zu %08x\n", STEP, nStep, GetChecksum(strText));
    return szMark;
}

bool ReadAll(const std::string& strFile, std::string& strText, int64_t& iWritten)
{
    // No link is followed, and a pipe of this name must not hold the editor up.
    const int iFile = ::open(strFile.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    struct stat info = {};
    if (iFile < 0 || ::fstat(iFile, &info) != 0 || !S_ISREG(info.st_mode))
    {
        if (iFile >= 0)
        {
            ::close(iFile);
        }
        return false;
    }
    iWritten = info.st_mtime;
    ssize_t nRead = 0;
    size_t nText = 0;
    do
    {
        strText.resize(nText + PIECE);
        nRead = ::read(iFile, strText.data() + nText, PIECE);
        nText += nRead > 0 ? static_cast<size_t>(nRead) : 0;
    } while (nRead > 0);
    strText.resize(nText);
    ::close(iFile);
    return nRead == 0;
}

// The part that ends in the mark of that number: its length without the mark; npos for none.
size_t FindMark(std::string_view strText, size_t nStep)
{
    const std::string strMark = STEP + std::to_string(nStep) + " ";
    size_t iMark = strText.find(strMark);
    while (iMark != std::string_view::npos)
    {
        const std::string strWhole = MakeMark(strText.substr(0, iMark), nStep);
        if (strText.substr(iMark, strWhole.size()) == strWhole)
        {
            return iMark;
        }
        iMark = strText.find(strMark, iMark + 1); // a text in a step may say anything
    }
    return iMark;
}

} // namespace

std::string MakeJournalPart(const std::string& strText, size_t nStep)
{
    return strText + MakeMark(strText, nStep);
}

std::string
MakeJournalHead(const std::string& strDeclarations, const std::string& strOpen, bool bContinues)
{
    return MakeJournalPart((bContinues ? CONTINUES : BEGINS) + strDeclarations + strOpen, 0);
}

std::string MakeBitmapNote(const std::string& strFile, const std::string& strStamp)
{
    std::string strLine = strStamp + "|" + strFile;
    std::replace(strLine.begin(), strLine.end(), '\n', ' '); // fits no file then, which is said
    return BITMAP + strLine + "\n";
}

bool ReadBitmapNote(const std::string& strText, std::string& strFile, std::string& strStamp)
{
    const size_t iNote = strText.find(BITMAP);
    const size_t iBar = strText.find('|', iNote);
    const size_t iEnd = strText.find('\n', iBar);
    if (iNote == std::string::npos || iBar == std::string::npos || iEnd == std::string::npos)
    {
        return false;
    }
    const size_t iStamp = iNote + sizeof(BITMAP) - 1;
    strStamp = strText.substr(iStamp, iBar - iStamp);
    strFile = strText.substr(iBar + 1, iEnd - iBar - 1);
    return true;
}

std::string MakeLevelBitmapNote(const std::string& strBitmap)
{
    std::string strLine = strBitmap;
    std::replace(strLine.begin(), strLine.end(), '\n', ' '); // fits no file then
    return LEVEL_BITMAP + strLine + "\n";
}

bool ReadLevelBitmapNote(const std::string& strText, std::string& strBitmap)
{
    if (!strText.starts_with(LEVEL_BITMAP))
    {
        return false;
    }
    const size_t iName = sizeof(LEVEL_BITMAP) - 1;
    strBitmap = strText.substr(iName, strText.find('\n') - iName);
    return true;
}

std::string MakeIdleNote()
{
    return IDLE;
}

void FollowHistory(const std::string& strStep, size_t& nDone)
{
    const bool bBack = strStep.ends_with("undo()\n"); // of the ground, or of what is painted
    if (bBack)
    {
        nDone -= nDone > 0 ? 1 : 0;
    }
    else if (!strStep.ends_with(IDLE))
    {
        ++nDone;
    }
}

bool ReadJournal(const std::string& strFile, SJournal& journal)
{
    std::string strText;
    if (!ReadAll(strFile, strText, journal.iWritten))
    {
        return false;
    }
    std::string_view strLeft = strText;
    size_t iEnd = FindMark(strLeft, 0);
    if (iEnd == std::string_view::npos)
    {
        journal.bCut = !strText.empty();
        return false;
    }
    // Each mark has the next number and the checksum of its own part. The first part whose mark
    // does not fit was cut off, and nothing behind it counts.
    journal.bContinues = strLeft.starts_with(CONTINUES);
    size_t nStep = 0;
    do
    {
        strLeft.remove_prefix(strLeft.find('\n', iEnd) + 1);
        iEnd = FindMark(strLeft, ++nStep);
        if (iEnd != std::string_view::npos)
        {
            journal.steps.emplace_back(strLeft.substr(0, iEnd));
        }
    } while (iEnd != std::string_view::npos);
    journal.bCut = !strLeft.empty();
    return true;
}
