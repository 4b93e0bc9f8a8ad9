#pragma once

#include "framework/core/CMenu.h"
#include "framework/core/CRuntimeClass.h"
#include "framework/core/ResourceModule.h"
#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "parser/TCParseFile.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/panel/ITerrainPanel.h"
#include "tellur/plugin/CToolBarReg.h"
#include "tellur/plugin/IPluginImpl.h"
#include "tellur/resources/PluginResources.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <functional>

using Lines = std::vector<std::string>;

class CFakePanel : public ITerrainPanel
{
public:
    explicit CFakePanel(FakeCalls* pCallList)
        : pCalls(pCallList)
    {
    }

    void StoreExtentLimits() override
    {
        AddCall(pCalls, "Panel.StoreExtentLimits()");
        GetPluginContext()->SetExtentLimits({12.5F, 8000.0F});
    }

    void RefreshBrushControls() override { AddCall(pCalls, "Panel.RefreshBrushControls()"); }

    void EnableBrushControls() override { AddCall(pCalls, "Panel.EnableBrushControls()"); }

    void RefreshToolProperties() override { AddCall(pCalls, "Panel.RefreshToolProperties()"); }

    void RefreshExtent() override { AddCall(pCalls, "Panel.RefreshExtent()"); }

    void FillBrushList() override { AddCall(pCalls, "Panel.FillBrushList()"); }

    void FillResolutionList() override { AddCall(pCalls, "Panel.FillResolutionList()"); }

    FakeCalls* pCalls;
};

// A host that fills the toolbar, keeps what it gets, and notes which resource module is current
// when it is called.
class CWatchingHost : public CFakeEditorHost
{
public:
    using CFakeEditorHost::CFakeEditorHost;

    bool CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId) override
    {
        Note();
        CFakeEditorHost::CreatePluginToolBar(pToolBar, uResourceId);
        pPluginToolBar = pToolBar;
        return bToolBarWorks && pToolBar->LoadToolBar(uResourceId);
    }

    void InsertPluginMenu(int iPosition,
                          IPlugin* pPlugin,
                          CMenu* pPopup,
                          const char* pszTitle,
                          const char* pszParent) override
    {
        Note();
        CFakeEditorHost::InsertPluginMenu(iPosition, pPlugin, pPopup, pszTitle, pszParent);
        pMenu = pPopup;
    }

    void OpenPluginView(const CRuntimeClass* pClass) override
    {
        Note();
        AddCall(pCalls, "Host.OpenPluginView(%s)", pClass->GetName());
    }

    bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) override
    {
        Note();
        return CFakeEditorHost::PromptText(pszTitle, pszLabel, strAnswer);
    }

    void RefreshView(ViewId view) override
    {
        Note();
        CFakeEditorHost::RefreshView(view);
    }

    int PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved) override
    {
        Note();
        return CFakeEditorHost::PickTerrain(view, point, hit, uReserved);
    }

    void Note() { modules.push_back(GetCurrentResourceModule()); }

    CToolBar* pPluginToolBar = nullptr;
    CMenu* pMenu = nullptr;
    std::vector<const SResourceModule*> modules; // current at each noted call
};

// A mode of the plug-in's group or of another that passes over its input.
class CSilentMode : public CModeEditTerrainType
{
public:
    void OnAction(ViewId, int, uint32_t) override {}

    void OnLButtonDown(ViewId, ViewPoint, uint32_t) override {}

    void OnMouseMove(ViewId, uint32_t, ViewPoint, uintptr_t, uintptr_t) override {}

    void OnLButtonUp(ViewId, ViewPoint, uint32_t) override {}
};

// A plug-in object of its own in a fake host, whose relative paths lie in a fresh folder with the
// installed data behind it. The terrain is 80 x 1000 x 80 units, a vertex every 10.
class CPluginFixture : public testing::Test
{
protected:
    static constexpr uint32_t HANDLE = 0x4100; // of plug-in index 65

    CPluginFixture()
    {
        fs::set_user_root(m_Folder.GetFolder().c_str());
        fs::set_data_root(TELLUR_SOURCE_DIR);
        m_Plugin = std::make_unique<IPluginImpl>();
        m_Plugin->Attach(&m_Host, 65, &m_Fake.engine);
    }

    ~CPluginFixture() override
    {
        DropModes();
        m_Host.undos.clear();
        m_Host.processes.clear();
        m_Plugin.reset();
        fs::set_user_root(nullptr);
        fs::set_data_root(nullptr);
    }

    void Initialize()
    {
        m_Plugin->Initialize();
        TakeCalls();
        m_Log.Clear();
    }

    void DropModes()
    {
        m_Fake.modes.iCurrent = -1;
        m_Fake.modes.modes.clear();
    }

    void OpenPanel() { m_Plugin->SetPanel(&m_Panel); }

    Lines TakeCalls() { return m_Fake.TakeCalls(); }

    // What an operation writes to a fresh file.
    std::string Write(const std::function<void(fs::ifile&)>& operation)
    {
        fs::ifile file;
        EXPECT_TRUE(file.open("written.txt", fs::mode_write));
        operation(file);
        EXPECT_TRUE(file.close());
        return ReadBytes(m_Folder.Path("written.txt"));
    }

    // The tool brush of a function, made current.
    CTellurBrush* UseToolBrush(const char* pszFunction)
    {
        CTellurBrush* pBrush = m_Plugin->GetBrushContainer()->FindBrush(pszFunction);
        m_Plugin->SetCurrentBrush(pBrush);
        TakeCalls();
        return pBrush;
    }

    // The first node of a text with the declarations that scripts and brush files start with.
    std::unique_ptr<CTCPARSE_KEYWORD> Parse(const std::string& strText)
    {
        const std::string strPath = m_Folder.Path("parsed.txt");
        WriteBytes(strPath,
                   "!brush()\n!mode( s )\n!auto_normals( i )\n" +
                       GetBrushDeclarations(EBrushBlock::Script) + strText);
        std::unique_ptr<CTCPARSE_KEYWORD> pTree(TCParseFile(strPath.c_str()));
        EXPECT_NE(pTree, nullptr) << strText;
        return pTree;
    }

    // Changes of the toolbar's button go into the list of calls.
    void WatchToolBar()
    {
        m_Host.pPluginToolBar->SetChangeListener(
            [this]
            {
                AddCall(&m_Fake.calls,
                        "ToolBar(%d %d)",
                        m_Host.pPluginToolBar->IsButtonPressed(HANDLE + 1) ? 1 : 0,
                        m_Host.pPluginToolBar->IsButtonChecked(HANDLE + 1) ? 1 : 0);
            });
    }

    CTempFolder m_Folder;
    CFakeContext m_Fake;
    CWatchingHost m_Host{&m_Fake.textures, &m_Fake.modes, &m_Fake.calls};
    CFakeFrontEnd m_FrontEnd;
    CLogCatcher m_Log;
    CFakePanel m_Panel{&m_Fake.calls};
    std::unique_ptr<IPluginImpl> m_Plugin;
};
