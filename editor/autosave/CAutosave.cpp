#include "editor/autosave/CAutosave.h"

#include "editor/autosave/AutosaveFiles.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/FileNames.h"
#include "editor/script/CScriptKeywords.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginPainting.h"
#include "host/IPluginTools.h"
#include "host/Log.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <utility>

CAutosave::CAutosave(CEditorHost& host, CLevelDocument& document)
    : m_Host(host)
    , m_Document(document)
    , m_Writer(host, *this)
{
    m_Host.GetObservers().Add(this);
    BeginJournal(false);
}

CAutosave::~CAutosave()
{
    m_Host.GetObservers().Remove(this);
    if (!m_bLeft)
    {
        RemoveFiles();
    }
}

void CAutosave::SetPlugin(IPlugin* pPlugin)
{
    m_Painting = dynamic_cast<IPluginPainting*>(pPlugin);
    m_Tools = dynamic_cast<IPluginTools*>(pPlugin);
    m_Writer.SetPlugin(pPlugin);
    m_Declarations = CScriptKeywords(pPlugin).GetDeclarations();
}

bool CAutosave::IsKeeping() const
{
    return m_Writer.CanWrite() && m_Interval.count() > 0 && !m_bOff && m_Document.HasLevel();
}

uint64_t CAutosave::GetUnsavedBitmap() const
{
    return m_Painting != nullptr && !m_Painting->GetUnsavedBitmap().empty()
               ? m_Painting->GetBitmapRevision()
               : 0;
}

bool CAutosave::IsChanged() const
{
    return m_Document.IsModified() || (m_Document.HasLevel() && GetUnsavedBitmap() != 0);
}

uint64_t CAutosave::GetRevision() const
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr ? pTerrain->GetRevision() : 0;
}

const CVertexProtection& CAutosave::GetProtection() const
{
    static const CVertexProtection s_None;
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr ? pTerrain->GetProtection() : s_None;
}

bool CAutosave::Tick(TimePoint now)
{
    Poll();
    Follow();
    if (m_bOff || m_Interval.count() == 0 || !IsChanged())
    {
        m_bModified = false;
        return false;
    }
    // The interval begins with the first change after a save.
    if (!std::exchange(m_bModified, true))
    {
        m_Due = now + m_Interval;
    }
    // A copy in the middle of a stroke would hold a part of a step that the journal has as a whole.
    if (m_Host.GetInput().IsDragging() || m_Host.GetProtection().IsOpen() ||
        m_Host.GetHistory().IsStepOpen())
    {
        return false;
    }
    const bool bDue = now >= m_Due;
    const bool bPainted = IsKeeping() && GetUnsavedBitmap() != 0;
    // What failed is tried again when the interval is over, not at every tick. The fault of the
    // disk is taken first, so that it is forgotten also where a copy is needed anyway.
    m_bFailed = m_bFailed && !bDue;
    m_bNeedsCopy = m_Journal.HasFault() || m_bNeedsCopy;
    KeepDifference();
    // Strokes are taken back in the plug-in's dialog without an event.
    m_bNeedsCopy = m_bNeedsCopy || (bPainted && m_Writer.GetPainted() != GetUnsavedBitmap());
    const bool bAtOnce = IsKeeping() && m_bNeedsCopy && !m_bFailed;
    if (!bAtOnce && (!bDue || m_Copy.IsRunning()))
    {
        return false;
    }
    m_Due = now + m_Interval;
    // A copy of what the last one holds already would bring nothing.
    const bool bNew = GetRevision() != m_CopiedRevision || GetUnsavedBitmap() != m_CopiedBitmap ||
                      GetProtection().GetId() != m_CopiedProtection;
    return (bAtOnce || bNew) && StartCopy();
}

// Notices that the level was saved, or is another one.
void CAutosave::Follow()
{
    const bool bSaved = m_Savings != m_Document.GetSavings() && !m_Document.IsModified();
    const bool bOther = m_Generation != m_Document.GetGeneration();
    const bool bUnsaved = GetUnsavedBitmap() != 0;
    m_Generation = m_Document.GetGeneration();
    m_Savings = m_Document.GetSavings();
    // The strokes are in the bitmap's own file now, so the steps that follow may begin with that
    // file.
    if (std::exchange(m_bUnsavedBitmap, bUnsaved) && !bUnsaved)
    {
        m_Writer.ForgetBitmap();
    }
    if (bSaved || bOther)
    {
        StartAnew();
    }
}

