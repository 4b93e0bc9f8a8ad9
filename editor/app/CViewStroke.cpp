#include "editor/app/CViewStroke.h"

#include "editor/app/PathTools.h"
#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr float LINE_SHARE = 0.25F; // of the brush, until a straight line knows where it leads

} // namespace

CViewStroke::CViewStroke(CEditorHost& host,
                         IPlugin* pPlugin,
                         ViewId view,
                         const CViewNavigator& navigator,
                         const SInputSettings& settings,
                         SHandState& hand)
    : m_Host(host)
    , m_Tools(dynamic_cast<IPluginTools*>(pPlugin))
    , m_Strokes(dynamic_cast<IPluginStrokes*>(pPlugin))
    , m_View(view)
    , m_Settings(settings)
    , m_Hand(hand)
    , m_Aim(host, navigator, m_Strokes)
    , m_Spacing(host, m_Tools, settings)
    , m_Sender(host, view, hand)
    , m_Sampler([this](float fX, float fY, SVec3& hit) { return Aim(fX, fY, hit); },
                [this](const SStrokePoint& point) { SendMove(point); })
    , m_Forms(settings.form)
{
}

CViewStroke::~CViewStroke()
{
    m_Host.GetInput().ReleaseDragOwner(this);
}

const CTerrain* CViewStroke::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

// What the stroke is going to be; nothing is sent.
void CViewStroke::Begin(float fX, float fY, uint32_t uFlags, bool bSmooth)
{
    // What another view has begun is over, and with it its step.
    m_Host.GetInput().EndDrag();
    m_Host.GetHistory().EndStep();
    m_bOn = true;
    m_bLastGround = false;
    m_bPressHit = false;
    m_Flags = uFlags;
    m_HereX = fX;
    m_HereY = fY;
    // Cancel tells by this state whether the stroke has left a record.
    m_StateBefore = m_Host.GetUndoStack().GetStateId();
    m_bSmoothing = bSmooth && m_Strokes != nullptr && m_Strokes->BeginSmoothing();
    const float fSpacing = m_Strokes != nullptr ? m_Strokes->GetStrokeSpacing() : 0.0F;
    const float fExtent = m_Tools != nullptr ? m_Tools->GetBrushExtent() : 0.0F;
    const bool bTerraforming = m_Tools != nullptr && m_Tools->IsTerraforming();
    m_bPath = fSpacing > 0.0F && fExtent > 0.0F;
    m_bSculpts = m_bPath && bTerraforming;
    m_Spacing.Choose(fSpacing, fExtent, m_bSculpts);
    m_Forms.Begin(fX, fY, m_bPath);
    m_bHasEnd = m_bPath || IsRamp(m_Tools);
}

// bBuilds: it may build up. bPathOfEnds: it is several drags, from knot to knot.
void CViewStroke::Open(bool bBuilds, bool bPathOfEnds)
{
    const bool bTool = m_Strokes != nullptr && m_Tools != nullptr &&
                       (m_Tools->IsTerraforming() || m_Tools->IsPainting());
    const EStrokeImages eImages = bTool && m_Strokes->HasFreePoints() ? EStrokeImages::Moves
                                  : m_bPath                           ? EStrokeImages::Drags
                                                                      : EStrokeImages::Ends;
    m_Sender.Begin(bTool ? m_Settings.symmetry : SSymmetry(), eImages);
    m_bBuilds =
        bBuilds && m_bPath && bTool && m_Settings.builds.contains(m_Tools->GetFunctionName());
    m_bSeveral = m_Sender.HasOwnDrags() || bPathOfEnds || (m_bBuilds && m_bSculpts);
    if (m_bSeveral)
    {
        m_Host.GetHistory().BeginStep(m_View);
    }
}

// What a stroke that sculpts aims at from here on.
void CViewStroke::HoldAim()
{
    if (m_bSculpts && m_Settings.bAimAtPress)
    {
        m_Aim.Hold();
    }
}

void CViewStroke::SendPress(float fX, float fY, const SVec3* pGround)
{
    m_Sender.Press(fX, fY, m_Flags, pGround);
    if (m_Host.GetInput().IsDragging())
    {
        m_Host.GetInput().SetDragOwner(this);
    }
    // What sculpts begins with the first move, what is painted with the press.
    if (m_bPath && !m_bSculpts && m_bPressHit && m_Host.GetInput().IsDragging())
    {
        m_Sender.SendPressImages(m_PressHit);
    }
}

