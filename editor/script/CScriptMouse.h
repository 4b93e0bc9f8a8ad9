#pragma once

#include "editor/script/CDragRecorder.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>

class CEditorHost;
class CScriptCall;
class CScriptCursor;
class IPlugin;
class IPluginStrokes;
class IPluginTools;

enum class EMouseEvent
{
    Press,
    Move,
    Release,
};

enum class ECursorTarget
{
    Position, // arguments x and z
    Hit,      // one vector argument
    Nothing,
};

// The mouse and the modifier keys of a script: turns keywords into events of the host and measures
// the drags. Everything given is borrowed.
class CScriptMouse
{
public:
    // view: the one that events are sent to. pPlugin: null for none.
    CScriptMouse(CEditorHost& host, CScriptCursor& cursor, ViewId view, IPlugin* pPlugin);

    // "", "ctrl", "alt" or "ctrl+alt", held from here on; false for any other text.
    bool SetKeys(const std::string& strKeys);

    // Puts the cursor where the first arguments say and sends the event; a move's vertical step in
    // pixels is the argument behind them. False, with strWhy, for a hit point that is not finite.
    bool
    Play(EMouseEvent eEvent, ECursorTarget eTarget, const CScriptCall& call, std::string& strWhy);

    // Closes the record of a drag that has not seen its release.
    void EndDrag();
    // Lets go of the button of a running drag where it is.
    void LetGo();

    const CDragRecorder& GetDrags() const { return m_Drags; }

private:
    void Send(EMouseEvent eEvent, int32_t iStep);

    CEditorHost& m_Host;
    CScriptCursor& m_Cursor;
    ViewId m_View;
    IPluginStrokes* m_Strokes;
    IPluginTools* m_Tools;
    CDragRecorder m_Drags;
    uint32_t m_KeyFlags = 0; // of EMouseFlag
    bool m_bDown = false;    // the button, whatever the plug-in tells of its drags
};
