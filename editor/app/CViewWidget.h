#pragma once

#include "editor/app/CFrameQuality.h"
#include "editor/app/CViewInput.h"
#include "editor/app/CViewKeys.h"
#include "editor/app/CViewMouse.h"
#include "editor/view/CTerrainRenderer.h"
#include "editor/view/CViewNavigator.h"
#include "host/EditorHost.h"

#include <QElapsedTimer>
#include <QOpenGLWidget>
#include <QTimer>

#include <functional>
#include <memory>

class CCursorNote;
class CKeyBindings;
class CTerrainCopies;
class CViewHands;
class IPluginTools;
struct SEditorSettings;
struct SRenderSettings;

// What a view tells the window it belongs to.
struct SViewEvents
{
    std::function<void(ViewId)> onActive;        // the cursor came, or the focus
    std::function<void(ViewId)> onFrame;         // a frame was drawn, or the cursor moved
    std::function<void(ViewId, QPoint)> onMenu;  // the context menu is wanted, on the screen
    std::function<void(const QString&)> onFault; // the card cannot draw the terrain
    std::function<void()> onMark =
        nullptr; // the area's: what is under the cursor is shown in every view
    std::function<void(ViewId)> onTap = nullptr; // the area's: see CViewKeys
};

// What a view works with; everything is borrowed and outlives it.
struct SViewParts
{
    CEditorHost& host;
    IPlugin* pPlugin; // null for none
    const SEditorSettings& settings;
    const CKeyBindings& keys;
    SHandState& hand;
    std::shared_ptr<CTerrainCopies> pCopies =
        nullptr; // the area makes them: the contexts of a window share
    std::function<void(SGroundMark& mark)> fillMark = nullptr; // the area's, too
    std::function<void()> drawGuides = nullptr;                // the area's: lines of this frame
    std::function<void()> seeCursor = nullptr; // the area's, before a frame: see LookAgain
    std::function<void()> lookAgain = nullptr; // the area's
    SRenderSettings* pRender = nullptr; // of the settings, whose sun the hand at a view turns
};

// One view of the terrain: draws it, and gives its mouse and keys to the input. A frame is drawn at
// most once per turn of the event loop and never inside an event, so all input that came during a
// frame reaches the plug-in before the next one. Owned by its parent widget.
class CViewWidget : public QOpenGLWidget, public IViewWindow
{
public:
    CViewWidget(
        QWidget* pParent, ViewId view, EViewKind eKind, SViewParts parts, SViewEvents events);
    ~CViewWidget() override;

    // IViewWindow
    uintptr_t GetWindowHandle() const override { return m_Handle; }

    ViewId GetViewId() const { return m_View; }

    EViewKind GetKind() const { return m_Navigator.GetKind(); }

    CViewInput& GetInput() { return m_Input; }

    CViewNavigator& GetNavigator() { return m_Navigator; }

    CCursorNote& GetNote() { return *m_pNote; }

    const SRenderStatistics& GetStatistics() const { return m_Renderer.GetStatistics(); }

    double GetFrameMilliseconds() const { return m_FrameMilliseconds; }

    const CViewKeys& GetKeys() const { return m_Keys; }

    bool WouldSmooth() const { return m_bSmooth && m_Input.IsIdle(); } // what a press would draw

    bool IsWireFrame() const { return m_bWireFrame; }

    void SetWireFrame(bool bOn);
    void FrameAll();
    void LookFrom(const SViewLook& look); // at all of the terrain, or see CViewNavigator::SetLook
    void SeeCursor();                     // tells the plug-in where the cursor is now
    void LoseCursor();                    // and that it is not in this view
    void FrameSpot();                     // under the cursor; without one, everything

    void RequestFrame() { update(); }

    // Events of the mouse that came to this view, for measurements and tests.
    uint64_t GetMoveCount() const { return m_Mouse.GetMoveCount(); }

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void moveEvent(QMoveEvent* pEvent) override;
    bool event(QEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void tabletEvent(QTabletEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void keyReleaseEvent(QKeyEvent* pEvent) override;
    void focusOutEvent(QFocusEvent* pEvent) override;

private:
    const CTerrain* GetTerrain() const;
    void Fly();
    void TakeKeyboard(); // unless somebody else needs it
    void ReleaseRenderer();
    void ShowKeys(Qt::KeyboardModifiers modifiers);
    void FollowKey(const QKeyEvent& event);
    void Update();

    SViewParts m_Parts;
    SViewEvents m_Events;
    IPluginTools* m_pTools; // null for a plug-in without
    ViewId m_View;
    uintptr_t m_Handle;
    CViewNavigator m_Navigator;
    CViewInput m_Input;
    CTerrainRenderer m_Renderer;
    CCursorNote* m_pNote; // this widget's child
    std::unique_ptr<CViewHands> m_pHand;
    CViewKeys m_Keys;
    CViewMouse m_Mouse;
    CFrameQuality m_Quality;
    QTimer m_FrameTimer; // a frame follows, after what is waiting
    bool m_bWireFrame = false;
    bool m_bSmooth = false; // by the keys of the last event
    bool m_bReady = false;  // the renderer has its context
    bool m_bSoftware = false;
    double m_FrameMilliseconds = 0.0;
};
