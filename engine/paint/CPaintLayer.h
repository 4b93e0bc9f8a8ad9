#pragma once

#include "engine/paint/CShapeSampler.h"
#include "engine/terrain/CDirtyRegions.h"
#include "host/Export.h"
#include "host/IPaintLayer.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class CTexture;
class CWorld;

using STexelRect = SVertexRect; // columns and rows of texels

// The terrain-type bitmap while it is painted on: its own copy of the work image, the brush over
// it, and how both are shown on the terrain. Says which texels changed at which revision, so that a
// renderer brings no more of it up to date than that. Owned by the host. UI thread.
class TELLUR_API CPaintLayer final : public IPaintLayer
{
public:
    explicit CPaintLayer(CWorld& world); // borrowed, outlives the layer
    ~CPaintLayer() override;
    CPaintLayer(const CPaintLayer&) = delete;
    CPaintLayer& operator=(const CPaintLayer&) = delete;

    // IPaintLayer. Beginning again with an image of the same size takes over only what differs.
    // What is not a 32-bit image is refused with one logged line.
    void Begin(const IImage* pWorkImage, const IImage* pBrushShape, uint32_t uChannels) override;
    void End() override;

    const IImage* GetImage() const override { return m_Image.get(); }

    void Paint(const SExtents& box,
               ITerrain2DFunction* pFunction,
               float fPower,
               float fHardness) override;
    void SetBrush(const SExtents* pBox, const IImage* pBrushShape) override;
    void SetChannelMask(uint32_t uChannels) override;
    void SetBlendFactor(float fFactor) override; // kept within 0 to 1

    const char* GetMaterial() const override { return m_Material.c_str(); }

    void SetMaterial(const char* pszName) override; // null is empty
    void SetTexelToVertexMapping(bool bOn) override;

    ETexelMapping GetTexelMapping() const override { return m_Mapping; }

    // For the renderer.
    bool IsShown() const { return m_Image != nullptr; }

    uint32_t GetChannelMask() const { return m_Channels; }

    float GetBlendFactor() const { return m_BlendFactor; }

    // The box round the texels that changed after a revision; all texels when the revision is 0 or
    // one of another image.
    STexelRect GetChangedSince(uint64_t uRevision) const;

    uint64_t GetRevision() const { return m_Regions.GetRevision(); }

    // Where the brush is; none before it was over the terrain.
    const std::optional<SExtents>& GetBrushBox() const { return m_BrushBox; }

    CTexture* GetBrushTexture() const { return m_BrushTexture.get(); } // null without a shape

    // Called after each change of what is shown; null: nobody.
    void SetListener(std::function<void()> onChanged) { m_OnChanged = std::move(onChanged); }

private:
    bool TakeChanges(const IImage& work);
    void SetShape(const IImage* pBrushShape);
    void Tell();

    CWorld& m_World;
    std::unique_ptr<IImage> m_Image; // null: not painting
    CShapeSampler m_Sampler;
    CDirtyRegions m_Regions;
    std::optional<SExtents> m_BrushBox;
    std::unique_ptr<CTexture> m_BrushTexture;
    std::string m_Material;
    std::function<void()> m_OnChanged;
    float m_BlendFactor = 0.5F;
    uint32_t m_Channels = 0;
    ETexelMapping m_Mapping = ETexelMapping::Centers;
};
