#include "editor/view/CMarkOverlay.h"

#include "editor/view/CTextureCopies.h"
#include "editor/view/SRenderSettings.h"
#include "editor/view/SViewProjection.h"
#include "editor/view/Shaders.h"
#include "editor/view/Vectors.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CTexture.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr size_t MOST_MARKS = SGroundMark::MOST_IMAGES + 1; // as the shader has it
constexpr float LEAST_BAND = 0.0001F;                       // below it a tool has no band
constexpr float PAINT_TINT = 0.4F; // weaker: the colour that is painted lies below it

// A grey picture has its pixels in the middle of texels, a brush at their beginning where their
// number is even; see GetPixelPair.
float GetShift(uint32_t uSide)
{
    return uSide % 2 == 0 && uSide > 0 ? 0.5F / static_cast<float>(uSide) : 0.0F;
}

// 1 for what only raises, -1 for what only lowers, else 0.
float GetDirection(EToolSign eSign)
{
    return eSign == EToolSign::RaiseOnly ? 1.0F : eSign == EToolSign::LowerOnly ? -1.0F : 0.0F;
}

// An offset from the middle of the mark, as that picture of it has it.
SVec3 Turn(const SMarkImage& image, const SVec3& offset)
{
    const float fX = image.bFlip ? -offset.x : offset.x;
    const float fCos = std::cos(image.fTurn);
    const float fSin = std::sin(image.fTurn);
    return {fX * fCos - offset.z * fSin, offset.y, fX * fSin + offset.z * fCos};
}

// Widens a part of the picture (x and z, device pixels) by where the ground in a box can be.
void AddToPart(const SViewProjection& view,
               const CTerrain& terrain,
               const SExtents& box,
               SExtents& part)
{
    SExtents ground = box;
    if (!terrain.GetHeightRange(terrain.GetVertexRect(box), ground.min.y, ground.max.y))
    {
        return; // beside the terrain
    }
    for (int i = 0; i < 8; ++i)
    {
        float fX = 0.0F;
        float fY = 0.0F;
        if (!view.Project(GetCorner(ground, i), fX, fY))
        {
            // Beside the eye: it can be anywhere.
            part = {{}, {static_cast<float>(view.iWidth), 0.0F, static_cast<float>(view.iHeight)}};
            return;
        }
        part.min = {std::min(part.min.x, fX), 0.0F, std::min(part.min.z, fY)};
        part.max = {std::max(part.max.x, fX), 0.0F, std::max(part.max.z, fY)};
    }
}

} // namespace

SColor GetMarkColor(EToolSign eSign)
{
    switch (eSign)
    {
    case EToolSign::Raise:
        return {0.98F, 0.47F, 0.04F, 1.0F};
    case EToolSign::RaiseOnly:
        return {0.98F, 0.93F, 0.30F, 1.0F};
    case EToolSign::Lower:
        return {0.16F, 0.40F, 1.0F, 1.0F};
    case EToolSign::LowerOnly:
        return {0.42F, 0.82F, 1.0F, 1.0F};
    case EToolSign::Neutral:
        break;
    }
    return {0.04F, 0.66F, 0.45F, 1.0F};
}

bool CMarkOverlay::Make(OpenGl& gl, std::string& strFault)
{
    return m_Shader.Make(gl, GROUND_VERT, MARK_FRAG, strFault);
}

void CMarkOverlay::Release(OpenGl& gl)
{
    m_Shader.Release(gl);
}

