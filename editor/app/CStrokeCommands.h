#pragma once

#include <functional>

class CCommandList;
class CEditorHost;
class CEditor;
class CViewArea;
class IPluginTools;
class QMenu;
struct SHandState;
struct SInputSettings;

// The commands about how a stroke goes on by itself: while the button is held, and along a path of
// clicked points. Owned by the menus.
class CStrokeCommands
{
public:
    // Borrowed. showState: menus and status line are others.
    CStrokeCommands(CEditor& editor,
                    CViewArea& views,
                    SInputSettings& settings,
                    SHandState& hand,
                    std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void SwitchBuilding();
    bool IsBuilding() const;
    void SwitchPath();
    void ApplyPath();
    void RemoveKnot();
    void Show();

    CEditorHost& m_Host;
    IPluginTools* m_pTools; // null for a plug-in without
    CViewArea& m_Views;
    SInputSettings& m_Settings;
    SHandState& m_Hand;
    std::function<void()> m_ShowState;
};
