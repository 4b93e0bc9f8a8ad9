#include "tellur/plugin/CPluginScript.h"

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/BrushBlock.h"
#include "host/EditorHost.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "host/Terrain.h"
#include "host/TerrainSize.h"
#include "parser/KeywordValues.h"
#include "tellur/brushes/BrushFaults.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/plugin/BrushText.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CPainting.h"
#include "tellur/plugin/CPanelLink.h"
#include "tellur/plugin/CPluginModes.h"
#include "tellur/plugin/HeightMapFile.h"
#include "tellur/plugin/LibraryKeywords.h"
#include "tellur/plugin/PaintKeywords.h"
#include "tellur/resources/PluginResources.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

namespace
{

std::string GetText(const CTCPARSE_KEYWORD& keyword)
{
    const char* pszText = GetStringValue(keyword.params);
    return pszText != nullptr ? pszText : "";
}

// Of an image or a mask: added to the library it would make that unreadable.
bool HasPathThatBreaksFiles(const CTCPARSE_KEYWORD* pBlock)
{
    for (const CTCPARSE_KEYWORD* pKey = pBlock; pKey != nullptr; pKey = pKey->next)
    {
        const bool bPath = IsKeyword(pKey, "mask") || IsKeyword(pKey, "path");
        if ((bPath && BreaksBrushFile(GetStringValue(pKey->params))) ||
            (IsKeyword(pKey, "bitmap") && HasPathThatBreaksFiles(pKey->block)))
        {
            return true;
        }
    }
    return false;
}

// Null for one that cannot be used.
std::unique_ptr<CTellurBrush> LoadBrush(const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    auto pBrush = std::make_unique<CTellurBrush>();
    if (HasPathThatBreaksFiles(keyword.block))
    {
        strWhy = "a path of a brush cannot have a quotation mark";
        return nullptr;
    }
    if (!pBrush->Load(keyword.block))
    {
        strWhy = "the brush block cannot be used, the log says why";
        return nullptr;
    }
    for (const CTCPARSE_KEYWORD* pKey = keyword.block; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "mask_enabled"))
        {
            pBrush->SetMaskEnabled(GetIntValue(pKey->params) != 0);
        }
    }
    return pBrush;
}

bool PlayBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    std::unique_ptr<CTellurBrush> pBrush = LoadBrush(keyword, strWhy);
    if (pBrush == nullptr)
    {
        return false;
    }
    parts.brush.TakeOver(std::move(pBrush));
    return true;
}

bool PlayToolBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    std::unique_ptr<CTellurBrush> pBrush = LoadBrush(keyword, strWhy);
    if (pBrush == nullptr)
    {
        return false;
    }
    // A tool that can do nothing and cannot be written would be no use to anybody.
    if (pBrush->GetBitmapPath() == nullptr || pBrush->GetRTTIObject() == nullptr)
    {
        strWhy = "the brush of a tool needs an image and a function";
        return false;
    }
    if (!parts.brush.ReplaceTool(std::move(pBrush)))
    {
        strWhy = "there is no such tool";
        return false;
    }
    return true;
}

bool PlayMode(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    const std::string strName = GetText(keyword);
    const std::optional<int32_t> mode = parts.modes.FindMode(strName);
    if (!mode)
    {
        strWhy = "there is no mode \"" + strName + "\"";
        return false;
    }
    if (GetPluginContext()->GetEditorHost()->GetModeManager()->GetCurrentModeId() == *mode)
    {
        return true;
    }
    if (*mode == parts.modes.GetEditTerrainTypeId())
    {
        return parts.painting.SwitchOn(strWhy);
    }
    if (!parts.modes.SetMode(*mode, 0))
    {
        strWhy = "the mode \"" + strName + "\" was refused";
        return false;
    }
    return true;
}

bool PlayAutoNormals(const SScriptParts& /*parts*/,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& /*strWhy*/)
{
    GetPluginPart<IPanelPlugin>()->SetAutoUpdateNormals(GetIntValue(keyword.params) != 0);
    return true;
}

// What cannot be read adds nothing, the log says why, and the script goes on: a missing library is
// no reason to stop a designer either.
bool PlayBrushFile(const SScriptParts& parts,
                   const CTCPARSE_KEYWORD& keyword,
                   std::string& /*strWhy*/)
{
    const char* pszPath = GetStringValue(keyword.params);
    if (!parts.brushes.LoadPredefinedBrushes(pszPath))
    {
        CrashLog("[IPluginImpl::PlayBrushFile] %s cannot be read\n",
                 pszPath != nullptr ? pszPath : "");
    }
    parts.panel.FillBrushList();
    return true;
}

bool PlayUseBrush(const SScriptParts& parts, const CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    const std::string strName = GetText(keyword);
    const auto& brushes = parts.brushes.GetPredefined();
    const auto found =
        std::find_if(brushes.begin(),
                     brushes.end(),
                     [&](const auto& pBrush)
                     { return pBrush->GetName() != nullptr && strName == pBrush->GetName(); });
    if (found == brushes.end())
    {
        strWhy = "there is no predefined brush \"" + strName + "\"";
        return false;
    }
    const bool bNone = parts.brush.Get() == nullptr;
    GetPluginPart<IPanelPlugin>()->UsePredefinedBrush(**found);
    if (bNone && !parts.modes.IsTerraforming())
    {
        WarnLog("[CPluginScript::Play] use_brush: terraforming stays off, since there was no brush "
                "before; strokes need mode( \"terraforming\" ) first\n");
    }
    return true;
}

