#pragma once

#include "editor/app/CClosedViews.h"
#include "editor/app/CMarkSource.h"
#include "editor/app/CViewGrid.h"
#include "editor/app/CViewWidget.h"

class CCamera;
class CViewFrame;

// The open views, each in its frame. Owned by the window.
class CViewArea : public CViewGrid
{
public:
    CViewArea(QWidget* pParent, SViewParts parts, SViewEvents events);

    // Takes the last place, and looks from where the last one of its kind did that was closed. This
    // and the next ones end a stroke, and show all views again.
    CViewWidget* Add(EViewKind eKind);
    bool Close(ViewId view); // false when it is the last one, which stays

    bool CloseActive() { return Close(m_Active); }

    // Gives the view the whole room, or all of them theirs again.
    void ToggleAlone(ViewId view);
    void GoToNext(); // of those that are shown, with the keyboard

    CViewWidget* Find(ViewId view) const; // null when there is none
    CViewWidget* GetActive() const;       // never null while a view is open
    ViewId GetActiveId() const;           // NO_VIEW without a view

    const std::vector<CViewWidget*>& GetViews() const { return m_Views; }

    CClosedViews& GetClosed() { return m_Closed; }

    bool IsComplete() const; // the last frames show all of the terrain
    void RequestFrames();
    void FrameAll(); // another level is open
    void RepeatHover();
    // The ground under the cursor, or what of the views is under it, is another one: the plug-in is
    // told with the next frame, before it draws.
    void LookAgain();

    // Whether the left button paints what strokes leave alone, in all views.
    bool IsProtecting() const { return m_Parts.hand.bProtect; }

    void SetProtecting(bool bOn);
    void SetMeasuring(bool bOn); // the left button draws the line of the ruler, in all views

    CGroundRuler& GetRuler() { return m_Parts.hand.ruler; }

    bool CancelStroke();     // true when there was one
    bool IsStroking() const; // in one of the views
    bool NeedsBrush() const; // a stroke in one of them, see CViewStroke
    void EndGestures();

    // Moves a camera to that side of what its view shows in the middle.
    void LookFrom(CCamera& camera, float fX, float fZ);

protected:
    void moveEvent(QMoveEvent* pEvent) override;

private:
    void PlaceViews();
    void ShowActive();
    void SeeCursor();
    void FillMark(SGroundMark& mark);
    EMarkPlace FindMark(SVec3& at, bool& bSmooth) const;
    void DrawGuides() const;

    SViewParts m_Parts;
    CMarkSource m_MarkSource;
    SViewEvents m_Events;
    std::vector<CViewWidget*> m_Views; // their frames', which are the grid's
    std::vector<CViewFrame*> m_Frames; // of the views
    CClosedViews m_Closed;
    ViewId m_Active = NO_VIEW;
    ViewId m_Next = 1; // names are not given twice
    bool m_bLookAgain = false;
};
