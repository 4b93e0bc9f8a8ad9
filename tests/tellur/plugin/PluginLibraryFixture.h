#pragma once

#include "editor/core/CPluginLoader.h"
#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "parser/TCParseFile.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/TestHost.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

inline const std::string LIBRARY = TELLUR_BIN_DIR "/libtellur.so";

inline bool IsMapped()
{
    return ReadBytes("/proc/self/maps").find("libtellur.so") != std::string::npos;
}

// The library, opened and initialised as an editor does it, and closed again.
class CPluginLibrary : public testing::Test
{
protected:
    CPluginLibrary()
    {
        fs::set_user_root(m_Folder.GetFolder().c_str());
        fs::set_data_root(TELLUR_SOURCE_DIR);
        m_Host.NewLevel(8, {80.0F, 1000.0F, 80.0F});
        WriteBytes(
            m_Folder.Path("script.txt"),
            "!brush()\n!mode( s )\n" + GetBrushDeclarations(EBrushBlock::Script) +
                "brush()\n{\n bitmap() { path( \"tests/scripts/images/white.png\" ) }\n"
                " function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"50\" ) }\n"
                " extent( 20.0 )\n}\nmode( \"terraforming\" )\n");
        m_Script.reset(TCParseFile("script.txt"));
    }

    ~CPluginLibrary() override
    {
        fs::set_user_root(nullptr);
        fs::set_data_root(nullptr);
    }

    void Open()
    {
        ASSERT_TRUE(m_Loader.Load(LIBRARY.c_str()));
        m_Plugin = m_Loader.GetPlugin();
    }

    void PlayScript()
    {
        auto* pScript = dynamic_cast<IPluginScript*>(m_Plugin);
        ASSERT_NE(pScript, nullptr);
        std::string strWhy;
        int nDone = 0;
        for (const CTCPARSE_KEYWORD* pKey = m_Script.get(); pKey != nullptr; pKey = pKey->next)
        {
            nDone += pScript->Play(pKey, strWhy) == EScriptResult::Done ? 1 : 0;
        }
        ASSERT_EQ(nDone, 2) << strWhy;
    }

    void PressAndMove()
    {
        m_Face.lastPick = {40.0F, 0.0F, 40.0F};
        m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
        m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    }

    void Close()
    {
        m_Plugin = nullptr;
        m_Loader.Unload();
        EXPECT_FALSE(IsMapped());
    }

    CTempFolder m_Folder;
    CTestFace m_Face;
    CTestHost m_Host{m_Face};
    CFakeFrontEnd m_FrontEnd;
    CPluginLoader m_Loader{m_Host};
    CLogCatcher m_Log;
    std::unique_ptr<CTCPARSE_KEYWORD> m_Script;
    IPlugin* m_Plugin = nullptr;
};
