#pragma once

#include "editor/script/CScriptFolder.h"
#include "editor/script/CScriptKeywords.h"
#include "editor/script/CScriptMouse.h"
#include "editor/script/CScriptPicture.h"

#include <functional>
#include <string>

class CEditorHost;
class CScriptCall;
class CScriptCursor;
class CTCPARSE_KEYWORD;
class IPlugin;
class IPluginScript;

// Plays the keywords of one script into a host, in file order. Everything given is borrowed.
class CScriptPlayer
{
public:
    // pPlugin: null for none; one without IPluginScript takes no keywords of its own.
    // cursor: the face's, which answers picks and keys from it. view: the one that events are sent
    // to. onPlayed: runs after each keyword and says whether to go on; empty
    // for nothing.
    CScriptPlayer(CEditorHost& host,
                  CScriptCursor& cursor,
                  ViewId view,
                  IPlugin* pPlugin,
                  const std::string& strScriptPath,
                  std::function<bool()> onPlayed = {});
    CScriptPlayer(const CScriptPlayer&) = delete; // its parts refer to one another
    CScriptPlayer& operator=(const CScriptPlayer&) = delete;

    // Plays the chain that starts at pFirst (null: nothing to do) and stops at the first keyword
    // that fails; strFault is then one line that names the file, the keyword and why. File names of
    // the plug-in's keywords in the tree are replaced by those beside the script. True also where
    // onPlayed did not want to go on.
    bool Play(CTCPARSE_KEYWORD* pFirst, std::string& strFault);

    const CDragRecorder& GetDrags() const { return m_Mouse.GetDrags(); }

private:
    bool PlayKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayPluginKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    void EndSteps();

    CEditorHost& m_Host;
    ViewId m_View;
    IPluginScript* m_Script;
    std::function<bool()> m_OnPlayed;
    std::string m_ScriptPath; // as given
    CScriptKeywords m_Keywords;
    CScriptFolder m_Folder;
    CScriptMouse m_Mouse;
    CScriptPicture m_Picture;
};
