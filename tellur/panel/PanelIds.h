#pragma once

#include <cstdint>

// The controls of the panel's form, dialog 2101.
enum EPanelControl : uint32_t
{
    PANEL_SHAPE = 2106,
    PANEL_MIN_EXTENT = 2198,
    PANEL_EXTENT_EDIT = 2128,
    PANEL_MAX_EXTENT = 2199,
    PANEL_EXTENT_SLIDER = 2115,

    PANEL_BLUR = 2130,
    PANEL_POINT_HEIGHT = 2131,
    PANEL_SET_HEIGHT = 2133,
    PANEL_RELATIVE_HEIGHT = 2132,
    PANEL_POSTERIZE = 2160,
    PANEL_RAMP = 2137,
    PANEL_GRID = 2123,

    PANEL_POWER_SLIDER = 2200,
    PANEL_POWER_EDIT = 2201,
    PANEL_POWER_SPIN = 2109,
    PANEL_FADE_SLIDER = 2136,
    PANEL_FADE_EDIT = 2121,
    PANEL_FADE_SPIN = 2122,
    PANEL_HARDNESS_SLIDER = 2203,
    PANEL_HARDNESS_EDIT = 2204,
    PANEL_HARDNESS_SPIN = 2187,
    PANEL_DISTANCE_SLIDER = 2195,
    PANEL_DISTANCE_EDIT = 2196,
    PANEL_DISTANCE_SPIN = 2197,

    PANEL_MASK_PATH = 2192,
    PANEL_MASK_ENABLED = 2194,
    PANEL_MASK_BROWSE = 2193,

    PANEL_ADD_BRUSH = 2119,
    PANEL_BRUSH_LIST = 2113,
    PANEL_SAVE_BRUSHES = 2120,

    PANEL_RESOLUTION = 2138,
    PANEL_SAVE_HEIGHT_MAP = 2127,
    PANEL_AUTO_NORMALS = 2139,
    PANEL_UPDATE_NORMALS = 2129,
    PANEL_MATERIAL = 2205,
    PANEL_MATERIAL_BROWSE = 2206,

    // Where the panel listens for what is typed as power and as hardness, and what it takes for the
    // buddy of the power's spin. The form has neither, so typing in those two fields changes the
    // brush only when something else reads the fields; kept as it always was.
    PANEL_NO_POWER_EDIT = 2108,
    PANEL_NO_HARDNESS_EDIT = 2186,
};
