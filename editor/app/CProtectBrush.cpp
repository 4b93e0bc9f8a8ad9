#include "editor/app/CProtectBrush.h"

#include "editor/core/CEditorHost.h"
#include "editor/view/CViewNavigator.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr float USUAL_SHARE = 1.0F / 32.0F; // of the terrain, without a brush
constexpr float SPACING = 0.25F;            // of the radius
constexpr float MOST_DISCS = 1000.0F;       // between two reports of the mouse
constexpr uint32_t EDGE_POINTS = 48;
constexpr SColor EDGE_COLOR = {0.30F, 0.78F, 1.0F, 1.0F};

} // namespace

CProtectBrush::CProtectBrush(CEditorHost& host, IPlugin* pPlugin, const CViewNavigator& navigator)
    : m_Host(host)
    , m_Tools(dynamic_cast<IPluginTools*>(pPlugin))
    , m_Navigator(navigator)
{
}

bool CProtectBrush::Pick(float fX, float fY, SVec3& hit) const
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr && m_Navigator.Pick(pTerrain, fX, fY, hit);
}

float CProtectBrush::GetRadius() const
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    const float fExtent = m_Tools != nullptr ? m_Tools->GetBrushExtent() : 0.0F;
    const float fUsual = pTerrain != nullptr ? pTerrain->GetSize().x * USUAL_SHARE : 0.0F;
    return fExtent > 0.0F ? fExtent / 2 : fUsual;
}

void CProtectBrush::Put(const SVec3& middle, float fRadius)
{
    m_Host.GetProtection().Do({EProtect::Disc, middle.x, middle.z, fRadius, m_bProtected});
    m_Last = middle;
    m_bLast = true;
    m_Host.RedrawViews();
}

void CProtectBrush::Press(float fX, float fY, uint32_t uFlags)
{
    m_bProtected = !IsTakingAway(uFlags);
    m_bLast = false;
    m_Host.GetProtection().Begin();
    SVec3 hit;
    if (Pick(fX, fY, hit))
    {
        Put(hit, GetRadius());
    }
}

bool CProtectBrush::Move(float fX, float fY)
{
    SVec3 hit;
    if (!m_Host.GetProtection().IsOpen())
    {
        return false;
    }
    if (!Pick(fX, fY, hit))
    {
        m_bLast = false; // over the sky the way is interrupted
        return true;
    }
    const float fRadius = GetRadius();
    const SVec3 from = m_bLast ? m_Last : hit;
    const float fWay = std::hypot(hit.x - from.x, hit.z - from.z);
    // A brush that is nothing beside the way must not keep the hand waiting.
    const float fSpacing = std::max(fRadius * SPACING, fWay / MOST_DISCS);
    if (!m_bLast || !(fSpacing > 0.0F))
    {
        Put(hit, fRadius);
        return true;
    }
    // Discs lie whole spacings apart, however often the mouse reports.
    const auto nDiscs = static_cast<int>(fWay / fSpacing);
    for (int i = 1; i <= nDiscs && m_Host.GetProtection().IsOpen(); ++i)
    {
        const float fShare = static_cast<float>(i) * fSpacing / fWay;
        Put({from.x + (hit.x - from.x) * fShare, hit.y, from.z + (hit.z - from.z) * fShare},
            fRadius);
    }
    return true;
}

void CProtectBrush::End()
{
    m_Host.GetProtection().End();
}

bool CProtectBrush::Cancel()
{
    const bool bOpen = m_Host.GetProtection().IsOpen();
    m_Host.GetProtection().Cancel();
    return bOpen;
}

void CProtectBrush::DrawEdge(const SVec3& middle) const
{
    const CTerrain& terrain = *m_Host.GetEngine().GetCWorld().GetCTerrain();
    const SVec3 size = terrain.GetSize();
    const float fRadius = GetRadius();
    std::array<SVec3, EDGE_POINTS> points;
    for (uint32_t i = 0; i < EDGE_POINTS; ++i)
    {
        const float fTurn = 6.2831853F * static_cast<float>(i) / static_cast<float>(EDGE_POINTS);
        SVec3& point = points[i];
        point.x = std::clamp(middle.x + fRadius * std::cos(fTurn), 0.0F, size.x);
        point.z = std::clamp(middle.z + fRadius * std::sin(fTurn), 0.0F, size.z);
        point.y = terrain.GetHeightAt(point.x, point.z);
    }
    m_Host.GetEngine().DrawLines(EDGE_POINTS, points.data(), POLYLINE_CLOSED, EDGE_COLOR);
}
