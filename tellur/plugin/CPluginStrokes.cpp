#include "tellur/plugin/CPluginStrokes.h"

#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/brushes/SpacingShare.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CPluginTools.h"
#include "tellur/resources/PluginResources.h"

CPluginStrokes::CPluginStrokes(CTerraformingState& terraforming,
                               CBrushAtHand& brush,
                               CPluginTools& tools)
    : m_Terraforming(terraforming)
    , m_Brush(brush)
    , m_Tools(tools)
{
}

float CPluginStrokes::GetStrokeSpacing()
{
    constexpr float SUMMED_SHARE = 0.25F; // finer, each pass would be a stronger one
    const CTellurBrush* pBrush = m_Brush.Get();
    if (m_Tools.IsPainting())
    {
        return m_Tools.GetBrushExtent() * SUMMED_SHARE;
    }
    const EStrokePath ePath =
        m_Tools.IsTerraforming() && pBrush != nullptr ? pBrush->GetStrokePath() : EStrokePath::None;
    if (ePath == EStrokePath::None)
    {
        return 0.0F;
    }
    const IImage* pShape = pBrush->GetBitmapImage();
    const float fShare = ePath == EStrokePath::AddedUp || pShape == nullptr
                             ? SUMMED_SHARE
                             : GetSpacingShare(*pShape, pBrush->GetHardness());
    return m_Tools.GetBrushExtent() * fShare;
}

bool CPluginStrokes::HasFreePoints()
{
    const CTellurBrush* pBrush = m_Brush.Get();
    return m_Tools.IsPainting() ||
           (m_Tools.IsTerraforming() && pBrush != nullptr &&
            pBrush->GetStrokePath() != EStrokePath::None && !(pBrush->GetFadeFactor() > 0.0F));
}

const float* CPluginStrokes::GetPressTile(uint32_t uTileX, uint32_t uTileZ)
{
    static_assert(PRESS_TILE == SHeightTile::SIDE);
    return m_Terraforming.IsDragging() ? m_Terraforming.GetSession()->GetPressTile(uTileX, uTileZ)
                                       : nullptr;
}

bool CPluginStrokes::BeginSmoothing()
{
    // What is looked up on the way, cursors and texts, is the plug-in's and not the host's.
    const CResourceScope scope(&GetPluginResources());
    return m_Brush.BeginSmoothing();
}

void CPluginStrokes::EndSmoothing()
{
    const CResourceScope scope(&GetPluginResources());
    m_Brush.EndSmoothing();
}

bool CPluginStrokes::DropDrag()
{
    if (m_Terraforming.GetSession() == nullptr)
    {
        return false;
    }
    m_Terraforming.GetSession()->RestoreHeights();
    m_DragStatistics.bLost = true;
    m_Terraforming.DropSession();
    // Called where memory ran out, so what waits for the next drag goes, too.
    FreeKeptTiles();
    if (CTellurBrush* pBrush = m_Brush.Get())
    {
        pBrush->FreeTurned();
    }
    return true;
}
