#include "editor/view/CTerrainRenderer.h"

#include "editor/view/CLineBatch.h"
#include "editor/view/CMaterialCache.h"
#include "editor/view/CPaintCopy.h"
#include "editor/view/CPatchMesh.h"
#include "editor/view/CPatchSelection.h"
#include "editor/view/CShader.h"
#include "editor/view/CTerrainCopies.h"
#include "editor/view/CTextureCopies.h"
#include "editor/view/SViewProjection.h"
#include "editor/view/Shaders.h"
#include "editor/view/Vectors.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CTexture.h"
#include "host/Image.h"

#include <QOpenGLContext>
#include <QOpenGLVersionFunctionsFactory>

#include <algorithm>
#include <cmath>

namespace
{

constexpr float RADIANS = 0.017453292519943F;
constexpr uint32_t MOST_PATCHES = 420; // at full quality
constexpr uint32_t LEAST_PATCHES = 16;
constexpr float LINE_PIXELS = 55.0F; // contour lines are about so far apart on the screen

SVec3 GetSun(const SRenderSettings& settings)
{
    const float fYaw = settings.fSunYaw * RADIANS;
    const float fPitch = settings.fSunPitch * RADIANS;
    return {std::cos(fYaw) * std::cos(fPitch), std::sin(fPitch), std::sin(fYaw) * std::cos(fPitch)};
}

// The step of contour lines: 1, 2 or 5 times a power of ten, near to the wanted one.
float GetRoundStep(float fWanted)
{
    const float fPower = std::pow(10.0F, std::floor(std::log10(std::max(fWanted, 1e-3F))));
    const float fShare = fWanted / fPower;
    return fPower * (fShare < 1.5F ? 1.0F : fShare < 3.5F ? 2.0F : fShare < 7.5F ? 5.0F : 10.0F);
}

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

struct CTerrainRenderer::SParts
{
    OpenGl* pGl = nullptr;
    CShader ground;
    CShader sky;
    CShader lines;
    GLuint uNothing = 0; // a vertex array without arrays, for the sky
    CPatchMesh mesh;
    CLineBatch batch;
    CTextureCopies textures;
    CPaintCopy paint;
    CMaterialCache materials;
    CPatchSelection selection;
    SVec3 markSize; // of the last box that was one
    void DrawSky(const SRenderSettings& settings);
    void DrawGround(const CTerrainCopies& copies,
                    const SViewProjection& view,
                    CEngineHost& engine,
                    const SRenderSettings& settings,
                    SRenderStatistics& statistics);
    void SetMaterial(const SViewProjection& view,
                     const CTerrain& terrain,
                     const CPatchTree& tree,
                     const SRenderSettings& settings);
    void BindTile(const CTerrainTiles& tiles, uint32_t uX, uint32_t uZ, uint32_t uCoarse);
    void DrawRanges(const CTerrainCopies& copies, SRenderStatistics& statistics);
    uint64_t SetOverlays(CEngineHost& engine, const SRenderSettings& settings);
    uint64_t SetTypes(const SRenderSettings& settings);
    uint64_t SetBrush(CEngineHost& engine, const SRenderSettings& settings);
};

CTerrainRenderer::CTerrainRenderer(std::shared_ptr<CTerrainCopies> pCopies)
    : m_Copies(std::move(pCopies))
{
}

CTerrainRenderer::~CTerrainRenderer()
{
    Release();
}

bool CTerrainRenderer::Initialize(std::string& strFault)
{
    auto* pGl = QOpenGLVersionFunctionsFactory::get<OpenGl>(QOpenGLContext::currentContext());
    if (pGl == nullptr || !pGl->initializeOpenGLFunctions())
    {
        strFault = "the graphics driver offers no OpenGL 3.3";
        return false;
    }
    auto pParts = std::make_unique<SParts>();
    pParts->pGl = pGl;
    if (!pParts->ground.Make(*pGl, GROUND_VERT, GROUND_FRAG, strFault) ||
        !pParts->sky.Make(*pGl, SKY_VERT, SKY_FRAG, strFault) ||
        !pParts->lines.Make(*pGl, LINE_VERT, LINE_FRAG, strFault))
    {
        return false;
    }
    pGl->glGenVertexArrays(1, &pParts->uNothing);
    pParts->mesh.Make(*pGl);
    pParts->batch.Make(*pGl);
    m_bSoftware = IsSoftwareRenderer(*pGl);
    m_Parts = std::move(pParts);
    m_Copies->Join();
    return true;
}

void CTerrainRenderer::Release()
{
    if (m_Parts == nullptr)
    {
        return;
    }
    OpenGl& gl = *m_Parts->pGl;
    m_Parts->ground.Release(gl);
    m_Parts->sky.Release(gl);
    m_Parts->lines.Release(gl);
    gl.glDeleteVertexArrays(1, &m_Parts->uNothing);
    m_Parts->mesh.Release(gl);
    m_Parts->batch.Release(gl);
    m_Copies->Leave(gl);
    m_Parts->textures.Release(gl);
    m_Parts->paint.Release(gl);
    m_Parts.reset();
}

bool CTerrainRenderer::Render(const SViewProjection& view,
                              CEngineHost& engine,
                              const SRenderSettings& settings)
{
    m_Statistics = {};
    if (m_Parts == nullptr)
    {
        return false;
    }
    OpenGl& gl = *m_Parts->pGl;
    CTerrain* pTerrain = engine.GetCWorld().GetCTerrain();
    const bool bDrawn =
        pTerrain == nullptr ||
        m_Copies->Follow(
            gl, *pTerrain, view.position, settings.uMostNewBytes, m_Statistics.uUploadedBytes);
    gl.glViewport(0, 0, view.iWidth, view.iHeight);
    gl.glDisable(GL_BLEND);
    gl.glDisable(GL_CULL_FACE);
    gl.glEnable(GL_DEPTH_TEST);
    gl.glDepthMask(GL_TRUE);
    gl.glDepthFunc(GL_LEQUAL);
    gl.glClear(GL_DEPTH_BUFFER_BIT);
    m_Parts->DrawSky(settings);
    if (bDrawn && pTerrain != nullptr)
    {
        m_Statistics.bComplete = m_Copies->IsComplete();
        m_Parts->textures.Begin();
        m_Parts->DrawGround(*m_Copies, view, engine, settings, m_Statistics);
        m_Parts->textures.Sweep(gl);
        float matrix[16];
        view.GetMatrix(matrix);
        m_Statistics.uDrawCalls +=
            m_Parts->batch.Draw(gl, m_Parts->lines, matrix, engine.GetDebugLines());
    }
    gl.glBindVertexArray(0);
    gl.glUseProgram(0);
    gl.glActiveTexture(GL_TEXTURE0);
    return bDrawn;
}

void CTerrainRenderer::SParts::DrawSky(const SRenderSettings& settings)
{
    pGl->glDepthMask(GL_FALSE);
    sky.Use(*pGl);
    sky.Set("uTop", settings.skyTop);
    sky.Set("uBottom", settings.skyBottom);
    pGl->glBindVertexArray(uNothing);
    pGl->glDrawArrays(GL_TRIANGLES, 0, 3);
    pGl->glDepthMask(GL_TRUE);
}

void CTerrainRenderer::SParts::DrawGround(const CTerrainCopies& copies,
                                          const SViewProjection& view,
                                          CEngineHost& engine,
                                          const SRenderSettings& settings,
                                          SRenderStatistics& statistics)
{
    const CTerrain& terrain = *engine.GetCWorld().GetCTerrain();
    const uint32_t uCellsX = terrain.GetCellsPerSide();
    const uint32_t uCellsZ = terrain.GetCellsPerSideZ();
    const SVec3 size = terrain.GetSize();
    const float fQuality = std::clamp(settings.fQuality, SRenderSettings::LEAST_QUALITY, 1.0F);
    SDetail detail;
    detail.cell = {
        size.x / static_cast<float>(uCellsX), 0.0F, size.z / static_cast<float>(uCellsZ)};
    detail.fPixels = settings.fDetailPixels / fQuality;
    detail.uMaxPatches =
        std::max(LEAST_PATCHES, static_cast<uint32_t>(static_cast<float>(MOST_PATCHES) * fQuality));
    selection.Select(copies.GetTree(), view, detail);

    float matrix[16];
    view.GetMatrix(matrix);
    ground.Use(*pGl);
    ground.SetMatrix("uMatrix", matrix);
    ground.Set("uHeights", 0);
    ground.Set("uNormals", 1);
    ground.Set("uTypes", 2);
    ground.Set("uMask", 3);
    ground.Set("uPreview", 4);
    ground.Set("uLast", static_cast<int>(uCellsX), static_cast<int>(uCellsZ));
    ground.Set("uCell", detail.cell.x, detail.cell.z);
    ground.Set("uSize", size);
    ground.Set("uSun", GetSun(settings));
    ground.Set("uAmbient", settings.fAmbient);
    ground.Set("uEye", view.position);
    const float fHaze = view.bOrthographic ? 0.0F : settings.fHaze;
    ground.Set("uHaze", settings.skyBottom.r, settings.skyBottom.g, settings.skyBottom.b, fHaze);
    ground.Set("uHazeDistance", std::max(view.fFar, 1.0F));
    ground.Set("uFlat", settings.bFlatShading ? 1 : 0);
    ground.Set("uWire", settings.bWireFrame ? 1 : 0);
    ground.Set("uGrid", settings.bGrid ? 1 : 0);
    SetMaterial(view, terrain, copies.GetTree(), settings);
    statistics.uUploadedBytes += SetOverlays(engine, settings);
    mesh.SetInstances(*pGl, selection.GetInstances());
    DrawRanges(copies, statistics);
}

// Tile by tile; what is not there yet is drawn from the coarse ground, or is left to the sky.
void CTerrainRenderer::SParts::DrawRanges(const CTerrainCopies& copies,
                                          SRenderStatistics& statistics)
{
    for (const SPatchRange& range : selection.GetRanges())
    {
        const bool bThere = copies.HasTile(range.uTileX, range.uTileZ);
        if (!bThere && !copies.GetCoarse().IsMade())
        {
            continue;
        }
        BindTile(bThere ? copies.GetTiles() : copies.GetCoarse().GetTiles(),
                 bThere ? range.uTileX : 0,
                 bThere ? range.uTileZ : 0,
                 bThere ? 0 : copies.GetCoarse().GetShift());
        mesh.Draw(*pGl, range.uFirst, range.uCount);
        ++statistics.uDrawCalls;
        statistics.uPatches += range.uCount;
    }
    statistics.uTriangles = statistics.uPatches * CPatchMesh::TRIANGLES;
}

// uCoarse: the tiles are of ground with every 2^n-th vertex.
void CTerrainRenderer::SParts::BindTile(const CTerrainTiles& tiles,
                                        uint32_t uX,
                                        uint32_t uZ,
                                        uint32_t uCoarse)
{
    tiles.Bind(*pGl, uX, uZ);
    ground.Set("uTile",
               static_cast<int>(uX * tiles.GetTileCells()),
               static_cast<int>(uZ * tiles.GetTileCells()));
    ground.Set("uTileSize",
               static_cast<float>(tiles.GetWidth(uX)),
               static_cast<float>(tiles.GetDepth(uZ)));
    ground.Set("uCoarse", static_cast<int>(uCoarse));
    ground.Set("uTexels", 1.0F / static_cast<float>(1U << uCoarse));
}

void CTerrainRenderer::SParts::SetMaterial(const SViewProjection& view,
                                           const CTerrain& terrain,
                                           const CPatchTree& tree,
                                           const SRenderSettings& settings)
{
    const CPaintLayer* pLayer = settings.pPaintLayer;
    const std::string strPaint =
        pLayer != nullptr && pLayer->IsShown() ? pLayer->GetMaterial() : "";
    const std::string& strEdit = strPaint.empty() ? terrain.GetEditMaterial() : strPaint;
    const SMaterial& material =
        materials.Get(strEdit.empty() ? settings.strDefaultMaterial : strEdit);
    float fStep = material.fStep;
    if (material.eKind == EMaterialKind::Contours && fStep <= 0.0F)
    {
        const SVec3 size = terrain.GetSize();
        const SVec3 center = {size.x * 0.5F, 0.0F, size.z * 0.5F};
        const float fDistance =
            std::min(GetLength(Subtract(center, view.position)), std::fabs(view.position.y) * 3.0F);
        fStep = GetRoundStep(view.GetPixelSize(fDistance) * LINE_PIXELS * 0.3F);
    }
    const auto [fLow, fHigh] = tree.GetHeightRange();
    ground.Set("uKind", static_cast<int>(material.eKind));
    ground.Set("uColors", material.colors, SMaterial::COLORS);
    ground.Set("uColorCount", material.nColors);
    ground.Set("uStep", fStep);
    ground.Set("uRange", fLow, fHigh);
}

uint64_t CTerrainRenderer::SParts::SetOverlays(CEngineHost& engine, const SRenderSettings& settings)
{
    const CTerrain& terrain = *engine.GetCWorld().GetCTerrain();
    ITexture* pMask =
        settings.bMask ? engine.GetCWorld().FindTerrainTexture(terrain.GetEditOverlay()) : nullptr;
    const uint64_t uBytes = textures.Bind(*pGl, GL_TEXTURE3, pMask, ECopyKind::Grey);
    // The third element of the transform is the scale along x, see World::MakeOverlayTransform.
    // Along z the texture comes as often: what covers the width covers the depth, too.
    const float fScale = pMask != nullptr ? terrain.GetEditOverlayTransform().m[2] : 0.0F;
    const SVec3 size = terrain.GetSize();
    ground.Set("uMaskScale", fScale, fScale * size.x / size.z);
    ground.Set("uMaskColor", settings.maskColor);
    return uBytes + SetTypes(settings) + SetBrush(engine, settings);
}

// The bitmap of terrain types: what is being painted, or else the level's.
uint64_t CTerrainRenderer::SParts::SetTypes(const SRenderSettings& settings)
{
    const CPaintLayer* pLayer = settings.pPaintLayer;
    bool bPaint = false;
    uint64_t uBytes =
        pLayer != nullptr ? paint.Bind(*pGl, GL_TEXTURE2, *pLayer, bPaint) : uint64_t{0};
    ground.Set("uPainting", bPaint ? 1 : 0);
    if (!bPaint)
    {
        uBytes += textures.Bind(*pGl, GL_TEXTURE2, settings.pTypeBitmap, ECopyKind::Color);
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
uint64_t CTerrainRenderer::SParts::SetBrush(CEngineHost& engine, const SRenderSettings& settings)
{
    const SProjectedTexture& projected = engine.GetCWorld().GetCTerrain()->GetProjectedTexture();
    const CPaintLayer* pLayer = settings.pPaintLayer;
    const bool bPaint = pLayer != nullptr && pLayer->IsShown() && pLayer->GetBrushBox().has_value();
    ITexture* pTexture = bPaint ? pLayer->GetBrushTexture() : projected.pTexture;
    const SExtents box =
        PlaceMark(bPaint ? *pLayer->GetBrushBox() : projected.box, settings, markSize);
    const uint64_t uBytes = textures.Bind(*pGl, GL_TEXTURE4, pTexture, ECopyKind::Grey);
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
