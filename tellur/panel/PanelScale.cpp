#include "tellur/panel/PanelScale.h"

#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/context/ShareStep.h"
#include "tellur/context/SliderPosition.h"
#include "tellur/panel/IPanelPlugin.h"

#include <algorithm>

float GetExtentAt(const SExtentLimits& limits, int iPos)
{
    if (GetCurrentTerrain() == nullptr)
    {
        return 0.0F;
    }
    const float fLow = std::max(limits.fMin, 0.0F);
    const float fHigh = std::max(limits.fMax, 0.0F);
    return fLow +
           (fHigh - fLow) * static_cast<float>(iPos) / static_cast<float>(EXTENT_SCALE.iPositions);
}

int GetExtentPosition(const SExtentLimits& limits, float fExtent)
{
    const float fLow = std::max(limits.fMin, 0.0F);
    const float fHigh = std::max(limits.fMax, 0.0F);
    if (GetCurrentTerrain() == nullptr || fHigh - fLow == 0.0F)
    {
        return 0;
    }
    return TruncateToPosition((fExtent - fLow) / (fHigh - fLow) *
                              static_cast<float>(EXTENT_SCALE.iPositions));
}

float GetShareAt(const SExtentLimits& /*limits*/, int iPos)
{
    return GetShareAtPosition(iPos);
}

int GetSharePosition(const SExtentLimits& /*limits*/, float fShare)
{
    return TruncateToPosition(fShare * static_cast<float>(SHARE_SCALE.iPositions));
}

float GetDistanceAt(const SExtentLimits& /*limits*/, int iPos)
{
    const Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr && iPos != 0
               ? static_cast<float>(iPos) * pTerrain->GetSize().y * 0.001F
               : 0.0F;
}

int GetDistancePosition(const SExtentLimits& /*limits*/, float fDistance)
{
    const Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr ? TruncateToPosition(fDistance / pTerrain->GetSize().y *
                                                    static_cast<float>(DISTANCE_SCALE.iPositions))
                               : 0;
}
