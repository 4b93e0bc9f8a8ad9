#include "editor/script/CScriptWriter.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/HeightText.h"
#include "editor/script/IScriptSink.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/ActionIds.h"
#include "host/CTextFile.h"
#include "host/IPlugin.h"
#include "host/IPluginPainting.h"
#include "host/IPluginScript.h"
#include "host/IPluginTools.h"
#include "parser/DeclarativeText.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

constexpr char BEGIN_STEP[] = "begin_step()\n";
constexpr size_t PAINT_STEPS = 10;                // that every plug-in keeps, unless told otherwise
constexpr size_t MOST_HEIGHTS = size_t{1} << 20U; // 8 MB of text, written in a frame

// The heights of a rectangle, one call a row.
std::string GetHeightCalls(const CTerrain& terrain, const SVertexRect& rect)
{
    std::string strText;
    for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
    {
        const float* pRow =
            terrain.GetHeightData() + size_t{z} * terrain.GetVerticesX() + rect.uMinX;
        strText += "heights( " + std::to_string(rect.uMinX) + ", " + std::to_string(z) + ", \"" +
                   MakeHeightText(pRow, rect.uEndX - rect.uMinX) + "\" )\n";
    }
    return strText;
}

} // namespace

CScriptWriter::CScriptWriter(CEditorHost& host, IScriptSink& sink)
    : m_Host(host)
    , m_Sink(sink)
    , m_Mouse(host.GetInput(), sink)
    , m_Protection(host, sink)
{
}

void CScriptWriter::SetPlugin(IPlugin* pPlugin)
{
    m_Script = dynamic_cast<IPluginScript*>(pPlugin);
    m_Tools = dynamic_cast<IPluginTools*>(pPlugin);
    m_Painting = dynamic_cast<IPluginPainting*>(pPlugin);
}

void CScriptWriter::Begin(uint64_t uPainted)
{
    SetPainted(uPainted);
    m_bStale = false;
    m_bOtherTerrain = false;
    m_State.clear();
    m_Mouse.Forget();
    m_bDrag = false;
    m_bByHeights = false;
    m_Protection.Take();
    m_bProtecting = false;
    m_bOpenStep = false;
    SetSteps(0, 0);
}

void CScriptWriter::SetSteps(size_t nUndos, size_t nRedos)
{
    m_Undos = nUndos;
    m_Redos = nRedos;
    m_bCounted = false;
}

std::string CScriptWriter::ReadState()
{
    CTextFile file;
    return m_Script->WriteState(file) ? file.GetText() : "";
}

bool CScriptWriter::IsPainting() const
{
    return m_Tools != nullptr && m_Tools->IsPainting();
}

uint64_t CScriptWriter::GetBitmapRevision() const
{
    return m_Painting != nullptr ? m_Painting->GetBitmapRevision() : 0;
}

bool CScriptWriter::CanSculpt() const
{
    // Without a tool a press does nothing that a script would have to say.
    return m_Tools != nullptr && (m_Tools->IsTerraforming() || m_Tools->IsPainting()) &&
           !m_Tools->GetFunctionName().empty();
}

void CScriptWriter::KeepTerrain()
{
    if (m_bStale && m_Sink.KeepTerrain())
    {
        m_bStale = false;
        m_bOtherTerrain = false;
        m_Protection.Take(); // it comes with the terrain
        // Whoever plays the script has nothing to undo after the call that brings the terrain, and
        // no step open.
        SetSteps(0, 0);
        m_Sink.Append(m_bOpenStep ? BEGIN_STEP : "");
    }
}

bool CScriptWriter::WriteDifference(uint64_t& uRevision)
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    std::vector<SVertexRect> rects;
    // Heights say nothing of another size, nor of another number of vertices.
    m_bStale = std::exchange(m_bOtherTerrain, false);
    if (m_bStale)
    {
        return false;
    }
    WriteProtection();
    if (pTerrain == nullptr || !pTerrain->TakeDirtyRects(uRevision, rects))
    {
        return true;
    }
    SetSteps(0, 0);
    // The heights come without a record, so whoever plays the script cannot undo across them.
    size_t nHeights = 0;
    for (const SVertexRect& rect : rects)
    {
        nHeights += size_t{rect.uEndX - rect.uMinX} * (rect.uEndZ - rect.uMinZ);
    }
    // So many heights are better kept as a terrain.
    m_bStale = nHeights > MOST_HEIGHTS;
    std::string strText;
    for (size_t i = 0; i < rects.size() && !m_bStale; ++i)
    {
        strText += GetHeightCalls(*pTerrain, rects[i]);
    }
    m_Sink.Append(strText);
    return !m_bStale;
}

void CScriptWriter::WriteChanges()
{
    KeepTerrain();
    WriteProtection();
    if (IsPainting() && m_Painted != GetBitmapRevision() && m_Sink.KeepBitmap(m_Painted != 0))
    {
        SetPainted(GetBitmapRevision());
        m_State.clear(); // loading the bitmap sets channels and colours
    }
    const std::string strState = ReadState();
    if (strState != m_State)
    {
        // Whoever plays the state makes the brush anew, with no stroke before to go on from.
        m_bFresh = true;
        m_State = strState;
        m_Sink.Append(strState);
    }
}

