#include "engine/paint/CPaintLayer.h"

#include "engine/terrain/CTerrain.h"
#include "engine/world/CTexture.h"
#include "engine/world/CWorld.h"
#include "host/ITerrain2DRowFunction.h"
#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

constexpr const char* BRUSH_NAME = "paint_brush";

// Whether two rows differ, and the columns from the first to the last texel that does.
STexelRange FindDifference(const uint8_t* pOne, const uint8_t* pOther, uint32_t nTexels)
{
    // Most rows are equal, which one comparison of all bytes tells.
    if (std::memcmp(pOne, pOther, nTexels * PAINT_TEXEL_BYTES) == 0)
    {
        return {};
    }
    const auto differs = [&](uint32_t uTexel)
    {
        return std::memcmp(pOne + uTexel * PAINT_TEXEL_BYTES,
                           pOther + uTexel * PAINT_TEXEL_BYTES,
                           PAINT_TEXEL_BYTES);
    };
    STexelRange range = {0, nTexels};
    while (differs(range.uFirst) == 0)
    {
        ++range.uFirst;
    }
    while (differs(range.uEnd - 1) == 0)
    {
        --range.uEnd;
    }
    return range;
}

bool ApplyToEach(ITerrain2DFunction& function,
                 uint8_t* pTexels,
                 const float* pWeights,
                 size_t nCount,
                 float fPower)
{
    bool bChanged = false;
    for (size_t i = 0; i < nCount; ++i)
    {
        if (pWeights[i] > 0.0F)
        {
            bChanged |= function.Apply(pTexels + i * PAINT_TEXEL_BYTES, pWeights[i], fPower, 0);
        }
    }
    return bChanged;
}

} // namespace

CPaintLayer::CPaintLayer(CWorld& world)
    : m_World(world)
{
}

CPaintLayer::~CPaintLayer() = default;

void CPaintLayer::Begin(const IImage* pWorkImage, const IImage* pBrushShape, uint32_t uChannels)
{
    if (pWorkImage == nullptr || pWorkImage->GetRawData() == nullptr ||
        pWorkImage->GetFormat() != EImageFormat::Rgba32)
    {
        CrashLog("[CPaintLayer::Begin] not an image of 32 bits a texel\n");
        return;
    }
    m_Channels = uChannels;
    SetShape(pBrushShape);
    // Of an image as large as the one before, only what differs counts as changed.
    if (!TakeChanges(*pWorkImage))
    {
        // An image of another size, or the first one: all of it is new to every reader.
        m_Image.reset(IL_CreateImageFromImage(pWorkImage));
        m_Regions.Reset({0, 0, pWorkImage->GetWidth(), pWorkImage->GetHeight()});
    }
    Tell();
}

bool CPaintLayer::TakeChanges(const IImage& work)
{
    if (m_Image == nullptr || m_Image->GetWidth() != work.GetWidth() ||
        m_Image->GetHeight() != work.GetHeight())
    {
        return false;
    }
    const size_t nStride = work.GetWidth() * PAINT_TEXEL_BYTES;
    STexelRect changed;
    for (uint32_t uRow = 0; uRow < work.GetHeight(); ++uRow)
    {
        const uint8_t* pSource = work.GetRawData() + uRow * nStride;
        uint8_t* pDest = m_Image->GetRawData() + uRow * nStride;
        const STexelRange range = FindDifference(pSource, pDest, work.GetWidth());
        if (!range.IsEmpty())
        {
            std::memcpy(pDest, pSource, nStride);
            changed = changed.Union({range.uFirst, uRow, range.uEnd, uRow + 1});
        }
    }
    m_Regions.Add(changed);
    return true;
}

void CPaintLayer::End()
{
    m_Image.reset();
    m_BrushBox.reset();
    Tell();
}

