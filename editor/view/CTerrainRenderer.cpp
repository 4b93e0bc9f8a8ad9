#include "editor/view/CTerrainRenderer.h"

#include "editor/view/CGroundLook.h"
#include "editor/view/CGroundOverlays.h"
#include "editor/view/CLineBatch.h"
#include "editor/view/CMarkSign.h"
#include "editor/view/CPatchMesh.h"
#include "editor/view/CPatchSelection.h"
#include "editor/view/CShader.h"
#include "editor/view/CSmoothTarget.h"
#include "editor/view/CTerrainCopies.h"
#include "editor/view/SViewProjection.h"
#include "editor/view/Shaders.h"
#include "editor/view/Vectors.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <QOpenGLContext>
#include <QOpenGLVersionFunctionsFactory>

#include <algorithm>

namespace
{

constexpr uint32_t MOST_PATCHES = 420; // at full quality
constexpr uint32_t LEAST_PATCHES = 16;
constexpr float LINE_MARGIN = 4.0F; // what the outline of a mark is wide, device pixels

float GetQuality(const SRenderSettings& settings)
{
    return std::clamp(settings.fQuality, SRenderSettings::LEAST_QUALITY, 1.0F);
}

// How far ground may be drawn beside its place, device pixels.
float GetError(const SRenderSettings& settings)
{
    return settings.fDetailPixels / GetQuality(settings);
}

SVec3 GetCell(const CTerrain& terrain)
{
    const SVec3 size = terrain.GetSize();
    return {size.x / static_cast<float>(terrain.GetCellsPerSide()),
            0.0F,
            size.z / static_cast<float>(terrain.GetCellsPerSideZ())};
}

// Whether one of the boxes reaches into the patch, seen from above.
bool IsTouched(const SPatchInstance& patch, const SVec3& cell, const std::vector<SExtents>& boxes)
{
    const auto fCells = static_cast<float>(CPatchTree::PATCH_CELLS);
    const SVec3 low = {
        static_cast<float>(patch.iX) * cell.x, 0.0F, static_cast<float>(patch.iZ) * cell.z};
    const SVec3 high = AddScaled(low, cell, static_cast<float>(patch.iStride) * fCells);
    return std::any_of(boxes.begin(),
                       boxes.end(),
                       [&](const SExtents& box) {
                           return box.min.x <= high.x && box.max.x >= low.x &&
                                  box.min.z <= high.z && box.max.z >= low.z;
                       });
}

} // namespace

struct CTerrainRenderer::SParts
{
    OpenGl* pGl = nullptr;
    CGroundLook look;
    CShader* pGround = nullptr; // of the frame that is being drawn
    CShader sky;
    CShader lines;
    GLuint uNothing = 0; // a vertex array without arrays, for the sky
    CPatchMesh mesh;
    CLineBatch batch;
    CGroundOverlays overlays;
    CMarkSign sign;
    CSmoothTarget smooth;
    CPatchSelection selection;
    void DrawSky(const SViewProjection& view, const SRenderSettings& settings);
    void DrawGround(const CTerrainCopies& copies,
                    const SViewProjection& view,
                    CEngineHost& engine,
                    const SRenderSettings& settings,
                    SRenderStatistics& statistics);
    void DrawMark(const CTerrainCopies& copies,
                  const SViewProjection& view,
                  const CTerrain& terrain,
                  const SRenderSettings& settings,
                  SRenderStatistics& statistics);
    void SetPlaces(CShader& shader, const SViewProjection& view, const CTerrain& terrain);
    void BindTile(
        CShader& shader, const CTerrainTiles& tiles, uint32_t uX, uint32_t uZ, uint32_t uCoarse);
    bool BindRange(CShader& shader, const CTerrainCopies& copies, const SPatchRange& range);
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
    if (!pParts->look.Make(*pGl, strFault) ||
        !pParts->sky.Make(*pGl, SKY_VERT, SKY_FRAG, strFault) ||
        !pParts->lines.Make(*pGl, LINE_VERT, LINE_FRAG, strFault) ||
        !pParts->overlays.Make(*pGl, strFault) || !pParts->sign.Make(*pGl, strFault))
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
    m_Parts->look.Release(gl);
    m_Parts->smooth.Release(gl);
    m_Parts->sky.Release(gl);
    m_Parts->lines.Release(gl);
    m_Parts->sign.Release(gl);
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
    const bool bSmooth =
        settings.bSmoothEdges && m_Parts->smooth.Begin(gl, view.iWidth, view.iHeight);
    gl.glViewport(0, 0, view.iWidth, view.iHeight);
    gl.glDisable(GL_BLEND);
    gl.glDisable(GL_CULL_FACE);
    gl.glEnable(GL_DEPTH_TEST);
    gl.glDepthMask(GL_TRUE);
    gl.glDepthFunc(GL_LEQUAL);
    gl.glClear(GL_DEPTH_BUFFER_BIT);
    m_Parts->DrawSky(view, settings);
    if (bDrawn && pTerrain != nullptr)
    {
        m_Statistics.bComplete = m_Copies->IsComplete();
        m_Parts->overlays.Begin();
        m_Parts->DrawGround(*m_Copies, view, engine, settings, m_Statistics);
        m_Parts->DrawMark(*m_Copies, view, *pTerrain, settings, m_Statistics);
        m_Parts->overlays.Sweep(gl);
        float matrix[16];
        view.GetMatrix(matrix);
        m_Statistics.uDrawCalls +=
            m_Parts->batch.Draw(gl, m_Parts->lines, matrix, engine.GetDebugLines());
        if (const auto& middle = m_Parts->overlays.GetMark().GetMiddle())
        {
            m_Parts->sign.Draw(gl, m_Parts->uNothing, view, settings.mark, *middle);
        }
    }
    if (bSmooth)
    {
        m_Parts->smooth.End(gl);
    }
    gl.glBindVertexArray(0);
    gl.glUseProgram(0);
    gl.glActiveTexture(GL_TEXTURE0);
    return bDrawn;
}