void CScriptWriter::OnBeforeEvent(const SHostEvent& event)
{
    m_Mouse.TakeState();
    m_PaintedBefore = GetBitmapRevision();
    const bool bPress = event.eKind == EHostEvent::ButtonDown;
    if (event.eKind == EHostEvent::Protected || event.eKind == EHostEvent::Reshaped)
    {
        KeepTerrain(); // the areas depend on heights
        m_bProtecting = true;
    }
    if (event.eKind == EHostEvent::Reshaped)
    {
        WriteProtection(); // it moves with the ground
    }
    // The actions behind this one move cameras, which is nothing to the ground.
    const bool bAction = event.eKind == EHostEvent::Action && event.iAction <= ACTION_BRUSH_SMALLER;
    if (bPress && m_bDrag)
    {
        EndDrag(); // the press drops it
    }
    if ((bPress || bAction) && CanSculpt())
    {
        WriteChanges();
    }
    // A press that cannot sculpt still drops what another one began.
    m_bDrag = m_bDrag || (bPress && CanSculpt());
    if (bPress)
    {
        const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
        m_DragRevision = pTerrain != nullptr ? pTerrain->GetRevision() : 0;
    }
}

bool CScriptWriter::OnEvent(const SHostEvent& event)
{
    switch (event.eKind)
    {
    case EHostEvent::ButtonDown:
    case EHostEvent::MouseMove:
    case EHostEvent::ButtonUp:
        return m_bDrag && WriteDrag(event);
    case EHostEvent::Action:
        // Without a state of the plug-in in the script the action comes with the first one.
        return event.iAction <= ACTION_BRUSH_SMALLER && !m_State.empty() && WriteAction(event);
    case EHostEvent::Undo:
    case EHostEvent::Redo:
        return WriteStep(event.eKind == EHostEvent::Redo);
    case EHostEvent::PaintUndo:
    case EHostEvent::PaintRedo:
        return WritePaintStep(event.eKind == EHostEvent::PaintRedo);
    case EHostEvent::Protected:
    case EHostEvent::Reshaped:
        return WriteAct(event);
    case EHostEvent::UndoAdded:
        CountRecord();
        break;
    case EHostEvent::StepBegun:
        // All that comes until its end is one step of whoever plays the script, too, and of a
        // journal: half of it is never given back.
        if (CanWrite())
        {
            KeepTerrain(); // ends a step that has been dropped, for whoever plays the script
        }
        m_bOpenStep = CanWrite();
        m_bCounted = false;
        m_Sink.Append(m_bOpenStep ? BEGIN_STEP : "");
        break;
    case EHostEvent::StepEnded:
        return FinishStep();
    case EHostEvent::LevelChanged:
    case EHostEvent::TerrainReloaded:
        m_bStale = m_bStale || !event.bTold;
        m_bOtherTerrain = event.bTold; // until the step that has told of it is written
        m_bDrag = false;
        break;
    case EHostEvent::DragDropped: // whoever plays it has the memory, and would keep the stroke
        m_bStale = true;
        m_bDrag = false;
        m_bByHeights = false;
        m_bOpenStep = false;
        m_State.clear(); // what was written with the stroke may go with it
        m_Mouse.Forget();
        break;
    case EHostEvent::Command:
        break; // what it changes is written before the next press
    }
    return false;
}

bool CScriptWriter::WriteDrag(const SHostEvent& event)
{
    const bool bPainting = IsPainting();
    if (event.eKind == EHostEvent::ButtonDown && !bPainting)
    {
        // Beside the ground the stroke goes on from one that a new brush does not know.
        m_bByHeights = m_bFresh && !event.bHit;
        m_bFresh = m_bByHeights;
    }
    if (!m_bByHeights)
    {
        m_Mouse.Write(event);
    }
    if (bPainting) // what the stroke did is in the script
    {
        m_Painted = GetBitmapRevision();
    }
    if (event.eKind == EHostEvent::ButtonUp)
    {
        m_bDrag = false;
        m_PaintUndos = bPainting ? std::min(m_PaintUndos + 1, PAINT_STEPS) : m_PaintUndos;
        m_PaintRedos = bPainting ? 0 : m_PaintRedos;
        EndDrag();
    }
    return true;
}

void CScriptWriter::EndDrag()
{
    if (std::exchange(m_bByHeights, false))
    {
        WriteDifference(m_DragRevision);
        // Whoever plays the script has no record of it: an open step is not one for undo() there.
        m_bCounted = m_bOpenStep;
    }
    TellEnd();
}

// Parts of a step that is open are no steps of the user.
void CScriptWriter::TellEnd()
{
    if (!m_bOpenStep)
    {
        m_Sink.EndStep();
    }
}

bool CScriptWriter::WriteAction(const SHostEvent& event)
{
    m_Sink.Append("action( " + std::to_string(event.iAction) + ", " + std::to_string(event.uCount) +
                  " )\n");
    // The action has changed the brush, and changes the player's in the same way.
    m_State = ReadState();
    if (!m_bDrag)
    {
        TellEnd();
    }
    return true;
}
