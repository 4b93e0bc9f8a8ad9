// What the keys of an editor do to the tool at hand.

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/CTextFile.h"
#include "host/EditorHost.h"
#include "host/ModeManager.h"
#include "host/Reflection.h"
#include "host/Terrain.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modes/TerraformingState.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/panel/BrushMask.h"
#include "tellur/panel/ITerrainPanel.h"
#include "tellur/panel/PanelScale.h"
#include "tellur/plugin/IPluginImpl.h"
#include "tellur/resources/PluginResources.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace
{

constexpr const char* FIRST_TOOL = "RelativeHeightFunction";
constexpr const char* SMOOTHING = "BlurFunction";
constexpr float MOST_COUNT = 1000.0F;
// The one number that says what a function does; ramp and point height have none.
constexpr const char* AMOUNT_FIELDS[] = {"m_Height", "m_NumHeightDivisions", "m_NeighbourhoodSize"};
constexpr float NO_NUMBER = std::numeric_limits<float>::quiet_NaN();

bool IsFunction(const CTellurBrush& brush, const char* pszName)
{
    const char* pszFunction = brush.GetRTTIObject() != nullptr ? brush.GetFunctionName() : nullptr;
    return pszFunction != nullptr && std::strcmp(pszFunction, pszName) == 0;
}

bool Holds(const CBrushContainer::CBrushList& list, const CTellurBrush* pBrush)
{
    return std::any_of(
        list.begin(), list.end(), [pBrush](const auto& pOther) { return pOther.get() == pBrush; });
}

} // namespace

// "SetHeightFunction" is "Set height".
std::string IPluginImpl::GetToolName()
{
    constexpr std::string_view SUFFIX = "Function";
    std::string strClass = GetFunctionName();
    if (strClass.ends_with(SUFFIX))
    {
        strClass.resize(strClass.size() - SUFFIX.size());
    }
    std::string strText;
    for (const char c : strClass)
    {
        const bool bWord = c >= 'A' && c <= 'Z' && !strText.empty();
        strText += bWord ? " " : "";
        strText += bWord ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return strText;
}

bool IPluginImpl::HasBrush(const CTellurBrush* pBrush) const
{
    return pBrush != nullptr &&
           (Holds(m_BrushContainer.GetTools(), pBrush) || Holds(m_KeptBrushes, pBrush) ||
            Holds(m_BrushContainer.GetPredefined(), pBrush));
}

void IPluginImpl::NoteTool()
{
    const bool bSmoothing = m_pCurrentBrush != nullptr && m_pCurrentBrush == m_pSmoother.get();
    CTellurBrush* pTool = bSmoothing ? m_pSmoothed : m_pCurrentBrush;
    if (HasBrush(pTool) && pTool->GetRTTIObject() != nullptr)
    {
        m_pLastTool = pTool;
        m_LastFunction = pTool->GetFunctionName();
    }
}

CTellurBrush* IPluginImpl::FindLastTool() const
{
    if (HasBrush(m_pLastTool))
    {
        return m_pLastTool;
    }
    CTellurBrush* pTool = m_BrushContainer.FindBrush(m_LastFunction.c_str());
    return pTool != nullptr ? pTool : m_BrushContainer.FindBrush(FIRST_TOOL);
}

bool IPluginImpl::TakeTool(const char* pszFunction)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr)
    {
        return false;
    }
    const bool bUp = m_pCurrentBrush != nullptr && IsTerraforming();
    if (bUp && (pszFunction == nullptr || IsFunction(*m_pCurrentBrush, pszFunction)))
    {
        return true;
    }
    CTellurBrush* pTool =
        pszFunction != nullptr ? m_BrushContainer.FindBrush(pszFunction) : FindLastTool();
    ModeManager* pModes = m_pEditorHost->GetModeManager();
    if (pTool == nullptr || (!IsTerraforming() && !pModes->CanDeactivateCurrentMode()))
    {
        return false;
    }
    SetCurrentBrush(pTool);
    if (!IsTerraforming())
    {
        EnableTerraforming(true);
    }
    m_pEditorHost->RedrawViews();
    return IsTerraforming();
}

