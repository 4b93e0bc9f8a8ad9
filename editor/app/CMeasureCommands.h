#pragma once

#include <functional>

class CCommandList;
class CEditor;
class CMeasureDock;
class CMenuSpot;
class CViewArea;
class QMenu;
class QWidget;
struct SEditorSettings;

// The commands that measure the level and look at it from its ground; none changes it. Owned by the
// menus.
class CMeasureCommands
{
public:
    static constexpr char PROBE_HERE[] = "measure.probe"; // which context menus show, too

    // Borrowed. window: of the dialog. settings: what a person chooses is kept there. showState:
    // menus may be others.
    CMeasureCommands(QWidget& window,
                     CEditor& editor,
                     CViewArea& views,
                     const CMenuSpot& spot,
                     CMeasureDock& dock,
                     SEditorSettings& settings,
                     std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);
    void Follow(); // the wheel may have changed the height of the eye

private:
    void SwitchRuler();
    void SetProbe();
    void SwitchWalk();
    void SwitchSteep();
    void AskSteep();
    void ShowDock();
    bool IsWalking() const;

    QWidget& m_Window;
    CEditor& m_Editor;
    CViewArea& m_Views;
    const CMenuSpot& m_Spot;
    CMeasureDock& m_Dock;
    SEditorSettings& m_Settings;
    std::function<void()> m_ShowState;
};
