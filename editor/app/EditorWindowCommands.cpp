// What the commands of the main window do.

#include "editor/app/CEditor.h"
#include "editor/app/CEditorWindow.h"
#include "editor/app/CKeysDialog.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CSettingsDialog.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include <utility>

void CEditorWindow::ShowContextMenu(ViewId view, QPoint screen)
{
    std::vector<QAction*> more;
    for (const char* pszId : {"camera.frame", "camera.frame_all", "view.wire", "edit.undo"})
    {
        more.push_back(m_Commands.Find(pszId));
    }
    m_pPluginCommands->ShowContextMenu(*this, view, screen, more);
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
    m_Documents.OpenFile(std::exchange(m_Dropped, {}));
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
    CPanelDock& panel = m_pLayout->GetPanel();
    if (panel.isAncestorOf(QApplication::focusWidget()))
    {
        m_pViews->GetActive()->setFocus();
        return;
    }
    if (panel.isHidden() && m_Editor.GetPlugin() != nullptr)
    {
        m_Editor.GetPlugin()->Activate(true);
    }
    panel.TakeFocus();
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
    if (m_pScripts->Play(strPath.toStdString(), strFault) != EScriptEnd::Played)
    {
        QMessageBox::warning(this, "Tellur", QString::fromStdString(strFault));
    }
    OnLevel();
}
