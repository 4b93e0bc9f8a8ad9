#include "tellur/panel/CFunctionButtons.h"

#include "framework/widgets/CFormWindow.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/panel/CImageToggleButton.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/IPanelPlugin.h"
#include "tellur/resources/FunctionFaces.h"
#include "tellur/resources/PluginResources.h"

#include <string_view>

namespace
{

// The class of the brush's function; empty without a brush or a function. A brush without one is
// logged, so it is asked once.
std::string_view GetFunctionName(const CTellurBrush* pBrush)
{
    const char* pszName = pBrush != nullptr ? pBrush->GetFunctionName() : nullptr;
    return pszName != nullptr ? pszName : "";
}

} // namespace

struct CFunctionButtons::SButton
{
    const SFunctionFace* pFace = nullptr;
    CImageToggleButton button;
};

CFunctionButtons::CFunctionButtons(CFormWindow& form)
    : m_Buttons(GetFunctionPlaces().size())
{
    for (size_t i = 0; i < m_Buttons.size(); ++i)
    {
        const SFunctionFace* pFace = GetFunctionPlaces()[i];
        m_Buttons[i].pFace = pFace;
        form.Bind(pFace->uButton, m_Buttons[i].button);
        form.OnClick(pFace->uButton, [this, pFace] { OnClicked(pFace->pszFunction); });
        // The press has turned the button over; where no click follows, nothing else puts it back.
        form.On(
            ENotify::Released, pFace->uButton, [this](SNotification&) { Show(GetCurrentBrush()); });
    }
}

CFunctionButtons::~CFunctionButtons() = default;

void CFunctionButtons::Dress()
{
    for (SButton& one : m_Buttons)
    {
        one.button.SetImages(&GetPluginResources(), one.pFace->image.uId);
        one.button.SetToggle(true);
        one.button.SetOwnerDraw();
    }
}

void CFunctionButtons::Show(const CTellurBrush* pBrush)
{
    const std::string_view strName = GetFunctionName(pBrush);
    for (SButton& one : m_Buttons)
    {
        one.button.SetChecked(strName == one.pFace->pszFunction);
    }
}

void CFunctionButtons::OnClicked(const char* pszFunction)
{
    PluginContext* pContext = GetPluginContext();
    auto* pPlugin = GetPluginPart<IPanelPlugin>();
    if (GetFunctionName(GetCurrentBrush()) == pszFunction && IsTerraformingOn())
    {
        pPlugin->EnableTerraforming(false);
        pContext->SetCurrentBrush(nullptr);
        ShowBrush();
        return;
    }
    if (CTellurBrush* pTool = pPlugin->GetBrushContainer()->FindBrush(pszFunction))
    {
        pContext->SetCurrentBrush(pTool);
        if (!IsTerraformingOn())
        {
            pPlugin->EnableTerraforming(true);
        }
    }
    Show(GetCurrentBrush()); // a click changes the button by itself
    ShowBrush();
}
