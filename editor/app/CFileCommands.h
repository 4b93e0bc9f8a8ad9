#pragma once

#include <functional>

class CCommandList;
class CDocumentActions;
class CEditor;
class CScriptRunner;
class QMenu;
class QWidget;

// The commands about files: levels, height maps, recordings and scripts. Owned by the menus.
class CFileCommands
{
public:
    // Borrowed. window: closed by "Quit". showState: the document may be another one, or saved.
    // onLevel: a script was played.
    CFileCommands(QWidget& window,
                  CEditor& editor,
                  CDocumentActions& documents,
                  CScriptRunner& scripts,
                  std::function<void()> showState,
                  std::function<void()> onLevel);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void AddLevels(QMenu& menu, CCommandList& commands);
    void AddScripts(QMenu& menu, CCommandList& commands);
    void FillRecentFiles(QMenu& menu);
    void ToggleRecording();
    void AskForScript();
    bool IsRecording() const;

    QWidget& m_Window;
    CEditor& m_Editor;
    CDocumentActions& m_Documents;
    CScriptRunner& m_Scripts;
    std::function<void()> m_ShowState;
    std::function<void()> m_OnLevel;
};
