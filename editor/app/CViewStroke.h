#pragma once

#include "editor/app/SHandState.h"
#include "editor/view/CPointForms.h"
#include "editor/view/CStrokeLine.h"
#include "editor/view/CStrokeSampler.h"
#include "editor/view/CViewNavigator.h"
#include "engine/terrain/CStillGround.h"
#include "host/HostTypes.h"

class CEditorHost;
class CTerrain;
class IPlugin;
class IPluginStrokes;
class IPluginTools;

// What a view's user has chosen; shared by all views.
struct SInputSettings
{
    bool bSampleStrokes = true; // strokes do not depend on how often the mouse reports
    bool bAimAtPress = true;    // and not on the hill that they raise under the cursor
    SFormSettings form;
    int32_t iSpacingPercent = 0; // of the brush, between two points; 0: as its shape asks for

    static constexpr int32_t MOST_SPACING = 100;
};

// The events of one view that go to the host: those of a stroke, and those of a cursor that
// hovers. A tool that works along a path on the ground gets points at even distances, the first one
// at the press, aimed at the ground as it was at the press. Positions are device pixels of the
// view; flags are EMouseFlag. Owned by the view's input. UI thread.
class CViewStroke
{
public:
    // Everything is borrowed. pPlugin: null for none.
    CViewStroke(CEditorHost& host,
                IPlugin* pPlugin,
                ViewId view,
                const CViewNavigator& navigator,
                const SInputSettings& settings,
                SHandState& hand);

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

    bool IsOn() const { return m_bOn; }

    void Hover(float fX, float fY, uint32_t uFlags);

    // What the position that came with an event of the host means: where the last event was in the
    // pixel when it is the same one, which the release of a drag that the host ends is, otherwise
    // the pixel's middle.
    bool Pick(ViewPoint point, SVec3& hit) const;
    // Finds the ground that a position aims at. False over the sky.
    bool Aim(float fX, float fY, SVec3& hit) const;
    // Finds where the tool works with the cursor at a position. False over the sky.
    bool FindMark(float fX, float fY, SVec3& hit) const;

    // Whether a stroke runs that stays where it began, whatever the cursor does.
    bool IsFixed() const { return m_bOn && !m_bPath; }

private:
    const CTerrain* GetTerrain() const;
    float GetSpacing() const; // terrain units; 0: each position is a point
    void ChooseSpacing(float fSpacing, float fExtent);
    void SendMove(const SStrokePoint& point);
    void SendHeldPress(const SVec3& next);
    void SendGround(const SVec3& point); // its height is looked up; nothing off the terrain
    bool DropToGround(SVec3& point) const;
    void DrawJoint(const SVec3& from, float fX, float fY);
    bool FollowLine(float fX, float fY);
    void Finish();
    template <typename TSend> void SendAt(float fX, float fY, TSend send);

    CEditorHost& m_Host;
    IPluginTools* m_Tools;
    IPluginStrokes* m_Strokes;
    ViewId m_View;
    const CViewNavigator& m_Navigator;
    const SInputSettings& m_Settings;
    SHandState& m_Hand;
    CStrokeSampler m_Sampler;
    CStrokeLine m_Line;
    CPointForms m_Forms;
    CStillGround m_Still;
    bool m_bOn = false;
    bool m_bPath = false;      // the tool works along the path
    bool m_bSculpts = false;   // and on the heights
    bool m_bHasEnd = false;    // where the next one may begin
    bool m_bSmoothing = false; // instead of the tool at hand
    float m_SpacingShare = 0.0F;
    uint32_t m_Flags = 0;
    float m_HereX = 0.0F; // of the cursor at the last report
    float m_HereY = 0.0F;
    uint64_t m_StateBefore = 0; // of the undo stack when the stroke began
    float m_SentX = 0.0F;       // of the last event, more exact than its pixel
    float m_SentY = 0.0F;
    const SVec3* m_pSentGround = nullptr; // what the event that is being sent points at
    // The point of the press waits for the next one, towards which the brush turns.
    bool m_bPressWaits = false;
    SStrokePoint m_PressPoint;
    bool m_bPressHit = false;
    SVec3 m_PressHit; // where the stroke meets the ground first
    bool m_bLastGround = false;
    SVec3 m_LastGround; // where it was last
};
