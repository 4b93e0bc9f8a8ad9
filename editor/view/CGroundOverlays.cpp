#include "editor/view/CGroundOverlays.h"

#include "editor/view/CShader.h"
#include "editor/view/Vectors.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CTexture.h"
#include "host/Image.h"

namespace
{

// The box itself, none, or one of its size about the mark; a box without a size leaves that of the
// last one.
SExtents PlaceMark(const SExtents& box, const SRenderSettings& settings, SVec3& size)
{
    const SVec3 boxSize = Subtract(box.max, box.min);
    if (boxSize.x > 0.0F && boxSize.z > 0.0F)
    {
        size = boxSize;
    }
    if (settings.eMark == EMarkPlace::Box)
    {
        return box;
    }
    if (settings.eMark == EMarkPlace::None)
    {
        return {};
    }
    return {AddScaled(settings.mark, size, -0.5F), AddScaled(settings.mark, size, 0.5F)};
}

} // namespace

uint64_t CGroundOverlays::Set(OpenGl& gl,
                              CShader& ground,
                              CEngineHost& engine,
                              const SRenderSettings& settings)
{
    return SetMask(gl, ground, engine, settings) + SetTypes(gl, ground, settings) +
           SetMark(gl, ground, engine, settings);
}

void CGroundOverlays::Release(OpenGl& gl)
{
    m_Textures.Release(gl);
    m_Paint.Release(gl);
}

uint64_t CGroundOverlays::SetMask(OpenGl& gl,
                                  CShader& ground,
                                  CEngineHost& engine,
                                  const SRenderSettings& settings)
{
    const CTerrain& terrain = *engine.GetCWorld().GetCTerrain();
    ITexture* pMask =
        settings.bMask ? engine.GetCWorld().FindTerrainTexture(terrain.GetEditOverlay()) : nullptr;
    const uint64_t uBytes = m_Textures.Bind(gl, GL_TEXTURE3, pMask, ECopyKind::Grey);
    // The third element of the transform is the scale along x, see World::MakeOverlayTransform.
    // Along z the texture comes as often: what covers the width covers the depth, too.
    const float fScale = pMask != nullptr ? terrain.GetEditOverlayTransform().m[2] : 0.0F;
    const SVec3 size = terrain.GetSize();
    ground.Set("uMaskScale", fScale, fScale * size.x / size.z);
    ground.Set("uMaskColor", settings.maskColor);
    return uBytes;
}

// The bitmap of terrain types: what is being painted, or else the level's.
uint64_t CGroundOverlays::SetTypes(OpenGl& gl, CShader& ground, const SRenderSettings& settings)
{
    const CPaintLayer* pLayer = settings.pPaintLayer;
    bool bPaint = false;
    uint64_t uBytes =
        pLayer != nullptr ? m_Paint.Bind(gl, GL_TEXTURE2, *pLayer, bPaint) : uint64_t{0};
    ground.Set("uPainting", bPaint ? 1 : 0);
    if (!bPaint)
    {
        uBytes += m_Textures.Bind(gl, GL_TEXTURE2, settings.pTypeBitmap, ECopyKind::Color);
        ground.Set("uTypeBlend", settings.pTypeBitmap != nullptr ? settings.fTypeBlend : 0.0F);
        ground.Set("uTypeMap", 1.0F, 1.0F, 0.0F, 0.0F);
        ground.Set("uTypeChannels", 1.0F, 1.0F, 1.0F, 1.0F);
        ground.Set("uTypeSwapped", 0);
        return uBytes;
    }
    const uint32_t uChannels = pLayer->GetChannelMask();
    const auto visible = [uChannels](uint32_t uBit)
    {
        return (uChannels & uBit) != 0 ? 1.0F : 0.0F;
    };
    const auto fWidth = static_cast<float>(pLayer->GetImage()->GetWidth());
    const auto fHeight = static_cast<float>(pLayer->GetImage()->GetHeight());
    const bool bVertices = pLayer->GetTexelMapping() == ETexelMapping::Vertices;
    ground.Set("uTypeBlend", pLayer->GetBlendFactor());
    ground.Set("uTypeMap",
               bVertices ? 1.0F - 1.0F / fWidth : 1.0F,
               bVertices ? 1.0F - 1.0F / fHeight : 1.0F,
               bVertices ? 0.5F / fWidth : 0.0F,
               bVertices ? 0.5F / fHeight : 0.0F);
    ground.Set("uTypeChannels",
               visible(PAINT_RED_VISIBLE),
               visible(PAINT_GREEN_VISIBLE),
               visible(PAINT_BLUE_VISIBLE),
               visible(PAINT_ALPHA_VISIBLE));
    // Texels of a palette have blue first; shown so, they are what the file has and will have.
    ground.Set("uTypeSwapped", (uChannels & PAINT_FREE_COLORS) == 0 ? 1 : 0);
    return uBytes;
}

// The mark: of the brush that paints, or else the footprint of the one that sculpts.
uint64_t CGroundOverlays::SetMark(OpenGl& gl,
                                  CShader& ground,
                                  CEngineHost& engine,
                                  const SRenderSettings& settings)
{
    const SProjectedTexture& projected = engine.GetCWorld().GetCTerrain()->GetProjectedTexture();
    const CPaintLayer* pLayer = settings.pPaintLayer;
    const bool bPaint = pLayer != nullptr && pLayer->IsShown() && pLayer->GetBrushBox().has_value();
    ITexture* pTexture = bPaint ? pLayer->GetBrushTexture() : projected.pTexture;
    const SExtents box =
        PlaceMark(bPaint ? *pLayer->GetBrushBox() : projected.box, settings, m_MarkSize);
    const uint64_t uBytes = m_Textures.Bind(gl, GL_TEXTURE4, pTexture, ECopyKind::Grey);
    const float fWidth = box.max.x - box.min.x;
    const float fDepth = box.max.z - box.min.z;
    const bool bBox = pTexture != nullptr && fWidth > 0.0F && fDepth > 0.0F;
    ground.Set("uPreviewBox",
               box.min.x,
               box.min.z,
               bBox ? 1.0F / fWidth : 0.0F,
               bBox ? 1.0F / fDepth : 0.0F);
    // A tint would hide the colour that is painted: only the outline is drawn then.
    SColor color = settings.previewColor;
    color.a = bPaint ? 0.0F : color.a;
    ground.Set("uPreviewColor", color);
    ground.Set("uPreviewFrame", bPaint ? 1.0F : 0.0F);
    return uBytes;
}