void CAutosave::Remove()
{
    Follow();
    StartAnew();
}

void CAutosave::StartAnew()
{
    m_bModified = false;
    m_CopiedRevision = 0;
    if (GetUnsavedBitmap() != 0 && !m_Stem.empty())
    {
        m_bNeedsCopy = true; // what was painted is in these files alone until then
        return;
    }
    RemoveFiles();
    TakeOwnBase();
}

void CAutosave::TakeOwnBase()
{
    m_Base = {};
    m_bBase = false;
    m_bFailed = false;
    // Only a level that is as its files are can stand on them; any other one needs a copy first.
    if (m_Document.HasLevel() && !m_Document.IsModified())
    {
        m_Base.strHeights = m_Document.GetHeightPath();
        m_Base.strStamp = GetHeightStamp(m_Base.strHeights);
        const std::optional<float> flat = m_Document.GetFlatHeight();
        if (m_Base.strStamp.empty())
        {
            m_Base.strHeights.clear();
            m_Base.fFlat = flat.value_or(0.0F);
        }
        m_Base.protection = GetProtection();
        // As it is before the first step, which may change what a level text says.
        m_Base.level = m_Document.GetText();
        m_bBase = !m_Base.strStamp.empty() || flat.has_value();
    }
    // Strokes on the bitmap that are not saved are in no file of the user.
    m_bNeedsCopy = !m_bBase || GetUnsavedBitmap() != 0;
    BeginJournal(false);
}

void CAutosave::BeginJournal(bool bContinues)
{
    m_Journal.Close();
    m_bJournal = false;
    m_bContinues = bContinues;
    ++m_Number;
    m_Step.clear();
    m_KnownBitmap = bContinues ? m_KnownBitmap : m_Document.GetBitmap();
    m_Writer.Begin(GetUnsavedBitmap());
    m_KnownRevision = GetRevision();
}

bool CAutosave::MakeStem()
{
    if (!m_Stem.empty())
    {
        return true;
    }
    const std::string strFolder = MakeAutosaveFolder(m_Document.GetPath());
    if (strFolder.empty())
    {
        CrashLog("[CAutosave::MakeStem] no folder for autosaves can be written\n");
        return false;
    }
    m_Stem =
        MakeAutosaveStem(strFolder, std::filesystem::path(m_Document.GetTitle()).stem().string());
    return true;
}

bool CAutosave::WriteOwnText()
{
    if (m_bText)
    {
        return true;
    }
    if (!MakeStem())
    {
        return false;
    }
    // Where there can be no second name, the level's own file stays the base.
    const std::string strLink = GetAutosaveHeights(m_Stem, m_Number);
    if (!m_Base.strStamp.empty() && LinkHeights(m_Base.strHeights, m_Base.strStamp, strLink))
    {
        m_Base.strHeights = strLink;
    }
    m_Base.level.strMaterial = m_Document.GetMaterial();
    m_Base.uNumber = m_Number;
    m_bText = WriteText(m_Base);
    return m_bText;
}

bool CAutosave::WriteText(const SAutosaveText& text)
{
    const std::string strFile = GetAutosaveText(m_Stem);
    // Written beside and then renamed: whoever reads the text finds the old one or the new one,
    // whole.
    const std::string strTemp = GetAutosaveTextTemp(m_Stem, m_Number);
    const std::string strText = text.Write();
    ::unlink(strTemp.c_str()); // nothing of ours has this name
    const int iFile = MakeNewFile(strTemp.c_str());
    const bool bWritten = iFile >= 0 && WriteAll(iFile, strText.data(), strText.size());
    const bool bPlaced = bWritten && ::rename(strTemp.c_str(), strFile.c_str()) == 0;
    if (!bPlaced)
    {
        CrashLog("[CAutosave::WriteText] %s: %s\n", strFile.c_str(), std::strerror(errno));
        ::unlink(strTemp.c_str());
    }
    if (iFile >= 0)
    {
        m_Journal.SyncAndClose(iFile);
    }
    return bPlaced;
}

