#include "editor/app/CViewStroke.h"

#include "editor/core/CEditorHost.h"
#include "editor/view/DenseStrokes.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"
#include "host/Notice.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr float PERCENT = 0.01F;
constexpr char RAMP[] = "RampFunction"; // leads from the press to the release
constexpr float LINE_SHARE = 0.25F;     // of the brush, until a straight line knows where it leads

int32_t GetPixel(float fPosition)
{
    return static_cast<int32_t>(std::floor(fPosition));
}

float GetMiddle(uint32_t uHalf)
{
    return static_cast<float>(static_cast<int16_t>(uHalf & 0xFFFFU)) + 0.5F;
}

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
    , m_Navigator(navigator)
    , m_Settings(settings)
    , m_Hand(hand)
    , m_Sampler([this](float fX, float fY, SVec3& hit) { return Aim(fX, fY, hit); },
                [this](const SStrokePoint& point) { SendMove(point); })
    , m_Forms(settings.form)
{
}

const CTerrain* CViewStroke::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

template <typename TSend> void CViewStroke::SendAt(float fX, float fY, TSend send)
{
    // Known before it is sent: from within the call the plug-in picks the ground there.
    m_SentX = fX;
    m_SentY = fY;
    send();
}

void CViewStroke::Press(float fX, float fY, uint32_t uFlags, bool bSmooth)
{
    m_bOn = true;
    m_Flags = uFlags;
    m_HereX = fX;
    m_HereY = fY;
    // Cancel tells by this state whether the stroke has left a record.
    m_StateBefore = m_Host.GetUndoStack().GetStateId();
    m_bSmoothing = bSmooth && m_Strokes != nullptr && m_Strokes->BeginSmoothing();
    const float fSpacing = m_Strokes != nullptr ? m_Strokes->GetStrokeSpacing() : 0.0F;
    const float fExtent = m_Tools != nullptr ? m_Tools->GetBrushExtent() : 0.0F;
    m_bPath = fSpacing > 0.0F && fExtent > 0.0F;
    m_bSculpts = m_bPath && m_Tools != nullptr && m_Tools->IsTerraforming();
    ChooseSpacing(fSpacing, fExtent);
    if (m_bSculpts && m_Settings.bAimAtPress && GetTerrain() != nullptr)
    {
        m_Still.Take(*GetTerrain());
    }
    const bool bRamp =
        m_Tools != nullptr && m_Tools->IsTerraforming() && m_Tools->GetFunctionName() == RAMP;
    m_bHasEnd = m_bPath || bRamp;
    SVec3 from;
    const bool bJoint =
        m_Hand.bJoin && m_bHasEnd && m_Hand.FindEnd(m_StateBefore, from) && DropToGround(from);
    m_Sampler.SetSpacing(m_Settings.bSampleStrokes ? GetSpacing() : 0.0F);
    const SStrokePoint press = m_Sampler.Press(fX, fY);
    m_PressHit = m_LastGround = bJoint ? from : press.hit;
    m_bPressHit = m_bLastGround = bJoint || press.bHit;
    // A stroke that joins the one before begins at the end of that one: the plug-in gets this
    // ground when it asks what the press has hit.
    m_pSentGround = bJoint ? &from : nullptr;
    m_Forms.Begin(fX, fY, m_bPath);
    m_Host.GetInput().SetPointForm(m_Forms.Make(fX, fY, m_bPressHit ? &m_PressHit : nullptr));
    SendAt(fX,
           fY,
           [&]
           {
               m_Host.GetInput().SendButtonDown(
                   m_View, uFlags | MOUSE_LEFT, {GetPixel(fX), GetPixel(fY), 0, 0});
           });
    m_pSentGround = nullptr;
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

void CViewStroke::SendHeldPress(const SVec3& next)
{
    if (std::exchange(m_bPressWaits, false))
    {
        m_Forms.SetWay(m_PressHit, next);
        SendMove(m_PressPoint);
    }
}

// fSpacing: what the tool asks for.
void CViewStroke::ChooseSpacing(float fSpacing, float fExtent)
{
    // The share is kept and not the length, since the brush may change during the stroke.
    m_SpacingShare = m_bPath ? fSpacing / fExtent : 0.0F;
    const CTerrain* pTerrain = GetTerrain();
    if (m_bPath && m_Settings.iSpacingPercent > 0)
    {
        m_SpacingShare = static_cast<float>(m_Settings.iSpacingPercent) * PERCENT;
    }
    else if (m_bSculpts && m_Settings.bSampleStrokes && pTerrain != nullptr)
    {
        const SHeightView view = pTerrain->GetView();
        const double dBrush = fExtent;
        const float fLeast = GetLeastShare(dBrush / view.fStepX * dBrush / view.fStepZ);
        if (fLeast > m_SpacingShare)
        {
            m_SpacingShare = fLeast;
            Notice("Large brush: the points of the stroke lie farther apart");
        }
    }
}

float CViewStroke::GetSpacing() const
{
    return m_Tools != nullptr ? m_SpacingShare * m_Tools->GetBrushExtent() : 0.0F;
}

// From the end of the last stroke to the cursor, all at once.
void CViewStroke::DrawJoint(const SVec3& from, float fX, float fY)
{
    SVec3 to;
    if (!Aim(fX, fY, to) || !m_Host.GetInput().IsDragging())
    {
        return;
    }
    SendGround(from);
    const float fSpacing = GetSpacing();
    m_Line.Start(from, from, fSpacing, fSpacing);
    m_Line.Follow(to, [this](const SVec3& point) { SendGround(point); });
    m_Line.Stop();
    // The line ends at a whole spacing, and the cursor may be a little further.
    SendGround(to);
    m_Sampler.Continue(fX, fY, to);
    m_PressHit = to;
}

bool CViewStroke::Move(float fX, float fY, uint32_t uFlags, int iWheel)
{
    m_Flags = uFlags;
    if (!m_Host.GetInput().IsDragging())
    {
        Finish(); // the host has ended it: another level came
        return false;
    }
    m_Sampler.SetSpacing(m_Settings.bSampleStrokes ? GetSpacing() : 0.0F);
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
    const float fSpacing = GetSpacing();
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
    SendAt(fX,
           fY,
           [&] {
               m_Host.GetInput().SendButtonUp(m_View, uFlags, {GetPixel(fX), GetPixel(fY), 0, 0});
           });
    Finish();
}

bool CViewStroke::Cancel()
{
    if (!m_Host.GetInput().IsDragging())
    {
        Finish(); // the host has ended it, and what it did is a step like any other
        return false;
    }
    m_Sampler.Cancel();
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
    m_Still.Drop();
    if (m_bOn && m_bHasEnd && m_bLastGround)
    {
        m_Hand.SetEnd(m_Host.GetUndoStack().GetStateId(), m_LastGround);
    }
    m_bOn = false;
    m_bPressWaits = false;
    m_Forms.End();
    if (std::exchange(m_bSmoothing, false))
    {
        m_Strokes->EndSmoothing();
    }
}

void CViewStroke::Hover(float fX, float fY, uint32_t uFlags)
{
    SendAt(fX,
           fY,
           [&] {
               m_Host.GetInput().SendMouseMove(
                   m_View, uFlags, {GetPixel(fX), GetPixel(fY)}, {0, 0}, {0, 0});
           });
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
    m_Host.GetInput().SetPointForm(
        m_Forms.Make(point.fX, point.fY, point.bHit ? &point.hit : nullptr));
    SendAt(point.fX,
           point.fY,
           [&]
           {
               m_Host.GetInput().SendMouseMove(m_View,
                                               m_Flags | MOUSE_LEFT,
                                               {GetPixel(point.fX), GetPixel(point.fY)},
                                               {point.iWheel, MOUSE_BUTTON_LEFT},
                                               {point.iStepX, point.iStepY});
           });
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
    m_pSentGround = &ground;
    m_Host.GetInput().SetPointForm(m_Forms.Make(m_HereX, m_HereY, &ground));
    const int32_t iX = GetPixel(m_SentX);
    const int32_t iY = GetPixel(m_SentY);
    m_Host.GetInput().SendMouseMove(
        m_View, m_Flags | MOUSE_LEFT, {iX, iY}, {0, MOUSE_BUTTON_LEFT}, {0, 0});
    m_pSentGround = nullptr;
}

bool CViewStroke::Pick(ViewPoint point, SVec3& hit) const
{
    if (m_pSentGround != nullptr)
    {
        hit = *m_pSentGround;
        return true;
    }
    // Events have whole pixels. Where the last one was inside its pixel is known here.
    float fX = GetMiddle(point);
    float fY = GetMiddle(point >> 16U);
    if (point == CModeManager::PackPoint(GetPixel(m_SentX), GetPixel(m_SentY)))
    {
        fX = m_SentX;
        fY = m_SentY;
    }
    return Aim(fX, fY, hit);
}

bool CViewStroke::Aim(float fX, float fY, SVec3& hit) const
{
    const CTerrain* pTerrain = GetTerrain();
    if (pTerrain == nullptr || !m_Still.IsHeld() || m_Strokes == nullptr ||
        !m_Host.GetInput().IsDragging())
    {
        return m_Navigator.Pick(pTerrain, fX, fY, hit);
    }
    // A stroke that sculpts aims at the ground of the press: the hill that it raises would come
    // under the cursor and lead the stroke away from the hand.
    static_assert(CStillGround::TILE == IPluginStrokes::PRESS_TILE);
    const SRay ray = m_Navigator.GetRay(pTerrain, fX, fY);
    return m_Still.PickRay(
        *pTerrain,
        [this](uint32_t uTileX, uint32_t uTileZ)
        { return m_Strokes->GetPressTile(uTileX, uTileZ); },
        ray.origin,
        ray.direction,
        hit);
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
