#pragma once

#include "editor/app/CViewArrangement.h"

#include <QByteArray>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>

class CBrushLibraryDock;
class CEditorHost;
class CHistoryDock;
class CLightDock;
class CMeasureDock;
class CMessagesDock;
class CPanelDock;
class CPluginCommands;
class CProcessesDock;
class CViewArea;
class IPlugin;
class QDockWidget;
class QMainWindow;
struct SRenderSettings;

// What a layout arranges and what its docks work with; everything is borrowed and outlives it.
struct SLayoutParts
{
    QMainWindow& window;
    CViewArea& views;
    CMessagesDock& messages;
    CEditorHost& host;
    CPluginCommands& plugin;
    IPlugin* pPlugin;                // whose library of brushes is shown; null: none
    SRenderSettings& render;         // the light dock changes it
    std::function<void()> showState; // the history was stepped through, or a brush was taken
};

// Where everything stands in the window: makes the docks around the views, and keeps from run to
// run how a person has arranged them. Made once the plug-in is loaded, owned by the window, gone
// before the views and the plug-in. UI thread.
class CWindowLayout
{
public:
    explicit CWindowLayout(const SLayoutParts& parts);
    ~CWindowLayout(); // the panel in its dock is the plug-in's code and goes here
    CWindowLayout(const CWindowLayout&) = delete;
    CWindowLayout& operator=(const CWindowLayout&) = delete;

    // Opens the views and arranges the window as it was left, once menus and toolbars are there.
    // values: by keys of the INI file; what they do not say gets its first place and size. The
    // window is never larger than its screen. bPanelOpen: the panel was open, and opens next.
    // Returns the keys whose values are none.
    QStringList Restore(const QVariantMap& values, bool bPanelOpen);
    void Store(QVariantMap& values) const;
    // Arranges everything as a first window of the present size has it. Of the panel only the
    // place changes: whether it is open is the plug-in's.
    void Reset();

    CPanelDock& GetPanel() { return *m_pPanel; }

    CHistoryDock& GetHistory() { return *m_pHistory; }

    CLightDock& GetLight() { return *m_pLight; }

    CBrushLibraryDock& GetLibrary() { return *m_pLibrary; }

    CMeasureDock& GetMeasure() { return *m_pMeasure; }

    CProcessesDock& GetProcesses() { return *m_pProcesses; }

    CViewArrangement& GetArrangement() { return m_Arrangement; }

private:
    void SizeDocks();

    QMainWindow& m_Window;
    CEditorHost& m_Host;
    CViewArea& m_Views;
    CViewArrangement m_Arrangement;
    QDockWidget& m_Messages;
    std::unique_ptr<CPanelDock> m_pPanel;
    CHistoryDock* m_pHistory; // these are the window's
    CProcessesDock* m_pProcesses;
    CBrushLibraryDock* m_pLibrary;
    CMeasureDock* m_pMeasure;
    CLightDock* m_pLight;
    QByteArray m_FirstState; // of docks and toolbars
};
