#include "editor/core/CPluginRegistry.h"

#include <algorithm>
#include <utility>

namespace
{

void AddOnce(std::vector<IPlugin*>& plugins, IPlugin* pPlugin)
{
    if (pPlugin != nullptr && std::find(plugins.begin(), plugins.end(), pPlugin) == plugins.end())
    {
        plugins.push_back(pPlugin);
    }
}

} // namespace

CPluginRegistry::CPluginRegistry() = default;

CPluginRegistry::~CPluginRegistry() = default;

void CPluginRegistry::AddInput(IPlugin* pPlugin)
{
    AddOnce(m_Input, pPlugin);
}

void CPluginRegistry::RemoveInput(IPlugin* pPlugin)
{
    std::erase(m_Input, pPlugin);
}

void CPluginRegistry::AddSettings(IPlugin* pPlugin)
{
    AddOnce(m_Settings, pPlugin);
}

void CPluginRegistry::RemoveSettings(IPlugin* pPlugin)
{
    std::erase(m_Settings, pPlugin);
}

void CPluginRegistry::AddProcess(IEditorAction* pProcess)
{
    if (pProcess != nullptr)
    {
        pProcess->SetId(static_cast<int32_t>(m_Processes.size()));
        m_Processes.emplace_back(pProcess);
    }
}

void CPluginRegistry::AddActions(const std::vector<SActionDescriptor>& actions)
{
    m_Actions.insert(m_Actions.end(), actions.begin(), actions.end());
}

void CPluginRegistry::AddMenu(SInsertedMenu menu)
{
    m_Menus.push_back(std::move(menu));
}

void CPluginRegistry::AddToolBar(CToolBar* pToolBar)
{
    m_ToolBars.push_back(pToolBar);
}

void CPluginRegistry::Clear()
{
    m_Input.clear();
    m_Settings.clear();
    m_Actions.clear();
    m_Processes.clear();
    m_Menus.clear();
    m_ToolBars.clear();
}
