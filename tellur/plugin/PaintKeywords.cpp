#include "tellur/plugin/PaintKeywords.h"

#include "host/FileSystem.h"
#include "host/Image.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/PaintLayer.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace
{

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
    // Names the file, and refuses while the mode is current, which RestoreBitmap could not stand.
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
    // A text that is set by code notifies like a typed one, so this goes the way of the field.
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

constexpr SPaintKeyword KEYWORDS[] = {
    {{"paint_bitmap", "s", EKeywordFile::Read, true}, &PaintBitmap},
    {{"paint_restore", "ss", EKeywordFile::None, true}, &PaintRestore},
    {{"paint_function", "s", EKeywordFile::None, true}, &PaintFunction},
    {{"paint_color", "w", EKeywordFile::None, true}, &PaintColor},
    {{"paint_mask", "i", EKeywordFile::None, true}, &PaintMask},
    {{"paint_brush", "sf", EKeywordFile::Read, true}, &PaintBrush},
    {{"paint_power", "f", EKeywordFile::None, true}, &PaintShare<DRAW_POWER_EDIT>},
    {{"paint_hardness", "f", EKeywordFile::None, true}, &PaintShare<DRAW_HARDNESS_EDIT>},
    {{"paint_texel_mapping", "i", EKeywordFile::None, true}, &PaintTexelMapping},
    {{"paint_undo", "", EKeywordFile::None, true}, &PaintStep<DRAW_UNDO>},
    {{"paint_redo", "", EKeywordFile::None, true}, &PaintStep<DRAW_REDO>},
    {{"save_bitmap", "s", EKeywordFile::Written, true}, &SaveBitmap},
};

} // namespace

std::span<const SPaintKeyword> GetPaintKeywords()
{
    return KEYWORDS;
}

void WritePaintBrush(fs::ifile& file, CModeEditTerrainType& mode)
{
    file.printf("paint_brush( %s, %s )\n",
                QuoteText(mode.GetBrushShapeName()).c_str(),
                MakeExactNumber(*mode.GetBrushHalfSize()).c_str());
}

void WritePaintState(fs::ifile& file,
                     const CTerrain2DDrawDlg& dialog,
                     const CModeEditTerrainType& mode)
{
    const float* pColor = dialog.GetCurrentColor();
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
