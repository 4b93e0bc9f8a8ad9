#pragma once

#include "framework/core/CMenu.h"
#include "framework/core/CRuntimeClass.h"
#include "framework/core/ResourceModule.h"
#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/Image.h"
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
#include "tests/support/TestHost.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <functional>

using Lines = std::vector<std::string>;

class CFakePanel : public ITerrainPanel
{
public:
    explicit CFakePanel(Calls* pCallList)
        : pCalls(pCallList)
    {
    }

    void StoreExtentLimits() override
    {
        AddCall(pCalls, "Panel.StoreExtentLimits()");
        GetPluginPart<IPanelPlugin>()->SetExtentLimits({12.5F, 8000.0F});
    }

    void RefreshBrushControls() override { AddCall(pCalls, "Panel.RefreshBrushControls()"); }

    void EnableBrushControls() override { AddCall(pCalls, "Panel.EnableBrushControls()"); }

    void RefreshToolProperties() override { AddCall(pCalls, "Panel.RefreshToolProperties()"); }

    void RefreshExtent() override { AddCall(pCalls, "Panel.RefreshExtent()"); }

    void FillBrushList() override { AddCall(pCalls, "Panel.FillBrushList()"); }

    void FillResolutionList() override { AddCall(pCalls, "Panel.FillResolutionList()"); }

    Calls* pCalls;
};

// A mode of the plug-in's group or of another that passes over its input.
class CSilentMode : public CModeEditTerrainType
{
public:
    bool IsAvailable() override { return true; }

    bool CanDeactivate() override { return bMayLeave; }

    void Activate() override {}

    void Deactivate() override {}

    void OnAction(ViewId, int, uint32_t) override { ++nInput; }

    void OnLButtonDown(ViewId, ViewPoint, uint32_t) override { ++nInput; }

    void OnMouseMove(ViewId, uint32_t, ViewPoint, uintptr_t, uintptr_t) override { ++nInput; }

    void OnLButtonUp(ViewId, ViewPoint, uint32_t) override { ++nInput; }

    void Notify(uintptr_t, uintptr_t, uintptr_t) override { ++nInput; }

    int nInput = 0;
    bool bMayLeave = true;
};

// A plug-in object of its own in the host that ships, whose relative paths lie in a fresh folder
// with the installed data behind it. The terrain is 80 x 1000 x 80 units, a vertex every 10.
class CPluginFixture : public testing::Test
{
protected:
    static constexpr uint32_t HANDLE = 0x4100; // of plug-in index 65

    CPluginFixture()
    {
        fs::set_user_root(m_Folder.GetFolder().c_str());
        fs::set_data_root(TELLUR_SOURCE_DIR);
        m_Host.NewLevel(8, {80.0F, 1000.0F, 80.0F});
        m_Plugin = std::make_unique<IPluginImpl>();
        m_Plugin->Attach(&m_Host, 65, &m_Host.GetEngine());
    }

    ~CPluginFixture() override
    {
        m_Host.DestroyPluginObjects();
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

    void OpenPanel() { m_Plugin->SetPanel(&m_Panel); }

    Calls TakeCalls() { return std::exchange(m_Face.calls, {}); }

    // Makes one current that is not the plug-in's.
    CSilentMode* EnterSilentMode(int iGroup)
    {
        auto* pMode = new CSilentMode; // the host's
        EXPECT_TRUE(
            m_Host.GetModes().ActivateMode(m_Host.GetModes().RegisterMode(pMode, iGroup), 0));
        return pMode;
    }

    // A picture of grey texels in the folder.
    void WriteGrey(const char* pszName,
                   uint32_t uWidth,
                   uint32_t uHeight,
                   const std::vector<uint8_t>& bytes)
    {
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferBPP(uWidth, uHeight, 8, bytes.data()));
        ASSERT_TRUE(IL_SaveImage(m_Folder.Path(pszName).c_str(), pImage.get(), nullptr));
    }

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
        CToolBar* pToolBar = m_Host.GetRegistry().GetToolBars().at(0);
        pToolBar->SetChangeListener(
            [this, pToolBar]
            {
                AddCall(&m_Face.calls,
                        "ToolBar(%d %d)",
                        pToolBar->IsButtonPressed(HANDLE + 1) ? 1 : 0,
                        pToolBar->IsButtonChecked(HANDLE + 1) ? 1 : 0);
            });
    }

    CTempFolder m_Folder;
    CTestFace m_Face;
    CTestHost m_Host{m_Face};
    CFakeFrontEnd m_FrontEnd;
    CLogCatcher m_Log;
    CFakePanel m_Panel{&m_Face.calls};
    std::unique_ptr<IPluginImpl> m_Plugin;
};
