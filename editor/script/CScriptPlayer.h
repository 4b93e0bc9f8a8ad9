#pragma once

#include "editor/script/CScriptFolder.h"
#include "editor/script/CScriptKeywords.h"
#include "editor/script/CScriptMouse.h"
#include "editor/script/CScriptPicture.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class CEditorHost;
class CScriptCall;
class CScriptCursor;
class CTCPARSE_KEYWORD;
class IPlugin;
class IPluginScript;
class Terrain;

// Plays the keywords of one script into a host, in file order. Everything given is borrowed.
class CScriptPlayer
{
public:
    // pPlugin: null for none; one without IPluginScript takes no keywords of its own.
    // cursor: the face's, which answers picks and keys from it. view: the one that events are sent
    // to. onPlayed: runs after each keyword; empty for nothing.
    CScriptPlayer(CEditorHost& host,
                  CScriptCursor& cursor,
                  ViewId view,
                  IPlugin* pPlugin,
                  const std::string& strScriptPath,
                  std::function<void()> onPlayed = {});

    // Plays the chain that starts at pFirst (null: nothing to do) and stops at the first keyword
    // that fails; strFault is then one line that names the file, the keyword and why. File names of
    // the plug-in's keywords in the tree are replaced by those beside the script.
    bool Play(CTCPARSE_KEYWORD* pFirst, std::string& strFault);

    const CDragRecorder& GetDrags() const { return m_Mouse.GetDrags(); }

    // What the host plays, in the order in which scripts declare it; the texts are static.
    static std::vector<SScriptKeyword> GetHostKeywords();

private:
    struct SRow;

    bool PlayKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayPluginKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy);

    bool PlayLevel(const CScriptCall& call, std::string& strWhy);
    bool PlayOpen(const CScriptCall& call, std::string& strWhy);
    bool PlayHeights(const CScriptCall& call, std::string& strWhy);
    bool PlayKeys(const CScriptCall& call, std::string& strWhy);
    template <EMouseEvent eEvent, ECursorTarget eTarget>
    bool PlayMouse(const CScriptCall& call, std::string& strWhy);
    bool PlayAction(const CScriptCall& call, std::string& strWhy);
    bool PlayUndo(const CScriptCall& call, std::string& strWhy);
    bool PlayRedo(const CScriptCall& call, std::string& strWhy);
    bool PlaySave(const CScriptCall& call, std::string& strWhy);
    bool PlayExportStl(const CScriptCall& call, std::string& strWhy);
    bool PlayPicture(const CScriptCall& call, std::string& strWhy);
    bool PlayExpectHeight(const CScriptCall& call, std::string& strWhy);
    bool PlayExpectUndo(const CScriptCall& call, std::string& strWhy);

    bool WriteTerrain(const CScriptCall& call,
                      bool (*pWrite)(Terrain&, const char*),
                      std::string& strWhy);
    bool FinishLevel(bool bDone, const char* pszFailure, std::string& strWhy);

    static const SRow ROWS[21];

    CEditorHost& m_Host;
    ViewId m_View;
    IPluginScript* m_Script;
    std::function<void()> m_OnPlayed;
    std::string m_ScriptPath; // as given
    CScriptKeywords m_Keywords;
    CScriptFolder m_Folder;
    CScriptMouse m_Mouse;
    CScriptPicture m_Picture;
};
