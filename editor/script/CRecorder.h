#pragma once

#include "editor/core/IHostObserver.h"
#include "editor/script/CScriptWriter.h"
#include "editor/script/IScriptSink.h"

#include <cstddef>
#include <string>
#include <vector>

class CEditorHost;
class IPlugin;
class IPluginPainting;

// Writes everything that is done to the terrain as a replay script with exact hit points. The
// script grows in "NAME.tellur.part", where each event is when its call returns, and takes its own
// name when the recording is stopped: until then, and when the disk is full, an older script stays
// as it was. The terrain at the start lies beside the script as "NAME.1.height"; where another
// terrain comes, or one that the script's own undo stack cannot give back, it lies there under the
// next number. Painting the terrain-type bitmap is recorded too: the bitmap as it is goes into a
// picture beside the script, again whenever it changed otherwise than by the script's strokes.
// Numbers that are taken are left out, so nothing beside the script is replaced. Owned by the
// program, destroyed before host and plug-in. UI thread.
class CRecorder : public IHostObserver, private IScriptSink
{
public:
    // pPlugin: borrowed. Nothing can be recorded of one without IPluginScript or
    // IPluginTools, and of null.
    CRecorder(CEditorHost& host, IPlugin* pPlugin);
    ~CRecorder() override; // as Stop
    CRecorder(const CRecorder&) = delete;
    CRecorder& operator=(const CRecorder&) = delete;

    // Ends a running drag and begins a script that will replace the file at strPath (full). False
    // after one logged line, and nothing is left: there is no level, or a file cannot be written.
    bool Start(const std::string& strPath);
    // Ends the recording, and the script takes its place. False when it is not complete, because
    // the disk is full, or could not take it, which was logged; what there is then stays in
    // GetPartPath.
    bool Stop();

    bool IsRecording() const { return m_File >= 0; }

    const std::string& GetPath() const { return m_Path; }

    const std::string& GetPartPath() const { return m_Part; } // of the last recording

    // What recordings of programs that were killed have left, full paths; each is told once.
    static std::vector<std::string> TakeInterrupted();

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;
    void OnMissedEvent() override;

private:
    // IScriptSink
    bool Append(const std::string& strText) override;
    bool KeepTerrain() override;
    bool KeepBitmap(bool bKnown) override;

    bool OpenPart();
    bool TakePlace();
    bool Fail(const char* pszFault);

    CEditorHost& m_Host;
    IPluginPainting* m_Painting;
    std::string m_Declarations; // of all keywords of scripts with this plug-in
    CScriptWriter m_Writer;
    std::string m_Path;
    std::string m_Part;
    std::string m_Prefix; // of the files beside it
    std::string m_Note;   // says to a later start where the part is
    std::vector<std::string> m_Beside;
    int m_File = -1;
    bool m_bComplete = true;
    size_t m_Terrains = 0; // numbers of files beside the script
    size_t m_Bitmaps = 0;
};
