#pragma once

#include "framework/drawing/ColorRef.h"

// What the operations of a drawing context take beside places and colours.

enum class EPenStyle : uint8_t
{
    Solid,
    Dotted, // as many pixels drawn as the pen is wide, then as many left as they are, and so on
    None,
};

struct SPen
{
    EPenStyle eStyle = EPenStyle::Solid;
    int nWidth = 1; // device pixels; less than 1 counts as 1
    ColorRef uColor = 0;

    bool operator==(const SPen&) const = default;
};

enum class EEdge : uint8_t
{
    Raised,
    Sunken,
};

// How an edge is drawn, joined by '|'.
enum EEdgeFlag : uint32_t
{
    EDGE_SOFT = 1,        // the brighter and the darker line outside, as push buttons have them
    EDGE_FILL_MIDDLE = 2, // the inside in the button face colour
};

// Where a text stands and what is behind it, joined by '|'. Text is always one line.
enum ETextFlag : uint32_t
{
    TEXT_LEFT = 0,
    TEXT_CENTER = 1,
    TEXT_VCENTER = 2,     // otherwise at the top
    TEXT_TRANSPARENT = 4, // without it the cell of the text is filled with the background colour
};

struct SColorPair
{
    ColorRef uFrom = 0;
    ColorRef uTo = 0;
};
