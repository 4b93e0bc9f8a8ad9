// The keywords that paint: each goes the way of the draw dialog's control of that name.

#include "host/FileSystem.h"
#include "host/Image.h"
#include "host/ScriptKeywords.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "tellur/context/CommandIds.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/PaintLayer.h"
#include "tellur/plugin/IPluginImpl.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace
{

using FPaint = bool (*)(CTerrain2DDrawDlg&,
                        CModeEditTerrainType&,
                        const CTCPARSE_PARAM*,
                        std::string&);

std::string GetText(const CTCPARSE_PARAM* pParam)
{
    const char* pszText = GetStringValue(pParam);
    return pszText != nullptr ? pszText : "";
}

bool PaintBitmap(CTerrain2DDrawDlg& dialog,
                 CModeEditTerrainType& /*mode*/,
                 const CTCPARSE_PARAM* pParam,
                 std::string& strWhy)
{
    if (IsPaintingModeOn())
    {
        strWhy = "not while the bitmap is painted on, leave with mode( \"none\" )";
        return false;
    }
    dialog.ChooseBitmapFile(GetText(pParam));
    return true;
}

bool PaintRestore(CTerrain2DDrawDlg& dialog,
                  CModeEditTerrainType& mode,
                  const CTCPARSE_PARAM* pParam,
                  std::string& strWhy)
{
    const std::string strFile = GetText(pParam);
    if (!PaintBitmap(dialog, mode, pParam, strWhy))
    {
        return false;
    }
    const std::unique_ptr<IImage> pTexels(IL_LoadImage(GetText(pParam->next).c_str()));
    if (pTexels == nullptr)
    {
        strWhy = "the picture cannot be read, the log says why";
        return false;
    }
    mode.RestoreBitmap(strFile, *pTexels);
    return true;
}

bool PaintFunction(CTerrain2DDrawDlg& dialog,
                   CModeEditTerrainType& /*mode*/,
                   const CTCPARSE_PARAM* pParam,
                   std::string& strWhy)
{
    const std::string strName = GetText(pParam);
    if (strName != "Set" && strName != "Mul")
    {
        strWhy = R"(must be "Set" or "Mul")";
        return false;
    }
    if (!dialog.ChooseFunction(strName.c_str()))
    {
        strWhy = "not for a bitmap with a palette";
        return false;
    }
    return true;
}

bool PaintColor(CTerrain2DDrawDlg& dialog,
                CModeEditTerrainType& /*mode*/,
                const CTCPARSE_PARAM* pParam,
                std::string& strWhy)
{
    const auto& vec = static_cast<const CTCPARSE_VEC4&>(*pParam);
    const float color[] = {vec.x, vec.y, vec.z, vec.w};
    if (!std::all_of(
            std::begin(color), std::end(color), [](float f) { return f >= 0.0F && f <= 1.0F; }))
    {
        strWhy = "each component must be 0 to 1";
        return false;
    }
    dialog.ChooseColor(color);
    return true;
}

bool PaintMask(CTerrain2DDrawDlg& dialog,
               CModeEditTerrainType& /*mode*/,
               const CTCPARSE_PARAM* pParam,
               std::string& /*strWhy*/)
{
    dialog.ChooseChannelMask(static_cast<uint32_t>(GetIntValue(pParam)));
    return true;
}

bool PaintBrush(CTerrain2DDrawDlg& dialog,
                CModeEditTerrainType& /*mode*/,
                const CTCPARSE_PARAM* pParam,
                std::string& strWhy)
{
    constexpr float MOST = 1.0e6F;
    const float fHalfSize = GetFloatValue(pParam->next);
    if (!(fHalfSize >= 0.0F && fHalfSize <= MOST))
    {
        strWhy = "the half-size must be 0 to 1000000";
        return false;
    }
    if (!dialog.ChooseBrushShape(GetText(pParam)))
    {
        strWhy = "the brush shape cannot be used, the log says why";
        return false;
    }
    dialog.ChooseExtent(fHalfSize);
    return true;
}

template <EDrawDlgId eEdit>
bool PaintShare(CTerrain2DDrawDlg& dialog,
                CModeEditTerrainType& /*mode*/,
                const CTCPARSE_PARAM* pParam,
                std::string& /*strWhy*/)
{
    dialog.SetItemText(eEdit, MakeExactNumber(GetFloatValue(pParam)).c_str());
    return true;
}

bool PaintTexelMapping(CTerrain2DDrawDlg& dialog,
                       CModeEditTerrainType& /*mode*/,
                       const CTCPARSE_PARAM* pParam,
                       std::string& /*strWhy*/)
{
    const bool bOn = GetIntValue(pParam) != 0;
    return bOn == (dialog.GetItemCheck(DRAW_TEXEL_MAPPING) == CHECK_ON) ||
           dialog.PressItem(DRAW_TEXEL_MAPPING);
}

template <EDrawDlgId eButton>
bool PaintStep(CTerrain2DDrawDlg& dialog,
               CModeEditTerrainType& /*mode*/,
               const CTCPARSE_PARAM* /*pParam*/,
               std::string& /*strWhy*/)
{
    return dialog.PressItem(eButton);
}

bool SaveBitmap(CTerrain2DDrawDlg& /*dialog*/,
                CModeEditTerrainType& mode,
                const CTCPARSE_PARAM* pParam,
                std::string& strWhy)
{
    if (!mode.HasBitmap())
    {
        strWhy = "there is no bitmap";
        return false;
    }
    const bool bSaved = mode.SaveBitmap(GetText(pParam).c_str());
    strWhy = bSaved ? "" : "the bitmap cannot be saved, the log says why";
    return bSaved;
}

constexpr std::pair<const char*, FPaint> KEYWORDS[] = {
    {"paint_bitmap", &PaintBitmap},
    {"paint_restore", &PaintRestore},
    {"paint_function", &PaintFunction},
    {"paint_color", &PaintColor},
    {"paint_mask", &PaintMask},
    {"paint_brush", &PaintBrush},
    {"paint_power", &PaintShare<DRAW_POWER_EDIT>},
    {"paint_hardness", &PaintShare<DRAW_HARDNESS_EDIT>},
    {"paint_texel_mapping", &PaintTexelMapping},
    {"paint_undo", &PaintStep<DRAW_UNDO>},
    {"paint_redo", &PaintStep<DRAW_REDO>},
    {"save_bitmap", &SaveBitmap},
};
static_assert(HasEachHandler(KEYWORDS, EKeywordPlayer::PluginInWindows));

} // namespace

