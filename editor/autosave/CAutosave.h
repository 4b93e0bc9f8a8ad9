#pragma once

#include "editor/autosave/CAutosaveCopy.h"
#include "editor/autosave/CJournal.h"
#include "editor/autosave/Recovery.h"
#include "editor/core/IHostObserver.h"
#include "editor/script/CScriptWriter.h"
#include "editor/script/IScriptSink.h"

#include <chrono>
#include <string>
#include <vector>

class CEditorHost;
class CLevelDocument;
class IPlugin;
class IPluginPainting;
class IPluginTools;

// Where the history of the heights and that of the bitmap are.
struct SHistoryState
{
    uint64_t uHeights = 0;
    uint64_t uBitmap = 0;

    bool operator==(const SHistoryState& other) const = default;
};

// Keeps what is not saved of a level, so that a crash costs the step under the hand and no more.
// Every finished step is appended to a journal in ".tellur-autosave" beside the level, or in the
// user's state folder where that is not possible or the level has no file. A journal stands on a
// base: the level's own height map as it was read, which keeps a second name there for when the
// level is saved, or a copy. A copy is made when the interval is over, so that a recovery does not
// play for long, and at once for what no step can say: another resolution, an import, a change of
// very many heights that no event has made. Fewer heights than that, and those of an undo of what
// came before the base, are a step themselves. A child process writes a copy from the memory of
// that moment; until it is on the disk, the base before stays. Owned by the program, destroyed
// before the document, which is the clean end: nothing is left then. UI thread.
class CAutosave : public IHostObserver, private IScriptSink
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    CAutosave(CEditorHost& host, CLevelDocument& document); // borrowed
    ~CAutosave() override;
    CAutosave(const CAutosave&) = delete;
    CAutosave& operator=(const CAutosave&) = delete;

    // Borrowed until the next call. Without one that plays scripts there is no journal, only
    // copies.
    void SetPlugin(IPlugin* pPlugin);

    void SetInterval(std::chrono::seconds interval) { m_Interval = interval; } // 0: keeps nothing

    // To be called every few seconds and after each change. Starts a copy that is due while no
    // button is held; takes everything away when the level was saved or another one is open. True
    // when a copy was started.
    bool Tick(TimePoint now);

    bool IsCopying() const { return m_Copy.IsRunning(); }

    bool IsChanged() const; // there is something that no file of the user has

    // Waits until the copy that runs is on the disk. False after one logged line when it failed.
    bool Wait();
    // The level was saved or its changes are given up: all that was kept goes, also that of the run
    // which Recover took over. Waits for nothing.
    void Remove();
    // The process is told to end: all that was kept stays, on the disk, and is offered to the next
    // start. Nothing is kept any more.
    void Leave();

    bool HasLeft() const { return m_bLeft; } // Leave has left something

    // Of the files that keep what is not saved (AutosaveFiles.h); empty while there are none.
    const std::string& GetStem() const { return m_Stem; }

    // Opens what a run has left as a modified level under its own name; no file of the level
    // changes. What was kept is this run's from here on, and stays until the level is saved or its
    // changes are given up. nSteps: how many were given back, as CountHistorySteps. False after one
    // logged line, and the level before stays; with steps that fail the level is as far as they
    // went, the files stay for another try, and strFault says why.
    bool Recover(const SRecoverable& entry,
                 const FPlayStep& play,
                 size_t& nSteps,
                 std::string& strFault);
    static void Discard(const SRecoverable& entry); // removes all of its files

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

    void OnMissedEvent() override { m_bNeedsCopy = true; }

private:
    // IScriptSink
    bool Append(const std::string& strText) override;

    void EndStep() override;

    bool KeepTerrain() override { return !m_bFailed && StartCopy(); }

    bool KeepBitmap(bool bKnown) override;

    bool IsKeeping() const;
    uint64_t GetRevision() const;
    const CVertexProtection& GetProtection() const;
    uint64_t GetUnsavedBitmap() const; // its revision; 0 when there are no unsaved strokes
    void Follow();
    void KeepDifference();
    void KeepStep(bool bIdle);
    void StartAnew();
    void TakeOwnBase();
    void BeginJournal(bool bContinues);
    bool MakeStem();
    bool WriteOwnText();
    bool WriteText(const SAutosaveText& text);
    bool StartCopy();
    bool Poll();
    bool Finish(ECopyState eState, int iFault);
    void TakeOver(const SRecoverable& entry, bool bWhole);
    void RemoveFiles();

    CEditorHost& m_Host;
    CLevelDocument& m_Document;
    IPluginPainting* m_Painting = nullptr;
    IPluginTools* m_Tools = nullptr;
    CScriptWriter m_Writer;
    std::string m_Declarations; // of all keywords of scripts with this plug-in
    CJournal m_Journal;
    CAutosaveCopy m_Copy;
    std::chrono::seconds m_Interval{180};
    TimePoint m_Due;                 // of the next copy, while the level is modified
    bool m_bModified = false;        // at the last Tick
    uint64_t m_Generation = 0;       // of the document
    uint64_t m_Savings = 0;          // of the document
    bool m_bUnsavedBitmap = false;   // when it was looked at last
    std::string m_Stem;              // of the files; empty before the first one
    SAutosaveText m_Base;            // what the journals stand on
    bool m_bBase = false;            // there is such a base
    bool m_bText = false;            // and the file that says so
    SAutosaveText m_Copied;          // the base that is being written
    bool m_bNeedsCopy = false;       // the steps no longer lead from the base to what there is
    bool m_bFailed = false;          // the last copy did, and the next try is not due
    bool m_bContinues = false;       // the journal goes on from the one before
    bool m_bJournal = false;         // it was begun
    bool m_bOff = false;             // while steps are played, and after Leave
    bool m_bLeft = false;            // Leave has left something
    uint32_t m_Number = 0;           // of the journal; not given twice in a process
    std::string m_KnownBitmap;       // that the level names after base and steps
    std::string m_Step;              // the calls since the last one
    SHistoryState m_Before;          // when the event came that may begin a step
    uint64_t m_KnownRevision = 0;    // of the heights after the last thing that the steps know
    uint64_t m_CopiedRevision = 0;   // of the heights in the last copy
    uint64_t m_CopiedBitmap = 0;     // as GetUnsavedBitmap
    uint64_t m_CopiedProtection = 0; // its id
};
