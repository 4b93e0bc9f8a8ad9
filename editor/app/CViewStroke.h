#pragma once

#include "editor/app/CStrokeAim.h"
#include "editor/app/CStrokeSender.h"
#include "editor/app/CStrokeSpacing.h"
#include "editor/app/SHandState.h"
#include "editor/app/SInputSettings.h"
#include "editor/core/IDragOwner.h"
#include "editor/view/CPointForms.h"
#include "editor/view/CStrokeLine.h"
#include "editor/view/CStrokeSampler.h"
#include "host/HostTypes.h"

#include <vector>

class CEditorHost;
class CTerrain;
class CViewNavigator;
class IPlugin;
class IPluginStrokes;
class IPluginTools;

// The events of one view that go to the host: those of a stroke, and those of a cursor that
// hovers. A tool that works along a path on the ground gets points at even distances, the first one
// at the press, aimed at the ground as it was at the press. However many drags a stroke takes, for
// its images or to build up, it is one step of the history. Positions are device pixels of the
// view; flags are EMouseFlag. Owned by the view's input. UI thread.
class CViewStroke : private IDragOwner
{
public:
    // Everything is borrowed. pPlugin: null for none.
    CViewStroke(CEditorHost& host,
                IPlugin* pPlugin,
                ViewId view,
                const CViewNavigator& navigator,
                const SInputSettings& settings,
                SHandState& hand);
    ~CViewStroke() override;
    CViewStroke(const CViewStroke&) = delete;
    CViewStroke& operator=(const CViewStroke&) = delete;

    // bSmooth: for this stroke the tool is one that smooths.
    void Press(float fX, float fY, uint32_t uFlags, bool bSmooth);
    // False, and the stroke is over, when the host has ended the drag.
    bool Move(float fX, float fY, uint32_t uFlags, int iWheel = 0);
    void Release(float fX, float fY, uint32_t uFlags);

    // Ends the stroke and takes it back whole. False when the host had ended the drag.
    bool Cancel();
    void End(); // the stroke ends and keeps what it has done

    // Of a pen, 0 to 1, for what the hand does next; that of a mouse comes back with the end of the
    // stroke.
    void SetPressure(float fPressure) { m_Forms.SetPressure(fPressure); }

    // Whether images of the running stroke are drawn behind it, with the brush as it is then.
    bool NeedsBrush() const { return m_bOn && m_Sender.HasOwnDrags(); }

    // Whether the running stroke does more the longer the button is held.
    bool IsBuilding() const { return m_bOn && m_bBuilds; }

    // The button was held for one more interval: the drag ends and the next begins in place. Of
    // what is painted another point is sent, since those add up.
    void BuildUp();

    // Draws a whole stroke along these knots, at least two. A tool that leads from a press to a
    // release does so from knot to knot. False when the tool at hand cannot.
    bool DrawPath(std::vector<SVec3> knots);

    void Hover(float fX, float fY, uint32_t uFlags);

    // What the position that came with an event of the host means: where the last event was in the
    // pixel when it is the same one, which the release of a drag that the host ends is, otherwise
    // the pixel's middle.
    bool Pick(ViewPoint point, SVec3& hit);

    // Finds the ground that a position aims at. False over the sky.
    bool Aim(float fX, float fY, SVec3& hit) const { return m_Aim.Find(fX, fY, hit); }

    // Finds where the tool works with the cursor at a position. False over the sky.
    bool FindMark(float fX, float fY, SVec3& hit) const;

    // Whether a stroke runs that stays where it began, whatever the cursor does.
    bool IsFixed() const { return m_bOn && !m_bPath; }

private:
    // IDragOwner
    void OnDragEnded(bool bMaySend) override;

    const CTerrain* GetTerrain() const;
    void Begin(float fX, float fY, uint32_t uFlags, bool bSmooth);
    void Open(bool bBuilds, bool bPathOfEnds);
    void HoldAim();
    void SendPress(float fX, float fY, const SVec3* pGround);
    void PlayImages();
    void DrawPoints(const std::vector<SVec3>& knots);
    void DrawEnds(const std::vector<SVec3>& knots);
    void SendMove(const SStrokePoint& point);
    void SendHeldPress(const SVec3& next);
    void SendGround(const SVec3& point); // its height is looked up; nothing off the terrain
    bool DropToGround(SVec3& point) const;
    void DrawJoint(const SVec3& from, float fX, float fY);
    bool FollowLine(float fX, float fY);
    void Finish();

    CEditorHost& m_Host;
    IPluginTools* m_Tools;
    IPluginStrokes* m_Strokes;
    ViewId m_View;
    const SInputSettings& m_Settings;
    SHandState& m_Hand;
    CStrokeAim m_Aim;
    CStrokeSpacing m_Spacing;
    CStrokeSender m_Sender;
    CStrokeSampler m_Sampler;
    CStrokeLine m_Line;
    CPointForms m_Forms;
    bool m_bOn = false;
    bool m_bPath = false;      // the tool works along the path
    bool m_bSculpts = false;   // and on the heights
    bool m_bHasEnd = false;    // where the next one may begin
    bool m_bSmoothing = false; // instead of the tool at hand
    bool m_bBuilds = false;    // while the button is held
    bool m_bSeveral = false;   // drags are one step of the history
    uint32_t m_Flags = 0;
    float m_HereX = 0.0F; // of the cursor at the last report
    float m_HereY = 0.0F;
    uint64_t m_StateBefore = 0; // of the undo stack when the stroke began
    // The point of the press waits for the next one, towards which the brush turns.
    bool m_bPressWaits = false;
    SStrokePoint m_PressPoint;
    bool m_bPressHit = false;
    SVec3 m_PressHit; // where the stroke meets the ground first
    bool m_bLastGround = false;
    SVec3 m_LastGround; // where it was last
};
