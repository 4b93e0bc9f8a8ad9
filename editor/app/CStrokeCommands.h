#pragma once

#include <QString>

#include <functional>

class CCommandList;
class CEditorHost;
class CEditor;
class CViewArea;
class IPluginStrokes;
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

    // To be called when another tool may be at hand: a path that it cannot draw along is over.
    void Follow();

private:
    void SwitchBuilding();
    bool IsBuilding() const;
    void SwitchPath();
    QString DescribeNoPath() const;
    void ApplyPath();
    void RemoveKnot();
    void Show();

    CEditorHost& m_Host;
    IPluginTools* m_pTools; // null for a plug-in without
    IPluginStrokes* m_pStrokes;
    CViewArea& m_Views;
    SInputSettings& m_Settings;
    SHandState& m_Hand;
    std::function<void()> m_ShowState;
};
