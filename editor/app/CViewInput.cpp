#include "editor/app/CViewInput.h"

#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "host/IPluginScript.h"

#include <cmath>

namespace
{

constexpr float CLICK_PIXELS = 4.0F; // a button that moved no further was clicked
constexpr int32_t LEFT_BUTTON = 1;

int32_t GetPixel(float fPosition)
{
    return static_cast<int32_t>(std::floor(fPosition));
}

float GetMiddle(uint32_t uHalf)
{
    return static_cast<float>(static_cast<int16_t>(uHalf & 0xFFFFU)) + 0.5F;
}

} // namespace

CViewInput::CViewInput(CEditorHost& host,
                       IPluginScript* pScript,
                       ViewId view,
                       CViewNavigator& navigator,
                       const SInputSettings& settings)
    : m_Host(host)
    , m_Script(pScript)
    , m_View(view)
    , m_Navigator(navigator)
    , m_Settings(settings)
    , m_Sampler([this](float fX, float fY, SVec3& hit)
                { return m_Navigator.Pick(GetTerrain(), fX, fY, hit); },
                [this](const SStrokePoint& point) { SendStrokeMove(point); })
{
}

const CTerrain* CViewInput::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

template <typename TSend> void CViewInput::SendAt(float fX, float fY, TSend send)
{
    m_SentX = fX;
    m_SentY = fY;
    send();
}

void CViewInput::Press(EViewButton eButton, float fX, float fY, uint32_t uFlags)
{
    if (m_eGesture != EGesture::None)
    {
        return; // one thing at a time: the first button goes on
    }
    m_bInside = true;
    m_X = m_PressX = fX;
    m_Y = m_PressY = fY;
    m_Flags = uFlags;
    m_bMoved = false;
    if (eButton == EViewButton::Right)
    {
        m_eGesture = EGesture::Orbit;
        m_Navigator.StartOrbit(GetTerrain(), fX, fY);
        return;
    }
    if (eButton == EViewButton::Middle)
    {
        m_eGesture = EGesture::Pan;
        m_Navigator.StartPan(GetTerrain(), fX, fY);
        return;
    }
    m_eGesture = EGesture::Stroke;
    m_StateBefore = m_Host.GetUndoStack().GetStateId();
    FollowSpacing();
    m_Sampler.Press(fX, fY);
    SendAt(
        fX,
        fY,
        [&] {
            m_Host.SendButtonDown(m_View, uFlags | MOUSE_LEFT, {GetPixel(fX), GetPixel(fY), 0, 0});
        });
}

void CViewInput::Move(float fX, float fY, uint32_t uFlags)
{
    const float fStepX = fX - m_X;
    const float fStepY = fY - m_Y;
    m_bInside = true;
    m_X = fX;
    m_Y = fY;
    m_Flags = uFlags;
    m_bMoved = m_bMoved || std::fabs(fX - m_PressX) > CLICK_PIXELS ||
               std::fabs(fY - m_PressY) > CLICK_PIXELS;
    switch (m_eGesture)
    {
    case EGesture::None:
        SendHover(fX, fY, uFlags);
        break;
    case EGesture::Stroke:
        if (m_Host.IsDragging())
        {
            FollowSpacing();
            m_Sampler.Move(fX, fY);
        }
        else
        {
            EndStroke(); // the host has ended it: another level came
        }
        break;
    case EGesture::Orbit:
        if (m_bMoved)
        {
            SetSuspended(true);
            m_Navigator.Orbit(GetTerrain(), fStepX, fStepY);
        }
        break;
    case EGesture::Pan:
        SetSuspended(true);
        m_Navigator.Pan(GetTerrain(), fX, fY);
        break;
    }
}

bool CViewInput::Release(EViewButton eButton, float fX, float fY, uint32_t uFlags)
{
    constexpr EGesture GESTURES[] = {EGesture::Stroke, EGesture::Pan, EGesture::Orbit};
    const EGesture eGesture = GESTURES[static_cast<int>(eButton)];
    if (eGesture != m_eGesture)
    {
        return false;
    }
    Move(fX, fY, uFlags);
    if (eGesture == EGesture::Stroke && m_Host.IsDragging())
    {
        m_Sampler.Release(fX, fY);
        SendAt(fX,
               fY,
               [&] {
                   m_Host.SendButtonUp(m_View, uFlags, {GetPixel(fX), GetPixel(fY), 0, 0});
               });
    }
    EndStroke();
    RepeatHover();
    return eGesture == EGesture::Orbit && !m_bMoved;
}

