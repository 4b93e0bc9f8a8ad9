#pragma once

#include "framework/core/IFrontEnd.h"
#include "framework/drawing/Geometry.h"

#include <cstdint>

class CDrawContext;
class CWindow;

// What happens to a window. All points and rectangles of a window are device pixels of its client
// area.

struct SMouseEvent
{
    SPoint point;
    SScreenPoint screen;
    bool bControl = false;
    bool bShift = false;
};

// Keys that are told apart; every other one is its upper-case letter, digit or 0.
enum EVirtualKey : uint32_t
{
    KEY_TAB = 0x09,
    KEY_ENTER = 0x0D,
    KEY_ESCAPE = 0x1B,
    KEY_SPACE = 0x20,
    KEY_LEFT = 0x25,
    KEY_UP = 0x26,
    KEY_RIGHT = 0x27,
    KEY_DOWN = 0x28,
    KEY_DELETE = 0x2E,
    KEY_F2 = 0x71,
};

struct SKeyEvent
{
    uint32_t uKey = 0; // EVirtualKey
    bool bControl = false;
    bool bShift = false;
    bool bAlt = false;
};

// Where a slider was told to go. Positions come with the thumb codes alone.
enum class EScrollCode
{
    LineLeft,
    LineRight,
    PageLeft,
    PageRight,
    ThumbPosition, // let go
    ThumbTrack,    // on its way
    Left,          // an end
    Right,
};

enum class ENotify
{
    Clicked,
    Released, // of a button: it is held down no longer; its click, if there is one, follows
    DoubleClicked,
    TextChanged, // typed or set by code
    FocusLost,
    Scrolled,         // eScroll, iValue: position of the thumb codes
    SpinDelta,        // iValue: signed steps; bRefused keeps the position
    SelectionChanged, // by the user
    ContextMenu,      // list view; iItem, screen
    CellClicked,      // list view; iItem, iColumn
    CellDoubleClicked,
    ColumnResized, // by the user; iColumn, iValue: its width
};

// What a control tells its own class first and then its parent. A handler returns true when nobody
// else is to hear of it.
struct SNotification
{
    ENotify eKind = ENotify::Clicked;
    uint32_t uId = 0;         // of the control
    CWindow* pFrom = nullptr; // null when no object is bound to the control
    int iValue = 0;
    EScrollCode eScroll = EScrollCode::ThumbTrack;
    int iItem = -1;
    int iColumn = -1;
    SScreenPoint screen = {};
    bool bRefused = false; // answer
};

// State of an owner-drawn control.
enum EDrawItemState : uint32_t
{
    ITEM_SELECTED = 1, // held down
    ITEM_GRAYED = 2,
    ITEM_DISABLED = 4,
    ITEM_FOCUS = 16,
};

// pContext: borrowed for the call; starts as a plain button face.
struct SDrawItem
{
    CDrawContext* pContext = nullptr;
    SRect rect;
    uint32_t uState = 0; // EDrawItemState
};
