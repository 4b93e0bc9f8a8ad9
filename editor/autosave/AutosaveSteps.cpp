// The steps of an autosave: what goes into the journal, and how it comes back.

#include "editor/autosave/AutosaveFiles.h"
#include "editor/autosave/CAutosave.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/FileBackup.h"
#include "editor/core/LevelRecovery.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/IPluginPainting.h"
#include "host/IPluginTools.h"
#include "host/Log.h"
#include "parser/DeclarativeText.h"

#include <algorithm>
#include <utility>

namespace
{

bool IsStep(EHostEvent eKind) // of undo or redo
{
    return eKind == EHostEvent::Undo || eKind == EHostEvent::Redo ||
           eKind == EHostEvent::PaintUndo || eKind == EHostEvent::PaintRedo;
}

SHistoryState GetState(CEditorHost& host, IPluginPainting* pPainting)
{
    return {host.GetUndoStack().GetStateId(),
            pPainting != nullptr ? pPainting->GetBitmapRevision() : 0};
}

// What was made for a step the first time is there, and the steps name it. While this lives, also
// when memory ends in the middle.
class CRepeating
{
public:
    explicit CRepeating(CHostGround& ground)
        : m_Ground(ground)
    {
        m_Ground.SetRepeating(true);
    }

    ~CRepeating() { m_Ground.SetRepeating(false); }

    CRepeating(const CRepeating&) = delete;
    CRepeating& operator=(const CRepeating&) = delete;

private:
    CHostGround& m_Ground;
};

bool PlayAgain(CEditorHost& host,
               CLevelDocument& document,
               const SRecoverable& entry,
               const std::string& strDeclarations,
               const FPlayStep& play,
               size_t& nSteps,
               std::string& strFault)
{
    const auto nameBitmap = [&document](const std::string& strBitmap)
    {
        document.SetBitmap(strBitmap);
    };
    const CRepeating repeating(host.GetGround());
    return PlaySteps(entry, strDeclarations, play, nameBitmap, nSteps, strFault);
}

// The line that a step begins with where the level names another bitmap than strKnown, which
// becomes that one.
std::string TakeNote(std::string& strKnown, const CLevelDocument& document)
{
    const bool bOther = strKnown != document.GetBitmap();
    strKnown = document.GetBitmap();
    return bOther ? MakeLevelBitmapNote(strKnown) : "";
}

// Warns where something is missing or not to be seen; that all is back, whoever asked for it says.
// bHidden: what was painted is not in the views.
void TellRecovered(const SRecoverable& entry, size_t nSteps, bool bHidden)
{
    const size_t nAll = CountHistorySteps(entry, entry.steps.size());
    std::string strBack =
        std::to_string(nSteps) + " of " + std::to_string(nAll) + " steps were given back";
    if (entry.text.IsCopy())
    {
        strBack = entry.steps.empty() ? "the copy was given back" : "the copy and " + strBack;
    }
    if (bHidden)
    {
        strBack += "; what was painted shows when Edit is switched on";
    }
    if (entry.bCut)
    {
        strBack += "; the last one was cut off while it was written and is lost";
    }
    if (nSteps < nAll || entry.bCut || bHidden)
    {
        WarnLog("[CAutosave::Recover] %s\n", strBack.c_str());
    }
}

} // namespace

void CAutosave::OnBeforeEvent(const SHostEvent& event)
{
    if (!IsKeeping())
    {
        return;
    }
    const bool bAct = event.eKind == EHostEvent::Protected || event.eKind == EHostEvent::Reshaped;
    const bool bStep = IsStep(event.eKind) || bAct;
    // A step of several drags is kept as a whole.
    const bool bBegins =
        !m_Host.GetHistory().IsStepOpen() &&
        (event.eKind == EHostEvent::ButtonDown || event.eKind == EHostEvent::Action ||
         event.eKind == EHostEvent::StepBegun);
    // What has changed without an event comes before the step, which would else be played on other
    // ground, and the bitmap that was named, or undo would lead to another one.
    if (bStep || bBegins)
    {
        Poll();
        Follow();
        KeepDifference();
        if (!m_Writer.IsInStep())
        {
            KeepStep(true);
        }
    }
    if ((bBegins || bAct) && m_bNeedsCopy && !m_bFailed)
    {
        StartCopy(); // before the step changes anything
    }
    m_Writer.OnBeforeEvent(event);
    m_Before = bStep || bBegins ? GetState(m_Host, m_Painting) : m_Before;
}

void CAutosave::OnEvent(const SHostEvent& event)
{
    if (!IsKeeping())
    {
        return;
    }
    const bool bDropped = event.eKind == EHostEvent::DragDropped;
    // Whoever plays the lines of a stroke that was dropped would keep it.
    if (bDropped)
    {
        m_Step.clear();
    }
    if (m_Writer.OnEvent(event))
    {
        m_KnownRevision = GetRevision();
    }
    else if (IsStep(event.eKind) || bDropped)
    {
        KeepDifference();
    }
    else if (m_Writer.IsStale())
    {
        m_bNeedsCopy = true; // made in the next turn, when it is known what has changed
    }
}

// What has changed otherwise than by the steps becomes a step of its own.
void CAutosave::KeepDifference()
{
    const bool bChanged =
        GetRevision() != m_KnownRevision || m_Writer.IsStale() || m_Writer.HasOtherProtection();
    if (bChanged && IsKeeping() && !m_bNeedsCopy && !m_Writer.IsInStep())
    {
        m_bNeedsCopy = !m_Writer.WriteDifference(m_KnownRevision);
        KeepStep(false);
    }
}

