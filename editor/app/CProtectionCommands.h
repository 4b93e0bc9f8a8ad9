#pragma once

#include "editor/core/SProtectAct.h"

#include <functional>

class CCommandList;
class CEditor;
class CEditorHost;
class CViewArea;
class QMenu;
class QWidget;

// The commands that say which vertices strokes leave alone; each that changes something is one step
// of the history. Owned by the menus.
class CProtectionCommands
{
public:
    // Borrowed. showState: title, menus or history may be others.
    CProtectionCommands(QWidget& window,
                        CEditor& editor,
                        CViewArea& views,
                        std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void SwitchPainting();
    void AskGrow();
    void AskSlope();
    void AskHeights();
    void Do(const SProtectAct& act);

    QWidget& m_Window;
    CEditorHost& m_Host;
    CViewArea& m_Views;
    std::function<void()> m_ShowState;
};
