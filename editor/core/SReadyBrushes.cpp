#include "editor/core/SReadyBrushes.h"

#include "host/Log.h"
#include "host/NumberText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

namespace
{

constexpr float PERCENT = 0.01F;
constexpr float ROUNDING = 1e-6F;

struct SKindName
{
    const char* pszName;
    EAmountKind eKind;
};

constexpr SKindName KINDS[] = {
    {"step", EAmountKind::Step},
    {"height", EAmountKind::Height},
    {"pick", EAmountKind::Pick},
    {"plateau", EAmountKind::Plateau},
    {"levels", EAmountKind::Levels},
};

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

// A file declares its own keywords, so there may be fewer arguments.
const CTCPARSE_PARAM* GetNext(const CTCPARSE_PARAM* pParam)
{
    return pParam != nullptr ? pParam->next : nullptr;
}

// An amount below 0 lowers.
float GetShare(const CTCPARSE_PARAM* pParam)
{
    return std::clamp(GetFloatValue(pParam) * PERCENT, -1.0F, 1.0F);
}

// Name or function, kind, percent of the side, percent of the range.
SSizeShare ReadShare(const CTCPARSE_KEYWORD& keyword)
{
    SSizeShare share;
    const CTCPARSE_PARAM* pKind = GetNext(keyword.params);
    const std::string strKind = GetText(pKind);
    const auto* pFound =
        std::find_if(std::begin(KINDS),
                     std::end(KINDS),
                     [&](const SKindName& kind) { return strKind == kind.pszName; });
    share.eKind = pFound != std::end(KINDS) ? pFound->eKind : EAmountKind::None;
    share.fExtent = GetShare(GetNext(pKind));
    share.fAmount = GetShare(GetNext(GetNext(pKind)));
    return share;
}

void ReadFields(const CTCPARSE_KEYWORD* pBlock, std::vector<float>& fields)
{
    for (const CTCPARSE_KEYWORD* pKey = pBlock; pKey != nullptr; pKey = pKey->next)
    {
        float fValue = 0.0F;
        if (IsKeyword(pKey, "attrib") && ParseNumber(GetText(GetNext(pKey->params)), fValue))
        {
            fields.push_back(fValue);
        }
    }
}

SReadyBrush ReadBrush(const CTCPARSE_KEYWORD& brush)
{
    SReadyBrush ready;
    for (const CTCPARSE_KEYWORD* pKey = brush.block; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "brush_name"))
        {
            ready.strName = GetText(pKey->params);
        }
        else if (IsKeyword(pKey, "extent"))
        {
            ready.fExtent = GetFloatValue(pKey->params);
        }
        else if (IsKeyword(pKey, "function"))
        {
            ready.strFunction = GetText(pKey->params);
            ReadFields(pKey->block, ready.fields);
        }
    }
    return ready;
}

} // namespace

bool SReadyBrush::IsOf(const std::string& strOtherFunction, const SToolSizes& sizes) const
{
    const bool bAmount = std::isnan(sizes.fAmount) ||
                         std::find(fields.begin(), fields.end(), sizes.fAmount) != fields.end();
    // Libraries round to five digits behind the point.
    const bool bExtent = std::fabs(fExtent - sizes.fExtent) < fExtent * ROUNDING;
    return strFunction == strOtherFunction && bExtent && bAmount;
}

bool SReadyBrushes::Read(const char* pszFile)
{
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(pszFile, nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    brushes.clear();
    tools.clear();
    if (eStatus != tcparse_done)
    {
        CrashLog("[SReadyBrushes::Read] %s: cannot be read, there are no ready brushes\n", pszFile);
        return false;
    }
    for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "brush"))
        {
            brushes.push_back(ReadBrush(*pKey));
        }
    }
    for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "ready_tool"))
        {
            tools.push_back({GetText(pKey->params), ReadShare(*pKey)});
        }
        for (SReadyBrush& brush : brushes)
        {
            if (IsKeyword(pKey, "ready_brush") && brush.strName == GetText(pKey->params))
            {
                brush.share = ReadShare(*pKey);
            }
        }
    }
    // One without shares would be shrunk to nothing.
    std::erase_if(brushes, [](const SReadyBrush& brush) { return brush.share.fExtent <= 0.0F; });
    return true;
}

const SReadyBrush* SReadyBrushes::FindBrush(const std::string& strName) const
{
    const auto found =
        std::find_if(brushes.begin(),
                     brushes.end(),
                     [&](const SReadyBrush& brush) { return brush.strName == strName; });
    return found != brushes.end() ? &*found : nullptr;
}

const SReadyBrush* SReadyBrushes::FindAlike(const std::string& strName,
                                            const std::string& strFunction,
                                            const SToolSizes& sizes) const
{
    const SReadyBrush* pAlike = nullptr;
    for (const SReadyBrush& brush : brushes)
    {
        if (brush.IsOf(strFunction, sizes) && (pAlike == nullptr || brush.strName == strName))
        {
            pAlike = &brush;
        }
    }
    return pAlike;
}

SSizeShare SReadyBrushes::FindShare(const std::string& strFunction) const
{
    const auto found =
        std::find_if(tools.begin(),
                     tools.end(),
                     [&](const SReadyTool& tool) { return tool.strFunction == strFunction; });
    return found != tools.end() ? found->share : SSizeShare();
}
