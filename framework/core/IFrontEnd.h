#pragma once

#include "host/Export.h"

#include <cstdint>
#include <string>

class CMenu;
struct SCursorResource;

enum class EKey : uint32_t
{
    Control,
    Alt,
    Shift,
};

// In the units in which the window system places windows and cursor, y downward.
struct SScreenPoint
{
    int32_t x = 0;
    int32_t y = 0;
};

// Buttons and icon of a message box, joined by '|'.
enum EMessageBoxFlags : uint32_t
{
    MB_OK = 0,
    MB_YESNO = 4,
    MB_ICONQUESTION = 0x20,
    MB_ICONEXCLAMATION = 0x30,
};

enum class EMessageBoxAnswer
{
    Ok,
    Yes,
    No,
    Cancel, // the box was closed without an answer
};

// What the framework asks of the window system. The program with the windows, or the player of a
// script, puts its own in place; the rest of the code only calls the functions of Cursor.h,
// Capture.h, ChooseColor.h, ChooseFolder.h, CursorPos.h, KeyState.h, MessageBox.h and PopupMenu.h.
// UI thread.
class TELLUR_API IFrontEnd
{
public:
    virtual ~IFrontEnd() = default;

    virtual bool IsKeyDown(EKey eKey) const = 0; // at this moment, not at the last event
    virtual SScreenPoint GetCursorPos() const = 0;
    virtual void SetCursorPos(SScreenPoint point) = 0;
    virtual SScreenPoint GetScreenSize() const = 0;
    // pCursor: borrowed until the next call; null: the system's own arrow.
    virtual void SetCursor(const SCursorResource* pCursor) = 0;
    // Sends all mouse input to the window until it is released; 0 takes the one the mouse is over.
    virtual void SetCapture(uintptr_t uWindow) = 0;
    virtual void ReleaseCapture() = 0;
    // Shows the text and returns when it is answered. pszText: borrowed, never null. uFlags:
    // EMessageBoxFlags.
    virtual EMessageBoxAnswer MessageBox(const char* pszText, uint32_t uFlags) = 0;
    // uColor (red | green << 8 | blue << 16) is what the chooser starts with, and then what was
    // chosen. Answers false and keeps the colour when it is cancelled.
    virtual bool ChooseColor(uint32_t& uColor) = 0;
    // Does the same for a folder, a path of the operating system or empty.
    virtual bool ChooseFolder(std::string& strFolder) = 0;
    // Shows the menu and returns the id of the chosen item, 0 for none.
    virtual uint32_t TrackPopupMenu(const CMenu& menu, SScreenPoint point) = 0;
};

// Puts a front end in place, borrowed until the next call. Null stands for the default one: no
// key is down, it remembers where the cursor was set to, it answers a message box with
// EMessageBoxAnswer::Ok after logging its text through LogR, and choosers and menus are cancelled.
// Returns the front end before, null for the default.
TELLUR_API IFrontEnd* SetFrontEnd(IFrontEnd* pFrontEnd);
TELLUR_API IFrontEnd& GetFrontEnd();
