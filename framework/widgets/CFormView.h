#pragma once

#include "framework/widgets/CFormWindow.h"

// A view that the host docks, made from a dialog template. Where it has too little room, scroll
// bars appear. The host makes it through its run-time class, creates its window and, at the end,
// destroys both.
class TELLUR_API CFormView : public CFormWindow
{
public:
    // pParent: null for a window of its own, which a host may put where it likes. False, with one
    // logged line, when no module has the template or the program shows no windows.
    bool Create(CWindow* pParent);
    // The host asks its views to show what has changed. Runs by itself when it is shown first.
    void UpdateView();

protected:
    explicit CFormView(uint32_t uTemplateId);

    virtual void OnUpdate() {}

    void OnShow() override;

private:
    bool m_bShown = false;
};
