#pragma once

#include "editor/core/SLevelText.h"

#include <chrono>
#include <string>
#include <vector>

class CEditorHost;
class CLevelDocument;

// What a run that did not end properly has left of a level.
struct SRecoverable
{
    std::string strFile;       // of the autosave
    std::string strHeightFile; // its heights
    SLevelText level;          // strPath: the level's own file, empty when it had none
    int64_t iWritten = 0;      // seconds since 1970
};

// Keeps a second copy of a level that is not saved, so that a crash loses no more than the time
// since the last one. When it is time, a child process takes over the memory as it is (the system
// copies what changes later) and writes heights and text to ".tellur-autosave" beside the level, or
// to the user's state folder where that is not possible or the level has no file; the editor goes
// on at once. Owned by the program, destroyed before the document, which is the clean end: nothing
// is left then. UI thread.
class CAutosave
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    CAutosave(CEditorHost& host, CLevelDocument& document); // borrowed
    ~CAutosave();                                           // waits, then as Remove
    CAutosave(const CAutosave&) = delete;
    CAutosave& operator=(const CAutosave&) = delete;

    void SetInterval(std::chrono::seconds interval) { m_Interval = interval; } // 0: never

    // To be called every few seconds. Starts a copy when the level has been modified for the
    // interval and no button is held; takes the copy away when the level was saved or another one
    // is open. True when a copy was started.
    bool Tick(TimePoint now);
    // Until the copy is on the disk; false after one logged line when it is not.
    bool Wait();
    // The level was saved or its changes are given up: the copy goes, also that of the run which
    // Recover took over.
    void Remove();

    // What interrupted runs have left of these levels (full paths) and of levels without a file,
    // newest first. Copies of programs that still run are none of it, damaged ones neither.
    static std::vector<SRecoverable> FindRecoverable(const std::vector<std::string>& levels);
    // Opens it as a modified level under its own name; no file changes. The copy stays until the
    // level is saved or its changes are given up. False after one logged line.
    bool Recover(const SRecoverable& entry);
    static void Discard(const SRecoverable& entry); // removes the copy

private:
    bool Start();
    bool Finish(int iStatus);

    CEditorHost& m_Host;
    CLevelDocument& m_Document;
    std::chrono::seconds m_Interval{180};
    TimePoint m_Due;                      // of the next copy, while the level is modified
    bool m_bModified = false;             // at the last Tick
    uint64_t m_Generation = 0;            // of the document that was copied
    uint64_t m_CopiedRevision = 0;        // of the heights in the last copy
    int m_Child = -1;                     // the process that writes
    std::string m_File;                   // of the copy; empty before the first one
    std::vector<std::string> m_Recovered; // files of the run that was taken over
};
