#pragma once

#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"

// Which tools draw along a path of points. Null: a plug-in without that interface.

// Whether the tool at hand leads from the press to the release.
inline bool IsRamp(IPluginTools* pTools)
{
    constexpr char RAMP[] = "RampFunction";
    return pTools != nullptr && pTools->IsTerraforming() && pTools->GetFunctionName() == RAMP;
}

// Whether the tool at hand draws along a path, or from point to point.
inline bool CanDrawPath(IPluginTools* pTools, IPluginStrokes* pStrokes)
{
    return IsRamp(pTools) || (pTools != nullptr && pTools->GetBrushExtent() > 0.0F &&
                              pStrokes != nullptr && pStrokes->GetStrokeSpacing() > 0.0F);
}
