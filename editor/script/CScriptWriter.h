#pragma once

#include "editor/core/IHostObserver.h"
#include "editor/script/CMouseWriter.h"
#include "editor/script/CProtectionWriter.h"

#include <cstddef>
#include <cstdint>
#include <string>

class CEditorHost;
class IPlugin;
class IPluginPainting;
class IPluginScript;
class IPluginTools;
class IScriptSink;

// Makes replay script of what is done on a host: the plug-in's state where it changed, presses,
// moves and releases with exact hit points, actions, steps of undo. Its owner hands it the events.
// Moves without a button and what other modes do are left out. Everything given is borrowed.
//
// A stroke that begins beside the ground goes on from where the brush's stroke before has ended. A
// script that has made the brush anew knows nothing of that one, so such a stroke is written as the
// heights that it leaves.
class CScriptWriter
{
public:
    CScriptWriter(CEditorHost& host, IScriptSink& sink);

    void SetPlugin(IPlugin* pPlugin); // null for none

    bool CanWrite() const { return m_Script != nullptr; } // there is a plug-in that plays scripts

    // Whether it can write strokes, too, and not only heights and bitmap as they are.
    bool CanWriteStrokes() const { return m_Script != nullptr && m_Tools != nullptr; }

    // Begins a script, with the terrain as it is and the bitmap of that revision (0: none).
    void Begin(uint64_t uPainted = 0);
    // To be called when the undo stack of whoever plays the script has these steps already.
    void SetSteps(size_t nUndos, size_t nRedos);
    // Writes heights that changed after a revision of the terrain, which becomes the present one,
    // and what is protected otherwise, for what no event says; the script plays on without any
    // steps to undo. False when that are very many: the script is stale then.
    bool WriteDifference(uint64_t& uRevision);

    void OnBeforeEvent(const SHostEvent& event);
    // True when the script now has whatever the event did to the heights.
    bool OnEvent(const SHostEvent& event);

    // The terrain is another one than the script has led to.
    bool IsStale() const { return m_bStale; }

    // What the script says so far stands for nothing by itself: it has a press without its release,
    // a stroke that protects, or a step of the history that has not ended.
    bool IsInStep() const { return m_bDrag || m_bProtecting || m_bOpenStep; }

    // Whether other vertices are protected than the script has led to.
    bool HasOtherProtection() const { return m_Protection.HasOther(); }

    // Keeps a terrain of which the script does not know yet.
    void KeepTerrain();

    // The file on the disk is the bitmap as the script has painted it.
    void ForgetBitmap() { SetPainted(0); }

    uint64_t GetPainted() const { return m_Painted; }

private:
    std::string ReadState();
    bool IsPainting() const;
    uint64_t GetBitmapRevision() const;
    bool CanSculpt() const; // or paint
    void WriteChanges();    // terrain and plug-in as they are, where the script has them otherwise
    bool WriteDrag(const SHostEvent& event);
    void EndDrag();
    bool FinishStep();
    void TellEnd();
    void CountRecord();
    bool WriteAction(const SHostEvent& event);
    bool WriteStep(bool bRedo);
    void WriteProtection();
    bool WriteAct(const SHostEvent& event);
    bool WritePaintStep(bool bRedo);
    void SetPainted(uint64_t uRevision); // by something else than a stroke

    CEditorHost& m_Host;
    IScriptSink& m_Sink;
    CMouseWriter m_Mouse;
    CProtectionWriter m_Protection;
    IPluginScript* m_Script = nullptr;
    IPluginTools* m_Tools = nullptr;
    IPluginPainting* m_Painting = nullptr;
    uint64_t m_Painted = 0;       // revision of the bitmap that the script has made; 0: none
    bool m_bStale = false;        // the terrain is another one than the script's so far
    bool m_bOtherTerrain = false; // an event that is not in the script yet has brought another one
    std::string m_State;          // of the plug-in, as the script has made it
    bool m_bDrag = false;         // the script has a press without its release
    bool m_bProtecting = false;   // a step that protects, or reshapes the ground, has begun
    bool m_bOpenStep = false;     // it has a step of the history without its end
    bool m_bCounted = false;      // which has a record on the script's undo stack
    bool m_bFresh = true;         // the brush of whoever plays the script has made no stroke yet
    bool m_bByHeights = false;    // the drag is written as what it did
    uint64_t m_DragRevision = 0;  // of the terrain, when the drag began
    size_t m_Undos = 0;           // steps that the script's own undo stack has
    size_t m_Redos = 0;
    size_t m_PaintUndos = 0;      // strokes on the bitmap that the script can take back
    size_t m_PaintRedos = 0;      // and paint again
    uint64_t m_PaintedBefore = 0; // revision of the bitmap when the event came
};
