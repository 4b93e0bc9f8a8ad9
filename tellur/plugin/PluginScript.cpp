// Scripting: the plug-in's own state by keyword.

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/FileSystem.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "host/NumberText.h"
#include "host/ScriptKeywords.h"
#include "host/Terrain.h"
#include "host/TerrainSize.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "tellur/brushes/BrushFaults.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/brushes/SpacingShare.h"
#include "tellur/modes/TerraformingState.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/panel/ITerrainPanel.h"
#include "tellur/plugin/IPluginImpl.h"
#include "tellur/resources/PluginResources.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <utility>

EScriptResult IPluginImpl::Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const CResourceScope scope(&GetPluginResources());
    using FPlay = bool (IPluginImpl::*)(const CTCPARSE_KEYWORD*, std::string&);
    constexpr std::pair<const char*, FPlay> KEYWORDS[] = {
        {"brush", &IPluginImpl::PlayBrush},
        {"brush_file", &IPluginImpl::PlayBrushFile},
        {"use_brush", &IPluginImpl::PlayUseBrush},
        {"save_brushes", &IPluginImpl::PlaySaveBrushes},
        {"mode", &IPluginImpl::PlayMode},
        {"auto_normals", &IPluginImpl::PlayAutoNormals},
        {"resolution", &IPluginImpl::PlayResolution},
    };
    static_assert(HasEachHandler(KEYWORDS, EKeywordPlayer::Plugin));
    const auto* pFound = std::find_if(std::begin(KEYWORDS),
                                      std::end(KEYWORDS),
                                      [pKeyword](const auto& keyword)
                                      { return IsKeyword(pKeyword, keyword.first); });
    if (pFound == std::end(KEYWORDS))
    {
        return PlayPaint(pKeyword, strWhy);
    }
    const FPlay pPlay = pFound->second;
    return (this->*pPlay)(pKeyword, strWhy) ? EScriptResult::Done : EScriptResult::Failed;
}

bool IPluginImpl::IsDragInProgress() const
{
    const auto& pSession = GetTerraformingState().pSession;
    return pSession != nullptr && pSession->IsInProgress();
}

bool IPluginImpl::DropDrag()
{
    std::unique_ptr<CTerrainModification>& pSession = GetTerraformingState().pSession;
    if (pSession == nullptr)
    {
        return false;
    }
    pSession->RestoreHeights();
    m_DragStatistics.bLost = true;
    pSession.reset();
    FreeKeptTiles();
    return true;
}

// Of an image or a mask: added to the library it would make that unreadable.
static bool HasPathThatBreaksFiles(const CTCPARSE_KEYWORD* pBlock)
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

bool IPluginImpl::PlayBrush(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    auto pBrush = std::make_unique<CTellurBrush>();
    if (HasPathThatBreaksFiles(pKeyword->block))
    {
        strWhy = "a path of a brush cannot have a quotation mark";
        return false;
    }
    if (!pBrush->Load(pKeyword->block))
    {
        strWhy = "the brush block cannot be used, the log says why";
        return false;
    }
    for (const CTCPARSE_KEYWORD* pKey = pKeyword->block; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "mask_enabled"))
        {
            pBrush->SetMaskEnabled(GetIntValue(pKey->params) != 0);
        }
    }
    CTellurBrush* pNew = pBrush.get();
    CBrushContainer::CBrushList old;
    if (!IsDragInProgress()) // a drag keeps the brush it began with
    {
        old.swap(m_KeptBrushes);
    }
    m_KeptBrushes.push_back(std::move(pBrush));
    SetCurrentBrush(pNew);
    return true;
}

bool IPluginImpl::PlayMode(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const std::pair<const char*, int32_t> modes[] = {{"terraforming", m_TerraformingModeId},
                                                     {"export_extent", m_ExportExtentModeId},
                                                     {"edit_terrain_type", m_EditTerrainTypeModeId},
                                                     {"none", NO_MODE}};
    const char* pszName = GetStringValue(pKeyword->params);
    const std::string strName = pszName != nullptr ? pszName : "";
    const auto* pMode = std::find_if(std::begin(modes),
                                     std::end(modes),
                                     [&](const auto& mode) { return strName == mode.first; });
    if (pMode == std::end(modes))
    {
        strWhy = "there is no mode \"" + strName + "\"";
        return false;
    }
    if (m_pEditorHost->GetModeManager()->GetCurrentModeId() == pMode->second)
    {
        return true;
    }
    if (pMode->second == m_EditTerrainTypeModeId)
    {
        return PlayPaintingMode(strWhy);
    }
    if (!SetMode(pMode->second, 0))
    {
        strWhy = "the mode \"" + strName + "\" was refused";
        return false;
    }
    return true;
}

bool IPluginImpl::PlayAutoNormals(const CTCPARSE_KEYWORD* pKeyword, std::string& /*strWhy*/)
{
    m_bAutoUpdateNormals = GetIntValue(pKeyword->params) != 0;
    return true;
}

// What cannot be read adds nothing, the log says why, and the script goes on: a missing library is
// no reason to stop a designer either.
bool IPluginImpl::PlayBrushFile(const CTCPARSE_KEYWORD* pKeyword, std::string& /*strWhy*/)
{
    const char* pszPath = GetStringValue(pKeyword->params);
    if (!m_BrushContainer.LoadPredefinedBrushes(pszPath))
    {
        CrashLog("[IPluginImpl::PlayBrushFile] %s cannot be read\n",
                 pszPath != nullptr ? pszPath : "");
    }
    if (m_pPanel != nullptr)
    {
        m_pPanel->FillBrushList();
    }
    return true;
}

