#pragma once

#include "editor/app/CProtectBrush.h"
#include "editor/app/CViewStroke.h"
#include "editor/view/CGroundWalk.h"
#include "editor/view/CViewNavigator.h"
#include "host/HostTypes.h"

class CEditorHost;
class CTerrain;
class IPlugin;

enum class EViewButton
{
    Left,
    Middle,
    Right,
    Zoom, // whatever it is that zooms while it is held and dragged up or down
};

// Turns the mouse of one view into strokes, which go to the host, and camera moves: left sculpts,
// or protects or measures while the hand is to do that, right orbits, middle pans, the wheel zooms.
// Positions are device pixels of the view, the middle of a pixel at .5; flags are EMouseFlag. Owned
// by the view. UI thread.
class CViewInput
{
public:
    // Everything is borrowed. pPlugin: null for none.
    CViewInput(CEditorHost& host,
               IPlugin* pPlugin,
               ViewId view,
               CViewNavigator& navigator,
               const SInputSettings& settings,
               SHandState& hand);

    // bSmooth: what the left button draws smooths the ground, whatever the tool is.
    void Press(EViewButton eButton, float fX, float fY, uint32_t uFlags, bool bSmooth = false);
    void Move(float fX, float fY, uint32_t uFlags);
    // True when it was a click of the right button, which asks for the context menu.
    bool Release(EViewButton eButton, float fX, float fY, uint32_t uFlags);
    void Wheel(float fX, float fY, float fNotches);
    // Moves what is under the cursor by so many pixels, as fingers on a touchpad do.
    void Scroll(float fX, float fY, float fStepX, float fStepY);
    // To be called when the cursor has left the view: nothing is under it then.
    void Leave();

    // 0: nothing builds up at present.
    int GetBuildMilliseconds() const;

    // Draws the path of the hand, which is over then, as one stroke. False when the tool at hand
    // cannot.
    bool DrawPath();

    // As CViewNavigator::Fly, or on foot.
    bool Fly(const SFlyKeys& keys, float fSeconds);

    // Of a view with a camera.
    CGroundWalk& GetWalk() { return m_Walk; }

    // Ends a stroke and takes it back whole. False when there was none.
    bool Cancel();
    // Ends whatever a button does, for when the window has lost the mouse.
    void End();

    // Tells the plug-in once more where the cursor is, for when the camera, the mode or the brush
    // has changed.
    void RepeatHover();

    // What the left button does: whoever has a pen sets its pressure there, and a timer of the view
    // has it do more in place, GetBuildMilliseconds apart.
    CViewStroke& GetStroke() { return m_Stroke; }

    bool IsStroking() const { return m_eGesture == EGesture::Stroke; }

    bool IsProtecting() const { return m_eGesture == EGesture::Protect; }

    // See CProtectBrush.
    void DrawProtectEdge(const SVec3& middle) const { m_Protect.DrawEdge(middle); }

    bool IsIdle() const { return m_eGesture == EGesture::None; }

    // See CViewStroke.
    bool Pick(ViewPoint point, SVec3& hit) { return m_Stroke.Pick(point, hit); }

    // Finds where the tool works now. False over the sky, and when the cursor is in no part of the
    // view.
    bool FindMark(SVec3& hit) const;

    // Whether the running stroke stays where it began.
    bool IsFixed() const { return m_Stroke.IsFixed(); }

    // Finds the ground under the cursor. False over the sky and outside the view.
    bool PickCursor(SVec3& hit) const;

    float GetX() const { return m_X; }

    float GetY() const { return m_Y; }

    bool IsInside() const { return m_bInside; }

private:
    enum class EGesture
    {
        None,
        Stroke,
        Protect,
        Knot, // the button that has set one is held
        Measure,
        Orbit,
        Pan,
        Zoom,
    };

    const CTerrain* GetTerrain() const;
    void ZoomBy(float fX, float fY, float fNotches);
    void SetKnot(float fX, float fY);
    void EndGesture();
    void SetSuspended(bool bSuspended); // the mode, while the mouse moves the camera

    CEditorHost& m_Host;
    CViewNavigator& m_Navigator;
    const SInputSettings& m_Settings;
    SHandState& m_Hand;
    CViewStroke m_Stroke;
    CProtectBrush m_Protect;
    CGroundWalk m_Walk;
    EGesture m_eGesture = EGesture::None;
    bool m_bInside = false;
    bool m_bMoved = false; // since the right button went down
    bool m_bSuspended = false;
    float m_X = 0.0F; // of the cursor, as it was last seen
    float m_Y = 0.0F;
    float m_PressX = 0.0F;
    float m_PressY = 0.0F;
    uint32_t m_Flags = 0;
};