float IPluginImpl::GetBrushValue(EBrushValue eValue)
{
    if (eValue == EBrushValue::Extent)
    {
        return GetBrushExtent();
    }
    if (eValue == EBrushValue::Amount)
    {
        return GetAmount();
    }
    if (m_pCurrentBrush == nullptr || IsPainting())
    {
        return 0.0F;
    }
    return eValue == EBrushValue::Power ? m_pCurrentBrush->GetPowerModifier()
                                        : m_pCurrentBrush->GetHardness();
}

CRTTIField* IPluginImpl::FindAmountField() const
{
    CRTTIObject* pObject = m_pCurrentBrush != nullptr ? m_pCurrentBrush->GetRTTIObject() : nullptr;
    CRTTIField* pFound = nullptr;
    for (const char* pszField : AMOUNT_FIELDS)
    {
        CRTTIField* pField = pObject != nullptr ? pObject->FindField(pszField) : nullptr;
        pFound = pField != nullptr ? pField : pFound;
    }
    return pFound;
}

float IPluginImpl::GetAmount()
{
    CRTTIField* pField = IsPainting() ? nullptr : FindAmountField();
    float fHeight = NO_NUMBER;
    int32_t iCount = 0;
    if (pField != nullptr && m_pCurrentBrush->GetRTTIObject()->GetFieldIntEditor(pField, iCount))
    {
        return static_cast<float>(iCount);
    }
    if (pField != nullptr)
    {
        m_pCurrentBrush->GetRTTIObject()->GetFieldFloatEditor(pField, fHeight);
    }
    return fHeight;
}

void IPluginImpl::SetAmount(float fValue)
{
    CRTTIField* pField = FindAmountField();
    if (pField == nullptr)
    {
        return;
    }
    const Terrain* pTerrain = GetCurrentTerrain();
    const float fMost = pTerrain != nullptr ? std::fabs(pTerrain->GetSize().y) : std::fabs(fValue);
    CRTTIObject* pObject = m_pCurrentBrush->GetRTTIObject();
    pObject->SetFieldIntEditor(
        pField, static_cast<int32_t>(std::lround(std::clamp(fValue, 1.0F, MOST_COUNT))));
    pObject->SetFieldFloatEditor(pField, std::clamp(fValue, -fMost, fMost));
}

// The panel takes any extent that is typed; a key that is held needs ends.
float IPluginImpl::ClampExtent(float fExtent) const
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

float IPluginImpl::SetBrushValue(EBrushValue eValue, float fValue)
{
    const bool bExtent = eValue == EBrushValue::Extent;
    if (!std::isfinite(fValue))
    {
        return GetBrushValue(eValue);
    }
    if (IsPainting())
    {
        if (bExtent && m_p2DDrawDlg != nullptr)
        {
            m_p2DDrawDlg->ChooseExtent(ClampExtent(fValue) * 0.5F);
        }
    }
    else if (m_pCurrentBrush != nullptr)
    {
        switch (eValue)
        {
        case EBrushValue::Extent:
            m_pCurrentBrush->SetExtent(ClampExtent(fValue));
            break;
        case EBrushValue::Power:
            m_pCurrentBrush->SetPowerModifier(std::clamp(fValue, 0.0F, 1.0F));
            break;
        case EBrushValue::Hardness:
            m_pCurrentBrush->SetHardness(std::clamp(fValue, 0.0F, MOST_HARDNESS));
            break;
        case EBrushValue::Amount:
            SetAmount(fValue);
            break;
        }
        ShowTool(bExtent);
    }
    return GetBrushValue(eValue);
}

void IPluginImpl::ShowTool(bool bExtentOnly)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pPanel != nullptr && bExtentOnly)
    {
        m_pPanel->RefreshExtent();
    }
    else if (m_pPanel != nullptr)
    {
        m_pPanel->RefreshBrushControls();
    }
    if (m_pEditorHost != nullptr)
    {
        m_pEditorHost->RedrawViews();
    }
}

