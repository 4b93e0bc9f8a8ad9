#pragma once

#include "editor/view/CPointForms.h"

class CCommandList;
class CViewArea;
class QMenu;
class QWidget;

// The commands that say how the brush image lies on the ground, and what the pressure of a pen
// does. Made once the views are there, owned by the menus.
class CBrushFormCommands
{
public:
    // All borrowed. settings: of all views.
    CBrushFormCommands(QWidget& window, CViewArea& views, SFormSettings& settings);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void Turn(EBrushTurn eTurn);
    void TurnBy(float fDegrees); // by a fixed angle from now on
    void AskAngle();
    void EditPen();
    void Say() const; // at the cursor

    QWidget& m_Window;
    CViewArea& m_Views;
    SFormSettings& m_Settings;
};
