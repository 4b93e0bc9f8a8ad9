#pragma once

#include "editor/script/LoadScript.h"

#include <functional>
#include <string>

class CEditor;
class CEditorFace;
class CScriptBar;
class CScriptCursor;
class CScriptPlayer;
class CStatusLine;
class CViewArea;
class QWidget;
struct SRecoverable;

// Plays scripts into the open level where a person sees it: the script answers in the place of
// mouse and keys for as long as it takes. Owned by the window. UI thread.
class CScriptRunner
{
public:
    // Borrowed. window: of the message boxes. onPlayed: a script has come to its end.
    CScriptRunner(QWidget& window,
                  CEditor& editor,
                  CEditorFace& face,
                  CViewArea& views,
                  CStatusLine& status,
                  CScriptBar& bar,
                  std::function<void()> onPlayed);

    // Plays a replay script, as far as it goes or a person lets it; the views show what it does.
    // strFault: one line when it was not played to its end.
    EScriptEnd Play(const std::string& strPath, std::string& strFault);
    // A script that is played ends with the call that it is at. False when none is played.
    bool Stop();
    // Gives back the steps that an interrupted run has left, and says how many of them were given
    // back. False after a logged line when the level they stand on could not be opened.
    bool Recover(const SRecoverable& entry);

private:
    // A player into the active view. While it plays, keys and picked points are the cursor's and
    // not the person's, until the face is told otherwise. onPlayed: runs after each keyword.
    CScriptPlayer MakePlayer(CScriptCursor& cursor,
                             const std::string& strPath,
                             std::function<bool()> onPlayed = {});
    // Whether a person has stopped the script; strFault says so then.
    bool EndBar(const std::string& strPath, std::string& strFault);
    void ReportRecovered(size_t nSteps, size_t nAll, const std::string& strFault);

    QWidget& m_Window;
    CEditor& m_Editor;
    CEditorFace& m_Face;
    CViewArea& m_Views;
    CStatusLine& m_Status;
    CScriptBar& m_Bar;
    std::function<void()> m_OnPlayed;
};