EScriptResult IPluginImpl::PlayPaint(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const auto* pFound = std::find_if(std::begin(KEYWORDS),
                                      std::end(KEYWORDS),
                                      [pKeyword](const auto& keyword)
                                      { return IsKeyword(pKeyword, keyword.first); });
    if (pFound == std::end(KEYWORDS))
    {
        return EScriptResult::Unknown;
    }
    if (m_p2DDrawDlg == nullptr)
    {
        OnCommand(COMMAND_EDIT_BITMAP);
    }
    if (m_p2DDrawDlg == nullptr)
    {
        strWhy = "the draw dialog cannot be shown, the log says why";
        return EScriptResult::Failed;
    }
    return pFound->second(*m_p2DDrawDlg, *m_pEditTerrainTypeMode, pKeyword->params, strWhy)
               ? EScriptResult::Done
               : EScriptResult::Failed;
}

bool IPluginImpl::PlayPaintingMode(std::string& strWhy)
{
    const bool bSwitched = m_p2DDrawDlg != nullptr ? m_p2DDrawDlg->PressItem(DRAW_EDIT)
                                                   : SetMode(m_EditTerrainTypeModeId, 0);
    if (m_p2DDrawDlg != nullptr && !bSwitched)
    {
        strWhy = "there is no bitmap file, name it with paint_bitmap";
        return false;
    }
    if (m_p2DDrawDlg != nullptr && !m_pEditTerrainTypeMode->HasBitmap())
    {
        strWhy = "the bitmap cannot be painted on, the log says why";
        return false;
    }
    strWhy = bSwitched ? "" : R"(the mode "edit_terrain_type" was refused)";
    return IsPaintingModeOn();
}

