#include "editor/app/CViewInput.h"

#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <cmath>
#include <vector>

namespace
{

constexpr float CLICK_PIXELS = 4.0F;    // a button that moved no further was clicked
constexpr float KNOT_PIXELS = 10.0F;    // a click so near to the first knot means it
constexpr float PIXELS_A_NOTCH = 20.0F; // of a drag that zooms
constexpr int SECOND = 1000;            // milliseconds

} // namespace

CViewInput::CViewInput(CEditorHost& host,
                       IPlugin* pPlugin,
                       ViewId view,
                       CViewNavigator& navigator,
                       const SInputSettings& settings,
                       SHandState& hand)
    : m_Host(host)
    , m_Navigator(navigator)
    , m_Settings(settings)
    , m_Hand(hand)
    , m_Stroke(host, pPlugin, view, navigator, settings, hand)
    , m_Protect(host, pPlugin, navigator)
{
}

const CTerrain* CViewInput::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

void CViewInput::Press(EViewButton eButton, float fX, float fY, uint32_t uFlags, bool bSmooth)
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
    if (eButton == EViewButton::Zoom)
    {
        m_eGesture = EGesture::Zoom;
        return;
    }
    if (m_Hand.path.IsOn())
    {
        m_eGesture = EGesture::Knot;
        SetKnot(fX, fY);
        return;
    }
    SVec3 hit;
    if (m_Hand.ruler.IsOn())
    {
        m_eGesture = EGesture::Measure;
        if (m_Navigator.Pick(GetTerrain(), fX, fY, hit))
        {
            m_Hand.ruler.Begin(hit);
        }
        return;
    }
    if (m_Hand.bProtect)
    {
        m_eGesture = EGesture::Protect;
        m_Protect.Press(fX, fY, uFlags);
        return;
    }
    m_eGesture = EGesture::Stroke;
    m_Stroke.Press(fX, fY, uFlags, bSmooth);
}

void CViewInput::Move(float fX, float fY, uint32_t uFlags)
{
    const float fStepX = fX - m_X;
    const float fStepY = fY - m_Y;
    SVec3 hit;
    m_bInside = true;
    m_X = fX;
    m_Y = fY;
    m_Flags = uFlags;
    m_bMoved = m_bMoved || std::fabs(fX - m_PressX) > CLICK_PIXELS ||
               std::fabs(fY - m_PressY) > CLICK_PIXELS;
    switch (m_eGesture)
    {
    case EGesture::None:
    case EGesture::Knot:
        m_Stroke.Hover(fX, fY, uFlags);
        break;
    case EGesture::Stroke:
        if (!m_Stroke.Move(fX, fY, uFlags))
        {
            EndGesture();
        }
        break;
    case EGesture::Protect:
        if (!m_Protect.Move(fX, fY))
        {
            EndGesture();
        }
        break;
    case EGesture::Measure:
        if (m_Hand.ruler.HasLine() && m_Navigator.Pick(GetTerrain(), fX, fY, hit))
        {
            m_Hand.ruler.MoveTo(hit);
        }
        break;
    case EGesture::Orbit:
        // As long as it may be a click, which asks for the menu, nothing turns.
        if (m_bMoved)
        {
            SetSuspended(true);
            if (m_Walk.IsOn())
            {
                m_Walk.Look(fStepX, fStepY);
            }
            else
            {
                m_Navigator.Orbit(GetTerrain(), fStepX, fStepY);
            }
        }
        break;
    case EGesture::Pan:
        SetSuspended(true);
        m_Navigator.Pan(GetTerrain(), fX, fY);
        break;
    case EGesture::Zoom:
        SetSuspended(true);
        ZoomBy(m_PressX, m_PressY, -fStepY / PIXELS_A_NOTCH);
        break;
    }
}

bool CViewInput::Release(EViewButton eButton, float fX, float fY, uint32_t uFlags)
{
    // Only the button that has begun a gesture ends it.
    constexpr EGesture GESTURES[] = {
        EGesture::Stroke, EGesture::Pan, EGesture::Orbit, EGesture::Zoom};
    EGesture eGesture = GESTURES[static_cast<int>(eButton)];
    if (eButton == EViewButton::Left &&
        (m_eGesture == EGesture::Knot || m_eGesture == EGesture::Measure || IsProtecting()))
    {
        eGesture = m_eGesture; // what the left button does then
    }
    if (eGesture != m_eGesture)
    {
        return false;
    }
    Move(fX, fY, uFlags);
    if (IsStroking())
    {
        m_Stroke.Release(fX, fY, uFlags);
    }
    if (IsProtecting())
    {
        m_Protect.End();
    }
    EndGesture();
    if (m_Navigator.IsInside(fX, fY)) // the button kept the mouse here
    {
        RepeatHover();
    }
    else
    {
        Leave();
    }
    return eGesture == EGesture::Orbit && !m_bMoved;
}

