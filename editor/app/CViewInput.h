#pragma once

#include "editor/view/CStrokeSampler.h"
#include "editor/view/CViewNavigator.h"
#include "host/HostTypes.h"

class CEditorHost;
class CTerrain;
class IPluginScript;

enum class EViewButton
{
    Left,
    Middle,
    Right,
};

// What a view's user has chosen; shared by all views.
struct SInputSettings
{
    bool bSampleStrokes = true; // strokes do not depend on how often the mouse reports
};

// Turns the mouse of one view into strokes, which go to the host, and camera moves: left sculpts,
// right orbits, middle pans, the wheel zooms. Positions are device pixels of the view, the middle
// of a pixel at .5; flags are EMouseFlag. Owned by the view. UI thread.
class CViewInput
{
public:
    // Everything is borrowed. pScript: null for a plug-in without one.
    CViewInput(CEditorHost& host,
               IPluginScript* pScript,
               ViewId view,
               CViewNavigator& navigator,
               const SInputSettings& settings);

    void Press(EViewButton eButton, float fX, float fY, uint32_t uFlags);
    void Move(float fX, float fY, uint32_t uFlags);
    // True when it was a click of the right button, which asks for the context menu.
    bool Release(EViewButton eButton, float fX, float fY, uint32_t uFlags);
    void Wheel(float fX, float fY, float fNotches);
    // The cursor has left the view: nothing is under it.
    void Leave();

    // Ends a stroke and takes it back whole. False when there was none.
    bool Cancel();
    // Ends whatever a button does: the window has lost the mouse.
    void End();

    // The plug-in sees the cursor where it is once more: the camera, the mode or the brush is
    // another one.
    void RepeatHover();

    bool IsStroking() const { return m_eGesture == EGesture::Stroke; }

    bool IsIdle() const { return m_eGesture == EGesture::None; }

    // What the position that came with an event of the host means: where the last event was in the
    // pixel when it is the same one, which the release of a drag that the host ends is, otherwise
    // the pixel's middle.
    bool Pick(ViewPoint point, SVec3& hit) const;
    // The ground under the cursor. False over the sky and outside the view.
    bool PickCursor(SVec3& hit) const;

    float GetX() const { return m_X; }

    float GetY() const { return m_Y; }

    bool IsInside() const { return m_bInside; }

private:
    enum class EGesture
    {
        None,
        Stroke,
        Orbit,
        Pan,
    };

    const CTerrain* GetTerrain() const;
    void SendStrokeMove(const SStrokePoint& point);
    void SendHover(float fX, float fY, uint32_t uFlags);
    void EndStroke();
    void SetSuspended(bool bSuspended); // the mode, while the mouse moves the camera
    void FollowSpacing();               // the brush may have changed
    // The position of the event is known more exactly than in pixels.
    template <typename TSend> void SendAt(float fX, float fY, TSend send);

    CEditorHost& m_Host;
    IPluginScript* m_Script;
    ViewId m_View;
    CViewNavigator& m_Navigator;
    const SInputSettings& m_Settings;
    CStrokeSampler m_Sampler;
    EGesture m_eGesture = EGesture::None;
    bool m_bInside = false;
    bool m_bMoved = false; // since the right button went down
    bool m_bSuspended = false;
    float m_X = 0.0F; // of the cursor, as it was last seen
    float m_Y = 0.0F;
    float m_PressX = 0.0F;
    float m_PressY = 0.0F;
    uint32_t m_Flags = 0;
    uint64_t m_StateBefore = 0; // of the undo stack when the stroke began
    float m_SentX = 0.0F;       // of the last event, more exact than its pixel
    float m_SentY = 0.0F;
};
