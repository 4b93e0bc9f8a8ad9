#include "tellur/panel/CDefinedBrushes.h"

#include "framework/core/MessageBox.h"
#include "framework/widgets/CFormWindow.h"
#include "host/Log.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/PanelIds.h"
#include "tellur/panel/SaveBrushes.h"

CDefinedBrushes::CDefinedBrushes(CFormWindow& form)
    : m_Form(form)
{
    form.Bind(PANEL_BRUSH_LIST, m_List);
    form.OnSelectionChange(PANEL_BRUSH_LIST, [this] { OnSelect(); });
    form.OnClick(PANEL_ADD_BRUSH, [this] { OnAdd(); });
    form.OnClick(PANEL_SAVE_BRUSHES, [this] { OnSave(); });
}

void CDefinedBrushes::AddItem(CTellurBrush* pBrush)
{
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::AddBrushToList] no brush\n");
        return;
    }
    const char* pszName = pBrush->GetName();
    const int iItem = m_List.AddString(pszName != nullptr ? pszName : "");
    m_List.SetItemData(iItem, reinterpret_cast<uintptr_t>(pBrush));
}

void CDefinedBrushes::Fill()
{
    m_List.SetRedraw(false);
    m_List.ResetContent();
    for (const auto& pBrush : GetPluginPart<IPanelPlugin>()->GetBrushContainer()->GetPredefined())
    {
        AddItem(pBrush.get());
    }
    m_List.SetRedraw(true);
}

void CDefinedBrushes::EnableAdding(bool bOn)
{
    m_Form.EnableItem(PANEL_ADD_BRUSH, bOn);
}

void CDefinedBrushes::OnSelect()
{
    PluginContext* pContext = GetPluginContext();
    const int iItem = m_List.GetCurSel();
    if (iItem < 0)
    {
        if (IsTerraformingOn())
        {
            GetPluginPart<IPanelPlugin>()->EnableTerraforming(false);
        }
        pContext->SetCurrentBrush(nullptr);
        ShowBrush();
        return;
    }
    const auto* pBrush = reinterpret_cast<const CTellurBrush*>(m_List.GetItemData(iItem)); // NOLINT
    if (pBrush != nullptr)
    {
        GetPluginPart<IPanelPlugin>()->UsePredefinedBrush(*pBrush);
        // Without a brush before, the mode could not be switched on until now.
        if (pContext->GetCurrentBrush() != nullptr && !IsTerraformingOn())
        {
            GetPluginPart<IPanelPlugin>()->EnableTerraforming(true);
        }
    }
    ShowBrush();
}

void CDefinedBrushes::OnAdd()
{
    CTellurBrush* pBrush = GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::OnChangeEditPower] no current brush\n"); // as the power says it
        return;
    }
    if (GetPluginPart<IPanelPlugin>()->AddBrushToPredefined(pBrush))
    {
        Fill();
    }
}

void CDefinedBrushes::OnSave()
{
    if (!SaveBrushesWithCopy(*GetPluginPart<IPanelPlugin>()->GetBrushContainer(),
                             PREDEFINED_BRUSHES))
    {
        ShowMessageBox("Failed to save brushes", MB_OK | MB_ICONEXCLAMATION);
    }
}