void CViewStroke::Press(float fX, float fY, uint32_t uFlags, bool bSmooth)
{
    Begin(fX, fY, uFlags, bSmooth);
    Open(true, false);
    HoldAim();
    SVec3 from;
    const bool bJoint =
        m_Hand.bJoin && m_bHasEnd && m_Hand.FindEnd(m_StateBefore, from) && DropToGround(from);
    m_Sampler.SetSpacing(m_Settings.bSampleStrokes ? m_Spacing.Get() : 0.0F);
    const SStrokePoint press = m_Sampler.Press(fX, fY);
    m_PressHit = m_LastGround = bJoint ? from : press.hit;
    m_bPressHit = m_bLastGround = bJoint || press.bHit;
    // A stroke that joins the one before begins at the end of that one: the plug-in gets this
    // ground when it asks what the press has hit.
    m_Sender.SetForm(m_Forms.Make(fX, fY, m_bPressHit ? &m_PressHit : nullptr));
    SendPress(fX, fY, bJoint ? &from : nullptr);
    if (bJoint && m_bPath)
    {
        DrawJoint(from, fX, fY);
    }
    else if (m_bSculpts && m_Host.GetInput().IsDragging())
    {
        m_bPressWaits = m_Forms.NeedsWay() && press.bHit;
        m_PressPoint = press;
        if (!m_bPressWaits)
        {
            m_Sampler.SendPress();
        }
    }
}

// From the end of the last stroke to the cursor, all at once.
void CViewStroke::DrawJoint(const SVec3& from, float fX, float fY)
{
    SVec3 to;
    if (!Aim(fX, fY, to) || !m_Host.GetInput().IsDragging())
    {
        return;
    }
    m_Hand.bElsewhere = true;
    m_Forms.SetWay(from, to);
    if (m_bSculpts) // what is painted adds up, and the press was there
    {
        SendGround(from);
    }
    const float fSpacing = m_Spacing.Get();
    m_Line.Start(from, from, fSpacing, fSpacing);
    m_Line.Follow(to, [this](const SVec3& point) { SendGround(point); });
    m_Line.Stop();
    m_Hand.bElsewhere = false;
    // The line ends at a whole spacing, and the cursor may be a little further.
    SendGround(to);
    m_Sampler.Continue(fX, fY, to);
    m_PressHit = to;
}

bool CViewStroke::Move(float fX, float fY, uint32_t uFlags, int iWheel)
{
    m_Flags = uFlags;
    if (!m_bOn || !m_Host.GetInput().IsDragging())
    {
        Finish(); // the host has ended it: another level came
        return false;
    }
    m_Sampler.SetSpacing(m_Settings.bSampleStrokes ? m_Spacing.Get() : 0.0F);
    m_Forms.GoTo(fX, fY);
    if (!FollowLine(fX, fY))
    {
        m_Sampler.Move(fX, fY, iWheel);
    }
    m_HereX = fX;
    m_HereY = fY;
    return true;
}

// False when the stroke is not kept on a line.
bool CViewStroke::FollowLine(float fX, float fY)
{
    SVec3 to;
    const auto send = [this](const SVec3& point)
    {
        SendGround(point);
    };
    const float fSpacing = m_Spacing.Get();
    const bool bWanted = m_Hand.bLine && m_bPath && m_bPressHit && fSpacing > 0.0F;
    if (!bWanted)
    {
        if (m_Line.IsOn())
        {
            m_Line.Stop();
            m_Sampler.Continue(fX, fY, m_LastGround);
        }
        return false;
    }
    if (!m_Line.IsOn())
    {
        const float fLeast = std::max(fSpacing, LINE_SHARE * m_Tools->GetBrushExtent());
        m_Line.Start(m_PressHit, m_bLastGround ? m_LastGround : m_PressHit, fSpacing, fLeast);
        if (Aim(m_HereX, m_HereY, to)) // the cursor was there when the key went down
        {
            m_Line.Follow(to, send);
        }
    }
    if (Aim(fX, fY, to))
    {
        m_Line.Follow(to, send);
    }
    m_Sampler.Continue(fX, fY, m_LastGround);
    return true;
}

void CViewStroke::Release(float fX, float fY, uint32_t uFlags)
{
    if (!Move(fX, fY, uFlags))
    {
        return;
    }
    if (m_Line.IsOn())
    {
        m_Sampler.Cancel(); // the cursor is beside the line
    }
    SendHeldPress(m_PressHit); // it was a click, which leads nowhere
    m_Sampler.Release(fX, fY);
    m_Sender.Release(fX, fY, uFlags);
    PlayImages();
    Finish();
}

