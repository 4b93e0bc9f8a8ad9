#include "editor/app/CMeasureCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CEditor.h"
#include "editor/app/CMeasureDock.h"
#include "editor/app/CMenuSpot.h"
#include "editor/app/CNumbersDialog.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <QMenu>

#include <utility>

CMeasureCommands::CMeasureCommands(QWidget& window,
                                   CEditor& editor,
                                   CViewArea& views,
                                   const CMenuSpot& spot,
                                   CMeasureDock& dock,
                                   SEditorSettings& settings,
                                   std::function<void()> showState)
    : m_Window(window)
    , m_Editor(editor)
    , m_Views(views)
    , m_Spot(spot)
    , m_Dock(dock)
    , m_Settings(settings)
    , m_ShowState(std::move(showState))
{
}

void CMeasureCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto isLevel = [this]
    {
        return m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain() != nullptr;
    };
    const auto dropProbe = [this]
    {
        m_Views.GetRuler().DropProbe();
        m_Views.RequestFrames();
        m_ShowState();
    };
    commands.Add(
        *menu.addMenu(Words("Meas&ure")),
        {
            {.pszId = "measure.ruler",
             .pszText = "&Ruler",
             .key = Key('Y'),
             .run = [this] { SwitchRuler(); },
             .isEnabled = isLevel,
             .isChecked = [this] { return m_Views.GetRuler().IsOn(); },
             .bOnce = true},
            {.pszId = PROBE_HERE,
             .pszText = "&Probe under the cursor",
             .key = Key('O'),
             .run = [this] { SetProbe(); },
             .isEnabled = isLevel,
             .bOnce = true},
            SCommand::Run("measure.drop_probe",
                          "Ta&ke the probe away",
                          NO_KEY,
                          dropProbe,
                          [this] { return m_Views.GetRuler().HasProbe(); }),
            SCommand::Line(),
            {.pszId = "measure.steep",
             .pszText = "&Steep ground",
             .key = Key(Qt::Key_F3),
             .run = [this] { SwitchSteep(); },
             .isChecked = [this] { return m_Settings.render.bSteep; },
             .bOnce = true},
            SCommand::Run("measure.steep_angle", "Steep &from...", NO_KEY, [this] { AskSteep(); }),
            SCommand::Line(),
            {.pszId = "measure.walk",
             .pszText = "&Walk at eye height",
             .key = Key(Qt::Key_F5),
             .run = [this] { SwitchWalk(); },
             .isEnabled = isLevel,
             .isChecked = [this] { return IsWalking(); },
             .bOnce = true},
        });
}

void CMeasureCommands::ShowDock()
{
    m_Dock.show();
    m_Dock.raise();
}

void CMeasureCommands::SwitchRuler()
{
    if (m_Views.IsStroking())
    {
        return; // it goes on as it began
    }
    const bool bOn = !m_Views.GetRuler().IsOn();
    m_Views.SetMeasuring(bOn);
    if (bOn)
    {
        ShowDock();
    }
    m_Views.GetActive()->GetNote().ShowValue(bOn ? Words("ruler: drag from place to place")
                                                 : Words("measures no longer"));
    m_ShowState();
}

void CMeasureCommands::SetProbe()
{
    SVec3 hit;
    if (m_Views.IsStroking()) // a dock that comes would move the ground under the hand
    {
        return;
    }
    if (!m_Spot.Pick(hit))
    {
        return;
    }
    m_Views.GetRuler().SetProbe(hit);
    ShowDock();
    m_Views.RequestFrames();
    m_ShowState();
}

// Whatever ends the walk, the window among it, the next one has the height.
void CMeasureCommands::Follow()
{
    if (IsWalking())
    {
        m_Settings.fEyeHeight = m_Views.GetActive()->GetInput().GetWalk().GetEyeHeight();
    }
}

bool CMeasureCommands::IsWalking() const
{
    CViewWidget* pView = m_Views.GetActive();
    return pView != nullptr && pView->GetInput().GetWalk().IsOn();
}

void CMeasureCommands::SwitchWalk()
{
    CViewWidget& view = *m_Views.GetActive();
    CWorld& world = m_Editor.GetHost().GetEngine().GetCWorld();
    CCamera* pCamera = world.GetCameraList().GetCameraOfView(view.GetViewId());
    CGroundWalk& walk = view.GetInput().GetWalk();
    if (pCamera == nullptr)
    {
        view.GetNote().ShowValue(Words("only a perspective view can walk"));
        return;
    }
    view.GetInput().End(); // of what a button moves
    if (walk.IsOn())
    {
        Follow();
        walk.Stop();
        view.GetNote().ShowValue(Words("flies again"));
    }
    else
    {
        walk.Start(*pCamera, world.GetCTerrain(), m_Settings.fEyeHeight);
        view.GetNote().ShowValue(
            QString(
                Words("walks, eye height %1: the wheel changes it, the right button looks round"))
                .arg(static_cast<double>(m_Settings.fEyeHeight), 0, 'g', 3));
    }
    view.GetInput().RepeatHover();
    view.RequestFrame();
    m_ShowState();
}

void CMeasureCommands::SwitchSteep()
{
    bool& bSteep = m_Settings.render.bSteep;
    bSteep = !bSteep;
    m_Views.GetActive()->GetNote().ShowValue(
        bSteep ? QString(Words("orange: steeper than %1 degrees"))
                     .arg(static_cast<double>(m_Settings.render.fSteepDegrees), 0, 'g', 3)
               : QString(Words("steep ground as it is")));
    m_Views.RequestFrames();
    m_ShowState();
}

void CMeasureCommands::AskSteep()
{
    constexpr double RIGHT_ANGLE = 90.0;
    CNumbersDialog dialog(&m_Window,
                          Words("Steep ground"),
                          {{.pszLabel = "Steeper than",
                            .pszUnit = " degrees",
                            .iDecimals = 1,
                            .fMost = RIGHT_ANGLE,
                            .fValue = static_cast<double>(m_Settings.render.fSteepDegrees)}});
    if (dialog.exec() == QDialog::Accepted)
    {
        m_Settings.render.fSteepDegrees = dialog.GetNumber(0);
        m_Settings.render.bSteep = true;
        m_Views.RequestFrames();
        m_ShowState();
    }
}
