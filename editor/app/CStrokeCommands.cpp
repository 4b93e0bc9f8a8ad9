#include "editor/app/CStrokeCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CEditor.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/app/PathTools.h"
#include "editor/app/SHandState.h"
#include "editor/app/SInputSettings.h"
#include "editor/app/ToolTexts.h"
#include "editor/core/Words.h"
#include "host/IPluginTools.h"
#include "host/Notice.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

CStrokeCommands::CStrokeCommands(CEditor& editor,
                                 CViewArea& views,
                                 SInputSettings& settings,
                                 SHandState& hand,
                                 std::function<void()> showState)
    : m_Host(editor.GetHost())
    , m_pTools(editor.FindInterface<IPluginTools>())
    , m_pStrokes(editor.FindInterface<IPluginStrokes>())
    , m_Views(views)
    , m_Settings(settings)
    , m_Hand(hand)
    , m_ShowState(std::move(showState))
{
}

void CStrokeCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto isSetting = [this]
    {
        return m_Hand.path.IsOn();
    };
    const auto canApply = [this]
    {
        return m_Hand.path.IsOn() && m_Hand.path.CanApply();
    };
    commands.Add(menu,
                 {
                     SCommand::Line(),
                     {.pszId = "stroke.build_up",
                      .pszText = "Build &up while held",
                      .key = Key('J'),
                      .run = [this] { SwitchBuilding(); },
                      .isChecked = [this] { return IsBuilding(); },
                      .bOnce = true},
                     {.pszId = "path.set",
                      .pszText = "&Path of clicked points",
                      .key = Key('K'),
                      .run = [this] { SwitchPath(); },
                      .isChecked = isSetting,
                      .bOnce = true},
                     SCommand::Run(
                         "path.apply",
                         "Draw alon&g the path",
                         Key(Qt::Key_Return),
                         [this] { ApplyPath(); },
                         canApply),
                     SCommand::Run(
                         "path.remove",
                         "Take the last point of the path away",
                         Key(Qt::Key_Backspace),
                         [this] { RemoveKnot(); },
                         isSetting),
                 });
}

bool CStrokeCommands::IsBuilding() const
{
    return m_pTools != nullptr && m_Settings.builds.contains(m_pTools->GetFunctionName());
}

// Kept for each function: what smooths may build up and what sets heights not.
void CStrokeCommands::SwitchBuilding()
{
    const std::string strFunction = m_pTools != nullptr ? m_pTools->GetFunctionName() : "";
    if (m_Views.IsStroking())
    {
        return; // it is what it was at the press
    }
    if (strFunction.empty())
    {
        m_Views.GetActive()->GetNote().ShowValue(Words(NO_TOOL));
    }
    else if (!m_Settings.builds.erase(strFunction))
    {
        m_Settings.builds.insert(strFunction);
    }
    Show();
}

void CStrokeCommands::SwitchPath()
{
    if (m_Hand.path.IsOn())
    {
        m_Hand.path.Stop();
    }
    else if (!CanDrawPath(m_pTools, m_pStrokes))
    {
        m_Views.GetActive()->GetNote().ShowValue(DescribeNoPath());
    }
    else if (!m_Host.GetInput().IsDragging())
    {
        m_Views.SetMeasuring(false); // the button does one of these
        m_Views.SetProtecting(false);
        m_Hand.path.Begin();
    }
    Show();
}

QString CStrokeCommands::DescribeNoPath() const
{
    const QString strTool =
        m_pTools != nullptr ? QString::fromStdString(m_pTools->GetToolName()) : QString();
    return strTool.isEmpty()
               ? QString(Words(NO_TOOL))
               : strTool + Words(" works where it is pressed and draws along no path");
}

void CStrokeCommands::Follow()
{
    // What a script or a stroke has at hand meanwhile is not the person's.
    if (m_Hand.path.IsOn() && !m_Hand.bScript && !m_Host.GetInput().IsDragging() &&
        !CanDrawPath(m_pTools, m_pStrokes))
    {
        m_Hand.path.Stop();
        m_Views.RequestFrames();
        Notice((Words("The path is dropped: ") + DescribeNoPath()).toUtf8().constData());
    }
}

void CStrokeCommands::ApplyPath()
{
    QWidget* pFocus = QApplication::focusWidget();
    const bool bField = qobject_cast<QLineEdit*>(pFocus) != nullptr ||
                        qobject_cast<QAbstractSpinBox*>(pFocus) != nullptr;
    if (bField) // the key is meant for what is typed there
    {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(pFocus, &key);
        return;
    }
    if (!m_Views.GetActive()->GetInput().DrawPath())
    {
        m_Views.GetActive()->GetNote().ShowValue(DescribeNoPath());
    }
    Show();
}

void CStrokeCommands::RemoveKnot()
{
    m_Hand.path.Remove();
    Show();
}

void CStrokeCommands::Show()
{
    m_Views.RequestFrames();
    m_ShowState();
}
