#pragma once

#include <functional>

class CCommandList;
class CMenuSpot;
class CViewArea;
class QMenu;
class QWidget;
struct SSymmetry;

// The commands about images of strokes: which there are, and about what place. They count from the
// next stroke on. Owned by the menus.
class CSymmetryCommands
{
public:
    static constexpr char CENTRE_HERE[] = "symmetry.centre_here"; // which context menus show, too

    // Borrowed. window: of the dialog. showState: menus and status line are others.
    CSymmetryCommands(QWidget& window,
                      CViewArea& views,
                      const CMenuSpot& spot,
                      SSymmetry& symmetry,
                      std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void SwitchMirror(bool SSymmetry::*pAcross);
    void SwitchTurned();
    void ChooseTurns();
    void PutCentreHere();
    void Show();

    QWidget& m_Window;
    CViewArea& m_Views;
    const CMenuSpot& m_Spot;
    SSymmetry& m_Symmetry;
    std::function<void()> m_ShowState;
};
