#include "editor/view/CTerrainRenderer.h"

#include "editor/view/CGroundOverlays.h"
#include "editor/view/CLineBatch.h"
#include "editor/view/CMaterialCache.h"
#include "editor/view/CPatchMesh.h"
#include "editor/view/CPatchSelection.h"
#include "editor/view/CShader.h"
#include "editor/view/CTerrainCopies.h"
#include "editor/view/SViewProjection.h"
#include "editor/view/Shaders.h"
#include "editor/view/Vectors.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

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
    CGroundOverlays overlays;
    CMaterialCache materials;
    CPatchSelection selection;
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
    m_Parts->overlays.Release(gl);
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
        m_Parts->overlays.Begin();
        m_Parts->DrawGround(*m_Copies, view, engine, settings, m_Statistics);
        m_Parts->overlays.Sweep(gl);
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
    statistics.uUploadedBytes += overlays.Set(*pGl, ground, engine, settings);
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
