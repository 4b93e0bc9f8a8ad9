#include "tellur/plugin/CPluginTools.h"

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/ModeManager.h"
#include "host/Reflection.h"
#include "host/Terrain.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/panel/BrushMask.h"
#include "tellur/panel/PanelScale.h"
#include "tellur/plugin/BrushText.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CPainting.h"
#include "tellur/plugin/CPanelLink.h"
#include "tellur/plugin/CPluginModes.h"
#include "tellur/plugin/ToolAmount.h"
#include "tellur/resources/FunctionFaces.h"
#include "tellur/resources/PluginResources.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr float NO_NUMBER = std::numeric_limits<float>::quiet_NaN();

// The panel takes any extent that is typed; a key that is held needs ends.
float ClampExtent(float fExtent)
{
    const Terrain* pTerrain = GetCurrentTerrain();
    if (pTerrain == nullptr)
    {
        return std::max(fExtent, 0.0F);
    }
    const float fWidth = std::fabs(pTerrain->GetSize().x);
    const float fCell = fWidth / static_cast<float>(pTerrain->GetCellsPerSide());
    return std::clamp(fExtent, fCell * 0.5F, std::max(fWidth, fCell * 0.5F));
}

} // namespace

CPluginTools::CPluginTools(CBrushContainer& brushes,
                           CBrushAtHand& brush,
                           const CPluginModes& modes,
                           const CPainting& painting,
                           CPanelLink& panel)
    : m_Brushes(brushes)
    , m_Brush(brush)
    , m_Modes(modes)
    , m_Painting(painting)
    , m_Panel(panel)
{
}

std::vector<SToolOffer> CPluginTools::GetTools()
{
    std::vector<SToolOffer> tools;
    for (const SFunctionFace* pFace : GetFunctionPlaces())
    {
        tools.push_back({pFace->pszFunction, pFace->pszMenu});
    }
    return tools;
}

bool CPluginTools::IsTerraforming()
{
    return m_Modes.IsTerraforming();
}

bool CPluginTools::IsPainting()
{
    return m_Painting.IsOn();
}

std::string CPluginTools::GetFunctionName()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    const bool bFunction = pBrush != nullptr && pBrush->GetRTTIObject() != nullptr;
    const char* pszName = IsPainting() ? m_Painting.GetMode()->GetFunctionName()
                          : bFunction  ? pBrush->GetFunctionName()
                                       : nullptr;
    return pszName != nullptr ? pszName : "";
}

std::string CPluginTools::GetToolName()
{
    return MakeToolName(GetFunctionName());
}

float CPluginTools::GetBrushExtent()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    if (IsPainting())
    {
        return 2.0F * *m_Painting.GetMode()->GetBrushHalfSize();
    }
    return pBrush != nullptr ? pBrush->GetExtent() : 0.0F;
}

bool CPluginTools::IsMaskActing()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    return pBrush != nullptr && pBrush->IsMaskActing();
}

bool CPluginTools::HeedsMinMax()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    return pBrush != nullptr && !IsPainting() && pBrush->HeedsModeKeys();
}

bool CPluginTools::TakeTool(const char* pszFunction)
{
    const CResourceScope scope(&GetPluginResources());
    const CTellurBrush* pBrush = m_Brush.Get();
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    if (pHost == nullptr)
    {
        return false;
    }
    const bool bUp = pBrush != nullptr && IsTerraforming();
    // A tool that is up already stays as it is.
    if (bUp && (pszFunction == nullptr || HasFunction(*pBrush, pszFunction)))
    {
        return true;
    }
    CTellurBrush* pTool =
        pszFunction != nullptr ? m_Brushes.FindBrush(pszFunction) : m_Brush.FindLastTool();
    ModeManager* pModes = pHost->GetModeManager();
    if (pTool == nullptr || (!IsTerraforming() && !pModes->CanDeactivateCurrentMode()))
    {
        return false;
    }
    // The brush comes first: the mode is not available without one.
    m_Brush.Set(pTool);
    if (!IsTerraforming())
    {
        m_Modes.EnableTerraforming(true);
    }
    pHost->RedrawViews();
    return IsTerraforming();
}

float CPluginTools::GetBrushValue(EBrushValue eValue)
{
    const CTellurBrush* pBrush = m_Brush.Get();
    if (eValue == EBrushValue::Extent)
    {
        return GetBrushExtent();
    }
    if (eValue == EBrushValue::Amount)
    {
        return pBrush != nullptr && !IsPainting() ? GetAmountOf(*pBrush) : NO_NUMBER;
    }
    if (pBrush == nullptr || IsPainting())
    {
        return 0.0F;
    }
    return eValue == EBrushValue::Power ? pBrush->GetPowerModifier() : pBrush->GetHardness();
}

