#pragma once

#include <QDockWidget>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

class CFormView;
class CRuntimeClass;

// What a person does to the panel as a whole.
struct SPanelEvents
{
    std::function<void()> onSwitch; // it is to open, or to close while it is open
    std::function<void()> onClosed; // it was closed, because onSwitch has left it open
    std::function<void()> onLeave;  // the keyboard is wanted elsewhere
};

// The docked panel of the plug-in. Owned by the window; the view in it is the plug-in's code and
// goes before the plug-in.
class CPanelDock : public QDockWidget
{
public:
    CPanelDock(QWidget* pParent, SPanelEvents events);
    ~CPanelDock() override;

    // Makes and shows the panel of that class, in place of one that is open. False when there is no
    // class, or it can make no window.
    bool Open(const CRuntimeClass* pClass);
    void Close();      // tells nobody
    void UpdateView(); // shows another level
    void TakeFocus();  // the first control that the keyboard can work
    void FitWidth();   // at least as wide as the form needs it, where the window has the room

    // The next one that is opened has its place and width already.
    void KeepPlace(int iWidth)
    {
        m_bPlaced = true;
        m_PlacedWidth = iWidth;
    }

    // Titles of the groups that are folded, also while it is closed.
    QStringList GetFolded() const;
    void SetFolded(const QStringList& titles);

    // To be called when the program ends, which closes all windows, a floating panel among them:
    // that is not the person's doing, and the next start opens it again.
    void KeepOpen() { m_bKeptOpen = true; }

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override; // fields under the focus

private:
    void OnFocus(QWidget* pNow);
    void LeaveField();

    SPanelEvents m_Events;
    QTimer m_LeaveTimer;                // a field is left once it has done what its key does there
    std::unique_ptr<CFormView> m_pView; // null while it is closed
    QStringList m_Folded;               // when it was open last
    int m_FormWidth = 0;                // that cuts nothing off
    int m_PlacedWidth = 0;              // where it was placed
    bool m_bPlaced = false;
    bool m_bKeptOpen = false;
};
