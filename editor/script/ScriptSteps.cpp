// The steps of a script that are no strokes: what is protected, ground that is reshaped, undo and
// redo.

#include "editor/script/CScriptWriter.h"
#include "editor/script/GroundKeywords.h"
#include "editor/script/IScriptSink.h"

#include <utility>

// What is protected otherwise than by a step of the script.
void CScriptWriter::WriteProtection()
{
    if (m_Protection.WriteDifference())
    {
        SetSteps(0, 0);
    }
}

// What protects, or reshapes the ground.
bool CScriptWriter::WriteAct(const SHostEvent& event)
{
    m_bProtecting = false;
    // Of a stale script the terrain that comes next brings it along; without a step nothing has
    // changed.
    const bool bGround = event.pGround != nullptr;
    const bool bStep = !m_bStale && (bGround || event.pProtected != nullptr);
    if (bStep && bGround)
    {
        m_bOtherTerrain = false;
        m_Sink.Append(GetGroundCall(*event.pGround));
        m_Protection.Take();
    }
    else if (bStep && !m_Protection.WriteStep(*event.pProtected))
    {
        WriteProtection();
    }
    if (bStep)
    {
        TellEnd();
    }
    return !m_bStale;
}

bool CScriptWriter::FinishStep()
{
    const bool bWasOpen = std::exchange(m_bOpenStep, false);
    if (bWasOpen)
    {
        m_Sink.Append("end_step()\n");
        m_Sink.EndStep();
    }
    return bWasOpen;
}

void CScriptWriter::CountRecord()
{
    const bool bFirst = !m_bOpenStep || !m_bCounted;
    m_Undos += bFirst ? 1 : 0;
    m_Redos = 0;
    m_bCounted = m_bOpenStep;
}

bool CScriptWriter::WriteStep(bool bRedo)
{
    size_t& nFrom = bRedo ? m_Redos : m_Undos;
    size_t& nTo = bRedo ? m_Undos : m_Redos;
    if (nFrom == 0 || m_bStale)
    {
        m_bStale = true; // a step from before the script, or before its last terrain
        return false;
    }
    --nFrom;
    ++nTo;
    m_bOtherTerrain = false;
    m_Sink.Append(bRedo ? "redo()\n" : "undo()\n");
    m_Protection.Take();
    m_Sink.EndStep();
    return true;
}

void CScriptWriter::SetPainted(uint64_t uRevision)
{
    m_Painted = uRevision;
    m_PaintUndos = 0;
    m_PaintRedos = 0;
}

bool CScriptWriter::WritePaintStep(bool bRedo)
{
    size_t& nFrom = bRedo ? m_PaintRedos : m_PaintUndos;
    size_t& nTo = bRedo ? m_PaintUndos : m_PaintRedos;
    const uint64_t uPainted = GetBitmapRevision();
    // With strokes on the bitmap that the script does not have, it would take back another one.
    if (nFrom == 0 || m_Painted != m_PaintedBefore)
    {
        m_PaintUndos = 0; // how many strokes that leaves to take back, nobody says
        m_PaintRedos = 0;
        return uPainted == m_PaintedBefore;
    }
    --nFrom;
    ++nTo;
    m_Painted = uPainted;
    m_Sink.Append(bRedo ? "paint_redo()\n" : "paint_undo()\n");
    m_Sink.EndStep();
    return true;
}
