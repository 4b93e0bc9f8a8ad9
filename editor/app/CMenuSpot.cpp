#include "editor/app/CMenuSpot.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CViewArea.h"
#include "editor/core/Words.h"

CMenuSpot::CMenuSpot(CViewArea& views)
    : m_Views(views)
{
}

void CMenuSpot::Set(ViewId view)
{
    SVec3 hit;
    CViewWidget* pView = m_Views.Find(view);
    m_Spot.reset();
    if (pView != nullptr && pView->GetInput().PickCursor(hit))
    {
        m_Spot = hit;
    }
}

bool CMenuSpot::Pick(SVec3& hit) const
{
    if (m_Spot.has_value())
    {
        hit = *m_Spot;
        return true;
    }
    const bool bGround = m_Views.GetActive()->GetInput().PickCursor(hit);
    if (!bGround)
    {
        m_Views.GetActive()->GetNote().ShowValue(Words("no ground under the cursor"));
    }
    return bGround;
}
