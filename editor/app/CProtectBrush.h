#pragma once

#include "host/HostTypes.h"

class CEditorHost;
class CViewNavigator;
class IPlugin;
class IPluginTools;

// Paints with the left button of one view which vertices strokes leave alone: discs as wide as the
// brush, close enough for an even edge, along the way that the cursor takes over the ground. What
// is painted between press and release is one step of the history. Positions are device pixels of
// the view; flags are EMouseFlag. Owned by the view's input. UI thread.
class CProtectBrush
{
public:
    // Everything is borrowed. pPlugin: null for none.
    CProtectBrush(CEditorHost& host, IPlugin* pPlugin, const CViewNavigator& navigator);

    // With Ctrl the stroke takes protection away.
    void Press(float fX, float fY, uint32_t uFlags);
    // False when the step is over, because the host has ended it.
    bool Move(float fX, float fY);

    void End();

    // Takes the stroke back whole. False when there was none any more.
    bool Cancel();

    // Draws the edge of the disc that a press there would protect, into the frame that begins.
    void DrawEdge(const SVec3& middle) const;

    static bool IsTakingAway(uint32_t uFlags) { return (uFlags & MOUSE_CONTROL) != 0; }

private:
    bool Pick(float fX, float fY, SVec3& hit) const;
    float GetRadius() const; // terrain units
    void Put(const SVec3& middle, float fRadius);

    CEditorHost& m_Host;
    IPluginTools* m_Tools;
    const CViewNavigator& m_Navigator;
    bool m_bProtected = true; // by the stroke; false: no longer
    bool m_bLast = false;
    SVec3 m_Last; // middle of the last disc
};