bool CAutosave::Append(const std::string& strText)
{
    m_Step += strText;
    return true;
}

void CAutosave::EndStep()
{
    KeepStep(m_Before == GetState(m_Host, m_Painting));
}

void CAutosave::KeepStep(bool bIdle)
{
    // The note of a name may be all there is.
    const std::string strStep = TakeNote(m_KnownBitmap, m_Document) + std::exchange(m_Step, {});
    if (strStep.empty() || m_bNeedsCopy) // a step behind one that is missing helps nobody
    {
        return;
    }
    // A journal is begun with its first step, so a level that is only looked at leaves no files.
    // While a copy is being written its text comes with it, and none of the base is needed.
    if (!m_bJournal)
    {
        if (!m_Copy.IsRunning() && !WriteOwnText())
        {
            m_bNeedsCopy = true;
            m_bFailed = true;
            return;
        }
        const std::string strOpen =
            m_Base.strHeights.empty() ? "" : "open( " + QuoteText(m_Base.strHeights) + " )\n";
        m_Journal.Begin(GetAutosaveJournal(m_Stem, m_Number),
                        MakeJournalHead(m_Declarations, strOpen, m_bContinues));
        m_bJournal = true;
    }
    m_Journal.Append(bIdle ? strStep + MakeIdleNote() : strStep);
}

bool CAutosave::KeepBitmap(bool bKnown)
{
    const bool bSaved = GetUnsavedBitmap() == 0;
    if (bKnown || !bSaved)
    {
        m_bNeedsCopy = true; // no step says how the bitmap became so: the steps do not go on
        if (m_bFailed || !StartCopy())
        {
            return false;
        }
    }
    const std::string strFile = m_Painting->GetBitmapFile();
    // A bitmap that is as its file is needs no copy: the note tells later whether the file still
    // is.
    return !bSaved || Append(MakeBitmapNote(strFile, GetFileStamp(fs::root_path(strFile.c_str()))) +
                             "mode( \"none\" )\npaint_bitmap( " + QuoteText(strFile) + " )\n");
}

bool CAutosave::Recover(const SRecoverable& entry,
                        const FPlayStep& play,
                        size_t& nSteps,
                        std::string& strFault)
{
    const SAutosaveText& text = entry.text;
    nSteps = 0;
    strFault.clear();
    if (!entry.strFault.empty())
    {
        CrashLog("[CAutosave::Recover] %s\n", entry.strFault.c_str());
        return false;
    }
    if (entry.bBitmapSavedSince)
    {
        const std::string strKept = KeepBeside(fs::root_path(text.strBitmap.c_str()));
        if (strKept.empty())
        {
            return false; // the next save of the bitmap would replace it
        }
        WarnLog("[CAutosave::Recover] %s has been saved since: that is kept as %s\n",
                text.strBitmap.c_str(),
                strKept.c_str());
    }
    // What is played is not recorded again.
    const bool bWasOff = std::exchange(m_bOff, true);
    const bool bOpen =
        text.strHeights.empty()
            ? NewRecoveredLevel(m_Document, text.level, text.fFlat)
            : OpenRecoveredLevel(
                  m_Host, m_Document, text.level, text.strHeights.c_str(), entry.bSavedSince);
    CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    if (bOpen && text.protection.GetSizeX() == pTerrain->GetVerticesX() &&
        text.protection.GetSizeZ() == pTerrain->GetVerticesZ())
    {
        pTerrain->GetProtection() = text.protection;
    }
    const bool bPlayed =
        bOpen && PlayAgain(m_Host, m_Document, entry, m_Declarations, play, nSteps, strFault);
    nSteps = CountHistorySteps(entry, nSteps);
    // A step that failed may have left the button pressed.
    m_Host.GetInput().EndDrag();
    m_bOff = bWasOff;
    if (!bOpen)
    {
        return false;
    }
    // Follow must not take the recovered level for another one, which would remove the files. What
    // this run had kept so far was of the level before.
    m_Generation = m_Document.GetGeneration();
    m_Savings = m_Document.GetSavings();
    m_bUnsavedBitmap = GetUnsavedBitmap() != 0;
    RemoveFiles();
    if (!bPlayed)
    {
        CrashLog("[CAutosave::Recover] %s\n", strFault.c_str());
    }
    const bool bHidden = GetUnsavedBitmap() != 0 && !(m_Tools != nullptr && m_Tools->IsPainting());
    TellRecovered(entry, nSteps, bHidden);
    TakeOver(entry, bPlayed);
    return true;
}

void CAutosave::TakeOver(const SRecoverable& entry, bool bWhole)
{
    m_bModified = true;
    m_Due = TimePoint::clock::now() + m_Interval;
    m_CopiedRevision = 0;
    m_bFailed = false;
    m_bNeedsCopy = !bWhole;
    // Numbers go on behind those of the journals that were found, so none of them is written over.
    // After a recovery that stopped on the way all files stay for another try, and a copy is made
    // under a stem of this run.
    m_Number = std::max(m_Number, entry.uLastNumber);
    BeginJournal(bWhole);
    m_KnownBitmap = m_Document.GetBitmap();
    if (bWhole)
    {
        m_Stem = entry.strStem;
        m_Base = entry.text;
        m_bBase = true;
        m_bText = WriteText(m_Base);
        m_bNeedsCopy = !m_bText;
        m_Writer.SetSteps(m_Host.GetUndoStack().GetCount(), m_Host.GetUndoStack().GetRedoCount());
    }
}