uint64_t CMarkOverlay::Place(OpenGl& gl,
                             CTextureCopies& textures,
                             const CTerrain& terrain,
                             const SRenderSettings& settings)
{
    const SGroundMark& mark = settings.mark;
    const SProjectedTexture& projected = terrain.GetProjectedTexture();
    const CPaintLayer* pLayer = settings.pPaintLayer;
    const bool bPaint = pLayer != nullptr && pLayer->IsShown() && pLayer->GetBrushBox().has_value();
    const bool bRamp = mark.bTool && mark.tool.eKind == EToolKind::Ramp;
    ITexture* pShape = bPaint       ? pLayer->GetBrushTexture()
                       : mark.bTool ? mark.pShape
                                    : projected.pTexture;
    const uint64_t uBytes =
        textures.Bind(gl, GL_TEXTURE4, bRamp ? nullptr : pShape, ECopyKind::Grey);
    m_Boxes.clear();
    m_Middle.reset();
    SVec3 at;
    const bool bFound =
        FindMiddle(mark, bPaint ? *pLayer->GetBrushBox() : projected.box, terrain, at);
    const SVec3 size = mark.bTool ? SVec3{mark.tool.fExtent, 0.0F, mark.tool.fExtent} : m_BoxSize;
    if (!bFound || !(size.x > 0.0F && size.z > 0.0F) || (!bRamp && pShape == nullptr))
    {
        return uBytes;
    }
    m_Middle = {at.x, terrain.GetHeightAt(at.x, at.z), at.z};
    m_Shader.Use(gl);
    m_Shader.Set("uShape", 4);
    m_Shader.Set("uMarks", bRamp ? 0 : SetFootprints(mark, at, size));
    m_Shader.Set("uStrips", bRamp ? SetStrips(mark, at) : 0);
    m_Shader.Set("uMarkShift",
                 bRamp ? 0.0F : GetShift(pShape->GetWidth()),
                 bRamp ? 0.0F : GetShift(pShape->GetHeight()));
    m_Shader.Set("uMarkColor", GetMarkColor(mark.bTool ? mark.tool.eSign : EToolSign::Raise));
    SetStrength(mark.tool, settings.fMarkTint * (bPaint ? PAINT_TINT : 1.0F), bPaint);
    return uBytes;
}

bool CMarkOverlay::Begin(OpenGl& gl,
                         const SViewProjection& view,
                         const CTerrain& terrain,
                         float fMargin) const
{
    const auto fWidth = static_cast<float>(view.iWidth);
    const auto fHeight = static_cast<float>(view.iHeight);
    SExtents part = {{fWidth, 0.0F, fHeight}, {0.0F, 0.0F, 0.0F}};
    for (const SExtents& box : m_Boxes)
    {
        AddToPart(view, terrain, box, part);
    }
    const float fLeft = std::clamp(part.min.x - fMargin, 0.0F, fWidth);
    const float fRight = std::clamp(part.max.x + fMargin, 0.0F, fWidth);
    const float fTop = std::clamp(part.min.z - fMargin, 0.0F, fHeight);
    const float fBottom = std::clamp(part.max.z + fMargin, 0.0F, fHeight);
    if (!(fLeft < fRight && fTop < fBottom))
    {
        return false;
    }
    gl.glEnable(GL_SCISSOR_TEST);
    gl.glScissor(static_cast<GLint>(fLeft),
                 view.iHeight - static_cast<GLint>(fBottom),
                 static_cast<GLsizei>(fRight) - static_cast<GLsizei>(fLeft),
                 static_cast<GLsizei>(fBottom) - static_cast<GLsizei>(fTop));
    gl.glEnable(GL_BLEND);
    // How opaque the picture is stays: it lies over nothing.
    gl.glBlendFuncSeparate(GL_ONE, GL_SRC_ALPHA, GL_ZERO, GL_ONE);
    gl.glDepthMask(GL_FALSE);
    return true;
}

void CMarkOverlay::End(OpenGl& gl)
{
    gl.glDepthMask(GL_TRUE);
    gl.glDisable(GL_BLEND);
    gl.glDisable(GL_SCISSOR_TEST);
}

void CMarkOverlay::SetStrength(const SToolMark& tool, float fTint, bool bPaint)
{
    m_Shader.Set("uMarkStrength",
                 tool.fPower,
                 tool.fHardness,
                 std::fabs(tool.fBand) < LEAST_BAND ? 0.0F : 1.0F / tool.fBand,
                 fTint);
    m_Shader.Set("uMarkTarget",
                 tool.fHeight,
                 tool.eTarget != EToolTarget::None ? GetDirection(tool.eSign) : 0.0F,
                 tool.eTarget == EToolTarget::Picked ? 1.0F : 0.0F,
                 bPaint ? 1.0F : 0.0F);
}

