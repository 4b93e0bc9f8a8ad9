#pragma once

#include "editor/app/CMarkSource.h"
#include "editor/app/CViewWidget.h"

#include <QSplitter>

class CCamera;

// The open views, side by side. Owned by the window.
class CViewArea : public QSplitter
{
public:
    CViewArea(QWidget* pParent, SViewParts parts, SViewEvents events);

    CViewWidget* Add(EViewKind eKind); // takes the place at the right
    // Closes the active view. False when it is the last one, which stays.
    bool CloseActive();

    CViewWidget* Find(ViewId view) const; // null when there is none
    CViewWidget* GetActive() const;       // never null while a view is open
    ViewId GetActiveId() const;           // NO_VIEW without a view

    const std::vector<CViewWidget*>& GetViews() const { return m_Views; }

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
    void SeeCursor();
    void FillMark(SGroundMark& mark);
    EMarkPlace FindMark(SVec3& at, bool& bSmooth) const;
    void DrawGuides() const;

    SViewParts m_Parts;
    CMarkSource m_MarkSource;
    SViewEvents m_Events;
    std::vector<CViewWidget*> m_Views; // the splitter's
    ViewId m_Active = NO_VIEW;
    ViewId m_Next = 1; // names are not given twice
    bool m_bLookAgain = false;
};