bool IPluginImpl::PlayUseBrush(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const char* pszName = GetStringValue(pKeyword->params);
    const std::string strName = pszName != nullptr ? pszName : "";
    const auto& brushes = m_BrushContainer.GetPredefined();
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
    UsePredefinedBrush(**found);
    return true;
}

bool IPluginImpl::PlaySaveBrushes(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const char* pszPath = GetStringValue(pKeyword->params);
    const bool bSaved = m_BrushContainer.SavePredefinedBrushesToFile(pszPath);
    if (bSaved && fs::root_path(pszPath) == fs::root_path(PREDEFINED_BRUSHES))
    {
        m_BrushContainer.SetSaved(); // a file of another name is a copy and no save
    }
    strWhy = bSaved ? "" : "the brushes cannot be saved, the log says why";
    return bSaved;
}

bool IPluginImpl::PlayResolution(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const int32_t iVertices = GetIntValue(pKeyword->params);
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

// Brush files round their numbers; a replay needs every bit. The last call of a key counts.
static void WriteExact(fs::ifile& file, const char* pszKey, float fValue)
{
    float fRounded = 0.0F;
    ParseNumber(FormatNumber(static_cast<double>(fValue), 5), fRounded);
    if (fRounded != fValue && std::isfinite(fValue))
    {
        file.printf("  %s( %s )\n", pszKey, MakeExactNumber(fValue).c_str());
    }
}

bool IPluginImpl::WriteBrush(fs::ifile& file, const CTellurBrush& brush) const
{
    file << "brush()\n{\n";
    if (!brush.Save(file, 2))
    {
        return false;
    }
    WriteExact(file, "power_modifier", brush.GetPowerModifier());
    WriteExact(file, "fade_factor", brush.GetFadeFactor());
    WriteExact(file, "hardness", brush.GetHardness());
    WriteExact(file, "extent", brush.GetExtent());
    WriteExact(file, "vertical_distance", brush.GetVerticalDistance());
    file.printf("  mask_enabled( %d )\n}\n\n", brush.IsMaskEnabled() ? 1 : 0);
    return true;
}

bool IPluginImpl::WriteState(fs::ifile& file)
{
    if (m_pCurrentBrush != nullptr && !WriteBrush(file, *m_pCurrentBrush))
    {
        return false;
    }
    const bool bPainting = IsPainting();
    if (bPainting)
    {
        WritePaintBrush(file); // the mode needs a shape
    }
    const int iMode = m_pEditorHost->GetModeManager()->GetCurrentModeId();
    const char* pszMode = iMode == NO_MODE                   ? "none"
                          : iMode == m_TerraformingModeId    ? "terraforming"
                          : iMode == m_ExportExtentModeId    ? "export_extent"
                          : iMode == m_EditTerrainTypeModeId ? "edit_terrain_type"
                                                             : nullptr;
    if (pszMode != nullptr) // a mode of another plug-in is not ours to set
    {
        file.printf("mode( \"%s\" )\n", pszMode);
    }
    if (bPainting)
    {
        WritePaintState(file); // which loading the bitmap sets anew
    }
    return file.printf("auto_normals( %d )\n", m_bAutoUpdateNormals ? 1 : 0) > 0;
}

SDragStatistics IPluginImpl::TakeDragStatistics()
{
    return std::exchange(m_DragStatistics, {});
}

float IPluginImpl::GetBrushExtent()
{
    if (IsPainting())
    {
        return 2.0F * *m_pEditTerrainTypeMode->GetBrushHalfSize();
    }
    return m_pCurrentBrush != nullptr ? m_pCurrentBrush->GetExtent() : 0.0F;
}

float IPluginImpl::GetStrokeSpacing()
{
    constexpr float SUMMED_SHARE = 0.25F; // finer, each pass would be a stronger one
    if (IsPainting())
    {
        return GetBrushExtent() * SUMMED_SHARE;
    }
    const EStrokePath ePath = IsTerraforming() && m_pCurrentBrush != nullptr
                                  ? m_pCurrentBrush->GetStrokePath()
                                  : EStrokePath::None;
    if (ePath == EStrokePath::None)
    {
        return 0.0F;
    }
    const IImage* pShape = m_pCurrentBrush->GetBitmapImage();
    const float fShare = ePath == EStrokePath::AddedUp || pShape == nullptr
                             ? SUMMED_SHARE
                             : GetSpacingShare(*pShape, m_pCurrentBrush->GetHardness());
    return GetBrushExtent() * fShare;
}

const float* IPluginImpl::GetPressTile(uint32_t uTileX, uint32_t uTileZ)
{
    static_assert(PRESS_TILE == SHeightTile::SIDE);
    return IsDragInProgress() ? GetTerraformingState().pSession->GetPressTile(uTileX, uTileZ)
                              : nullptr;
}

bool IPluginImpl::IsTerraforming()
{
    return m_pEditorHost != nullptr &&
           m_pEditorHost->GetModeManager()->GetCurrentModeId() == m_TerraformingModeId &&
           m_TerraformingModeId != NO_MODE;
}

bool IPluginImpl::IsMaskActing()
{
    return m_pCurrentBrush != nullptr && m_pCurrentBrush->IsMaskActing();
}

std::string IPluginImpl::GetFunctionName()
{
    const bool bFunction =
        m_pCurrentBrush != nullptr && m_pCurrentBrush->GetRTTIObject() != nullptr;
    const char* pszName = IsPainting() ? m_pEditTerrainTypeMode->GetFunctionName()
                          : bFunction  ? m_pCurrentBrush->GetFunctionName()
                                       : nullptr;
    return pszName != nullptr ? pszName : "";
}