// Another view was pressed, or the level goes away: what was begun is whole all the same.
void CViewStroke::OnDragEnded(bool bMaySend)
{
    m_Sampler.Cancel();
    m_Sender.NoteRelease();
    if (bMaySend)
    {
        PlayImages();
    }
    Finish();
}

bool CViewStroke::Cancel()
{
    if (!m_bOn || !m_Host.GetInput().IsDragging())
    {
        Finish(); // the host has ended it, and what it did is a step like any other
        return false;
    }
    m_Sampler.Cancel();
    m_Host.GetInput().ReleaseDragOwner(this); // its images are not to come
    const bool bTerraforming = m_Tools != nullptr && m_Tools->IsTerraforming();
    const bool bPainting = m_Tools != nullptr && m_Tools->IsPainting();
    const bool bOther = !bTerraforming && !bPainting;
    if (bOther)
    {
        m_Host.GetModes().SuspendCurrentMode(true); // its release would finish the work
    }
    m_Host.GetInput().EndDrag();
    if (bOther)
    {
        m_Host.GetModes().DeactivateMode(0);
    }
    if (bTerraforming && m_Host.GetUndoStack().GetStateId() != m_StateBefore)
    {
        // What was taken back must not come again by redo.
        m_Host.Undo();
        m_Host.GetUndoStack().DropRedo();
    }
    if (bPainting)
    {
        m_Host.StepPaint(false);
    }
    m_bLastGround = false;
    Finish();
    return true;
}

void CViewStroke::End()
{
    m_Sampler.Cancel();
    if (m_bOn)
    {
        m_Host.GetInput().EndDrag();
    }
    Finish();
}

void CViewStroke::Finish()
{
    m_Sampler.Cancel();
    m_Line.Stop();
    m_Aim.Drop();
    m_bPressWaits = false;
    m_Forms.End();
    if (std::exchange(m_bOn, false))
    {
        m_Host.GetInput().ReleaseDragOwner(this);
        if (std::exchange(m_bSeveral, false))
        {
            m_Host.GetHistory().EndStep(m_View);
        }
        if (m_bHasEnd && m_bLastGround)
        {
            m_Hand.SetEnd(m_Host.GetUndoStack().GetStateId(), m_LastGround);
        }
    }
    if (std::exchange(m_bSmoothing, false))
    {
        m_Strokes->EndSmoothing();
    }
}

void CViewStroke::Hover(float fX, float fY, uint32_t uFlags)
{
    if (!m_Hand.bScript) // whose cursor it is then
    {
        m_Sender.Hover(fX, fY, uFlags);
    }
}

void CViewStroke::SendMove(const SStrokePoint& point)
{
    if (point.bHit)
    {
        SendHeldPress(point.hit);
    }
    if (point.bHit)
    {
        m_LastGround = point.hit;
        m_bLastGround = true;
        m_PressHit = m_bPressHit ? m_PressHit : point.hit; // the press was in the sky
        m_bPressHit = true;
    }
    m_Sender.SetForm(m_Forms.Make(point.fX, point.fY, point.bHit ? &point.hit : nullptr));
    m_Sender.Move(point, m_Flags);
}

bool CViewStroke::DropToGround(SVec3& point) const
{
    const CTerrain* pTerrain = GetTerrain();
    return pTerrain != nullptr && pTerrain->PickDown(point);
}

void CViewStroke::SendGround(const SVec3& point)
{
    SVec3 ground = point;
    if (!m_Host.GetInput().IsDragging() || !DropToGround(ground))
    {
        return;
    }
    SendHeldPress(ground);
    m_LastGround = ground;
    m_bLastGround = true;
    m_Sender.SetForm(m_Forms.Make(m_HereX, m_HereY, &ground));
    m_Sender.MoveTo(ground, m_Flags);
}

bool CViewStroke::Pick(ViewPoint point, SVec3& hit)
{
    bool bHit = false;
    if (!m_Sender.HasAnswer(bHit, hit))
    {
        float fX = 0.0F;
        float fY = 0.0F;
        m_Sender.FindPosition(point, fX, fY);
        bHit = Aim(fX, fY, hit);
    }
    m_Sender.NoteHit(bHit ? &hit : nullptr);
    return bHit;
}

bool CViewStroke::FindMark(float fX, float fY, SVec3& hit) const
{
    if (m_Line.IsOn())
    {
        hit = m_Line.GetPoint();
        return DropToGround(hit);
    }
    return Aim(fX, fY, hit);
}
