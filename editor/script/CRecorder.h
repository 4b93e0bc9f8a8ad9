#pragma once

#include "editor/core/IHostObserver.h"

#include <cstddef>
#include <string>

class CEditorHost;
class IPluginScript;

// Writes everything that is done to the terrain as a replay script with exact hit points. Each
// event is in the file when its call returns, so a crash keeps the script up to there. The terrain
// at the start lies beside the script as "NAME.1.height"; where another terrain comes, or one that
// the script's own undo stack cannot give back, it lies there under the next number. Owned by the
// program, destroyed before host and plug-in. UI thread.
//
// Painting the terrain-type bitmap is recorded too: the bitmap as it is goes into a picture beside
// the script, again whenever it changed otherwise than by the script's strokes.
//
// Not in the script: moves without a button, and what other modes do.
class CRecorder : public IHostObserver
{
public:
    // pPluginScript: of the plug-in, borrowed; null: nothing can be recorded.
    CRecorder(CEditorHost& host, IPluginScript* pPluginScript);
    ~CRecorder() override; // as Stop
    CRecorder(const CRecorder&) = delete;
    CRecorder& operator=(const CRecorder&) = delete;

    // Ends a running drag and begins a script in place of the file at strPath (full). False after
    // one logged line: there is no level, or a file cannot be written.
    bool Start(const std::string& strPath);
    // False when the script is not complete, because the disk is full; that was logged then.
    bool Stop();

    bool IsRecording() const { return m_File >= 0; }

    const std::string& GetPath() const { return m_Path; }

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;
    void OnMissedEvent() override;

private:
    std::string ReadState();
    bool CanSculpt() const; // or paint
    bool WriteBitmap();
    void WriteChanges(); // terrain and plug-in as they are, where the script has them otherwise
    void WriteKeys();
    void WriteMouse(const SHostEvent& event);
    void WriteStep(bool bRedo);
    bool WriteTerrain();
    bool Append(const std::string& strText);
    bool Fail(const char* pszFault);

    CEditorHost& m_Host;
    IPluginScript* m_PluginScript;
    std::string m_Path;
    int m_File = -1;
    bool m_bComplete = true;
    size_t m_Terrains = 0;   // files beside the script
    size_t m_Bitmaps = 0;    // as these
    uint64_t m_Painted = 0;  // revision of the bitmap that the script has made; 0: none
    bool m_bStale = false;   // the terrain is another one than the script's so far
    std::string m_State;     // of the plug-in, as the script has made it
    std::string m_Keys;      // held, as the script has them
    std::string m_EventKeys; // held when the event came
    bool m_bDrag = false;    // the script has a press without its release
    size_t m_Undos = 0;      // steps that the script's own undo stack has
    size_t m_Redos = 0;
};
