#pragma once

#include <QDockWidget>

#include <functional>
#include <memory>

class CFormView;
class CRuntimeClass;

// The docked panel of the plug-in. Owned by the window; the view in it is the plug-in's code and
// goes before the plug-in.
class CPanelDock : public QDockWidget
{
public:
    // onClosed: the person has closed it; the view is gone then.
    CPanelDock(QWidget* pParent, std::function<void()> onClosed);
    ~CPanelDock() override;

    // Makes and shows the panel of that class, in place of one that is open. False when there is no
    // class, or it can make no window.
    bool Open(const CRuntimeClass* pClass);
    void Close();      // tells nobody
    void UpdateView(); // shows another level
    void TakeFocus();  // the first control that the keyboard stops at

protected:
    void closeEvent(QCloseEvent* pEvent) override;

private:
    std::function<void()> m_OnClosed;
    std::unique_ptr<CFormView> m_pView; // null while it is closed
};
