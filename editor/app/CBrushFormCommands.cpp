#include "editor/app/CBrushFormCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CPenDialog.h"
#include "editor/app/CViewArea.h"
#include "editor/app/CViewWidget.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"

#include <QInputDialog>
#include <QMenu>

#include <cmath>

namespace
{

constexpr float TURN_STEP = 15.0F;

float GetTurnWithin(float fDegrees)
{
    return std::fmod(std::fmod(fDegrees, SFormSettings::FULL_TURN) + SFormSettings::FULL_TURN,
                     SFormSettings::FULL_TURN);
}

} // namespace

CBrushFormCommands::CBrushFormCommands(QWidget& window, CViewArea& views, SFormSettings& settings)
    : m_Window(window)
    , m_Views(views)
    , m_Settings(settings)
{
}

void CBrushFormCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto choice =
        [this](const char* pszId, const char* pszText, EBrushTurn eTurn, SKeyChord key = NO_KEY)
    {
        SCommand command = SCommand::Once(pszId, pszText, key, [this, eTurn] { Turn(eTurn); });
        command.isChecked = [this, eTurn]
        {
            return m_Settings.eTurn == eTurn;
        };
        return command;
    };
    SCommand fixed = choice("turn.fixed", Words("By a &fixed angle..."), EBrushTurn::Fixed);
    fixed.run = [this]
    {
        AskAngle();
    };
    commands.Add(*menu.addMenu(Words("&Turned brush")),
                 {
                     choice("turn.none", Words("&As the image is"), EBrushTurn::None),
                     fixed,
                     choice("turn.along", Words("A&long the stroke"), EBrushTurn::Along),
                     choice("turn.random", Words("At &random"), EBrushTurn::Random),
                     SCommand::Line(),
                     SCommand::Run("turn.right",
                                   "Turn by 15 degrees to the &right",
                                   Key('.'),
                                   [this] { TurnBy(TURN_STEP); }),
                     SCommand::Run("turn.left",
                                   "Turn by 15 degrees to the &left",
                                   Key(','),
                                   [this] { TurnBy(-TURN_STEP); }),
                 });
    commands.Add(menu, {SCommand::Run("brush.pen", "P&en...", NO_KEY, [this] { EditPen(); })});
}

void CBrushFormCommands::Turn(EBrushTurn eTurn)
{
    if (!m_Views.IsStroking()) // a stroke goes on as it began
    {
        m_Settings.eTurn = eTurn;
        Say();
    }
}

void CBrushFormCommands::TurnBy(float fDegrees)
{
    if (m_Views.IsStroking())
    {
        return;
    }
    const float fFrom = m_Settings.eTurn == EBrushTurn::Fixed ? m_Settings.fDegrees : 0.0F;
    m_Settings.fDegrees = GetTurnWithin(fFrom + fDegrees);
    Turn(EBrushTurn::Fixed);
}

void CBrushFormCommands::AskAngle()
{
    bool bTaken = false;
    const int iDegrees = QInputDialog::getInt(&m_Window,
                                              Words("Turned brush"),
                                              Words("Degrees, clockwise seen from above:"),
                                              static_cast<int>(std::lround(m_Settings.fDegrees)),
                                              -static_cast<int>(SFormSettings::FULL_TURN),
                                              static_cast<int>(SFormSettings::FULL_TURN),
                                              1,
                                              &bTaken);
    if (bTaken)
    {
        m_Settings.fDegrees = GetTurnWithin(static_cast<float>(iDegrees));
        Turn(EBrushTurn::Fixed);
    }
}

void CBrushFormCommands::EditPen()
{
    CPenDialog(&m_Window, m_Settings).exec();
}

void CBrushFormCommands::Say() const
{
    const QString strAngle = QString::number(static_cast<double>(m_Settings.fDegrees));
    const QString texts[] = {Words("brush as its image is"),
                             Words("brush turned by ") + strAngle,
                             Words("brush turned along the stroke"),
                             Words("brush turned at random")};
    m_Views.GetActive()->GetNote().ShowValue(texts[static_cast<size_t>(m_Settings.eTurn)]);
    m_Views.RequestFrames();
}
