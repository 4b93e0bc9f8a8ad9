#pragma once

#include "editor/core/IHostObserver.h"

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
class CEditCommands : private IHostObserver
{
public:
    // Borrowed. window: of the dialogs. showState: the history is another one.
    CEditCommands(QWidget& window,
                  CEditor& editor,
                  CViewArea& views,
                  SEditorSettings& settings,
                  SHandState& hand,
                  std::function<void()> showState);
    ~CEditCommands() override;
    CEditCommands(const CEditCommands&) = delete;
    CEditCommands& operator=(const CEditCommands&) = delete;

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    // Which step the last thing done has left behind while painting, whose strokes have a history
    // of their own.
    enum class EProtectStep
    {
        None,   // paint was the last
        Done,   // the protection changed
        Undone, // and was taken back
    };

    void OnEvent(const SHostEvent& event) override;
    bool IsPainting() const;
    bool StepsPaint(bool bRedo) const;
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
    EProtectStep m_eProtect = EProtectStep::None;
};
