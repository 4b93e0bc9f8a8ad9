#pragma once

#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "parser/TCParseFile.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPaths.h"

#include <dlfcn.h>

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
        m_Library = ::dlopen(LIBRARY.c_str(), RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(m_Library, nullptr) << ::dlerror();
        const auto pInitializeMe =
            reinterpret_cast<FInitializeMe>(::dlsym(m_Library, "InitializeMe"));
        ASSERT_NE(pInitializeMe, nullptr);
        m_Plugin = pInitializeMe(&m_Host, 65, &m_Fake.engine);
        ASSERT_NE(m_Plugin, nullptr);
        m_Plugin->RegisterActions();
        m_Plugin->Initialize();
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
        m_Host.lastPick = {1, {40.0F, 0.0F, 40.0F}};
        m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
        m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    }

    // What the plug-in has handed over is destroyed before its code goes.
    void Close()
    {
        m_Plugin->Shutdown();
        m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0);
        m_Plugin = nullptr;
        m_Fake.modes.iCurrent = -1;
        m_Fake.modes.modes.clear();
        m_Host.undos.clear();
        m_Host.processes.clear();
        ASSERT_EQ(::dlclose(m_Library), 0);
        EXPECT_FALSE(IsMapped());
    }

    CTempFolder m_Folder;
    CFakeContext m_Fake; // the host's side alone: the library has a context of its own
    CFakeEditorHost m_Host{&m_Fake.textures, &m_Fake.modes, &m_Fake.calls};
    CFakeFrontEnd m_FrontEnd;
    CLogCatcher m_Log;
    std::unique_ptr<CTCPARSE_KEYWORD> m_Script;
    void* m_Library = nullptr;
    IPlugin* m_Plugin = nullptr;
};
