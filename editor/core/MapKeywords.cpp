#include "editor/core/MapKeywords.h"

#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace
{

constexpr char PLACE[] = "map_place";
constexpr char TAGS[] = "map_tags";
constexpr char DEGREES[] = "degrees";
constexpr char CELLS[] = "cells";
constexpr size_t MOST_NUMBERS = 1000; // that one text may hold

template <typename TNumber> void AppendNumber(std::string& strText, TNumber number)
{
    char aText[40];
    const auto [pEnd, error] = std::to_chars(std::begin(aText), std::end(aText), number);
    strText.append(strText.empty() ? "" : " ").append(aText, pEnd);
}

template <typename TNumber> std::string MakeList(const std::vector<TNumber>& numbers)
{
    std::string strText;
    for (const TNumber number : numbers)
    {
        AppendNumber(strText, number);
    }
    return strText;
}

// False when the text is no row of finite numbers with blanks between them.
template <typename TNumber> bool ReadList(std::string_view text, std::vector<TNumber>& numbers)
{
    numbers.clear();
    while (!text.empty())
    {
        TNumber number = 0;
        const auto [pEnd, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        text.remove_prefix(static_cast<size_t>(pEnd - text.data()));
        if (error != std::errc() || numbers.size() == MOST_NUMBERS ||
            !std::isfinite(static_cast<double>(number)) || (!text.empty() && text.front() != ' '))
        {
            return false;
        }
        numbers.push_back(number);
        text.remove_prefix(text.empty() ? 0 : 1);
    }
    return true;
}

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

bool ReadPoint(const CTCPARSE_PARAM* pParam, SMapPoint& point)
{
    std::vector<double> numbers;
    if (!ReadList(GetText(pParam), numbers) || numbers.size() != 2)
    {
        return false;
    }
    point = {numbers[0], numbers[1]};
    return true;
}

void ReadPlace(const CTCPARSE_PARAM* pParam, SGeoTags& geo)
{
    geo.bKnown = true;
    for (SMapPoint* pPoint : {&geo.first, &geo.lastX, &geo.lastZ})
    {
        geo.bKnown = geo.bKnown && ReadPoint(pParam, *pPoint);
        pParam = pParam != nullptr ? pParam->next : nullptr;
    }
}

void ReadTags(const CTCPARSE_PARAM* pParam, SGeoTags& geo)
{
    const CTCPARSE_PARAM* params[5] = {};
    for (const CTCPARSE_PARAM*& pNext : params)
    {
        pNext = pParam;
        pParam = pParam != nullptr ? pParam->next : nullptr;
    }
    const std::string strUnits = GetText(params[0]);
    geo.bDegrees = strUnits.find(DEGREES) != std::string::npos;
    geo.bCells = strUnits.find(CELLS) != std::string::npos;
    std::vector<double> noData;
    geo.noData.reset();
    if (ReadList(GetText(params[1]), noData) && noData.size() == 1)
    {
        geo.noData = noData[0];
    }
    geo.strNames = GetText(params[4]);
    // Keys refer to numbers and names: all or none.
    if (!ReadList(GetText(params[2]), geo.keys) || !ReadList(GetText(params[3]), geo.numbers))
    {
        geo.keys.clear();
        geo.numbers.clear();
        geo.strNames.clear();
    }
}

std::string MakePoint(const SMapPoint& point)
{
    return MakeList(std::vector<double>{point.dX, point.dY});
}

CTCParseText::SCall MakeCall(const char* pszName, const std::vector<std::string>& texts)
{
    CTCParseText::SCall call{pszName, {}};
    for (const std::string& strText : texts)
    {
        call.values.push_back({tcparse_string, QuoteText(strText)});
    }
    return call;
}

} // namespace

std::vector<CTCParseText::SCall> GetMapCalls(const SGeoTags& geo, const CTCParseText& kept)
{
    if (!geo.bKnown)
    {
        return kept.FindLast(PLACE) == nullptr
                   ? std::vector<CTCParseText::SCall>()
                   : std::vector<CTCParseText::SCall>{MakeCall(PLACE, {"", "", ""})};
    }
    std::string strNoData;
    if (geo.noData)
    {
        AppendNumber(strNoData, *geo.noData);
    }
    const std::string strUnits =
        std::string(geo.bDegrees ? DEGREES : "lengths") + (geo.bCells ? " cells" : " samples");
    return {
        MakeCall(PLACE, {MakePoint(geo.first), MakePoint(geo.lastX), MakePoint(geo.lastZ)}),
        MakeCall(TAGS,
                 {strUnits, strNoData, MakeList(geo.keys), MakeList(geo.numbers), geo.strNames})};
}

void ReadMapCall(const CTCPARSE_KEYWORD* pKey, SGeoTags& geo)
{
    if (IsKeyword(pKey, PLACE))
    {
        ReadPlace(pKey->params, geo);
    }
    else if (IsKeyword(pKey, TAGS))
    {
        ReadTags(pKey->params, geo);
    }
}
