#pragma once

#include <cstdint>

// Value types that cross the boundary between host, engine and plug-in. All are plain records of
// 32-bit numbers and are copied freely; none has operations. An event of the mouse travels so: the
// host has the numbers, IPlugin gets them one by one, packs them into the blocks below for the
// ModeManager, and the mode gets a ViewPoint and the addresses of blocks.

// A point or a direction. x and z are horizontal, y points up. Terrain units unless said otherwise.
struct SVec3
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

struct SVec4
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
    float w = 0.0F;
};

// An axis-aligned box in terrain units, the terrain's origin at 0: lower corner, then upper corner.
struct SExtents
{
    SVec3 min;
    SVec3 max;
};

// Red, green, blue, alpha, each 0 to 1.
struct SColor
{
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 0.0F;
};

// 4 x 4, row by row.
struct SMatrix4
{
    float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
};

// Names one 3D view of the host. A small positive number; NO_VIEW is no view.
using ViewId = uint32_t;
constexpr ViewId NO_VIEW = 0xFFFFFFFFU;

// The cursor position in a view: x in the low half, y in the high half, view pixels. The plug-in
// never decodes it, it only hands it back to EditorHost::PickTerrain.
using ViewPoint = uint32_t;

// Flags of mouse events: the left button and the modifier keys that are held.
enum EMouseFlag : uint32_t
{
    MOUSE_LEFT = 0x1,
    MOUSE_SHIFT = 0x4,
    MOUSE_CONTROL = 0x8,
    MOUSE_ALT = 0x20,
};

// Buttons that are held, in the blocks of mouse data.
enum EMouseButton : int32_t
{
    MOUSE_BUTTON_LEFT = 1,
};

// Mouse data as the host hands it on to the current mode: blocks of 32-bit numbers, passed by
// address and valid for the call only.
struct SButtonBlock
{
    int32_t x = 0; // view pixels
    int32_t y = 0;
    int32_t dx = 0; // pixels since the last event
    int32_t dy = 0;
};

struct SPointBlock
{
    int32_t x = 0; // view pixels
    int32_t y = 0;
};

struct SWheelBlock
{
    int32_t wheel = 0;   // notches, positive away from the user
    int32_t buttons = 0; // bit set of EMouseButton, those that are held
};

struct SStepBlock
{
    int32_t dx = 0; // pixels since the last move
    int32_t dy = 0; // positive is downward
};
