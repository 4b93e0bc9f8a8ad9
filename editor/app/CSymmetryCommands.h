#pragma once

#include "host/HostTypes.h"

#include <functional>
#include <optional>

class CCommandList;
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
                      SSymmetry& symmetry,
                      std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

    // The ground under the cursor of a view is the place that the centre is put to, while a menu is
    // open there. NO_VIEW: it is closed.
    void SetSpot(ViewId view);

private:
    void SwitchMirror(bool SSymmetry::*pAcross);
    void SwitchTurned();
    void ChooseTurns();
    void PutCentreHere();
    void Show();

    QWidget& m_Window;
    CViewArea& m_Views;
    SSymmetry& m_Symmetry;
    std::function<void()> m_ShowState;
    std::optional<SVec3> m_Spot;
};
