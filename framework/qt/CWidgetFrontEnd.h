#pragma once

#include "framework/core/IFrontEnd.h"
#include "host/Export.h"

#include <memory>
#include <string>

// The window system as the framework's front end: real keys, cursor, capture, message boxes,
// choosers and menus. A program makes one after its application object and hands it to
// SetFrontEnd.
class TELLUR_API CWidgetFrontEnd : public IFrontEnd
{
public:
    CWidgetFrontEnd();
    ~CWidgetFrontEnd() override;
    CWidgetFrontEnd(const CWidgetFrontEnd&) = delete;
    CWidgetFrontEnd& operator=(const CWidgetFrontEnd&) = delete;

    bool IsKeyDown(EKey eKey) const override;
    SScreenPoint GetCursorPos() const override;
    void SetCursorPos(SScreenPoint point) override;
    SScreenPoint GetScreenSize() const override;
    // Shows the cursor over the views that a host has registered, see WidgetAccess.h.
    void SetCursor(const SCursorResource* pCursor) override;
    void SetCapture(uintptr_t uWindow) override;
    void ReleaseCapture() override;
    EMessageBoxAnswer MessageBox(const char* pszText, uint32_t uFlags) override;
    bool ChooseColor(uint32_t& uColor) override;
    bool ChooseFolder(std::string& strFolder) override;
    uint32_t TrackPopupMenu(const CMenu& menu, SScreenPoint point) override;

protected:
    // Asked for a box with an exclamation mark: what is known of the fault that it tells of, UTF-8.
    // It is shown under the box's text; empty shows nothing.
    virtual std::string GetFaultDetail() const { return {}; }

private:
    struct SImpl;

    std::unique_ptr<SImpl> m_Impl;
};