void CMarkOverlay::AddBox(const SVec3& middle, float fReach)
{
    m_Boxes.push_back({AddScaled(middle, {1.0F, 0.0F, 1.0F}, -fReach),
                       AddScaled(middle, {1.0F, 0.0F, 1.0F}, fReach)});
}

// Finds the middle of the mark: under the cursor, or that of the box. False for none.
bool CMarkOverlay::FindMiddle(const SGroundMark& mark,
                              const SExtents& box,
                              const CTerrain& terrain,
                              SVec3& at)
{
    const SVec3 size = Subtract(box.max, box.min);
    const bool bBox = size.x > 0.0F && size.z > 0.0F;
    m_BoxSize = bBox ? size : m_BoxSize;
    if (mark.bTool && mark.tool.eKind == EToolKind::Ramp && mark.tool.bLaid)
    {
        at = mark.tool.second;
        return true;
    }
    if (mark.ePlace == EMarkPlace::Box)
    {
        at = GetBoxCenter(box);
        at.y = terrain.GetHeightAt(at.x, at.z);
        return bBox;
    }
    at = mark.at;
    return mark.ePlace == EMarkPlace::Cursor;
}

// Returns how many there are.
int CMarkOverlay::SetFootprints(const SGroundMark& mark, const SVec3& at, const SVec3& size)
{
    SVec4 places[MOST_MARKS];
    SVec4 axes[MOST_MARKS];
    const size_t nMarks = std::min(mark.nImages, SGroundMark::MOST_IMAGES) + 1;
    for (size_t i = 0; i < nMarks; ++i)
    {
        const SMarkImage image = i > 0 ? mark.images[i - 1] : SMarkImage{at, mark.fTurn};
        // The way back: from a place on the ground into the shape.
        const SVec3 x = Turn(image, {1.0F / size.x, 0.0F, 0.0F});
        const SVec3 z = Turn(image, {0.0F, 0.0F, 1.0F / size.z});
        places[i] = {image.at.x, image.at.y, image.at.z, 0.0F};
        axes[i] = {x.x, x.z, z.x, z.z};
        AddBox(image.at, 0.5F * std::max(size.x, size.z));
    }
    m_Shader.Set("uMarkReach", 0.5F * size.x, 0.5F * size.z);
    m_Shader.Set("uMarkAt", places, static_cast<int>(nMarks));
    m_Shader.Set("uMarkAxes", axes, static_cast<int>(nMarks));
    return static_cast<int>(nMarks);
}

// As above. A strip that is not laid yet can lead anywhere: it is a disc, as wide as it will be.
int CMarkOverlay::SetStrips(const SGroundMark& mark, const SVec3& at)
{
    const SToolMark& tool = mark.tool;
    const SVec3 back = tool.bLaid ? Subtract(tool.first, tool.second) : SVec3{};
    const float fLength = std::hypot(back.x, back.z);
    SVec4 places[MOST_MARKS];
    SVec4 axes[MOST_MARKS];
    const size_t nMarks = std::min(mark.nImages, SGroundMark::MOST_IMAGES) + 1;
    for (size_t i = 0; i < nMarks; ++i)
    {
        const SMarkImage image = i > 0 ? mark.images[i - 1] : SMarkImage{at};
        const SVec3 own = Turn(image, back);
        const float fShare = fLength > 0.0F ? -1.0F / fLength : 0.0F;
        places[i] = {image.at.x + own.x, image.at.y + own.y, image.at.z + own.z, fLength};
        axes[i] = {own.x * fShare, own.z * fShare, -own.y, 0.0F};
        AddBox(AddScaled(image.at, own, 0.5F), 0.5F * fLength + tool.fExtent);
    }
    m_Shader.Set("uMarkAt", places, static_cast<int>(nMarks));
    m_Shader.Set("uMarkAxes", axes, static_cast<int>(nMarks));
    m_Shader.Set("uStrip",
                 tool.fExtent,
                 tool.fExtent * tool.fSideShare,
                 fLength > 0.0F ? tool.fEndShare : 0.0F,
                 fLength > 0.0F ? GetDirection(tool.eSign) : 0.0F);
    return static_cast<int>(nMarks);
}
