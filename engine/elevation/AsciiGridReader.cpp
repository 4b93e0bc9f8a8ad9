#include "engine/elevation/AsciiGridReader.h"

#include "engine/elevation/DecodeGrid.h"
#include "engine/elevation/MapSystem.h"
#include "host/Progress.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace
{

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

std::string ToLower(std::string_view text)
{
    std::string strLower(text);
    for (char& c : strLower)
    {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    }
    return strLower;
}

// A piece of the file for a message: short, and without what a terminal would act on.
std::string Quote(std::string_view text)
{
    constexpr size_t MAX_SHOWN = 24;
    std::string strQuoted = "\"";
    for (const char c : text.substr(0, MAX_SHOWN))
    {
        strQuoted += c > ' ' && c <= '~' ? c : '?';
    }
    return strQuoted + (text.size() > MAX_SHOWN ? "...\"" : "\"");
}

template <typename TNumber> bool ParseNumber(std::string_view text, TNumber& number)
{
    // from_chars takes no '+', which files may have.
    const bool bPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    const char* const pEnd = text.data() + text.size();
    const auto [pStop, fault] = std::from_chars(text.data() + (bPlus ? 1 : 0), pEnd, number);
    return fault == std::errc() && pStop == pEnd;
}

class CAsciiGridDecoder
{
public:
    explicit CAsciiGridDecoder(std::span<const uint8_t> bytes)
        : m_Next(reinterpret_cast<const char*>(bytes.data()))
        , m_End(m_Next + bytes.size())
    {
    }

    bool Decode() { return ReadHeader() && CheckHeader() && ReadSamples(); }

    SSampleGrid& GetGrid() { return m_Grid; }

    const std::string& GetFault() const { return m_Fault; }

private:
    enum EKey : size_t
    {
        KEY_COLUMNS,
        KEY_ROWS,
        KEY_CORNER_X,
        KEY_CORNER_Y,
        KEY_CENTER_X,
        KEY_CENTER_Y,
        KEY_CELL,
        KEY_CELL_X,
        KEY_CELL_Y,
        KEY_NO_DATA,
        KEYS,
    };

    std::string_view TakeWord();
    bool ReadHeader();
    bool CheckHeader();
    void ReadPlace();
    bool CheckSide(EKey eKey, const char* pszName, uint32_t& uSide);
    bool ReadSamples();
    bool ReadSample(size_t nIndex);

    bool Fail(std::string strFault)
    {
        m_Fault = std::move(strFault);
        return false;
    }

    const char* m_Next;
    const char* m_End;
    std::optional<double> m_Values[KEYS];
    SSampleGrid m_Grid;
    std::string m_Fault;
};

// Empty at the end of the file.
std::string_view CAsciiGridDecoder::TakeWord()
{
    while (m_Next != m_End && IsBlank(*m_Next))
    {
        ++m_Next;
    }
    const char* const pStart = m_Next;
    while (m_Next != m_End && !IsBlank(*m_Next))
    {
        ++m_Next;
    }
    return {pStart, static_cast<size_t>(m_Next - pStart)};
}

bool CAsciiGridDecoder::ReadHeader()
{
    static constexpr std::pair<std::string_view, EKey> WORDS[] = {
        {"ncols", KEY_COLUMNS},
        {"nrows", KEY_ROWS},
        {"xllcorner", KEY_CORNER_X},
        {"xllcenter", KEY_CENTER_X},
        {"yllcorner", KEY_CORNER_Y},
        {"yllcenter", KEY_CENTER_Y},
        {"cellsize", KEY_CELL},
        {"dx", KEY_CELL_X},
        {"dy", KEY_CELL_Y},
        {"nodata_value", KEY_NO_DATA},
    };
    for (;;)
    {
        const char* const pBefore = m_Next;
        const std::string_view word = TakeWord();
        double dValue = 0.0;
        if (word.empty() || !IsLetter(word[0]) || ParseNumber(word, dValue))
        {
            m_Next = pBefore; // the samples begin, possibly with "nan"
            return true;
        }
        const auto* const pWord = std::find_if(std::begin(WORDS),
                                               std::end(WORDS),
                                               [strLower = ToLower(word)](const auto& known)
                                               { return known.first == strLower; });
        if (pWord == std::end(WORDS))
        {
            return Fail("unknown word " + Quote(word) + " in the header");
        }
        const std::string_view number = TakeWord();
        if (!ParseNumber(number, dValue))
        {
            return Fail(std::string(pWord->first) + " " + Quote(number) + " is no number");
        }
        m_Values[pWord->second] = dValue;
    }
}

bool CAsciiGridDecoder::CheckSide(EKey eKey, const char* pszName, uint32_t& uSide)
{
    if (!m_Values[eKey])
    {
        return Fail(std::string("the header has no ") + pszName);
    }
    const double dSide = *m_Values[eKey];
    if (!(dSide >= MIN_SAMPLES && dSide <= MAX_SAMPLES) || dSide != std::floor(dSide))
    {
        return Fail(std::string(pszName) + " must be a whole number from " +
                    std::to_string(MIN_SAMPLES) + " to " + std::to_string(MAX_SAMPLES));
    }
    uSide = static_cast<uint32_t>(dSide);
    return true;
}

bool CAsciiGridDecoder::CheckHeader()
{
    if (!CheckSide(KEY_COLUMNS, "ncols", m_Grid.uColumns) ||
        !CheckSide(KEY_ROWS, "nrows", m_Grid.uRows))
    {
        return false;
    }
    // A spacing of one axis counts before the one that stands for both.
    const auto getSpacing = [&](EKey eKey)
    {
        return m_Values[eKey] ? *m_Values[eKey] : m_Values[KEY_CELL].value_or(0.0);
    };
    m_Grid.dSpacingX = getSpacing(KEY_CELL_X);
    m_Grid.dSpacingZ = getSpacing(KEY_CELL_Y);
    if (!(m_Grid.dSpacingX > 0.0) || !(m_Grid.dSpacingZ > 0.0) ||
        !std::isfinite(m_Grid.dSpacingX + m_Grid.dSpacingZ))
    {
        return Fail("the header has no cellsize above 0");
    }
    ReadPlace();
    return true;
}

void CAsciiGridDecoder::ReadPlace()
{
    // Of the south-west sample, or of the outer corner of its cell.
    const auto find = [this](EKey eCenter, EKey eCorner, double dSpacing, double& dPlace)
    {
        const std::optional<double>& corner = m_Values[eCorner];
        dPlace = m_Values[eCenter] ? *m_Values[eCenter] : corner.value_or(NAN) + dSpacing / 2.0;
        return std::isfinite(dPlace);
    };
    SMapPoint place;
    const bool bFoundX = find(KEY_CENTER_X, KEY_CORNER_X, m_Grid.dSpacingX, place.dX);
    const bool bFoundY = find(KEY_CENTER_Y, KEY_CORNER_Y, m_Grid.dSpacingZ, place.dY);
    if (!bFoundX || !bFoundY)
    {
        const auto isSaid = [this](EKey eCenter, EKey eCorner)
        {
            return m_Values[eCenter].has_value() || m_Values[eCorner].has_value();
        };
        m_Grid.bBadPlace = (!bFoundX && isSaid(KEY_CENTER_X, KEY_CORNER_X)) ||
                           (!bFoundY && isSaid(KEY_CENTER_Y, KEY_CORNER_Y));
        return;
    }
    // The format must say a corner, so grids that lie nowhere say that of GetNowhere.
    const double dCell = std::max(m_Grid.dSpacingX, m_Grid.dSpacingZ);
    const double dNowhere = GetNowhere(dCell);
    const auto getSaid = [this](EKey eCenter, EKey eCorner)
    {
        return m_Values[eCenter] ? *m_Values[eCenter] : *m_Values[eCorner];
    };
    if (getSaid(KEY_CENTER_X, KEY_CORNER_X) == dNowhere &&
        getSaid(KEY_CENTER_Y, KEY_CORNER_Y) == dNowhere)
    {
        return;
    }
    // The format names no unit: small cells at a place that the globe has are taken for degrees.
    m_Grid.bInDegrees =
        dCell < MAX_DEGREES_CELL && std::fabs(place.dX) <= 360.0 && std::fabs(place.dY) <= 90.0;
    SGeoTags geo;
    geo.bKnown = true;
    geo.bDegrees = m_Grid.bInDegrees;
    geo.bCells = !m_Values[KEY_CENTER_X];
    geo.noData = m_Values[KEY_NO_DATA];
    geo.lastZ = place;
    geo.first = {place.dX, place.dY + m_Grid.dSpacingZ * (m_Grid.uRows - 1)};
    geo.lastX = {place.dX + m_Grid.dSpacingX * (m_Grid.uColumns - 1), geo.first.dY};
    m_Grid.bBadPlace = !IsPlacePossible(geo);
    m_Grid.geo = m_Grid.bBadPlace ? SGeoTags() : geo;
}

bool CAsciiGridDecoder::ReadSamples()
{
    const size_t nSamples = size_t{m_Grid.uColumns} * m_Grid.uRows;
    // A sample takes a digit and a blank at least.
    m_Grid.samples.reserve(std::min(nSamples, static_cast<size_t>(m_End - m_Next) / 2 + 1));
    CProgressSteps progress("Reading the height map", nSamples);
    for (size_t i = 0; i < nSamples; ++i)
    {
        if (!progress.Reach(i))
        {
            return Fail("cancelled");
        }
        if (!ReadSample(i))
        {
            return false;
        }
    }
    // Whatever follows the last sample contradicts the header.
    return TakeWord().empty() || Fail("more samples than " + std::to_string(m_Grid.uRows) +
                                      " rows of " + std::to_string(m_Grid.uColumns) + " have");
}

bool CAsciiGridDecoder::ReadSample(size_t nIndex)
{
    const std::string_view word = TakeWord();
    // Straight to a float, so that the shortest text of one gives it back. The detour over a double
    // is for what is too small for a float, and tells what is too large from what is no number.
    float fValue = 0.0F;
    double dValue = 0.0;
    bool bNumber = ParseNumber(word, fValue);
    if (!bNumber && ParseNumber(word, dValue))
    {
        bNumber = true;
        fValue = static_cast<float>(dValue);
    }
    const std::optional<double>& noData = m_Values[KEY_NO_DATA];
    // As 32-bit numbers too: header and samples often differ in their last digits.
    const bool bVoid =
        bNumber && (std::isnan(fValue) || (noData && fValue == static_cast<float>(*noData)));
    if (bVoid || (bNumber && std::isfinite(fValue)))
    {
        m_Grid.samples.push_back(bVoid ? std::numeric_limits<float>::quiet_NaN() : fValue);
        return true;
    }
    // Only a sample that failed comes here, so telling the faults apart costs the others nothing.
    const std::string strRow = "row " + std::to_string(nIndex / m_Grid.uColumns + 1);
    const size_t nColumn = nIndex % m_Grid.uColumns;
    if (word.empty())
    {
        return Fail("the file ends in " + strRow + " of " + std::to_string(m_Grid.uRows) +
                    ", after " + std::to_string(nColumn) + " of " +
                    std::to_string(m_Grid.uColumns) + " samples");
    }
    return Fail(strRow + ", column " + std::to_string(nColumn + 1) + ": " + Quote(word) +
                (bNumber ? " is out of range" : " is no number"));
}

} // namespace

bool IsAsciiGrid(std::span<const uint8_t> bytes)
{
    const auto* pStart = std::find_if_not(
        bytes.data(), bytes.data() + bytes.size(), [](uint8_t u) { return std::isspace(u) != 0; });
    std::string strWord(pStart, std::min(pStart + 5, bytes.data() + bytes.size()));
    std::transform(strWord.begin(),
                   strWord.end(),
                   strWord.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return strWord == "ncols" || strWord == "nrows";
}

bool DecodeAsciiGrid(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    return DecodeGrid<CAsciiGridDecoder>(bytes, grid, strFault);
}
