#pragma once

#include "editor/app/CLogKeeper.h"
#include "editor/autosave/CAutosave.h"
#include "editor/core/CBitmapFollower.h"
#include "editor/core/CBrushFile.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/CKeyBindings.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/CPluginLoader.h"
#include "editor/core/CRecentFiles.h"
#include "editor/core/CToolBrushes.h"
#include "editor/script/CRecorder.h"
#include "host/IPlugin.h"

#include <functional>
#include <memory>
#include <string>

class IHostFace;

// The editor without its windows: the host with its plug-in, the open level, keys, recent files and
// the recorder. Owned by the program; the window borrows it and goes first. UI thread.
class CEditor
{
public:
    // face: borrowed, outlives the editor. strConfigFolder: where the user's files are kept, made
    // when something is written there.
    CEditor(IHostFace& face, std::string strConfigFolder);
    ~CEditor();
    CEditor(const CEditor&) = delete;
    CEditor& operator=(const CEditor&) = delete;

    // Starts the plug-in and takes its actions into the key bindings. False after a logged line.
    bool LoadPlugin(const std::string& strLibrary);
    void UnloadPlugin(); // its windows must be gone

    // A person is about to work: the tools are as they were left, see CToolBrushes. Whoever only
    // plays scripts does without.
    void BeginTools(std::function<bool()> isScriptPlayed);

    void KeepTools() { m_ToolBrushes.Keep(); } // as they are now; nothing without BeginTools

    IPlugin* GetPlugin() const { return m_Loader.GetPlugin(); } // null without one

    // What the plug-in offers beyond IPlugin; null when it does not.
    template <typename TInterface> TInterface* FindInterface() const
    {
        return dynamic_cast<TInterface*>(GetPlugin());
    }

    CEditorHost& GetHost() { return m_Host; }

    CLevelDocument& GetDocument() { return m_Document; }

    CAutosave& GetAutosave() { return m_Autosave; }

    CBrushFile& GetBrushFile() { return m_BrushFile; }

    CRecentFiles& GetRecentFiles() { return m_RecentFiles; }

    CKeyBindings& GetKeys() { return m_Keys; }

    const CLogKeeper& GetLog() const { return m_Log; }

    CRecorder* GetRecorder() { return m_Recorder.get(); } // null without a plug-in

    // The full path of a file in the user's folder. pszName: without folders.
    std::string GetConfigFile(const char* pszName) const;

    bool SaveKeys();

private:
    CLogKeeper m_Log; // first, so that it has all
    std::string m_ConfigFolder;
    CEditorHost m_Host;
    CPluginLoader m_Loader;
    CBrushFile m_BrushFile;
    CLevelDocument m_Document;
    CBitmapFollower m_Follower;
    CToolBrushes m_ToolBrushes;
    CAutosave m_Autosave;
    CRecentFiles m_RecentFiles;
    CKeyBindings m_Keys;
    std::unique_ptr<CRecorder> m_Recorder;
};
