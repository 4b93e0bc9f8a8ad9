#include "editor/app/CEditCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CEditor.h"
#include "editor/app/CKeysDialog.h"
#include "editor/app/CSettingsDialog.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/app/SEditorSettings.h"
#include "editor/app/SHandState.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"

#include <utility>

CEditCommands::CEditCommands(QWidget& window,
                             CEditor& editor,
                             CViewArea& views,
                             SEditorSettings& settings,
                             SHandState& hand,
                             std::function<void()> showState)
    : m_Window(window)
    , m_Editor(editor)
    , m_Views(views)
    , m_Settings(settings)
    , m_Hand(hand)
    , m_ShowState(std::move(showState))
{
    m_Editor.GetHost().GetObservers().Add(this);
}

CEditCommands::~CEditCommands()
{
    m_Editor.GetHost().GetObservers().Remove(this);
}

void CEditCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const CUndoStack& stack = m_Editor.GetHost().GetUndoStack();
    const auto canUndo = [this, &stack]
    {
        return IsPainting() || stack.GetCount() > 0;
    };
    const auto canRedo = [this, &stack]
    {
        return IsPainting() || stack.GetRedoCount() > 0;
    };
    const auto editKeys = [this, &commands]
    {
        EditKeys(commands);
    };
    commands.Add(
        menu,
        {
            SCommand::Run(
                "edit.undo", "&Undo", Ctrl('Z'), [this] { StepHistory(false); }, canUndo),
            SCommand::Run(
                "edit.redo", "&Redo", CtrlShift('Z'), [this] { StepHistory(true); }, canRedo),
            SCommand::Run("edit.cancel",
                          "Take the stroke &back",
                          Key(Qt::Key_Escape),
                          [this] { CancelWork(); }),
            SCommand::Hold(
                "stroke.smooth", "Smooth with the stroke that begins", Key(Qt::Key_Shift)),
            SCommand::Hold("stroke.line", "Keep the stroke on a straight line", Key('C')),
            SCommand::Hold("stroke.join", "Begin where the last stroke ended", Key(Qt::Key_Space)),
            SCommand::Hold("stroke.raise", "Only raise", Key('R')),
            SCommand::Hold("stroke.lower", "Only lower", Key('T')),
            SCommand::Line(),
            SCommand::Run("edit.keys", "&Keys...", NO_KEY, editKeys),
            SCommand::Run("edit.settings", "&Settings...", NO_KEY, [this] { EditSettings(); }),
        });
}

bool CEditCommands::IsPainting() const
{
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    return pTools != nullptr && pTools->IsPainting();
}

// Whether the strokes that the hand is at are meant.
bool CEditCommands::StepsPaint(bool bRedo) const
{
    const EProtectStep eOther = bRedo ? EProtectStep::Undone : EProtectStep::Done;
    return IsPainting() && !m_Views.IsProtecting() && m_eProtect != eOther;
}

void CEditCommands::OnEvent(const SHostEvent& event)
{
    switch (event.eKind)
    {
    case EHostEvent::Protected:
        m_eProtect = event.pProtected != nullptr ? EProtectStep::Done : m_eProtect;
        break;
    case EHostEvent::Reshaped:
        m_eProtect = event.pGround != nullptr ? EProtectStep::Done : m_eProtect;
        break;
    case EHostEvent::Undo:
        m_eProtect = m_eProtect == EProtectStep::Done ? EProtectStep::Undone : EProtectStep::None;
        break;
    case EHostEvent::Redo:
        m_eProtect = m_eProtect == EProtectStep::Undone ? EProtectStep::Done : EProtectStep::None;
        break;
    case EHostEvent::ButtonDown:
    case EHostEvent::PaintUndo:
    case EHostEvent::PaintRedo:
    case EHostEvent::LevelChanged:
        m_eProtect = EProtectStep::None;
        break;
    default:
        break;
    }
}

void CEditCommands::StepHistory(bool bRedo)
{
    CEditorHost& host = m_Editor.GetHost();
    // The stroke under the hand becomes a step before the history moves.
    host.GetInput().EndDrag();
    if (StepsPaint(bRedo))
    {
        host.StepPaint(bRedo);
    }
    else if (bRedo)
    {
        host.Redo();
    }
    else
    {
        host.Undo();
    }
    m_Views.RepeatHover();
    m_Views.RequestFrames();
    m_ShowState();
}

void CEditCommands::CancelWork()
{
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const bool bTool = pTools != nullptr && !pTools->IsTerraforming() && !pTools->IsPainting();
    if (m_Hand.path.IsOn())
    {
        m_Hand.path.Stop();
        m_Views.RequestFrames();
        m_ShowState();
        return;
    }
    const bool bCancelled = m_Views.CancelStroke();
    if (!bCancelled && m_Views.GetRuler().IsOn())
    {
        m_Views.SetMeasuring(false);
    }
    else if (!bCancelled && m_Views.IsProtecting())
    {
        m_Views.SetProtecting(false);
    }
    else if (!bCancelled && bTool)
    {
        // One that is used once, and has no other way out.
        m_Editor.GetHost().GetModes().DeactivateMode(0);
        m_Views.RepeatHover();
    }
    m_Views.RequestFrames();
    m_ShowState();
}

void CEditCommands::EditKeys(CCommandList& commands)
{
    CKeysDialog dialog(&m_Window, m_Editor.GetKeys(), m_Settings.input.mouse);
    if (dialog.exec() == QDialog::Accepted)
    {
        m_Editor.GetKeys() = dialog.GetKeys();
        m_Settings.input.mouse = dialog.GetMouse();
        commands.ApplyKeys();
        m_Editor.SaveKeys();
    }
}

void CEditCommands::EditSettings()
{
    CEditorHost& host = m_Editor.GetHost();
    CSettingsDialog dialog(&m_Window,
                           m_Settings,
                           host.GetSettings().GetRegistered(),
                           [&host]
                           {
                               for (IPlugin* pPlugin : host.GetRegistry().GetSettings())
                               {
                                   pPlugin->ResetSettings();
                               }
                           });
    if (dialog.exec() == QDialog::Accepted)
    {
        m_Settings.ApplyTo(m_Editor);
        m_Views.RequestFrames();
        host.SaveSettings();
    }
}