CRTTIField* IPluginImpl::FindHeightFieldOf(const char* pszFunction) const
{
    const bool bSame = m_pCurrentBrush != nullptr && IsFunction(*m_pCurrentBrush, pszFunction);
    CRTTIField* pField = bSame ? FindHeightField() : nullptr;
    return pField != nullptr && pField->GetType() == RTTI_FLOAT ? pField : nullptr;
}

bool IPluginImpl::InvertTool(float& fHeight)
{
    CRTTIField* pField = IsPainting() ? nullptr : FindHeightFieldOf("RelativeHeightFunction");
    if (pField == nullptr ||
        !m_pCurrentBrush->GetRTTIObject()->GetFieldFloatEditor(pField, fHeight))
    {
        return false;
    }
    fHeight = -fHeight;
    m_pCurrentBrush->GetRTTIObject()->SetFieldFloatEditor(pField, fHeight);
    ShowTool(false);
    return true;
}

bool IPluginImpl::SetToolHeight(float fHeight)
{
    CRTTIField* pField = IsPainting() ? nullptr : FindHeightFieldOf("SetHeightFunction");
    if (pField == nullptr)
    {
        return false;
    }
    m_pCurrentBrush->GetRTTIObject()->SetFieldFloatEditor(pField, fHeight);
    ShowTool(false);
    return true;
}

std::string IPluginImpl::GetMaskPath()
{
    return m_pCurrentBrush != nullptr ? m_pCurrentBrush->GetMaskPath() : "";
}

bool IPluginImpl::IsMaskEnabled()
{
    return m_pCurrentBrush != nullptr && m_pCurrentBrush->IsMaskEnabled();
}

void IPluginImpl::EnableMask(bool bEnable)
{
    if (m_pCurrentBrush != nullptr)
    {
        m_pCurrentBrush->SetMaskEnabled(bEnable);
        ShowTool(false);
    }
}

bool IPluginImpl::ChooseMask()
{
    const CResourceScope scope(&GetPluginResources());
    const std::string strPath = BrowseForMask(GetMaskPath());
    if (strPath.empty())
    {
        return false;
    }
    SetBrushMask(*m_pCurrentBrush, strPath);
    ShowTool(false);
    return true;
}

bool IPluginImpl::HeedsMinMax()
{
    return m_pCurrentBrush != nullptr && !IsPainting() && m_pCurrentBrush->HeedsModeKeys();
}

// The brush of the stroke before goes on where nothing about it has changed, because that is what
// whoever plays a recording has.
bool IPluginImpl::BeginSmoothing()
{
    if (IsDragInProgress())
    {
        return false;
    }
    EndSmoothing();
    const CTellurBrush* pBlur = m_BrushContainer.FindBrush(SMOOTHING);
    if (pBlur == nullptr || m_pCurrentBrush == nullptr || !IsTerraforming())
    {
        return false;
    }
    const CResourceScope scope(&GetPluginResources());
    std::unique_ptr<CTellurBrush> pNew(pBlur->Clone());
    pNew->SetExtent(m_pCurrentBrush->GetExtent());
    pNew->SetMaskEnabled(m_pCurrentBrush->IsMaskEnabled());
    if (m_pCurrentBrush->GetMaskPath().empty())
    {
        pNew->DropMask();
    }
    else
    {
        pNew->SetMask(m_pCurrentBrush->GetMaskPath().c_str());
    }
    CTextFile before;
    CTextFile now;
    const bool bSame = m_pSmoother != nullptr && WriteBrush(before, *m_pSmoother) &&
                       WriteBrush(now, *pNew) && before.GetText() == now.GetText();
    if (!bSame)
    {
        m_pSmoother = std::move(pNew);
    }
    m_pSmoothed = m_pCurrentBrush;
    SetCurrentBrush(m_pSmoother.get());
    return true;
}

void IPluginImpl::EndSmoothing()
{
    CTellurBrush* pTool = std::exchange(m_pSmoothed, nullptr);
    if (pTool == nullptr || m_pCurrentBrush != m_pSmoother.get())
    {
        return;
    }
    const CResourceScope scope(&GetPluginResources());
    SetCurrentBrush(HasBrush(pTool) ? pTool : FindLastTool());
}
