#include "editor/view/CMarkOverlay.h"

#include "editor/view/CShader.h"
#include "editor/view/CTextureCopies.h"
#include "editor/view/SRenderSettings.h"
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
constexpr float PAINT_TINT = 0.3F; // weaker: the colour that is painted lies below it

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

} // namespace

SColor GetMarkColor(EToolSign eSign)
{
    switch (eSign)
    {
    case EToolSign::Raise:
        return {1.0F, 0.56F, 0.10F, 1.0F};
    case EToolSign::RaiseOnly:
        return {0.96F, 0.90F, 0.25F, 1.0F};
    case EToolSign::Lower:
        return {0.16F, 0.40F, 1.0F, 1.0F};
    case EToolSign::LowerOnly:
        return {0.42F, 0.82F, 1.0F, 1.0F};
    case EToolSign::Neutral:
        break;
    }
    return {0.10F, 0.76F, 0.54F, 1.0F};
}

uint64_t CMarkOverlay::Set(OpenGl& gl,
                           CShader& ground,
                           CTextureCopies& textures,
                           const CTerrain& terrain,
                           const SRenderSettings& settings)
{
    const SGroundMark& mark = settings.mark;
    const SToolMark& tool = mark.tool;
    const SProjectedTexture& projected = terrain.GetProjectedTexture();
    const CPaintLayer* pLayer = settings.pPaintLayer;
    const bool bPaint = pLayer != nullptr && pLayer->IsShown() && pLayer->GetBrushBox().has_value();
    const bool bRamp = mark.bTool && tool.eKind == EToolKind::Ramp;
    ITexture* pShape = bPaint       ? pLayer->GetBrushTexture()
                       : mark.bTool ? mark.pShape
                                    : projected.pTexture;
    const uint64_t uBytes =
        textures.Bind(gl, GL_TEXTURE4, bRamp ? nullptr : pShape, ECopyKind::Grey);

    SVec3 at;
    const bool bPlaced = Place(mark, bPaint ? *pLayer->GetBrushBox() : projected.box, terrain, at);
    const SVec3 size = mark.bTool ? SVec3{tool.fExtent, 0.0F, tool.fExtent} : m_BoxSize;
    const bool bFootprint =
        bPlaced && !bRamp && pShape != nullptr && size.x > 0.0F && size.z > 0.0F;
    const bool bStrip = bPlaced && bRamp && tool.fExtent > 0.0F;
    ground.Set("uMarks", bFootprint ? SetFootprints(ground, mark, at, size) : 0);
    ground.Set("uStrips", bStrip ? SetStrips(ground, mark, at) : 0);
    m_Middle.reset();
    if (bFootprint || bStrip)
    {
        m_Middle = {at.x, terrain.GetHeightAt(at.x, at.z), at.z};
    }
    ground.Set("uMarkShift",
               pShape != nullptr ? GetShift(pShape->GetWidth()) : 0.0F,
               pShape != nullptr ? GetShift(pShape->GetHeight()) : 0.0F);
    ground.Set("uMarkStrength",
               tool.fPower,
               tool.fHardness,
               std::fabs(tool.fBand) < LEAST_BAND ? 0.0F : 1.0F / tool.fBand,
               bPaint ? PAINT_TINT : settings.fMarkTint);
    ground.Set("uMarkTarget",
               tool.fHeight,
               tool.eTarget != EToolTarget::None ? GetDirection(tool.eSign) : 0.0F,
               tool.eTarget == EToolTarget::Picked ? 1.0F : 0.0F,
               bPaint ? 1.0F : 0.0F);
    ground.Set("uMarkColor", GetMarkColor(mark.bTool ? tool.eSign : EToolSign::Raise));
    return uBytes;
}

// Finds the middle of the mark: under the cursor, or that of the box. False for none.
bool CMarkOverlay::Place(const SGroundMark& mark,
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
int CMarkOverlay::SetFootprints(CShader& ground,
                                const SGroundMark& mark,
                                const SVec3& at,
                                SVec3 size)
{
    SVec4 places[MOST_MARKS];
    SVec4 axes[MOST_MARKS];
    const size_t nMarks = std::min(mark.nImages, SGroundMark::MOST_IMAGES) + 1;
    for (size_t i = 0; i < nMarks; ++i)
    {
        const SMarkImage image = i > 0 ? mark.images[i - 1] : SMarkImage{at};
        // The way back: from a place on the ground into the shape.
        const SVec3 x = Turn(image, {1.0F / size.x, 0.0F, 0.0F});
        const SVec3 z = Turn(image, {0.0F, 0.0F, 1.0F / size.z});
        places[i] = {image.at.x, image.at.y, image.at.z, 0.0F};
        axes[i] = {x.x, x.z, z.x, z.z};
    }
    ground.Set("uMarkAt", places, static_cast<int>(nMarks));
    ground.Set("uMarkAxes", axes, static_cast<int>(nMarks));
    return static_cast<int>(nMarks);
}

// As above. A strip that is not laid yet can lead anywhere: it is a disc, as wide as it will be.
int CMarkOverlay::SetStrips(CShader& ground, const SGroundMark& mark, const SVec3& at)
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
    }
    ground.Set("uMarkAt", places, static_cast<int>(nMarks));
    ground.Set("uMarkAxes", axes, static_cast<int>(nMarks));
    ground.Set("uStrip",
               tool.fExtent,
               tool.fExtent * tool.fSideShare,
               fLength > 0.0F ? tool.fEndShare : 0.0F,
               fLength > 0.0F ? GetDirection(tool.eSign) : 0.0F);
    return static_cast<int>(nMarks);
}
