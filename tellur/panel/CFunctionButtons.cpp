#include "tellur/panel/CFunctionButtons.h"

#include "framework/widgets/CFormWindow.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/TerraformingState.h"
#include "tellur/panel/CImageToggleButton.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/PanelFunctions.h"

#include <cstring>

namespace
{

bool HasFunction(const CTellurBrush* pBrush, const char* pszFunction)
{
    const char* pszName = pBrush != nullptr ? pBrush->GetFunctionName() : nullptr;
    return pszName != nullptr && std::strcmp(pszName, pszFunction) == 0;
}

} // namespace

struct CFunctionButtons::SButton
{
    SPanelFunction function = {};
    CImageToggleButton button;
};

CFunctionButtons::CFunctionButtons(CFormWindow& form, std::span<const SPanelFunction> functions)
    : m_Buttons(functions.size())
{
    for (size_t i = 0; i < functions.size(); ++i)
    {
        const SPanelFunction& function = functions[i];
        m_Buttons[i].function = function;
        form.Bind(function.uButton, m_Buttons[i].button);
        form.OnClick(function.uButton, [this, pszName = function.pszName] { OnClicked(pszName); });
    }
}

CFunctionButtons::~CFunctionButtons() = default;

void CFunctionButtons::Dress(const SResourceModule* pModule)
{
    for (SButton& one : m_Buttons)
    {
        one.button.SetImages(pModule, one.function.uImage);
        one.button.SetToggle(true);
        one.button.SetOwnerDraw();
    }
}

void CFunctionButtons::Show(const CTellurBrush* pBrush)
{
    for (SButton& one : m_Buttons)
    {
        one.button.SetChecked(HasFunction(pBrush, one.function.pszName));
    }
}

void CFunctionButtons::OnClicked(const char* pszFunction)
{
    PluginContext* pContext = GetPluginContext();
    if (HasFunction(GetCurrentBrush(), pszFunction) && IsTerraformingOn())
    {
        pContext->EnableTerraforming(false);
        pContext->SetCurrentBrush(nullptr);
        ShowBrush();
        return;
    }
    if (CTellurBrush* pTool = pContext->GetBrushContainer()->FindBrush(pszFunction))
    {
        pContext->SetCurrentBrush(pTool);
        if (!IsTerraformingOn())
        {
            pContext->EnableTerraforming(true);
        }
    }
    Show(GetCurrentBrush()); // a click changes the button by itself
    ShowBrush();
}
