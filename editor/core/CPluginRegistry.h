#pragma once

#include "host/IEditorAction.h"

#include <memory>
#include <string>
#include <vector>

class CMenu;
class CToolBar;
class IPlugin;

// A pop-up that a plug-in had inserted into the editor's menu bar. The pop-up stays the plug-in's.
struct SInsertedMenu
{
    int iPosition = 0;
    IPlugin* pPlugin = nullptr;
    CMenu* pPopup = nullptr;
    std::string strTitle;
    std::string strParent;
};

// What plug-ins have left with the host: their two registrations, actions, processes, menus and
// toolbars. Owned by CEditorHost, emptied before the library goes.
class CPluginRegistry
{
public:
    CPluginRegistry();
    ~CPluginRegistry();
    CPluginRegistry(const CPluginRegistry&) = delete;
    CPluginRegistry& operator=(const CPluginRegistry&) = delete;

    // Null and what is listed already are ignored.
    void AddInput(IPlugin* pPlugin);
    void RemoveInput(IPlugin* pPlugin);
    void AddSettings(IPlugin* pPlugin);
    void RemoveSettings(IPlugin* pPlugin);
    // Takes ownership; null is ignored. The process gets its place in the list as id.
    void AddProcess(IEditorAction* pProcess);
    void AddActions(const std::vector<SActionDescriptor>& actions);
    void AddMenu(SInsertedMenu menu);
    void AddToolBar(CToolBar* pToolBar);
    // Destroys the processes and forgets the rest.
    void Clear();

    const std::vector<IPlugin*>& GetInput() const { return m_Input; }

    // What the first plug-in that is listed for input and has it offers beyond IPlugin; null when
    // none does.
    template <typename TInterface> TInterface* FindInterface() const
    {
        for (IPlugin* pPlugin : m_Input)
        {
            if (auto* pFound = dynamic_cast<TInterface*>(pPlugin))
            {
                return pFound;
            }
        }
        return nullptr;
    }

    const std::vector<IPlugin*>& GetSettings() const { return m_Settings; }

    const std::vector<SActionDescriptor>& GetActions() const { return m_Actions; }

    size_t GetProcessCount() const { return m_Processes.size(); }

    // Borrowed; i: below the count.
    IEditorAction* GetProcess(size_t i) const { return m_Processes[i].get(); }

    const std::vector<SInsertedMenu>& GetMenus() const { return m_Menus; }

    const std::vector<CToolBar*>& GetToolBars() const { return m_ToolBars; }

private:
    std::vector<IPlugin*> m_Input;
    std::vector<IPlugin*> m_Settings;
    std::vector<SActionDescriptor> m_Actions;
    std::vector<std::unique_ptr<IEditorAction>> m_Processes;
    std::vector<SInsertedMenu> m_Menus;
    std::vector<CToolBar*> m_ToolBars;
};
