// What a stroke of a view does besides following the hand: its images, a first point that waits,
// and what goes on by itself, while the button is held and along a path of knots.

#include "editor/app/CViewStroke.h"
#include "editor/core/CEditorHost.h"

#include <utility>

void CViewStroke::SendHeldPress(const SVec3& next)
{
    if (std::exchange(m_bPressWaits, false))
    {
        m_Forms.SetWay(m_PressHit, next);
        SendMove(m_PressPoint);
    }
}

void CViewStroke::PlayImages()
{
    m_Host.GetInput().ReleaseDragOwner(this); // their ends are theirs
    // Without memory all of the step was taken back, and the images of what is not there are none.
    if (!m_bSeveral || m_Host.GetHistory().IsStepOpen())
    {
        m_Sender.PlayImages();
    }
}

void CViewStroke::BuildUp()
{
    SVec3 at = m_LastGround;
    if (!IsBuilding() || !m_Host.GetInput().IsDragging() || !m_bLastGround || !DropToGround(at))
    {
        return;
    }
    SendHeldPress(m_PressHit);
    if (m_bSculpts)
    {
        m_Sender.Release(m_HereX, m_HereY, m_Flags);
        PlayImages();
        if (m_bSeveral && !m_Host.GetHistory().IsStepOpen())
        {
            Finish(); // taken back for want of memory
            return;
        }
        HoldAim();
        SendPress(m_HereX, m_HereY, &at);
    }
    SendGround(at);
    if (!m_Line.IsOn())
    {
        m_Sampler.Continue(m_HereX, m_HereY, at);
    }
}

bool CViewStroke::DrawPath(std::vector<SVec3> knots)
{
    Begin(m_HereX, m_HereY, 0, false);
    m_Hand.bElsewhere = true;
    for (SVec3& knot : knots)
    {
        DropToGround(knot); // it may have changed since the click
    }
    const bool bCan = m_bHasEnd && knots.size() > 1;
    if (bCan)
    {
        Open(false, !m_bPath);
        m_bPath ? DrawPoints(knots) : DrawEnds(knots);
    }
    Finish();
    m_Hand.bElsewhere = false;
    return bCan;
}

void CViewStroke::DrawPoints(const std::vector<SVec3>& knots)
{
    m_Forms.SetWay(knots[0], knots[1]);
    m_PressHit = m_LastGround = knots.front();
    m_bPressHit = m_bLastGround = true;
    m_Sender.SetForm(m_Forms.Make(m_HereX, m_HereY, &m_PressHit));
    SendPress(m_HereX, m_HereY, &m_PressHit);
    bool bPainted = !m_bSculpts; // the first point, by the press
    CStrokePath::Walk(knots,
                      m_Spacing.Get(),
                      [&](const SVec3& point)
                      {
                          if (!std::exchange(bPainted, false))
                          {
                              SendGround(point);
                          }
                      });
    if (m_Host.GetInput().IsDragging())
    {
        m_Sender.Release(m_HereX, m_HereY, m_Flags, &knots.back());
        PlayImages();
    }
}

// Heights of knots are those of before the path, so that one piece goes on where another has ended.
void CViewStroke::DrawEnds(const std::vector<SVec3>& knots)
{
    for (size_t i = 1; i < knots.size() && m_Host.GetHistory().IsStepOpen(); ++i)
    {
        m_Sender.SetForm(m_Forms.Make(m_HereX, m_HereY, &knots[i - 1]));
        SendPress(m_HereX, m_HereY, &knots[i - 1]);
        if (m_Host.GetInput().IsDragging())
        {
            m_Sender.Release(m_HereX, m_HereY, m_Flags, &knots[i]);
            PlayImages();
            m_LastGround = knots[i];
            m_bLastGround = true;
        }
    }
}