bool PlaySaveBrushes(const SScriptParts& parts,
                     const CTCPARSE_KEYWORD& keyword,
                     std::string& strWhy)
{
    const char* pszPath = GetStringValue(keyword.params);
    // A file of another name is a copy and no save.
    const bool bLibrary = pszPath != nullptr && fs::same_file(pszPath, PREDEFINED_BRUSHES);
    const bool bSaved = (!bLibrary || parts.brushes.MaySave()) &&
                        parts.brushes.SavePredefinedBrushesToFile(pszPath);
    if (bSaved && bLibrary)
    {
        parts.brushes.SetSaved();
    }
    strWhy = bSaved ? "" : "the brushes cannot be saved, the log says why";
    return bSaved;
}

bool PlayResolution(const SScriptParts& /*parts*/,
                    const CTCPARSE_KEYWORD& keyword,
                    std::string& strWhy)
{
    const int32_t iVertices = GetIntValue(keyword.params);
    const auto uVertices = static_cast<uint32_t>(iVertices);
    const uint32_t uCells = uVertices - 1;
    if (uVertices < TERRAIN_LEAST_CHOICE || uVertices > TERRAIN_MAX_VERTICES ||
        !std::has_single_bit(uCells))
    {
        strWhy = "must be one of 33, 65, 129, 257, 513, 1025, 2049, 4097, 8193, 16385";
        return false;
    }
    ChangeHeightMapResolution(iVertices);
    const Terrain* pTerrain = GetCurrentTerrain();
    if (pTerrain == nullptr)
    {
        strWhy = "there is no terrain";
        return false;
    }
    if (pTerrain->GetCellsPerSide() != uCells)
    {
        strWhy = "the resolution did not change, the log says why";
        return false;
    }
    return true;
}

struct SRow
{
    SScriptKeyword keyword;
    bool (*pPlay)(const SScriptParts& parts,
                  const CTCPARSE_KEYWORD& keyword,
                  std::string& strWhy) = nullptr;
};

constexpr SRow ROWS[] = {
    {{"brush", ""}, &PlayBrush},
    {{TOOL_BRUSH_KEYWORD, ""}, &PlayToolBrush},
    {{"brush_file", "s", EKeywordFile::Read}, &PlayBrushFile},
    {{"use_brush", "s"}, &PlayUseBrush},
    {{"save_brushes", "s", EKeywordFile::Written}, &PlaySaveBrushes},
    {{"take_brush", "i"}, &PlayTakeBrush},
    {{"rename_brush", "is"}, &PlayRenameBrush},
    {{"duplicate_brush", "is"}, &PlayDuplicateBrush},
    {{"remove_brush", "i"}, &PlayRemoveBrush},
    {{"move_brush", "ii"}, &PlayMoveBrush},
    {{"undo_brushes", ""}, &PlayUndoBrushes},
    {{"redo_brushes", ""}, &PlayRedoBrushes},
    {{"mode", "s"}, &PlayMode},
    {{"auto_normals", "i"}, &PlayAutoNormals},
    {{"resolution", "i"}, &PlayResolution},
};

} // namespace

std::vector<SScriptKeyword> CPluginScript::GetKeywords()
{
    std::vector<SScriptKeyword> keywords;
    for (const SRow& row : ROWS)
    {
        keywords.push_back(row.keyword);
    }
    for (const SPaintKeyword& row : GetPaintKeywords())
    {
        keywords.push_back(row.keyword);
    }
    return keywords;
}

std::vector<SScriptKeyword> CPluginScript::GetBlockKeywords()
{
    return GetBrushKeywords(EBrushBlock::Script);
}

EScriptResult CPluginScript::Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const CResourceScope scope(&GetPluginResources());
    const auto is = [pKeyword](const auto& row)
    {
        return IsKeyword(pKeyword, row.keyword.pszName);
    };
    const auto* pRow = std::find_if(std::begin(ROWS), std::end(ROWS), is);
    if (pRow != std::end(ROWS))
    {
        return pRow->pPlay(m_Parts, *pKeyword, strWhy) ? EScriptResult::Done
                                                       : EScriptResult::Failed;
    }
    const std::span<const SPaintKeyword> paint = GetPaintKeywords();
    const auto found = std::find_if(paint.begin(), paint.end(), is);
    if (found == paint.end())
    {
        return EScriptResult::Unknown;
    }
    if (m_Parts.painting.GetDialog() == nullptr && !m_Parts.painting.OpenDialog())
    {
        strWhy = "the draw dialog cannot be shown, the log says why";
        return EScriptResult::Failed;
    }
    return found->pPlay(
               *m_Parts.painting.GetDialog(), *m_Parts.painting.GetMode(), pKeyword->params, strWhy)
               ? EScriptResult::Done
               : EScriptResult::Failed;
}

bool CPluginScript::WriteState(fs::ifile& file)
{
    if (m_Parts.brush.Get() != nullptr && !WriteBrush(file, *m_Parts.brush.Get()))
    {
        return false;
    }
    const bool bPainting = m_Parts.painting.IsOn();
    if (bPainting)
    {
        WritePaintBrush(file, *m_Parts.painting.GetMode());
    }
    if (const char* pszMode =
            m_Parts.modes.GetCurrentName()) // a mode of another plug-in is not ours
    {
        file.printf("mode( \"%s\" )\n", pszMode);
    }
    if (bPainting)
    {
        WritePaintState(file, *m_Parts.painting.GetDialog(), *m_Parts.painting.GetMode());
    }
    const bool bNormals = GetPluginContext()->IsAutoUpdateNormals();
    return file.printf("auto_normals( %d )\n", bNormals ? 1 : 0) > 0;
}
