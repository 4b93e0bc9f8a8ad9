#include "framework/core/Capture.h"
#include "framework/core/ChooseColor.h"
#include "framework/core/ChooseFolder.h"
#include "framework/core/CursorPos.h"
#include "framework/core/IFrontEnd.h"
#include "framework/core/KeyState.h"
#include "framework/core/MessageBox.h"
#include "framework/core/PopupMenu.h"
#include "host/Log.h"

namespace
{

// A front end without windows.
class CDefaultFrontEnd : public IFrontEnd
{
public:
    bool IsKeyDown(EKey) const override { return false; }

    SScreenPoint GetCursorPos() const override { return m_CursorPos; }

    void SetCursorPos(SScreenPoint point) override { m_CursorPos = point; }

    SScreenPoint GetScreenSize() const override { return {1920, 1080}; }

    void SetCursor(const SCursorResource*) override {}

    void SetCapture(uintptr_t) override {}

    void ReleaseCapture() override {}

    EMessageBoxAnswer MessageBox(const char* pszText, uint32_t) override
    {
        LogR("%s\n", pszText);
        return EMessageBoxAnswer::Ok;
    }

    bool ChooseColor(uint32_t&) override { return false; }

    bool ChooseFolder(std::string&) override { return false; }

    uint32_t TrackPopupMenu(const CMenu&, SScreenPoint) override { return 0; }

private:
    SScreenPoint m_CursorPos;
};

// Null stands for the default one, which is made when it is first asked for.
IFrontEnd* g_FrontEnd = nullptr;

} // namespace

IFrontEnd* SetFrontEnd(IFrontEnd* pFrontEnd)
{
    IFrontEnd* pPrevious = g_FrontEnd;
    g_FrontEnd = pFrontEnd;
    return pPrevious;
}

IFrontEnd& GetFrontEnd()
{
    static CDefaultFrontEnd s_Default;
    return g_FrontEnd != nullptr ? *g_FrontEnd : s_Default;
}

bool IsKeyDown(EKey eKey)
{
    return GetFrontEnd().IsKeyDown(eKey);
}

SScreenPoint GetCursorPos()
{
    return GetFrontEnd().GetCursorPos();
}

void SetCursorPos(SScreenPoint point)
{
    GetFrontEnd().SetCursorPos(point);
}

SScreenPoint GetScreenSize()
{
    return GetFrontEnd().GetScreenSize();
}

void SetCapture(uintptr_t uWindow)
{
    GetFrontEnd().SetCapture(uWindow);
}

void ReleaseCapture()
{
    GetFrontEnd().ReleaseCapture();
}

EMessageBoxAnswer ShowMessageBox(const char* pszText, uint32_t uFlags)
{
    return GetFrontEnd().MessageBox(pszText != nullptr ? pszText : "", uFlags);
}

bool ChooseColor(uint32_t& uColor)
{
    return GetFrontEnd().ChooseColor(uColor);
}

bool ChooseFolder(std::string& strFolder)
{
    return GetFrontEnd().ChooseFolder(strFolder);
}

uint32_t TrackPopupMenu(const CMenu& menu, SScreenPoint point)
{
    return GetFrontEnd().TrackPopupMenu(menu, point);
}
