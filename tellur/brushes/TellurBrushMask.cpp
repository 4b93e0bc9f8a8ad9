// The mask of a brush: a grey picture stretched over the whole terrain that multiplies the weights.

#include "host/EditorHost.h"
#include "host/World.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CVertDataSet.h"

#include <algorithm>

namespace
{

constexpr float TEXEL_SCALE = 0.003921569F; // 1 / 255
constexpr const char* OVERLAY_NAME = "tellur_edit_heightmap";

ITextureManager* GetTextureManager()
{
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext != nullptr ? pContext->GetEditorHost() : nullptr;
    return pHost != nullptr ? pHost->GetTextureManager() : nullptr;
}

// The two texels beside a position along one axis. The far border of the terrain lies one texel
// beyond the picture; it takes the last one.
struct STexelPair
{
    uint32_t uFirst;
    uint32_t uSecond;
    float fFraction;
};

STexelPair GetTexelPair(float fTexel, uint32_t uSize)
{
    const float fInside = std::clamp(fTexel, 0.0F, static_cast<float>(uSize));
    const uint32_t uFirst = std::min(static_cast<uint32_t>(fInside), uSize - 1);
    return {uFirst,
            uFirst + 1 < uSize ? uFirst + 1 : uFirst,
            fInside - static_cast<float>(static_cast<uint32_t>(fInside))};
}

bool IsInside(float f, float fMin, float fMax)
{
    return f >= fMin && f <= fMax;
}

struct SMask
{
    const uint8_t* pTexels;
    uint32_t uWidth;
    uint32_t uHeight;
};

void MaskRun(CVertList& verts, const SVertRun& run, const SMask& mask, const SExtents& box)
{
    const float fZ = static_cast<float>(run.iz) * verts.GetStepZ();
    if (!IsInside(fZ, box.min.z, box.max.z))
    {
        return;
    }
    const float fScaleX = static_cast<float>(mask.uWidth) / (box.max.x - box.min.x);
    const float fScaleZ = static_cast<float>(mask.uHeight) / (box.max.z - box.min.z);
    const STexelPair rows = GetTexelPair(fScaleZ * fZ, mask.uHeight);
    const uint8_t* pRow0 = mask.pTexels + static_cast<size_t>(rows.uFirst) * mask.uWidth;
    const uint8_t* pRow1 = mask.pTexels + static_cast<size_t>(rows.uSecond) * mask.uWidth;
    const float fz = rows.fFraction;
    const float* pHeights = verts.GetHeights() + run.nFirst;
    float* pWeights = verts.GetWeights() + run.nFirst;
    for (size_t i = 0; i < run.nCount; ++i)
    {
        const float fX = static_cast<float>(run.ixFirst + static_cast<int>(i)) * verts.GetStepX();
        // Outside the box the mask says nothing, and the weight stays.
        if (!IsInside(fX, box.min.x, box.max.x) || !IsInside(pHeights[i], box.min.y, box.max.y))
        {
            continue;
        }
        // Kept as it always was: the column pair is weighed by the row's fraction and the row pair
        // by the column's.
        const STexelPair columns = GetTexelPair(fScaleX * fX, mask.uWidth);
        const float fx = columns.fFraction;
        const float fRow0 = static_cast<float>(pRow0[columns.uSecond]) * fz +
                            static_cast<float>(pRow0[columns.uFirst]) * (1.0F - fz);
        const float fRow1 = static_cast<float>(pRow1[columns.uSecond]) * fz +
                            static_cast<float>(pRow1[columns.uFirst]) * (1.0F - fz);
        pWeights[i] *= (fRow0 * (1.0F - fx) + fRow1 * fx) * TEXEL_SCALE;
    }
}

} // namespace

void CTellurBrush::ReleaseMask()
{
    if (ITextureManager* pManager = GetTextureManager())
    {
        pManager->Release(m_MaskTexture);
    }
    m_MaskTexture = nullptr;
    World* pWorld = GetCurrentWorld();
    if (m_MaskHandle != 0 && pWorld != nullptr)
    {
        pWorld->ReleaseTexture(m_MaskHandle);
    }
    m_MaskHandle = 0;
}

void CTellurBrush::SetMask(const char* pszPath)
{
    ITextureManager* pManager = GetTextureManager();
    if (pszPath == nullptr || pManager == nullptr)
    {
        return;
    }
    const std::string strPath = pszPath; // the caller may pass our own path
    ReleaseMask();
    m_MaskTexture = pManager->Load(strPath.c_str(), 1);
    if (m_MaskTexture == nullptr)
    {
        m_MaskPath.clear();
        return;
    }
    m_MaskTexture->SetFlags(TEXTURE_BYTES);
    m_MaskPath = strPath;
    if (World* pWorld = GetCurrentWorld())
    {
        m_MaskHandle = pWorld->RegisterTerrainTexture(m_MaskTexture, OVERLAY_NAME);
    }
}

void CTellurBrush::DropMask()
{
    ReleaseMask();
    m_MaskPath.clear();
}

float CTellurBrush::GetMaskXSize(float fLength, int iRepeats) const
{
    return m_MaskTexture != nullptr ? m_MaskTexture->GetXSize(fLength, iRepeats) : 0.0F;
}

void CTellurBrush::ApplyMask(CVertDataSet& set, const SExtents& terrainBox)
{
    if (!IsMaskActing())
    {
        return;
    }
    const SMask mask = {
        m_MaskTexture->LockBytes(), m_MaskTexture->GetWidth(), m_MaskTexture->GetHeight()};
    if (mask.pTexels != nullptr && mask.uWidth > 0 && mask.uHeight > 0)
    {
        for (const SVertRun& run : set.GetVerts().GetRuns())
        {
            MaskRun(set.GetVerts(), run, mask, terrainBox);
        }
    }
    m_MaskTexture->Unlock();
}
