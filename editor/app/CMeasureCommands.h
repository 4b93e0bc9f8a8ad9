#pragma once

#include <functional>

class CCommandList;
class CEditor;
class CMeasureDock;
class CMenuSpot;
class CViewArea;
class QMenu;

// The commands that measure the level and look at it from its ground; none changes it. Owned by the
// menus.
class CMeasureCommands
{
public:
    static constexpr char PROBE_HERE[] = "measure.probe"; // which context menus show, too

    // Borrowed. fEyeHeight: of a walk, terrain units; kept there. showState: menus may be others.
    CMeasureCommands(CEditor& editor,
                     CViewArea& views,
                     const CMenuSpot& spot,
                     CMeasureDock& dock,
                     float& fEyeHeight,
                     std::function<void()> showState);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void SwitchRuler();
    void SetProbe();
    void SwitchWalk();
    void ShowDock();
    bool IsWalking() const;

    CEditor& m_Editor;
    CViewArea& m_Views;
    const CMenuSpot& m_Spot;
    CMeasureDock& m_Dock;
    float& m_EyeHeight;
    std::function<void()> m_ShowState;
};
