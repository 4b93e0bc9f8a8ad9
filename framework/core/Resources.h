#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// The resources of a program or a library: constant tables that live as long as its code. Ids are
// unique within a kind.

// An item with sub-items is a pop-up and has no id. A separator has neither id nor text.
struct SMenuItemResource
{
    uint32_t uId = 0;
    const char* pszText = nullptr;
    const SMenuItemResource* pSubItems = nullptr;
    size_t nSubItems = 0;
};

struct SMenuResource
{
    uint32_t uId = 0;
    std::span<const SMenuItemResource> items = {};
};

struct SToolBarButtonResource
{
    uint32_t uId = 0; // command
    uint32_t uStyle = 0;
    int iImage = 0; // position in the toolbar's bitmap, counted in buttons
};

// The bitmap holds the buttons' images side by side.
struct SToolBarResource
{
    uint32_t uId = 0;
    int iButtonWidth = 0; // pixels of one image
    int iButtonHeight = 0;
    uint32_t uBitmapId = 0;
    std::span<const SToolBarButtonResource> buttons = {};
};

struct SStringResource
{
    uint32_t uId = 0;
    const char* pszText = nullptr;
};

// A picture as PNG, once for 100 % and once for 200 % scale. Whoever draws takes the one that fits.
struct SPictureResource
{
    const uint8_t* pPng = nullptr;
    size_t nBytes = 0;
    const uint8_t* pPngDouble =
        nullptr; // twice as wide and high; null: only the first one is there
    size_t nBytesDouble = 0;
};

// A picture with alpha and the pixel of it, counted at 100 %, that points.
struct SCursorResource
{
    uint32_t uId = 0;
    SPictureResource picture;
    int32_t iHotX = 0;
    int32_t iHotY = 0;
};

struct SBitmapResource
{
    uint32_t uId = 0;
    SPictureResource picture;
};

enum class EControlKind : uint8_t
{
    Label,
    PushButton,
    CheckBox,
    ThreeState, // a check box with an undetermined state
    PushCheck,  // a check box that looks like a push button and stays down
    OwnerDraw,  // a push button that its class draws
    Edit,
    Slider,
    Spin,
    ListBox,
    DropDownList,
    ListView, // report style
    Space,    // nothing, keeps its width
};

// Styles of a control, joined by '|'.
enum EControlStyle : uint32_t
{
    CONTROL_READ_ONLY = 1,     // edits
    CONTROL_DEFAULT = 2,       // the button that Enter presses
    CONTROL_NO_TAB = 4,        // the keyboard does not stop here
    CONTROL_ALIGN_LEFT = 0x10, // where a button has its picture; without one it is centred
    CONTROL_ALIGN_RIGHT = 0x20,
    CONTROL_ALIGN_TOP = 0x40,
    CONTROL_ALIGN_BOTTOM = 0x80,
    CONTROL_SQUARE = 0x100, // as wide as the row is high
};

// One control of a row, left to right. The framework gives it its place: a control is as wide as
// its content or as iWidth asks for, whichever is more, plus its share of what the row has left
// over.
struct SControlResource
{
    uint32_t uId = 0; // of its notifications; 0 for labels and spaces
    EControlKind eKind = EControlKind::Label;
    const char* pszText = nullptr;
    int iWidth = 0;  // average characters of the dialog's font
    int iWeight = 0; // share of the spare width
    uint32_t uStyle = 0;
};

// The labels that begin the rows of a dialog get one width, so what follows them is aligned.
struct SRowResource
{
    std::span<const SControlResource> controls = {};
    int iLines = 0;  // lines of text that the row is high; 0: as its controls ask for
    int iWeight = 0; // share of the dialog's spare height
};

struct SGroupResource
{
    const char* pszTitle = nullptr; // null: rows without a frame
    std::span<const SRowResource> rows = {};
    int iColumn = 0; // groups of one column stand below each other, columns side by side
};

struct SDialogResource
{
    uint32_t uId = 0;
    const char* pszCaption = nullptr;
    std::span<const SGroupResource> groups = {};
};

struct SResourceModule
{
    const char* pszName = nullptr;
    std::span<const SMenuResource> menus = {};
    std::span<const SToolBarResource> toolBars = {};
    std::span<const SStringResource> strings = {};
    std::span<const SCursorResource> cursors = {};
    std::span<const SBitmapResource> bitmaps = {};
    std::span<const SDialogResource> dialogs = {};
};
