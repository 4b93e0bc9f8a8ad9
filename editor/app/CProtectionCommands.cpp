#include "editor/app/CProtectionCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CEditor.h"
#include "editor/app/CNumbersDialog.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/ProtectedAreas.h"
#include "engine/world/CEngineHost.h"

#include <QMenu>

#include <algorithm>
#include <utility>

namespace
{

constexpr double USUAL_GROWTH = 4.0;
constexpr double USUAL_SLOPE = 35.0;
constexpr double RIGHT_ANGLE = 90.0;

} // namespace

CProtectionCommands::CProtectionCommands(QWidget& window,
                                         CEditor& editor,
                                         CViewArea& views,
                                         std::function<void()> showState)
    : m_Window(window)
    , m_Host(editor.GetHost())
    , m_Views(views)
    , m_ShowState(std::move(showState))
{
}

void CProtectionCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto isLevel = [this]
    {
        return m_Host.GetEngine().GetCWorld().GetCTerrain() != nullptr;
    };
    const auto isAny = [this]
    {
        return m_Host.GetProtection().IsAny();
    };
    const auto run = [this](EProtect eKind)
    {
        return [this, eKind]
        {
            Do({eKind});
        };
    };
    commands.Add(
        *menu.addMenu(Words("&Protection")),
        {
            {.pszId = "protection.paint",
             .pszText = "&Paint protection",
             .key = Key('U'),
             .run = [this] { SwitchPainting(); },
             .isEnabled = isLevel,
             .isChecked = [this] { return m_Views.IsProtecting(); },
             .bOnce = true},
            SCommand::Line(),
            SCommand::Run(
                "protection.slope", "Protect &slopes...", NO_KEY, [this] { AskSlope(); }, isLevel),
            SCommand::Run(
                "protection.heights",
                "Protect &heights...",
                NO_KEY,
                [this] { AskHeights(); },
                isLevel),
            SCommand::Run(
                "protection.grow", "&Grow...", NO_KEY, [this] { AskGrow(); }, isAny),
            SCommand::Run("protection.invert", "&Invert", NO_KEY, run(EProtect::Invert), isLevel),
            SCommand::Run("protection.clear", "&Clear", NO_KEY, run(EProtect::Clear), isAny),
        });
}

void CProtectionCommands::SwitchPainting()
{
    if (m_Views.IsStroking())
    {
        return; // it goes on as it began
    }
    m_Views.SetProtecting(!m_Views.IsProtecting());
    if (!m_Views.IsProtecting()) // while it is painted, that stands at the cursor
    {
        m_Views.GetActive()->GetNote().ShowValue(Words("paints no protection"));
    }
    m_ShowState();
}

void CProtectionCommands::AskGrow()
{
    CNumbersDialog dialog(
        &m_Window,
        Words("Grow protection"),
        {{.pszLabel = "By", .pszUnit = " vertices", .fMost = MOST_GROWTH, .fValue = USUAL_GROWTH}});
    if (dialog.exec() == QDialog::Accepted)
    {
        Do({EProtect::Grow, dialog.GetNumber(0)});
    }
}

void CProtectionCommands::AskSlope()
{
    CNumbersDialog dialog(&m_Window,
                          Words("Protect slopes"),
                          {{.pszLabel = "Steeper than",
                            .pszUnit = " degrees",
                            .iDecimals = 1,
                            .fMost = RIGHT_ANGLE,
                            .fValue = USUAL_SLOPE}});
    if (dialog.exec() == QDialog::Accepted)
    {
        Do({EProtect::Slope, dialog.GetNumber(0)});
    }
}

// Above or below a height is from it to one of the ends, which stand there at first.
void CProtectionCommands::AskHeights()
{
    const double fHighest = m_Host.GetEngine().GetCWorld().GetCTerrain()->GetSize().y;
    CNumbersDialog dialog(
        &m_Window,
        Words("Protect heights"),
        {{.pszLabel = "From", .pszUnit = " cm", .iDecimals = 2, .fMost = fHighest},
         {.pszLabel = "To",
          .pszUnit = " cm",
          .iDecimals = 2,
          .fMost = fHighest,
          .fValue = fHighest}});
    if (dialog.exec() == QDialog::Accepted)
    {
        const auto [fLow, fHigh] = std::minmax({dialog.GetNumber(0), dialog.GetNumber(1)});
        // The box shows a rounded limit; ground that lies at it belongs to "to the top".
        constexpr double HALF_STEP = 0.005;
        Do({EProtect::Heights,
            fLow,
            fHigh + HALF_STEP >= fHighest ? static_cast<float>(fHighest) : fHigh});
    }
}

void CProtectionCommands::Do(const SProtectAct& act)
{
    if (m_Host.GetEngine().GetCWorld().GetCTerrain() != nullptr) // a dialog may outlast the level
    {
        m_Host.GetProtection().Do(act);
    }
    m_Views.RequestFrames();
    m_ShowState();
}
