#pragma once

#include "framework/core/IFrontEnd.h"
#include "tests/support/Calls.h"

#include <set>

// A front end without windows, and the process's own while it lives: the test says which keys are
// held and what is answered, and reads what was asked.
class CFakeFrontEnd : public IFrontEnd
{
public:
    CFakeFrontEnd();
    ~CFakeFrontEnd() override;
    CFakeFrontEnd(const CFakeFrontEnd&) = delete;
    CFakeFrontEnd& operator=(const CFakeFrontEnd&) = delete;

    bool IsKeyDown(EKey eKey) const override { return keys.count(eKey) > 0; }

    SScreenPoint GetCursorPos() const override { return cursorPos; }

    void SetCursorPos(SScreenPoint point) override { cursorPos = point; }

    SScreenPoint GetScreenSize() const override { return {1000, 800}; }

    void SetCursor(const SCursorResource* pNewCursor) override { pCursor = pNewCursor; }

    void SetCapture(uintptr_t uWindow) override;
    void ReleaseCapture() override;
    EMessageBoxAnswer MessageBox(const char* pszText, uint32_t uFlags) override;
    bool ChooseColor(uint32_t& uColor) override;
    bool ChooseFolder(std::string& strFolder) override;
    uint32_t TrackPopupMenu(const CMenu& menu, SScreenPoint point) override;

    std::set<EKey> keys;
    SScreenPoint cursorPos;
    const SCursorResource* pCursor = nullptr;
    EMessageBoxAnswer eAnswer = EMessageBoxAnswer::Ok;
    uint32_t uChosenColor = 0xFFFFFFFF; // what the chooser answers; all bits: it is cancelled
    std::string strChosenFolder;        // empty: it is cancelled
    uint32_t uChosenItem = 0;           // of a menu
    std::vector<std::string> menuTexts; // of the last menu, "" for a separator
    Calls calls;                        // capture, message boxes, choosers and menus
    Calls* pCalls = &calls;             // another list may take them

private:
    IFrontEnd* m_Previous;
};
