#include "editor/view/CGroundLook.h"

#include "editor/view/CPatchTree.h"
#include "editor/view/SRenderSettings.h"
#include "editor/view/SViewProjection.h"
#include "editor/view/Shaders.h"
#include "editor/view/Vectors.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Log.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float RADIANS = 0.017453292519943F;
constexpr float LINE_PIXELS = 55.0F; // contour lines are about so far apart on the screen
constexpr float NEARLY_STEEP = 5.0F; // degrees
constexpr float SCREE = 0.55F;       // of the angle of rock: where it begins to show

// What a shader of the ground is made of, a bit each, and above them the kind of material.
constexpr const char* PARTS[] = {
    "DETAIL", "FLAT", "WIRE", "GRID", "TYPES", "MASK", "PROTECTED", "STEEP"};
constexpr uint32_t KIND_SHIFT = 8;
constexpr uint32_t NATURAL = static_cast<uint32_t>(EMaterialKind::Terrain) << KIND_SHIFT;

uint32_t GetParts(const SMaterial& material, CEngineHost& engine, const SRenderSettings& settings)
{
    const CTerrain& terrain = *engine.GetCWorld().GetCTerrain();
    const bool bPaint = settings.pPaintLayer != nullptr && settings.pPaintLayer->IsShown();
    const bool bMask = settings.bMask &&
                       engine.GetCWorld().FindTerrainTexture(terrain.GetEditOverlay()) != nullptr;
    const bool aUsed[] = {settings.bPatches && material.eKind == EMaterialKind::Terrain,
                          settings.bFlatShading,
                          settings.bWireFrame,
                          settings.bGrid,
                          bPaint || settings.pTypeBitmap != nullptr,
                          bMask,
                          !terrain.GetProtection().IsEmpty(),
                          settings.bSteep};
    uint32_t uParts = static_cast<uint32_t>(material.eKind) << KIND_SHIFT;
    for (uint32_t i = 0; i < std::size(aUsed); ++i)
    {
        uParts |= aUsed[i] ? 1U << i : 0U;
    }
    return uParts;
}

bool MakeGround(OpenGl& gl, uint32_t uParts, CShader& shader, std::string& strFault)
{
    std::string strDefines = "#define KIND " + std::to_string(uParts >> KIND_SHIFT) + "\n";
    for (uint32_t i = 0; i < std::size(PARTS); ++i)
    {
        strDefines +=
            "#define " + std::string(PARTS[i]) + " " + std::to_string((uParts >> i) & 1U) + "\n";
    }
    return shader.Make(gl, GROUND_VERT, GROUND_FRAG, strFault, strDefines);
}

// The step of contour lines: 1, 2 or 5 times a power of ten, near to the wanted one.
float GetRoundStep(float fWanted)
{
    const float fPower = std::pow(10.0F, std::floor(std::log10(std::max(fWanted, 1e-3F))));
    const float fShare = fWanted / fPower;
    return fPower * (fShare < 1.5F ? 1.0F : fShare < 3.5F ? 2.0F : fShare < 7.5F ? 5.0F : 10.0F);
}

float GetContourStep(const SViewProjection& view, const CTerrain& terrain)
{
    const SVec3 size = terrain.GetSize();
    const SVec3 center = {size.x * 0.5F, 0.0F, size.z * 0.5F};
    const float fDistance =
        std::min(GetLength(Subtract(center, view.position)), std::fabs(view.position.y) * 3.0F);
    return GetRoundStep(view.GetPixelSize(fDistance) * LINE_PIXELS * 0.3F);
}

SDayLight GetDay(const SRenderSettings& settings)
{
    SDayLight day = GetDayLight(settings.fSunYaw, settings.fSunPitch, settings.fAmbient);
    day.skyTop = settings.skyTop.value_or(day.skyTop);
    day.skyBottom = settings.skyBottom.value_or(day.skyBottom);
    return day;
}

} // namespace

bool CGroundLook::Make(OpenGl& gl, std::string& strFault)
{
    return MakeGround(gl, NATURAL, m_Shaders[NATURAL], strFault);
}

void CGroundLook::Release(OpenGl& gl)
{
    for (auto& [uParts, shader] : m_Shaders)
    {
        shader.Release(gl);
    }
    m_Shaders.clear();
}

CShader& CGroundLook::Find(OpenGl& gl, uint32_t uParts)
{
    const auto [found, bNew] = m_Shaders.try_emplace(uParts);
    std::string strFault;
    if (bNew && !MakeGround(gl, uParts, found->second, strFault))
    {
        CrashLog("[CGroundLook::Find] %s\n", strFault.c_str());
    }
    // The first one draws the ground at least.
    return found->second.IsMade() ? found->second : m_Shaders[NATURAL];
}