void CPaintLayer::Paint(const SExtents& box,
                        ITerrain2DFunction* pFunction,
                        float fPower,
                        float fHardness)
{
    const CTerrain* pTerrain = m_World.GetCTerrain();
    if (m_Image == nullptr || pTerrain == nullptr || pFunction == nullptr)
    {
        return;
    }
    const SVec3 size = pTerrain->GetSize();
    SShapeSide columns = {{}, m_Image->GetWidth(), size.x, box.min.x, box.max.x};
    SShapeSide rows = {{}, m_Image->GetHeight(), size.z, box.min.z, box.max.z};
    for (SShapeSide* pSide : {&columns, &rows})
    {
        pSide->texels =
            FindTexels(pSide->fMin, pSide->fMax, pSide->nTexels, pSide->fSide, m_Mapping);
    }
    if (!m_Sampler.Begin(columns, m_Mapping))
    {
        return;
    }
    // Functions that can do a row at a time are called once a row, all others once a texel.
    auto* pRowFunction = dynamic_cast<ITerrain2DRowFunction*>(pFunction);
    const size_t nColumns = columns.texels.uEnd - columns.texels.uFirst;
    STexelRect changed;
    for (uint32_t uRow = rows.texels.uFirst; uRow < rows.texels.uEnd; ++uRow)
    {
        const float* pWeights = m_Sampler.SampleRow(uRow, rows, fHardness);
        if (pWeights == nullptr)
        {
            return; // a box of no depth
        }
        uint8_t* pTexels =
            m_Image->GetRawData() +
            (size_t{uRow} * columns.nTexels + columns.texels.uFirst) * PAINT_TEXEL_BYTES;
        if (pRowFunction != nullptr ? pRowFunction->ApplyRow(pTexels, pWeights, nColumns, fPower)
                                    : ApplyToEach(*pFunction, pTexels, pWeights, nColumns, fPower))
        {
            // The row as a whole: the function does not say which of its texels it has changed.
            changed = changed.Union({columns.texels.uFirst, uRow, columns.texels.uEnd, uRow + 1});
        }
    }
    if (!changed.IsEmpty())
    {
        m_Regions.Add(changed);
        Tell();
    }
}

STexelRect CPaintLayer::GetChangedSince(uint64_t uRevision) const
{
    return m_Regions.GetBoxSince(uRevision);
}

void CPaintLayer::SetBrush(const SExtents* pBox, const IImage* pBrushShape)
{
    if (pBox != nullptr)
    {
        m_BrushBox = *pBox;
    }
    if (pBrushShape != nullptr)
    {
        SetShape(pBrushShape);
    }
    Tell();
}

void CPaintLayer::SetShape(const IImage* pBrushShape)
{
    m_Sampler.SetShape(pBrushShape);
    // The picture of the brush is the shape as it is sampled, in grey.
    std::unique_ptr<IImage> pCopy(IL_CreateImageFromImage(m_Sampler.GetShape()));
    if (pCopy == nullptr)
    {
        m_BrushTexture.reset();
        return;
    }
    m_BrushTexture = std::make_unique<CTexture>(BRUSH_NAME, std::move(pCopy), nullptr);
}

void CPaintLayer::SetChannelMask(uint32_t uChannels)
{
    m_Channels = uChannels;
    Tell();
}

void CPaintLayer::SetBlendFactor(float fFactor)
{
    m_BlendFactor = std::isnan(fFactor) ? 0.0F : std::clamp(fFactor, 0.0F, 1.0F);
    Tell();
}

void CPaintLayer::SetMaterial(const char* pszName)
{
    m_Material = pszName != nullptr ? pszName : "";
    Tell();
}

void CPaintLayer::SetTexelToVertexMapping(bool bOn)
{
    m_Mapping = bOn ? ETexelMapping::Vertices : ETexelMapping::Centers;
    Tell();
}

void CPaintLayer::Tell()
{
    if (m_OnChanged)
    {
        m_OnChanged();
    }
}
