#pragma once

#include "framework/widgets/CFormWindow.h"

// A view that the host docks, made from a dialog template. Where it has too little room, scroll
// bars appear. The host makes it through its run-time class, creates its window and, at the end,
// destroys both.
class TELLUR_API CFormView : public CFormWindow
{
public:
    // Makes the window. pParent: null for one of its own, which a host may put where it likes.
    // Answers false, with one logged line, when no module has the template or the program shows no
    // windows, and without one when there is a window already.
    bool Create(CWindow* pParent);
    // Called by the host for the view to show what has changed. It runs by itself when the view is
    // shown for the first time.
    void UpdateView();

protected:
    explicit CFormView(uint32_t uTemplateId);

    virtual void OnUpdate() {}

    void OnShow() override;

private:
    bool m_bShown = false;
};
