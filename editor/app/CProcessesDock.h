#pragma once

#include <QDockWidget>

#include <functional>

class CPluginRegistry;
class QPushButton;
class QTreeWidget;

// The processes of the plug-in: what is chosen runs, and shows how far it is. Owned by the window.
class CProcessesDock : public QDockWidget
{
public:
    // registry: borrowed; the plug-in has registered its processes. onRun: runs the process of that
    // place in the registry, true when it has done its work.
    CProcessesDock(QWidget* pParent,
                   const CPluginRegistry& registry,
                   std::function<bool(size_t)> onRun);

    void ShowProgress(float fDone); // of the one that runs, 0 to 1

private:
    void Fill();
    void Run();

    const CPluginRegistry& m_Registry;
    std::function<bool(size_t)> m_OnRun;
    QTreeWidget* m_pList; // the dock's
    QPushButton* m_pButton;
    int m_iRunning = -1; // place in the list
};
