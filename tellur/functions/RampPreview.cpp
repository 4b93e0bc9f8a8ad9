// The ramp's preview: twelve white lines, drawn anew each frame.

#include "host/EngineHost.h"
#include "host/Log.h"
#include "tellur/context/PluginContext.h"
#include "tellur/functions/CRampFunction.h"
#include "tellur/functions/RampVectors.h"
#include "tellur/stroke/ITellurBrush.h"

namespace
{

constexpr float HOVER_REACH = 100.0F; // of the ramp shown while hovering, terrain units
constexpr SColor WHITE = {1.0F, 1.0F, 1.0F, 1.0F};

} // namespace

bool CRampFunction::Render(ITerrainModification* pModification,
                           ITellurBrush* pBrush,
                           const SVec3* pPickedPoint)
{
    SVec3 first = GetFirstPoint();
    SVec3 second = GetSecondPoint();
    if (pModification == nullptr)
    {
        if (pPickedPoint == nullptr)
        {
            return false;
        }
        const SVec3& c = *pPickedPoint;
        first = {c.x - HOVER_REACH, c.y, c.z - HOVER_REACH};
        second = {c.x + HOVER_REACH, c.y, c.z + HOVER_REACH};
    }
    else if (first.x < 0.0F || second.x < 0.0F)
    {
        return false;
    }
    if (pBrush == nullptr)
    {
        CrashLog("[CRampFunction::Render] no brush interface\n");
        return false;
    }
    DrawRamp(*pBrush, first, second);
    return true;
}

void CRampFunction::DrawRamp(const ITellurBrush& brush,
                             const SVec3& first,
                             const SVec3& second) const
{
    const PluginContext* pContext = GetPluginContext();
    EngineHost* pEngine = pContext != nullptr ? pContext->GetEngineHost() : nullptr;
    if (pEngine == nullptr)
    {
        return;
    }
    const float fExtent = brush.GetExtent();
    const float fSide = fExtent * m_SideInterpolation;
    const SVec3 d = {second.x - first.x, second.y - first.y, second.z - first.z};
    const SVec3 u = Normalize({-d.z, 0.0F, d.x});
    // Outer corners, inner corners, and where the ends have blended in.
    const SVec3 p1 = Add(first, u, fExtent);
    const SVec3 p2 = Add(first, u, -fExtent);
    const SVec3 p3 = Add(second, u, fExtent);
    const SVec3 p4 = Add(second, u, -fExtent);
    const SVec3 q1 = Add(first, u, fSide);
    const SVec3 q2 = Add(first, u, -fSide);
    const SVec3 q3 = Add(second, u, fSide);
    const SVec3 q4 = Add(second, u, -fSide);
    const SVec3 g = Scale(Normalize(d), GetLength(d) * (1.0F - m_FrontBackInterpolation) * 0.5F);
    const SVec3 lines[12][2] = {{q1, q2},
                                {q3, q4},
                                {p4, q4},
                                {p2, q2},
                                {q2, q4},
                                {p2, p4},
                                {p3, q3},
                                {p1, q1},
                                {q1, q3},
                                {p1, p3},
                                {Add(p1, g, 1.0F), Add(p2, g, 1.0F)},
                                {Add(p3, g, -1.0F), Add(p4, g, -1.0F)}};
    for (const auto& line : lines)
    {
        pEngine->DrawLine(line[0], line[1], WHITE);
    }
}