const SMaterial& CGroundLook::FindMaterial(const CTerrain& terrain, const SRenderSettings& settings)
{
    const CPaintLayer* pLayer = settings.pPaintLayer;
    const std::string strPaint =
        pLayer != nullptr && pLayer->IsShown() ? pLayer->GetMaterial() : "";
    const std::string& strEdit = strPaint.empty() ? terrain.GetEditMaterial() : strPaint;
    return m_Materials.Get(strEdit.empty() ? settings.strDefaultMaterial : strEdit);
}

CShader& CGroundLook::Use(OpenGl& gl,
                          const SViewProjection& view,
                          CEngineHost& engine,
                          const CPatchTree& tree,
                          const SRenderSettings& settings)
{
    const CTerrain& terrain = *engine.GetCWorld().GetCTerrain();
    const SMaterial& material = FindMaterial(terrain, settings);
    CShader& shader = Find(gl, GetParts(material, engine, settings));
    shader.Use(gl);
    shader.Set("uNormals", 1);
    shader.Set("uTypes", 2);
    shader.Set("uMask", 3);
    shader.Set("uProtected", 5);
    shader.Set("uSize", terrain.GetSize());
    shader.Set("uSteep",
               std::cos(settings.fSteepDegrees * RADIANS),
               std::cos(std::max(settings.fSteepDegrees - NEARLY_STEEP, 0.0F) * RADIANS));
    SetLight(shader, view, settings);
    SetMaterial(shader, material, view, terrain, tree);
    return shader;
}

void CGroundLook::SetLight(CShader& shader,
                           const SViewProjection& view,
                           const SRenderSettings& settings)
{
    const SDayLight day = GetDay(settings);
    const SColor& haze = day.skyBottom;
    shader.Set("uSun", day.way);
    shader.Set("uSunLight", day.sun);
    shader.Set("uSkyLight", day.sky);
    shader.Set("uBounce", day.bounce);
    shader.Set("uDither", DITHER);
    shader.Set("uEye", view.position);
    shader.Set("uHaze", haze.r, haze.g, haze.b, view.bOrthographic ? 0.0F : settings.fHaze);
    shader.Set("uHazeDistance", std::max(view.fFar, 1.0F));
}

void CGroundLook::SetMaterial(CShader& shader,
                              const SMaterial& material,
                              const SViewProjection& view,
                              const CTerrain& terrain,
                              const CPatchTree& tree)
{
    const bool bContours = material.eKind == EMaterialKind::Contours && material.fStep <= 0.0F;
    const SVec3 size = terrain.GetSize();
    const float fSide = std::max(size.x, size.z);
    auto [fLow, fHigh] = tree.GetHeightRange();
    if (material.eKind == EMaterialKind::Terrain)
    {
        GetTintRange(fLow, fHigh, fSide, fLow, fHigh);
    }
    SGroundTints tints;
    if (material.fStep > 0.0F)
    {
        tints.rock = {1.0F - std::cos(material.fStep * SCREE * RADIANS),
                      1.0F - std::cos(material.fStep * RADIANS)};
    }
    const SVec4 aEdges[] = {{tints.middle.fFrom, tints.middle.fTo},
                            {tints.high.fFrom, tints.high.fTo},
                            {tints.snow.fFrom, tints.snow.fTo},
                            {tints.rock.fFrom, tints.rock.fTo},
                            {tints.bare.fFrom, tints.bare.fTo}};
    shader.Set("uColors", material.colors.data(), SMaterial::COLORS);
    shader.Set("uColorCount", material.nColors);
    shader.Set("uStep", bContours ? GetContourStep(view, terrain) : material.fStep);
    shader.Set("uRange", fLow, fHigh);
    shader.Set("uEdges", aEdges, static_cast<int>(std::size(aEdges)));
    shader.Set("uPatches", SVec3{PATCHES / fSide, PATCH_FALL, PATCH_MEAN});
    shader.Set("uEffect", PATCH_EFFECT);
}

void CGroundLook::SetSky(CShader& sky, const SViewProjection& view, const SRenderSettings& settings)
{
    const SDayLight day = GetDay(settings);
    const float fAspect = static_cast<float>(view.iWidth) / static_cast<float>(view.iHeight);
    const auto scale = [](const SVec3& vec, float fBy)
    {
        return AddScaled({}, vec, fBy);
    };
    const float fTall = view.bOrthographic ? 0.0F : view.fTanHalfFov; // rays of one are parallel
    sky.Set("uForward", view.forward);
    sky.Set("uRight", scale(view.right, fTall * fAspect));
    sky.Set("uUp", scale(view.up, fTall));
    sky.Set("uTop", day.skyTop);
    sky.Set("uBottom", day.skyBottom);
    sky.Set("uRise", SKY_RISE, settings.skyBottom ? 0.0F : SKY_FALL);
    sky.Set("uDither", DITHER);
}
