// What the commands of the main window do.

#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CEditorWindow.h"
#include "editor/app/CKeysDialog.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CSettingsDialog.h"
#include "editor/app/CStatusLine.h"
#include "editor/app/CViewArea.h"
#include "editor/app/PluginMenus.h"
#include "editor/script/CScriptCursor.h"
#include "editor/script/CScriptPlayer.h"
#include "editor/script/LoadScript.h"
#include "engine/world/CEngineHost.h"
#include "framework/core/CMenu.h"
#include "host/ActionIds.h"
#include "host/IEditorAction.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"
#include "parser/CTCParseNodes.h"

#include <QApplication>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>

#include <cmath>
#include <iterator>
#include <utility>

namespace
{

// Directions of the presets, from CAMERA_FROM_EAST on.
constexpr std::pair<float, float> PRESETS[] = {{1.0F, 0.0F},
                                               {1.0F, 1.0F},
                                               {0.0F, 1.0F},
                                               {-1.0F, 1.0F},
                                               {-1.0F, 0.0F},
                                               {-1.0F, -1.0F},
                                               {0.0F, -1.0F},
                                               {1.0F, -1.0F}};
constexpr float TURN = 20.0F;
constexpr float STEP = 10.0F;

// What the modes of the plug-in make of the camera actions, for when none of them is current.
void RunCameraAction(CEditorHost& host, ViewId view, int32_t iAction)
{
    CCamera* pCamera = host.GetEngine().GetCWorld().GetCameraList().GetCameraOfView(view);
    const int32_t iPreset = iAction - CAMERA_FROM_EAST;
    if (iPreset >= 0 && iPreset < static_cast<int32_t>(std::size(PRESETS)) && pCamera != nullptr)
    {
        host.LookFromDirection(pCamera, PRESETS[iPreset].first, PRESETS[iPreset].second);
        return;
    }
    switch (iAction)
    {
    case CAMERA_TOGGLE_OFF:
    case CAMERA_TOGGLE_ON:
        host.SetViewToggle(view, iAction == CAMERA_TOGGLE_ON);
        break;
    case CAMERA_UP:
    case CAMERA_DOWN:
        host.GetEngine().StepCameraVertical(view, iAction == CAMERA_UP ? STEP : -STEP);
        break;
    case CAMERA_TURN_LEFT:
    case CAMERA_TURN_RIGHT:
        host.TurnCamera(view, iAction == CAMERA_TURN_LEFT ? -TURN : TURN);
        break;
    default:
        break;
    }
}

} // namespace

void CEditorWindow::RunCommand(uint32_t uCommand)
{
    GetHost().EndDrag();
    GetHost().SendCommand(uCommand);
    GetHost().GetModes().SetModeCursor();
    m_pViews->RepeatHover();
    m_pViews->RequestFrames();
}

void CEditorWindow::SendAction(int32_t iAction)
{
    CEditorHost& host = GetHost();
    const ViewId view = m_pViews->GetActiveId();
    const IPlugin* pPlugin = m_Editor.GetPlugin();
    const bool bInMode = host.GetModes().GetCurrentModeId() != NO_MODE && pPlugin != nullptr;
    host.SendAction(view, iAction, 1);
    host.GetModes().SetModeCursor();
    if (!bInMode || m_pViews->GetActive()->GetKind() == EViewKind::Top)
    {
        // Views without a camera, and views while no mode listens, have no one else to do it.
        RunCameraAction(host, view, iAction);
    }
    m_pViews->RepeatHover();
    m_pViews->RequestFrames();
}

bool CEditorWindow::RunProcess(size_t iProcess)
{
    GetHost().EndDrag();
    IEditorAction* pProcess = GetHost().GetRegistry().GetProcess(iProcess);
    return pProcess->CanExecute(0, 0, 0) && pProcess->Execute();
}

void CEditorWindow::ShowContextMenu(ViewId view, QPoint screen)
{
    CViewWidget* pView = m_pViews->Find(view);
    if (pView == nullptr)
    {
        return;
    }
    const ViewPoint point =
        CModeManager::PackPoint(static_cast<int32_t>(std::floor(pView->GetInput().GetX())),
                                static_cast<int32_t>(std::floor(pView->GetInput().GetY())));
    CMenu menu;
    for (IPlugin* pPlugin : GetHost().GetRegistry().GetInput())
    {
        if (pPlugin->HasContextMenuItems(view, point, 0))
        {
            pPlugin->AddContextMenuItems(&menu, view, point, 0);
        }
    }
    QMenu shown(this);
    shown.setObjectName("context-menu");
    FillMenu(shown, menu, [this](uint32_t uCommand) { RunCommand(uCommand); });
    if (!shown.isEmpty())
    {
        shown.addSeparator();
    }
    for (const char* pszId : {"camera.frame", "camera.frame_all", "view.wire", "edit.undo"})
    {
        shown.addAction(m_Commands.Find(pszId));
    }
    shown.exec(screen);
}