bool IPluginImpl::IsPainting()
{
    return IsPaintingModeOn() && m_pEditTerrainTypeMode->HasBitmap() && m_p2DDrawDlg != nullptr;
}

bool IPluginImpl::SaveBitmap(const char* pszPath)
{
    return m_pEditTerrainTypeMode != nullptr && m_pEditTerrainTypeMode->SaveBitmap(pszPath);
}

std::string IPluginImpl::GetUnsavedBitmap()
{
    return m_pEditTerrainTypeMode != nullptr && m_pEditTerrainTypeMode->IsUnsaved()
               ? m_pEditTerrainTypeMode->GetBitmapPath()
               : "";
}

bool IPluginImpl::WouldDropPainting(int32_t iModeId)
{
    return iModeId == m_EditTerrainTypeModeId && m_p2DDrawDlg != nullptr &&
           m_pEditTerrainTypeMode != nullptr && m_pEditTerrainTypeMode->IsUnsaved() &&
           m_p2DDrawDlg->GetBitmapFile() != m_pEditTerrainTypeMode->GetBitmapPath();
}

std::string IPluginImpl::GetUnreadBitmap()
{
    return IsPaintingModeOn() && !m_pEditTerrainTypeMode->HasBitmap()
               ? m_pEditTerrainTypeMode->GetBitmapPath()
               : "";
}

uint64_t IPluginImpl::GetBitmapRevision()
{
    return GetBitmap() != nullptr ? m_pEditTerrainTypeMode->GetRevision() : 0;
}

std::string IPluginImpl::GetBitmapFile()
{
    return m_pEditTerrainTypeMode != nullptr ? m_pEditTerrainTypeMode->GetBitmapPath() : "";
}

const IImage* IPluginImpl::GetBitmap()
{
    return m_pEditTerrainTypeMode != nullptr ? m_pEditTerrainTypeMode->GetWorkImage() : nullptr;
}

bool IPluginImpl::StepPaint(bool bRedo)
{
    if (m_pEditTerrainTypeMode == nullptr)
    {
        return false;
    }
    const uint32_t uPosition = m_pEditTerrainTypeMode->GetUndoPosition();
    bRedo ? m_pEditTerrainTypeMode->Redo() : m_pEditTerrainTypeMode->Undo();
    return m_pEditTerrainTypeMode->GetUndoPosition() != uPosition;
}

void IPluginImpl::WritePaintBrush(fs::ifile& file) const
{
    file.printf("paint_brush( %s, %s )\n",
                QuoteText(m_pEditTerrainTypeMode->GetBrushShapeName()).c_str(),
                MakeExactNumber(*m_pEditTerrainTypeMode->GetBrushHalfSize()).c_str());
}

void IPluginImpl::WritePaintState(fs::ifile& file) const
{
    const CModeEditTerrainType& mode = *m_pEditTerrainTypeMode;
    const float* pColor = m_p2DDrawDlg->GetCurrentColor();
    file.printf("paint_function( \"%s\" )\n", mode.GetFunctionName());
    file.printf("paint_color( [ %s, %s, %s, %s ] )\n",
                MakeExactNumber(pColor[0]).c_str(),
                MakeExactNumber(pColor[1]).c_str(),
                MakeExactNumber(pColor[2]).c_str(),
                MakeExactNumber(pColor[3]).c_str());
    file.printf("paint_mask( %u )\n", mode.GetChannelMask());
    file.printf("paint_power( %s )\n", MakeExactNumber(mode.GetPower()).c_str());
    file.printf("paint_hardness( %s )\n", MakeExactNumber(mode.GetHardness()).c_str());
    file.printf("paint_texel_mapping( %u )\n", static_cast<uint32_t>(mode.GetTexelMapping()));
}
