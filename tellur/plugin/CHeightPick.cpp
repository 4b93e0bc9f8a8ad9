#include "tellur/plugin/CHeightPick.h"

#include "framework/core/CMenu.h"
#include "host/EditorHost.h"
#include "host/NumberText.h"
#include "host/Reflection.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/CommandIds.h"
#include "tellur/context/PluginContext.h"
#include "tellur/plugin/BrushText.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CPanelLink.h"
#include "tellur/plugin/CPluginMenus.h"

#include <cstdio>
#include <string>

namespace
{

// Whether there is ground under the point; fHeight is -1 where there is none.
bool PickHeight(ViewId view, ViewPoint point, float& fHeight)
{
    SVec3 hit;
    const bool bHit =
        GetPluginContext()->GetEditorHost()->PickTerrain(view, point, hit, 0) == PICK_HIT;
    fHeight = bHit ? hit.y : -1.0F;
    return bHit;
}

} // namespace

CHeightPick::CHeightPick(const CBrushAtHand& brush, CPanelLink& panel)
    : m_Brush(brush)
    , m_Panel(panel)
{
}

bool CHeightPick::CanPick(ViewId view) const
{
    return GetPluginContext()->GetEditorHost() != nullptr && m_Panel.IsOpen() && view != NO_VIEW &&
           FindHeightField(m_Brush.Get()) != nullptr;
}

bool CHeightPick::AddItem(CMenu* pMenu, ViewId view, ViewPoint point)
{
    if (pMenu == nullptr || !CanPick(view))
    {
        return false;
    }
    // Kept, because Apply is to write what the item says, wherever the cursor is by then.
    PickHeight(view, point, m_PickedHeight);
    const std::string strHeight = FormatNumber(static_cast<double>(m_PickedHeight), 2);
    char szText[128]; // the largest float has 39 digits before the point
    std::snprintf(szText, sizeof(szText), "Set m_Height to %5s", strHeight.c_str());
    pMenu->InsertItem(0, GetGlobalCommand(COMMAND_APPLY_PICKED_HEIGHT), szText);
    return true;
}

bool CHeightPick::HasItem(ViewId view, ViewPoint point) const
{
    float fHeight = 0.0F;
    return CanPick(view) && PickHeight(view, point, fHeight);
}

void CHeightPick::Apply()
{
    CRTTIField* pField = m_Panel.IsOpen() ? FindHeightField(m_Brush.Get()) : nullptr;
    if (pField != nullptr && pField->GetType() == RTTI_FLOAT)
    {
        m_Brush.Get()->GetRTTIObject()->SetFieldFloatEditor(pField, m_PickedHeight);
        m_Panel.ShowBrushValues();
    }
}