void CEditorWindow::StepHistory(bool bRedo)
{
    GetHost().EndDrag();
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    if (pTools != nullptr && pTools->IsPainting()) // the strokes that the hand is at
    {
        GetHost().StepPaint(bRedo);
    }
    else if (bRedo)
    {
        GetHost().Redo();
    }
    else
    {
        GetHost().Undo();
    }
    m_pViews->RepeatHover();
    m_pViews->RequestFrames();
    ShowState();
}

void CEditorWindow::OpenDropped()
{
    constexpr int AGAIN_MS = 100;
    if (m_Progress.IsWorking())
    {
        m_DropTimer.start(AGAIN_MS); // the work takes events, and must not meet another level
        return;
    }
    OpenFile(std::exchange(m_Dropped, {}));
}

void CEditorWindow::CancelWork()
{
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const bool bTool = pTools != nullptr && !pTools->IsTerraforming() && !pTools->IsPainting();
    if (!m_pViews->CancelStroke() && bTool)
    {
        GetHost().GetModes().DeactivateMode(0); // one that is used once, and has no other way out
        m_pViews->RepeatHover();
    }
    m_pViews->RequestFrames();
    ShowState();
}

// The keyboard goes to the panel, which opens when it is closed, and from there back to the view.
void CEditorWindow::GoToPanel()
{
    if (m_pPanel->isAncestorOf(QApplication::focusWidget()))
    {
        m_pViews->GetActive()->setFocus();
        return;
    }
    if (m_pPanel->isHidden() && m_Editor.GetPlugin() != nullptr)
    {
        m_Editor.GetPlugin()->Activate(true);
    }
    m_pPanel->TakeFocus();
}

void CEditorWindow::EditKeys()
{
    CKeysDialog dialog(this, m_Editor.GetKeys());
    if (dialog.exec() == QDialog::Accepted)
    {
        m_Editor.GetKeys() = dialog.GetKeys();
        m_Commands.ApplyKeys();
        m_Editor.SaveKeys();
    }
}

void CEditorWindow::EditSettings()
{
    CSettingsDialog dialog(this, m_Settings, GetHost().GetSettings().GetRegistered());
    if (dialog.exec() == QDialog::Accepted)
    {
        ApplySettings();
        GetHost().SaveSettings();
    }
}

void CEditorWindow::AskForScript()
{
    const QString strPath = QFileDialog::getOpenFileName(
        this, "Play script", QString(), "Replay scripts (*.tellur);;All files (*)");
    if (strPath.isEmpty() || !m_Documents.MayLeave())
    {
        return;
    }
    std::string strFault;
    if (PlayScript(strPath.toStdString(), strFault) != EScriptEnd::Played)
    {
        QMessageBox::warning(this, "Tellur", QString::fromStdString(strFault));
    }
    OnLevel();
}

EScriptEnd CEditorWindow::PlayScript(const std::string& strPath, std::string& strFault)
{
    std::unique_ptr<CTCPARSE_KEYWORD> pScript;
    if (!LoadScript(strPath, pScript, strFault))
    {
        return EScriptEnd::Unusable;
    }
    CScriptCursor cursor;
    m_Face.SetScript(&cursor);
    CScriptPlayer player(GetHost(),
                         cursor,
                         m_pViews->GetActiveId(),
                         m_Editor.GetPlugin(),
                         strPath,
                         [this]
                         {
                             m_pViews->RequestFrames();
                             QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
                         });
    const uint64_t uLevel = m_Editor.GetDocument().GetGeneration();
    const bool bPlayed = player.Play(pScript.get(), strFault);
    m_Face.SetScript(nullptr);
    if (uLevel == m_Editor.GetDocument().GetGeneration())
    {
        m_pViews->FrameAll();
    }
    ShowState();
    return bPlayed ? EScriptEnd::Played : EScriptEnd::Failed;
}

bool CEditorWindow::Recover(const SRecoverable& entry)
{
    CScriptCursor cursor;
    m_Face.SetScript(&cursor);
    CScriptPlayer player(GetHost(),
                         cursor,
                         m_pViews->GetActiveId(),
                         m_Editor.GetPlugin(),
                         entry.strStem + ".tellur");
    const auto play = [&player](CTCPARSE_KEYWORD* pFirst, std::string& strFault)
    {
        return player.Play(pFirst, strFault);
    };
    size_t nSteps = 0;
    std::string strFault;
    const bool bOpen = m_Editor.GetAutosave().Recover(entry, play, nSteps, strFault);
    m_Face.SetScript(nullptr);
    if (!bOpen)
    {
        return false;
    }
    const QString strGiven = QString("%1 of %2 steps were given back.")
                                 .arg(static_cast<qulonglong>(nSteps))
                                 .arg(static_cast<qulonglong>(entry.steps.size()));
    m_pStatus->Say(strGiven);
    if (!strFault.empty())
    {
        QMessageBox box(QMessageBox::Warning, "Tellur", strGiven, QMessageBox::Ok, this);
        box.setInformativeText(QString::fromStdString(strFault) +
                               "\nAll of them are kept for another try.");
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    return true;
}
