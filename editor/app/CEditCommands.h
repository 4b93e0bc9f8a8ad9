#pragma once

#include <functional>

class CCommandList;
class CEditor;
class CViewArea;
class QMenu;
class QWidget;
struct SEditorSettings;
struct SHandState;

// The commands that take back and do again, the keys that change a stroke, and what a person can
// set. Owned by the menus.
class CEditCommands
{
public:
    // Borrowed. window: of the dialogs. showState: the history is another one.
    CEditCommands(QWidget& window,
                  CEditor& editor,
                  CViewArea& views,
                  SEditorSettings& settings,
                  SHandState& hand,
                  std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    bool IsPainting() const;
    void StepHistory(bool bRedo);
    void CancelWork();
    void EditKeys(CCommandList& commands);
    void EditSettings();

    QWidget& m_Window;
    CEditor& m_Editor;
    CViewArea& m_Views;
    SEditorSettings& m_Settings;
    SHandState& m_Hand;
    std::function<void()> m_ShowState;
};
