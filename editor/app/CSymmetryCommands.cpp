#include "editor/app/CSymmetryCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CMenuSpot.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"
#include "editor/view/SSymmetry.h"

#include <QInputDialog>

#include <utility>

CSymmetryCommands::CSymmetryCommands(QWidget& window,
                                     CViewArea& views,
                                     const CMenuSpot& spot,
                                     SSymmetry& symmetry,
                                     std::function<void()> showState)
    : m_Window(window)
    , m_Views(views)
    , m_Spot(spot)
    , m_Symmetry(symmetry)
    , m_ShowState(std::move(showState))
{
}

void CSymmetryCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto mirror =
        [this](const char* pszId, const char* pszText, SKeyChord key, bool SSymmetry::*pAcross)
    {
        return SCommand{.pszId = pszId,
                        .pszText = pszText,
                        .key = key,
                        .run = [this, pAcross] { SwitchMirror(pAcross); },
                        .isChecked = [this, pAcross] { return m_Symmetry.*pAcross; },
                        .bOnce = true};
    };
    const auto putInMiddle = [this]
    {
        m_Symmetry.bOwnCentre = false;
        Show();
    };
    commands.Add(
        menu,
        {
            mirror("symmetry.mirror_x", Words("Mirror &x"), Key(Qt::Key_F7), &SSymmetry::bAcrossX),
            mirror("symmetry.mirror_z", Words("Mirror &z"), Key(Qt::Key_F8), &SSymmetry::bAcrossZ),
            {.pszId = "symmetry.turned",
             .pszText = "&Turn about the centre",
             .key = Key(Qt::Key_F9),
             .run = [this] { SwitchTurned(); },
             .isChecked = [this] { return m_Symmetry.bTurned; },
             .bOnce = true},
            SCommand::Run(
                "symmetry.turns", "&Number of turned places...", NO_KEY, [this] { ChooseTurns(); }),
            SCommand::Line(),
            SCommand::Run(CENTRE_HERE, "Set centre &here", NO_KEY, [this] { PutCentreHere(); }),
            SCommand::Run("symmetry.centre_middle",
                          "Centre in the &middle",
                          NO_KEY,
                          putInMiddle,
                          [this] { return m_Symmetry.bOwnCentre; }),
        });
}

void CSymmetryCommands::SwitchMirror(bool SSymmetry::*pAcross)
{
    if (m_Views.IsStroking())
    {
        return; // it has the images that it had at the press
    }
    m_Symmetry.*pAcross = !(m_Symmetry.*pAcross);
    m_Symmetry.bTurned = false;
    Show();
}

void CSymmetryCommands::SwitchTurned()
{
    if (m_Views.IsStroking())
    {
        return;
    }
    m_Symmetry.bTurned = !m_Symmetry.bTurned;
    m_Symmetry.bAcrossX = false;
    m_Symmetry.bAcrossZ = false;
    Show();
}

void CSymmetryCommands::ChooseTurns()
{
    bool bOk = false;
    const int iTurns = QInputDialog::getInt(&m_Window,
                                            Words("Turned strokes"),
                                            Words("Places of each point, itself among them"),
                                            m_Symmetry.iTurns,
                                            SSymmetry::LEAST_TURNS,
                                            SSymmetry::MOST_TURNS,
                                            1,
                                            &bOk);
    if (bOk)
    {
        m_Symmetry.iTurns = iTurns;
        Show();
    }
}

void CSymmetryCommands::PutCentreHere()
{
    SVec3 hit;
    if (!m_Spot.Pick(hit))
    {
        return;
    }
    m_Symmetry.bOwnCentre = true;
    m_Symmetry.centre = hit;
    Show();
}

void CSymmetryCommands::Show()
{
    m_Views.RequestFrames();
    m_ShowState();
}
