#include "engine/elevation/SExportNotes.h"

#include "engine/elevation/SExportForm.h"
#include "host/FileBytes.h"
#include "host/FileSystem.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace
{

constexpr uint64_t MOST_NOTES = 65536; // bytes

// The rest of the first line that begins so; empty without one.
std::string_view FindNote(std::string_view text, std::string_view start)
{
    size_t nLine = 0;
    while (nLine < text.size())
    {
        const size_t nEnd = std::min(text.find('\n', nLine), text.size());
        std::string_view line = text.substr(nLine, nEnd - nLine);
        if (line.starts_with(start))
        {
            line.remove_prefix(start.size());
            return line;
        }
        nLine = nEnd + 1;
    }
    return {};
}

// Takes a number off the front. False when there is none.
template <typename TNumber> bool TakeNumber(std::string_view& text, TNumber& number)
{
    const auto [pEnd, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || !std::isfinite(static_cast<double>(number)))
    {
        return false;
    }
    text.remove_prefix(static_cast<size_t>(pEnd - text.data()));
    return true;
}

bool TakeWords(std::string_view& text, std::string_view words)
{
    const bool bThere = text.starts_with(words);
    text.remove_prefix(bThere ? words.size() : 0);
    return bThere;
}

// "65 x 33".
template <typename TNumber> bool TakePair(std::string_view& text, TNumber& first, TNumber& second)
{
    return TakeNumber(text, first) && TakeWords(text, " x ") && TakeNumber(text, second);
}

bool ReadSamples(std::string_view text, SExportNotes& notes)
{
    uint32_t uAlong = 0;
    notes.uTiles = 1;
    if (!TakePair(text, notes.uColumns, notes.uRows))
    {
        return false;
    }
    if (TakeWords(text, " tiles of "))
    {
        notes.uTiles = std::exchange(notes.uColumns, 0);
        uAlong = std::exchange(notes.uRows, 0);
        if (uAlong != notes.uTiles || !TakePair(text, notes.uColumns, notes.uRows))
        {
            return false;
        }
    }
    notes.bSouthFirst = text.starts_with(", the first row is south");
    const uint32_t uLeast = std::min(notes.uColumns, notes.uRows);
    const uint32_t uMost = std::max(notes.uColumns, notes.uRows);
    return uLeast >= MIN_SAMPLES && uMost <= MAX_SAMPLES && notes.uTiles >= 1 &&
           notes.uTiles <= MOST_TILES;
}

bool ReadOne(std::string_view text, double& dNumber)
{
    return TakeNumber(text, dNumber) && text.empty();
}

} // namespace

bool SExportNotes::Read(const std::string& strPath)
{
    SFileBytes bytes;
    std::string strError;
    if (!fs::exists(strPath.c_str()) ||
        ReadFileBytes(strPath.c_str(), MOST_NOTES, bytes, strError) != EFileRead::Done)
    {
        return false;
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes.pBytes.get()), bytes.nCount);
    const bool bSteps = !FindNote(text, "Height of one step: ").empty();
    std::string_view size = FindNote(text, "Size: ");
    SExportNotes read;
    if (!ReadSamples(FindNote(text, "Samples: "), read) ||
        !ReadOne(FindNote(text, bSteps ? "Height of one step: " : "Height of one unit: "),
                 read.dUnit) ||
        !ReadOne(FindNote(text, "Height of 0 in the file: "), read.dBase) ||
        !TakePair(size, read.dWidth, read.dDepth) ||
        !ReadOne(FindNote(text, "Maximum height: "), read.dHighest) ||
        std::min({read.dUnit, read.dWidth, read.dDepth, read.dHighest}) <= 0.0)
    {
        return false;
    }
    const std::string_view order = FindNote(text, "Byte order: ");
    read.eByteOrder = order == "big"      ? EByteOrder::Big
                      : order == "little" ? EByteOrder::Little
                                          : EByteOrder::None;
    *this = read;
    return true;
}
