#pragma once

#include "editor/autosave/CFileSync.h"

#include <string>

// The file that steps are appended to, each by one write as soon as it is done: whatever ends the
// process, the steps before are in it. A thread brings them to the disk, against loss of power.
// Steps that find no room wait for the next one, so that none is left out in the middle. UI thread.
class CJournal
{
public:
    ~CJournal(); // as Close

    // A new journal at strFile, which is made with its first step. strHead: as MakeJournalHead.
    void Begin(const std::string& strFile, const std::string& strHead);
    // strText: whole lines. False when it is not in the file; the first time that is logged.
    bool Append(const std::string& strText);

    // Tries once more to write the steps that found no room. False when they still wait; errno says
    // why.
    bool Flush() { return m_Waiting.empty() || m_Path.empty() || m_File < 0 || Write(); }

    void Close(); // the next one is another file, or none

    // As Close, for a process that may end without its destructors: what was written to this
    // journal is on the disk when this returns.
    void Finish();

    bool HasFault() { return m_Sync.TakeFault(); } // of the disk, since the last call

    // The same thread brings to the disk what belongs to the journal: that a file was made or
    // renamed in the folder, and other files.
    void SyncFolder(const std::string& strFolder);

    void SyncAndClose(int iFile) { m_Sync.SyncAndClose(iFile); }

private:
    bool Write();

    CFileSync m_Sync;
    std::string m_Path;    // empty: none
    std::string m_Waiting; // what is not in the file yet
    int m_File = -1;
    size_t m_Steps = 0;
    bool m_bFault = false; // was logged
};