void CViewInput::Wheel(float fX, float fY, float fNotches)
{
    m_X = fX;
    m_Y = fY;
    if (IsStroking())
    {
        m_Sampler.Move(fX, fY, static_cast<int>(std::lround(fNotches)));
        return;
    }
    if (m_eGesture == EGesture::None)
    {
        m_Navigator.Zoom(GetTerrain(), fX, fY, fNotches);
        RepeatHover();
    }
}

void CViewInput::Leave()
{
    m_bInside = false;
    if (m_eGesture == EGesture::None)
    {
        SendHover(-1.0F, -1.0F, m_Flags);
    }
}

bool CViewInput::Cancel()
{
    if (!IsStroking())
    {
        return false;
    }
    if (!m_Host.IsDragging())
    {
        EndStroke(); // the host has ended it, and what it did is a step like any other
        return false;
    }
    m_Sampler.Cancel();
    const bool bTerraforming = m_Script != nullptr && m_Script->IsTerraforming();
    const bool bPainting = m_Script != nullptr && m_Script->IsPainting();
    const bool bOther = !bTerraforming && !bPainting;
    if (bOther)
    {
        m_Host.GetModes().SuspendCurrentMode(true); // its release would finish the work
    }
    m_Host.EndDrag();
    if (bOther)
    {
        m_Host.GetModes().DeactivateMode(0);
    }
    if (bTerraforming && m_Host.GetUndoStack().GetStateId() != m_StateBefore)
    {
        m_Host.Undo();
        m_Host.GetUndoStack().DropRedo();
    }
    if (bPainting)
    {
        m_Host.StepPaint(false);
    }
    EndStroke();
    RepeatHover();
    return true;
}

void CViewInput::End()
{
    if (IsStroking())
    {
        m_Sampler.Cancel();
        m_Host.EndDrag();
    }
    EndStroke();
}

void CViewInput::FollowSpacing()
{
    m_Sampler.SetSpacing(
        m_Settings.bSampleStrokes && m_Script != nullptr ? m_Script->GetStrokeSpacing() : 0.0F);
}

void CViewInput::EndStroke()
{
    m_Sampler.Cancel();
    m_eGesture = EGesture::None;
    SetSuspended(false);
}

void CViewInput::SetSuspended(bool bSuspended)
{
    // Again and again while the camera moves: another mode may have become the current one.
    if (bSuspended || m_bSuspended)
    {
        m_bSuspended = bSuspended;
        m_Host.GetModes().SuspendCurrentMode(bSuspended);
    }
}

void CViewInput::RepeatHover()
{
    if (m_eGesture == EGesture::None && m_bInside)
    {
        SendHover(m_X, m_Y, m_Flags);
    }
}

void CViewInput::SendHover(float fX, float fY, uint32_t uFlags)
{
    SendAt(fX,
           fY,
           [&] {
               m_Host.SendMouseMove(m_View, uFlags, {GetPixel(fX), GetPixel(fY)}, {0, 0}, {0, 0});
           });
}

void CViewInput::SendStrokeMove(const SStrokePoint& point)
{
    SendAt(point.fX,
           point.fY,
           [&]
           {
               m_Host.SendMouseMove(m_View,
                                    m_Flags | MOUSE_LEFT,
                                    {GetPixel(point.fX), GetPixel(point.fY)},
                                    {point.iWheel, LEFT_BUTTON},
                                    {point.iStepX, point.iStepY});
           });
}

bool CViewInput::Pick(ViewPoint point, SVec3& hit) const
{
    float fX = GetMiddle(point);
    float fY = GetMiddle(point >> 16U);
    if (point == CModeManager::PackPoint(GetPixel(m_SentX), GetPixel(m_SentY)))
    {
        fX = m_SentX;
        fY = m_SentY;
    }
    return m_Navigator.Pick(GetTerrain(), fX, fY, hit);
}

bool CViewInput::PickCursor(SVec3& hit) const
{
    return m_bInside && m_Navigator.Pick(GetTerrain(), m_X, m_Y, hit);
}
