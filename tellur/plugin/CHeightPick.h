#pragma once

#include "host/HostTypes.h"

class CBrushAtHand;
class CMenu;
class CPanelLink;

// The height that a view's context menu offers for "m_Height" of the current function, and its
// application. Only while the panel is open and the function has such a field.
class CHeightPick
{
public:
    CHeightPick(const CBrushAtHand& brush, CPanelLink& panel); // borrowed

    // Puts an item with the height under the point, -1 where nothing is, in front. False, with the
    // menu as it was, when nothing can be offered.
    bool AddItem(CMenu* pMenu, ViewId view, ViewPoint point);
    bool HasItem(ViewId view, ViewPoint point) const; // there is ground under the point

    // Writes the height that was offered last into the function, where the field takes a float.
    void Apply();

private:
    bool CanPick(ViewId view) const;

    const CBrushAtHand& m_Brush;
    CPanelLink& m_Panel;
    float m_PickedHeight = 0.0F; // terrain units
};
