// The library of predefined brushes as the panel and scripts use it.

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/panel/SaveBrushes.h"
#include "tellur/plugin/IPluginImpl.h"
#include "tellur/resources/PluginResources.h"

#include <utility>

bool IPluginImpl::AddBrushToPredefined(CTellurBrush* pBrush)
{
    const CResourceScope scope(&GetPluginResources());
    if (pBrush == nullptr)
    {
        CrashLog("[IPluginImpl::AddBrushToPredefined] no brush\n");
        return false;
    }
    std::string strName;
    if (m_pEditorHost == nullptr || !m_pEditorHost->PromptText("Set brush name", "Name :", strName))
    {
        return false;
    }
    if (!strName.empty())
    {
        pBrush->SetName(strName.c_str());
    }
    m_BrushContainer.AddBrush(pBrush, strName.empty());
    return true;
}

const char* IPluginImpl::GetBrushFile()
{
    return PREDEFINED_BRUSHES;
}

bool IPluginImpl::SaveBrushes()
{
    return SaveBrushesWithCopy(m_BrushContainer, PREDEFINED_BRUSHES);
}

void IPluginImpl::UsePredefinedBrush(const CTellurBrush& brush)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr)
    {
        return;
    }
    // Without a brush the mode is not available; to try would only log that.
    if (m_pCurrentBrush != nullptr &&
        m_pEditorHost->GetModeManager()->GetCurrentModeId() != m_TerraformingModeId)
    {
        EnableTerraforming(true);
    }
    std::unique_ptr<CTellurBrush> pCopy(brush.Clone());
    std::unique_ptr<CTellurBrush> pReplaced;
    if (m_BrushContainer.SetBrush(pCopy.get(), &pReplaced))
    {
        static_cast<void>(pCopy.release()); // the container's from now on
    }
    SetCurrentBrush(m_BrushContainer.FindBrush(brush.GetFunctionName()));
    if (IsDragInProgress()) // a drag keeps the brush it began with
    {
        m_KeptBrushes.push_back(std::move(pReplaced));
    }
    else
    {
        m_KeptBrushes.clear();
    }
}
