#pragma once

#include "tellur/panel/PanelIds.h"

// One button of the panel that chooses a function to sculpt with.
struct SPanelFunction
{
    const char* pszName; // of the function's class
    uint32_t uButton;
    uint32_t uImage; // bitmap resource
};

// The function buttons, in the order of the form's template, which has to have a button for each.
inline constexpr SPanelFunction PANEL_FUNCTIONS[] = {
    {"BlurFunction", PANEL_BLUR, 2130},
    {"PointHeightFunction", PANEL_POINT_HEIGHT, 2126},
    {"SetHeightFunction", PANEL_SET_HEIGHT, 2125},
    {"RelativeHeightFunction", PANEL_RELATIVE_HEIGHT, 2129},
    {"PosterizeFunction", PANEL_POSTERIZE, 2127},
    {"RampFunction", PANEL_RAMP, 2128},
};
