#pragma once

#include "panel/PanelIds.h"

// The six function buttons of the panel, in the order of its template.
struct SPanelFunction
{
    uint32_t uButton;
    const char* pszName; // of the function's class
    uint32_t uImage;     // bitmap resource
};

inline constexpr SPanelFunction PANEL_FUNCTIONS[] = {
    {PANEL_BLUR, "BlurFunction", 2130},
    {PANEL_POINT_HEIGHT, "PointHeightFunction", 2126},
    {PANEL_SET_HEIGHT, "SetHeightFunction", 2125},
    {PANEL_RELATIVE_HEIGHT, "RelativeHeightFunction", 2129},
    {PANEL_POSTERIZE, "PosterizeFunction", 2127},
    {PANEL_RAMP, "RampFunction", 2128},
};
