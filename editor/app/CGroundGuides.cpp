#include "editor/app/CGroundGuides.h"

#include "editor/app/CStrokeSender.h"
#include "editor/view/CGroundRuler.h"
#include "editor/view/CStrokePath.h"
#include "editor/view/SSymmetry.h"
#include "editor/view/ViewGround.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace
{

constexpr SColor PATH = {1.0F, 0.85F, 0.2F, 1.0F};
constexpr SColor RULER = {1.0F, 1.0F, 1.0F, 1.0F};
constexpr SColor PROBE = {1.0F, 0.45F, 0.85F, 1.0F};
constexpr SColor BASE = {0.2F, 0.25F, 0.15F, 1.0F}; // darker than sky and ground
constexpr SColor SYMMETRY = {0.3F, 0.9F, 1.0F, 0.9F};
// Pieces of a line that follows the ground.
constexpr int ACROSS = 256;
constexpr int BETWEEN = 48;
constexpr int ROUND = 24;
constexpr float KNOT_SHARE = 0.01F;   // of the terrain, arm of a knot's cross
constexpr float CENTRE_SHARE = 0.04F; // and of the centre's
constexpr float FULL_TURN = 6.2831853F;

} // namespace

CGroundGuides::CGroundGuides(CEngineHost& engine)
    : m_Engine(engine)
    , m_Terrain(engine.GetCWorld().GetCTerrain())
{
}

// Beside the terrain at its edge.
SVec3 CGroundGuides::GetGround(float fX, float fZ) const
{
    const SVec3 size = m_Terrain->GetSize();
    SVec3 at = {std::clamp(fX, 0.0F, size.x), 0.0F, std::clamp(fZ, 0.0F, size.z)};
    m_Terrain->PickDown(at);
    return at;
}

void CGroundGuides::DrawLine(const SVec3& from, const SVec3& to, int nPieces, const SColor& color)
{
    SVec3 last = GetGround(from.x, from.z);
    for (int i = 1; i <= nPieces; ++i)
    {
        const float fShare = static_cast<float>(i) / static_cast<float>(nPieces);
        const SVec3 next =
            GetGround(from.x + (to.x - from.x) * fShare, from.z + (to.z - from.z) * fShare);
        m_Engine.DrawLine(last, next, color);
        last = next;
    }
}

void CGroundGuides::DrawCross(const SVec3& at, float fArm, const SColor& color)
{
    DrawLine({at.x - fArm, 0.0F, at.z}, {at.x + fArm, 0.0F, at.z}, 4, color);
    DrawLine({at.x, 0.0F, at.z - fArm}, {at.x, 0.0F, at.z + fArm}, 4, color);
}

void CGroundGuides::DrawRing(const SVec3& at, float fRadius, const SColor& color)
{
    SVec3 last = GetGround(at.x + fRadius, at.z);
    for (int i = 1; i <= ROUND; ++i)
    {
        const float fAngle = FULL_TURN * static_cast<float>(i) / static_cast<float>(ROUND);
        const SVec3 next =
            GetGround(at.x + fRadius * std::cos(fAngle), at.z + fRadius * std::sin(fAngle));
        m_Engine.DrawLine(last, next, color);
        last = next;
    }
}

void CGroundGuides::DrawPath(const CStrokePath& path, const SVec3* pCursor)
{
    if (m_Terrain == nullptr || !path.IsOn())
    {
        return;
    }
    const std::vector<SVec3> knots = path.GetKnots();
    const SVec3 size = m_Terrain->GetSize();
    for (size_t i = 0; i < knots.size(); ++i)
    {
        DrawCross(knots[i], KNOT_SHARE * std::max(size.x, size.z), PATH);
        if (i > 0)
        {
            DrawLine(knots[i - 1], knots[i], BETWEEN, PATH);
        }
    }
    if (pCursor != nullptr && !knots.empty() && !path.IsClosed())
    {
        SColor faint = PATH;
        faint.a *= 0.5F;
        DrawLine(knots.back(), *pCursor, BETWEEN, faint);
    }
}

void CGroundGuides::DrawRuler(const CGroundRuler& ruler)
{
    if (m_Terrain == nullptr)
    {
        return;
    }
    const SVec3 size = m_Terrain->GetSize();
    const float fArm = KNOT_SHARE * std::max(size.x, size.z);
    if (ruler.HasLine())
    {
        DrawLine(ruler.GetFrom(), ruler.GetTo(), ACROSS, RULER);
        DrawCross(ruler.GetFrom(), fArm, RULER);
        DrawCross(ruler.GetTo(), fArm, RULER);
    }
    if (ruler.HasProbe())
    {
        DrawCross(ruler.GetProbe(), fArm, PROBE);
        DrawRing(ruler.GetProbe(), fArm, PROBE);
    }
}

void CGroundGuides::DrawSymmetry(const SSymmetry& symmetry)
{
    if (m_Terrain == nullptr || !symmetry.IsOn())
    {
        return;
    }
    const SVec3 size = m_Terrain->GetSize();
    const SVec3 centre = symmetry.GetCentre(size);
    if (symmetry.bAcrossX && !symmetry.bTurned)
    {
        DrawLine({centre.x, 0.0F, 0.0F}, {centre.x, 0.0F, size.z}, ACROSS, SYMMETRY);
    }
    if (symmetry.bAcrossZ && !symmetry.bTurned)
    {
        DrawLine({0.0F, 0.0F, centre.z}, {size.x, 0.0F, centre.z}, ACROSS, SYMMETRY);
    }
    if (symmetry.bTurned)
    {
        DrawCross(centre, CENTRE_SHARE * std::max(size.x, size.z), SYMMETRY);
    }
}

void CGroundGuides::DrawBase()
{
    if (m_Terrain == nullptr)
    {
        return;
    }
    const SExtents box = GetGroundBox(m_Terrain);
    const float fLow = box.min.y;
    const SVec3 ring[] = {{box.min.x, fLow, box.min.z},
                          {box.max.x, fLow, box.min.z},
                          {box.max.x, fLow, box.max.z},
                          {box.min.x, fLow, box.max.z}};
    const SVec3* pLast = std::end(ring) - 1;
    for (const SVec3& corner : ring)
    {
        m_Engine.DrawLine(*pLast, corner, BASE);
        pLast = &corner;
    }
}
