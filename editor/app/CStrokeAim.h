#pragma once

#include "engine/terrain/CStillGround.h"
#include "host/HostTypes.h"

class CEditorHost;
class CTerrain;
class CViewNavigator;
class IPluginStrokes;

// The ground that a view's cursor aims at. A stroke that sculpts aims at the ground of its press:
// the hill that it raises would come under the cursor and lead the stroke away from the hand.
// Owned by the stroke of a view. Positions are device pixels of the view. UI thread.
class CStrokeAim
{
public:
    // Borrowed. pStrokes: null for a plug-in without.
    CStrokeAim(CEditorHost& host, const CViewNavigator& navigator, IPluginStrokes* pStrokes);

    void Hold(); // the ground as it is now, until Drop; it counts while a drag runs

    void Drop() { m_Still.Drop(); }

    // Finds the ground that a position aims at. False over the sky.
    bool Find(float fX, float fY, SVec3& hit) const;

private:
    const CTerrain* GetTerrain() const;

    CEditorHost& m_Host;
    const CViewNavigator& m_Navigator;
    IPluginStrokes* m_Strokes;
    CStillGround m_Still;
};