void CTerrainRenderer::SParts::DrawSky(const SViewProjection& view, const SRenderSettings& settings)
{
    pGl->glDepthMask(GL_FALSE);
    sky.Use(*pGl);
    CGroundLook::SetSky(sky, view, settings);
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
    const float fQuality = GetQuality(settings);
    SDetail detail;
    detail.cell = GetCell(terrain);
    detail.fPixels = GetError(settings);
    detail.uMaxPatches =
        std::max(LEAST_PATCHES, static_cast<uint32_t>(static_cast<float>(MOST_PATCHES) * fQuality));
    selection.Select(copies.GetTree(), view, detail);

    pGround = &look.Use(*pGl, view, engine, copies.GetTree(), settings);
    SetPlaces(*pGround, view, terrain);
    statistics.uUploadedBytes += overlays.Set(*pGl, *pGround, engine, settings);
    mesh.SetInstances(*pGl, selection.GetInstances());
    DrawRanges(copies, statistics);
}

// Tile by tile; what is not there yet is drawn from the coarse ground, or is left to the sky.
void CTerrainRenderer::SParts::DrawRanges(const CTerrainCopies& copies,
                                          SRenderStatistics& statistics)
{
    for (const SPatchRange& range : selection.GetRanges())
    {
        if (!BindRange(*pGround, copies, range))
        {
            continue;
        }
        mesh.Draw(*pGl, range.uFirst, range.uCount);
        ++statistics.uDrawCalls;
        statistics.uPatches += range.uCount;
    }
    statistics.uTriangles = statistics.uPatches * CPatchMesh::TRIANGLES;
}

// Once more the patches that the mark touches, with what it lays over them.
void CTerrainRenderer::SParts::DrawMark(const CTerrainCopies& copies,
                                        const SViewProjection& view,
                                        const CTerrain& terrain,
                                        const SRenderSettings& settings,
                                        SRenderStatistics& statistics)
{
    statistics.uUploadedBytes += overlays.PlaceMark(*pGl, terrain, settings);
    CMarkOverlay& mark = overlays.GetMark();
    if (!mark.GetMiddle() || !mark.Begin(*pGl, view, terrain, GetError(settings) + LINE_MARGIN))
    {
        return;
    }
    SetPlaces(mark.GetShader(), view, terrain);
    const SVec3 cell = GetCell(terrain);
    for (const SPatchRange& range : selection.GetRanges())
    {
        const uint32_t uEnd = range.uFirst + range.uCount;
        bool bBound = false;
        uint32_t uRun = 0; // patches beside one another in the array, drawn at one go
        for (uint32_t u = range.uFirst; u <= uEnd; ++u)
        {
            if (u < uEnd && IsTouched(selection.GetInstances()[u], cell, mark.GetBoxes()))
            {
                ++uRun;
                continue;
            }
            if (uRun > 0 && (bBound || BindRange(mark.GetShader(), copies, range)))
            {
                bBound = true;
                mesh.Draw(*pGl, u - uRun, uRun);
                ++statistics.uDrawCalls;
            }
            uRun = 0;
        }
    }
    CMarkOverlay::End(*pGl);
}

// Where the vertices of patches are. shader: in use, of the ground's vertices.
void CTerrainRenderer::SParts::SetPlaces(CShader& shader,
                                         const SViewProjection& view,
                                         const CTerrain& terrain)
{
    float matrix[16];
    view.GetMatrix(matrix);
    const SVec3 cell = GetCell(terrain);
    shader.SetMatrix("uMatrix", matrix);
    shader.Set("uHeights", 0);
    shader.Set("uLast",
               static_cast<int>(terrain.GetCellsPerSide()),
               static_cast<int>(terrain.GetCellsPerSideZ()));
    shader.Set("uCell", cell.x, cell.z);
}

// False where there is nothing yet, not even the coarse ground.
bool CTerrainRenderer::SParts::BindRange(CShader& shader,
                                         const CTerrainCopies& copies,
                                         const SPatchRange& range)
{
    const bool bThere = copies.HasTile(range.uTileX, range.uTileZ);
    if (!bThere && !copies.GetCoarse().IsMade())
    {
        return false;
    }
    BindTile(shader,
             bThere ? copies.GetTiles() : copies.GetCoarse().GetTiles(),
             bThere ? range.uTileX : 0,
             bThere ? range.uTileZ : 0,
             bThere ? 0 : copies.GetCoarse().GetShift());
    return true;
}

// uCoarse: the tiles are of ground with every 2^n-th vertex.
void CTerrainRenderer::SParts::BindTile(
    CShader& shader, const CTerrainTiles& tiles, uint32_t uX, uint32_t uZ, uint32_t uCoarse)
{
    tiles.Bind(*pGl, uX, uZ);
    shader.Set("uTile",
               static_cast<int>(uX * tiles.GetTileCells()),
               static_cast<int>(uZ * tiles.GetTileCells()));
    shader.Set("uTileSize",
               static_cast<float>(tiles.GetWidth(uX)),
               static_cast<float>(tiles.GetDepth(uZ)));
    shader.Set("uCoarse", static_cast<int>(uCoarse));
    shader.Set("uTexels", 1.0F / static_cast<float>(1U << uCoarse));
}