// On the ground under the cursor; the first knot again closes the path.
void CViewInput::SetKnot(float fX, float fY)
{
    SVec3 hit;
    float fFirstX = 0.0F;
    float fFirstY = 0.0F;
    const std::vector<SVec3> knots = m_Hand.path.GetKnots();
    const bool bFirst =
        !knots.empty() &&
        m_Navigator.GetProjection(GetTerrain()).Project(knots.front(), fFirstX, fFirstY) &&
        std::hypot(fFirstX - fX, fFirstY - fY) <= KNOT_PIXELS;
    if ((!bFirst || !m_Hand.path.Close()) && m_Navigator.Pick(GetTerrain(), fX, fY, hit))
    {
        m_Hand.path.Add(hit);
    }
}

bool CViewInput::DrawPath()
{
    if (m_eGesture != EGesture::None) // the camera is under the hand
    {
        return true;
    }
    const bool bDrawn = m_Stroke.DrawPath(m_Hand.path.GetKnots());
    if (bDrawn)
    {
        m_Hand.path.Stop();
    }
    RepeatHover();
    return bDrawn;
}

int CViewInput::GetBuildMilliseconds() const
{
    return m_Stroke.IsBuilding() && m_Settings.iBuildsASecond > 0
               ? SECOND / m_Settings.iBuildsASecond
               : 0;
}

void CViewInput::Wheel(float fX, float fY, float fNotches)
{
    m_X = fX;
    m_Y = fY;
    // During a stroke the wheel is the tool's.
    if (IsStroking())
    {
        if (!m_Stroke.Move(fX, fY, m_Flags, static_cast<int>(std::lround(fNotches))))
        {
            EndGesture();
        }
        return;
    }
    if (m_eGesture == EGesture::None)
    {
        ZoomBy(fX, fY, fNotches);
        RepeatHover();
    }
}

void CViewInput::ZoomBy(float fX, float fY, float fNotches)
{
    if (m_Walk.IsOn())
    {
        m_Walk.ChangeEye(GetTerrain(), fNotches);
    }
    else
    {
        m_Navigator.Zoom(GetTerrain(), fX, fY, fNotches);
    }
}

void CViewInput::Scroll(float fX, float fY, float fStepX, float fStepY)
{
    if (m_eGesture != EGesture::None)
    {
        return;
    }
    m_X = fX;
    m_Y = fY;
    if (m_Walk.IsOn())
    {
        m_Walk.Look(-fStepX, -fStepY);
    }
    else
    {
        m_Navigator.StartPan(GetTerrain(), fX, fY);
        m_Navigator.Pan(GetTerrain(), fX + fStepX, fY + fStepY);
    }
    RepeatHover();
}

bool CViewInput::Fly(const SFlyKeys& keys, float fSeconds)
{
    const bool bMoved = m_Walk.IsOn() ? m_Walk.Step(GetTerrain(), keys, fSeconds)
                                      : m_Navigator.Fly(GetTerrain(), keys, fSeconds);
    if (bMoved)
    {
        RepeatHover();
    }
    return bMoved;
}

void CViewInput::Leave()
{
    m_bInside = false;
    if (m_eGesture == EGesture::None)
    {
        // This place tells a mode that the cursor has left the view.
        m_Stroke.Hover(-1.0F, -1.0F, m_Flags);
    }
}

bool CViewInput::Cancel()
{
    const bool bProtect = IsProtecting();
    if (m_eGesture == EGesture::Measure)
    {
        m_Hand.ruler.DropLine();
        EndGesture();
        return true;
    }
    if (!IsStroking() && !bProtect)
    {
        return false;
    }
    const bool bTakenBack = bProtect ? m_Protect.Cancel() : m_Stroke.Cancel();
    EndGesture();
    if (bTakenBack)
    {
        RepeatHover();
    }
    return bTakenBack;
}

void CViewInput::End()
{
    m_Stroke.End();
    if (IsProtecting())
    {
        m_Protect.End();
    }
    EndGesture();
}

void CViewInput::EndGesture()
{
    m_Stroke.SetPressure(1.0F); // whatever the pen has done, the mouse has none
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
        m_Stroke.Hover(m_X, m_Y, m_Flags);
    }
}

bool CViewInput::FindMark(SVec3& hit) const
{
    return m_bInside && m_Stroke.FindMark(m_X, m_Y, hit);
}

bool CViewInput::PickCursor(SVec3& hit) const
{
    return m_bInside && m_Stroke.Aim(m_X, m_Y, hit);
}
