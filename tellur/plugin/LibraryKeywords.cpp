#include "tellur/plugin/LibraryKeywords.h"

#include "parser/KeywordValues.h"
#include "tellur/brushes/CBrushChanges.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CPanelLink.h"
#include "tellur/plugin/CPluginScript.h"

namespace
{

int32_t GetPlace(const CTCPARSE_KEYWORD& keyword)
{
    return GetIntValue(keyword.params);
}

// The text behind the place.
std::string GetName(const CTCPARSE_KEYWORD& keyword)
{
    const char* pszName = GetStringValue(keyword.params->next);
    return pszName != nullptr ? pszName : "";
}

bool IsFree(std::string& strWhy)
{
    if (GetTerraformingState().IsDragging())
    {
        strWhy = "not during a stroke";
        return false;
    }
    return true;
}

template <typename TChange>
bool Change(const SScriptParts& parts, std::string& strWhy, TChange change)
{
    if (!IsFree(strWhy) || !change(parts.changes))
    {
        return false;
    }
    parts.panel.FillBrushList();
    return true;
}

} // namespace

bool PlayTakeBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    const CBrushContainer::CBrushList& brushes = parts.brushes.GetPredefined();
    const int32_t iPlace = GetPlace(keyword);
    if (!IsFree(strWhy))
    {
        return false;
    }
    if (iPlace < 0 || static_cast<size_t>(iPlace) >= brushes.size())
    {
        strWhy = "there is no predefined brush " + std::to_string(iPlace) + ", there are " +
                 std::to_string(brushes.size());
        return false;
    }
    const CTellurBrush& brush = *brushes[static_cast<size_t>(iPlace)];
    if (brush.GetRTTIObject() == nullptr)
    {
        strWhy = "the brush has no function";
        return false;
    }
    auto* pPlugin = GetPluginPart<IPanelPlugin>();
    pPlugin->UsePredefinedBrush(brush);
    // Without a brush before, the mode could not be switched on until now.
    if (parts.brush.Get() != nullptr && !IsTerraformingOn())
    {
        pPlugin->EnableTerraforming(true);
    }
    return true;
}

bool PlayRenameBrush(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy)
{
    return Change(parts,
                  strWhy,
                  [&](CBrushChanges& changes)
                  { return changes.Rename(GetPlace(keyword), GetName(keyword), strWhy); });
}

bool PlayDuplicateBrush(const SScriptParts& parts,
                        const CTCPARSE_KEYWORD& keyword,
                        std::string& strWhy)
{
    return Change(parts,
                  strWhy,
                  [&](CBrushChanges& changes)
                  { return changes.Duplicate(GetPlace(keyword), GetName(keyword), strWhy); });
}

bool PlayRemoveBrush(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy)
{
    return Change(parts,
                  strWhy,
                  [&](CBrushChanges& changes)
                  { return changes.Remove(GetPlace(keyword), strWhy); });
}

bool PlayMoveBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    const int32_t iTo = GetIntValue(keyword.params->next);
    return Change(parts,
                  strWhy,
                  [&](CBrushChanges& changes)
                  { return changes.Move(GetPlace(keyword), iTo, strWhy); });
}

bool PlayUndoBrushes(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& /*keyword*/,
                     std::string& strWhy)
{
    return Change(parts, strWhy, [&](CBrushChanges& changes) { return changes.TakeBack(strWhy); });
}

bool PlayRedoBrushes(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& /*keyword*/,
                     std::string& strWhy)
{
    return Change(parts, strWhy, [&](CBrushChanges& changes) { return changes.DoAgain(strWhy); });
}
