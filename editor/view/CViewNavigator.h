#pragma once

#include "editor/view/SViewLook.h"
#include "editor/view/SViewProjection.h"
#include "host/HostTypes.h"

#include <algorithm>
#include <array>
#include <optional>

class CCamera;
class CTerrain;

// The keys that are held while flying.
struct SFlyKeys
{
    bool bForward = false; // W; without a camera up in the picture
    bool bBack = false;    // S
    bool bLeft = false;    // A
    bool bRight = false;   // D
    bool bUp = false;      // E; without a camera away from the ground
    bool bDown = false;    // Q
    bool bFast = false;    // Shift
};

// Moves one view about the terrain and says how the view looks at it. Owned by the view.
//
// A perspective view moves its camera, which others may move too: nothing of it is kept but what a
// running orbit or pan has grabbed. A view of another kind, a flat one, always looks the same way
// and keeps its own middle and scale.
//
// Positions are device pixels as SViewProjection counts them. pTerrain is borrowed for the call and
// may be null: there is no level then, and views move freely. A camera above the ground is never
// taken below it. Values that are no numbers change nothing.
class CViewNavigator
{
public:
    // pCamera: borrowed, must outlive the navigator. Null makes a view of the flat kind.
    explicit CViewNavigator(CCamera* pCamera = nullptr, EViewKind eFlat = EViewKind::Top);

    // Device pixels; what is below 1 counts as 1.
    void SetSize(int iWidth, int iHeight);
    // The same for a view that shows a terrain: as long as nobody has moved it since FrameTerrain,
    // it shows the whole of it at any size.
    void Resize(const CTerrain* pTerrain, int iWidth, int iHeight);

    // Near and far plane enclose the terrain's box.
    SViewProjection GetProjection(const CTerrain* pTerrain) const;

    // Takes the ground under the position as the pivot; over sky that in the middle of the view, or
    // else a point ahead of the camera.
    void StartOrbit(const CTerrain* pTerrain, float fX, float fY);

    // Turns about the pivot, which stays at its place in the picture: half a degree a pixel, to the
    // right turns the picture to the right, downward looks more from above. A turn into the ground
    // is not made. Nothing in a flat view.
    void Orbit(const CTerrain* pTerrain, float fStepX, float fStepY);

    // Grabs the point under the position, found as for an orbit.
    void StartPan(const CTerrain* pTerrain, float fX, float fY);

    // Moves across the picture so that the grabbed point is under the position. Where that would
    // lead into the ground, the camera stays.
    void Pan(const CTerrain* pTerrain, float fX, float fY);

    // Positive goes closer. The point under the position stays under it, and is never passed.
    void Zoom(const CTerrain* pTerrain, float fX, float fY, float fNotches);

    // fSeconds: since the last call, at most a quarter counts. The speed grows with the distance to
    // the ground; the camera slides along it. True when the view has moved.
    bool Fly(const CTerrain* pTerrain, const SFlyKeys& keys, float fSeconds);

    // Moves the view so that the box just fills it, as seen from the present direction; from
    // obliquely above when that direction would place the camera below the ground.
    void Frame(const CTerrain* pTerrain, const SExtents& box);
    void FrameSpot(const CTerrain* pTerrain, const SVec3& point, float fRadius);

    // Shows the whole terrain, from the south and above, as steeply as covers most of the view. For
    // a level that was just opened.
    void FrameTerrain(const CTerrain* pTerrain);

    // Whether nobody has moved the view since FrameTerrain.
    bool IsFramed() const { return m_Framed == GetPose(); }

    // Finds the ground under a position. False over sky.
    bool Pick(const CTerrain* pTerrain, float fX, float fY, SVec3& hit) const;
    SRay GetRay(const CTerrain* pTerrain, float fX, float fY) const;

    bool IsInside(float fX, float fY) const // a position in the view
    {
        return fX >= 0.0F && fY >= 0.0F && fX < static_cast<float>(m_Width) &&
               fY < static_cast<float>(m_Height);
    }

    EViewKind GetKind() const { return m_eKind; }

    SViewLook GetLook() const;
    // Looks from there, where that is a place of this view's kind. A camera that would be inside
    // the ground, which has changed since, goes above it.
    void SetLook(const CTerrain* pTerrain, const SViewLook& look);

private:
    using SPose = std::array<float, 5>; // where the view is and how it looks

    SPose GetPose() const;

    bool IsFlat() const { return m_Camera == nullptr; }

    float GetHalfHeight() const // of a flat view
    {
        return m_HalfSide * static_cast<float>(m_Height) /
               static_cast<float>(std::min(m_Width, m_Height));
    }

    bool TurnFlat(SViewProjection& view) const; // its axes; false for a view with a camera
    // Without near and far plane.
    SViewProjection GetView(const CTerrain* pTerrain) const;
    // The point under a position: ground, or over sky a point as far away as what is in the middle.
    SVec3 FindPoint(const CTerrain* pTerrain, float fX, float fY) const;
    bool MoveTo(const CTerrain* pTerrain, const SVec3& position);
    void FrameFlat(const SExtents& box, float fLeast);
    void ZoomFlat(const CTerrain* pTerrain, float fX, float fY, double fFactor);
    bool FlyFlat(const CTerrain* pTerrain, const SFlyKeys& keys, float fSeconds);

    CCamera* m_Camera;
    EViewKind m_eKind;
    int m_Width = 1;
    int m_Height = 1;
    bool m_IsOrbiting = false;
    bool m_IsPanning = false;
    SVec3 m_Grabbed;           // pivot of the orbit or grabbed point of the pan
    SVec3 m_Offset;            // from the camera to it: along right, up and forward
    SVec3 m_Center;            // of a flat view; how deep it lies counts for nothing
    float m_HalfSide = 500.0F; // of the shorter side, so that none is cut where the shape changes
    std::optional<SPose> m_Framed; // after FrameTerrain
};