bool CAutosave::StartCopy()
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    // While steps lead here from a base, the new journal continues the old one: if the copy fails,
    // both together still give everything back.
    const bool bFollows = IsKeeping() && m_bBase && !m_bNeedsCopy;
    const bool bRoom = !bFollows || m_Journal.Flush(); // else a copy finds none either
    if (pTerrain == nullptr || !bRoom || !MakeStem() || (bFollows && !WriteOwnText()))
    {
        m_bFailed = true;
        return false;
    }
    // The journal changes at the same moment as the child takes the memory over, so each step is
    // either in the copy or in the journal behind it.
    BeginJournal(bFollows);
    m_Copied = {};
    m_Copied.level = m_Document.GetText();
    m_Copied.uNumber = m_Number;
    m_Copied.strHeights = GetAutosaveHeights(m_Stem, m_Number);
    m_Copied.protection = pTerrain->GetProtection();
    SAutosaveJob job;
    job.strStem = m_Stem;
    job.uNumber = m_Number;
    if (GetUnsavedBitmap() != 0)
    {
        m_Copied.strBitmap = m_Painting->GetUnsavedBitmap();
        m_Copied.strTexels = GetAutosaveTexels(m_Stem, m_Number);
        job.pTexels = m_Painting->GetBitmap();
    }
    job.strText = m_Copied.Write();
    job.pHeights = pTerrain->GetHeightData();
    job.uVerticesX = pTerrain->GetVerticesX();
    job.uVerticesZ = pTerrain->GetVerticesZ();
    job.size = pTerrain->GetSizeVector();
    m_bFailed = !m_Copy.Start(job);
    m_bNeedsCopy = m_bFailed && !bFollows;
    m_CopiedRevision = m_bFailed ? 0 : pTerrain->GetRevision();
    m_CopiedBitmap = GetUnsavedBitmap();
    m_CopiedProtection = GetProtection().GetId();
    return !m_bFailed;
}

bool CAutosave::Poll()
{
    int iFault = 0;
    const ECopyState eState = m_Copy.Poll(iFault);
    return Finish(eState, iFault);
}

bool CAutosave::Wait()
{
    int iFault = 0;
    const ECopyState eState = m_Copy.Wait(iFault);
    return Finish(eState, iFault);
}

bool CAutosave::Finish(ECopyState eState, int iFault)
{
    if (eState == ECopyState::None || eState == ECopyState::Running)
    {
        return true;
    }
    const std::string strText = GetAutosaveText(m_Stem);
    const std::string strTemp = GetAutosaveTextTemp(m_Stem, m_Copied.uNumber);
    // With this rename the copy becomes the base; until here the one before it counts.
    if (eState == ECopyState::Done && ::rename(strTemp.c_str(), strText.c_str()) == 0)
    {
        m_Base = m_Copied;
        m_bBase = true;
        m_bText = true;
        RemoveOlderAutosave(m_Stem, m_Copied.uNumber);
        m_Journal.SyncFolder(std::filesystem::path(m_Stem).parent_path().string());
        return true;
    }
    const int iKnown = iFault != 0 ? iFault : errno;
    CrashLog("[CAutosave::Finish] %s: %s\n", strText.c_str(), std::strerror(iKnown));
    RemoveAutosaveCopy(m_Stem, m_Copied.uNumber);
    m_CopiedRevision = 0; // tried again when it is due
    m_bFailed = true;
    // A journal that continues the one before it still leads from the old base. Another one has
    // none.
    m_bNeedsCopy = m_bNeedsCopy || !m_bContinues;
    return false;
}

void CAutosave::RemoveFiles()
{
    m_Copy.Abandon();
    m_Journal.Close();
    if (!m_Stem.empty())
    {
        RemoveAutosave(std::exchange(m_Stem, {}));
    }
    m_bText = false;
    m_bBase = false;
}

void CAutosave::Leave()
{
    constexpr timespec PAUSE = {0, 20000000L};
    constexpr int PAUSES = 250; // five seconds: whoever ends processes does not wait much longer
    if (m_bOff)
    {
        return;
    }
    // The stroke under the hand becomes a step of the journal.
    m_Host.GetInput().EndDrag();
    m_Host.GetProtection().End();
    m_Host.GetHistory().EndStep();
    Follow();
    // Where steps lead from a base to what there is, nothing more is to be written.
    if (IsKeeping() && IsChanged() && m_bNeedsCopy)
    {
        StartCopy();
    }
    // Only a copy without which nothing could be given back is worth waiting for; any other one may
    // be given up, since the base before and the steps are on the disk.
    for (int i = 0; i < PAUSES && !m_bContinues && m_Copy.IsRunning() && Poll(); ++i)
    {
        ::nanosleep(&PAUSE, nullptr);
    }
    m_Copy.Abandon();
    m_Journal.Finish();
    m_bLeft = IsChanged();
    m_bOff = true;
}

void CAutosave::Discard(const SRecoverable& entry)
{
    RemoveAutosave(entry.strStem);
}