float CPluginTools::SetBrushValue(EBrushValue eValue, float fValue)
{
    CTellurBrush* pBrush = m_Brush.Get();
    const bool bExtent = eValue == EBrushValue::Extent;
    if (!std::isfinite(fValue))
    {
        return GetBrushValue(eValue);
    }
    if (IsPainting())
    {
        // Through the dialog, which shows it, too; its number is half the side.
        if (bExtent && m_Painting.GetDialog() != nullptr)
        {
            m_Painting.GetDialog()->ChooseExtent(ClampExtent(fValue) * 0.5F);
        }
    }
    else if (pBrush != nullptr)
    {
        switch (eValue)
        {
        case EBrushValue::Extent:
            pBrush->SetExtent(ClampExtent(fValue));
            break;
        case EBrushValue::Power:
            pBrush->SetPowerModifier(std::clamp(fValue, 0.0F, 1.0F));
            break;
        case EBrushValue::Hardness:
            pBrush->SetHardness(std::clamp(fValue, 0.0F, MOST_HARDNESS));
            break;
        case EBrushValue::Amount:
            SetAmountOf(*pBrush, fValue);
            SetPicksHeight(*pBrush, false);
            break;
        }
        ShowTool(bExtent);
    }
    return GetBrushValue(eValue);
}

void CPluginTools::ShowTool(bool bExtentOnly)
{
    const CResourceScope scope(&GetPluginResources());
    bExtentOnly ? m_Panel.ShowExtent() : m_Panel.ShowBrushValues();
    if (EditorHost* pHost = GetPluginContext()->GetEditorHost())
    {
        pHost->RedrawViews();
    }
}

CRTTIField* CPluginTools::FindHeightFieldOf(const char* pszFunction) const
{
    const CTellurBrush* pBrush = m_Brush.Get();
    const bool bSame = pBrush != nullptr && HasFunction(*pBrush, pszFunction);
    CRTTIField* pField = bSame ? FindHeightField(pBrush) : nullptr;
    return pField != nullptr && pField->GetType() == RTTI_FLOAT ? pField : nullptr;
}

bool CPluginTools::InvertTool(float& fHeight)
{
    CTellurBrush* pBrush = m_Brush.Get();
    CRTTIField* pField = IsPainting() ? nullptr : FindHeightFieldOf("RelativeHeightFunction");
    if (pField == nullptr || !pBrush->GetRTTIObject()->GetFieldFloatEditor(pField, fHeight))
    {
        return false;
    }
    fHeight = -fHeight;
    pBrush->GetRTTIObject()->SetFieldFloatEditor(pField, fHeight);
    ShowTool(false);
    return true;
}

bool CPluginTools::SetToolHeight(float fHeight)
{
    CTellurBrush* pBrush = m_Brush.Get();
    CRTTIField* pField = IsPainting() ? nullptr : FindHeightFieldOf("SetHeightFunction");
    if (pField == nullptr)
    {
        return false;
    }
    pBrush->GetRTTIObject()->SetFieldFloatEditor(pField, fHeight);
    SetPicksHeight(*pBrush, false);
    ShowTool(false);
    return true;
}

bool CPluginTools::GetToolSizes(const char* pszFunction, SToolSizes& sizes)
{
    const CTellurBrush* pBrush = m_Brushes.FindBrush(pszFunction);
    if (pBrush == nullptr)
    {
        return false;
    }
    sizes = {pBrush->GetExtent(), GetAmountOf(*pBrush), PicksHeight(*pBrush)};
    return true;
}

bool CPluginTools::SetToolSizes(const char* pszFunction, const SToolSizes& sizes)
{
    CTellurBrush* pBrush = m_Brushes.FindBrush(pszFunction);
    if (pBrush == nullptr)
    {
        return false;
    }
    if (std::isfinite(sizes.fExtent))
    {
        pBrush->SetExtent(ClampExtent(sizes.fExtent));
    }
    if (std::isfinite(sizes.fAmount))
    {
        SetAmountOf(*pBrush, sizes.fAmount);
    }
    SetPicksHeight(*pBrush, sizes.bPicksHeight);
    if (pBrush == m_Brush.Get())
    {
        ShowTool(false);
    }
    return true;
}

std::string CPluginTools::GetMaskPath()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    return pBrush != nullptr ? pBrush->GetMaskPath() : "";
}

bool CPluginTools::IsMaskEnabled()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    return pBrush != nullptr && pBrush->IsMaskEnabled();
}

void CPluginTools::EnableMask(bool bEnable)
{
    CTellurBrush* pBrush = m_Brush.Get();
    if (pBrush != nullptr)
    {
        pBrush->SetMaskEnabled(bEnable);
        ShowTool(false);
    }
}

bool CPluginTools::ChooseMask()
{
    const CResourceScope scope(&GetPluginResources());
    const std::string strPath = BrowseForMask(GetMaskPath());
    CTellurBrush* pBrush = m_Brush.Get(); // of now: the dialog takes its time
    if (strPath.empty() || pBrush == nullptr)
    {
        return false;
    }
    SetBrushMask(*pBrush, strPath);
    ShowTool(false);
    return true;
}
