#pragma once

#include "host/IPluginStrokes.h"
#include "tellur/stroke/ITellurBrush.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class ITexture;
enum class EStrokePath : uint32_t;

// A brush with its image, mask and function. Owned by a brush container or by whoever made it; owns
// its image and function, and one reference to its mask texture.
class CTellurBrush : public ITellurBrush
{
public:
    CTellurBrush();
    ~CTellurBrush() override;
    CTellurBrush(const CTellurBrush&) = delete;
    CTellurBrush& operator=(const CTellurBrush&) = delete;

    void SetName(const char* pszName) override;
    const char* GetName() const override;
    CTellurBrush* Clone() const override;

    int Start(ITerrainModification* pModification,
              ViewId view,
              uint32_t uFlags,
              ViewPoint point) override;
    int End(ITerrainModification* pModification,
            ViewId view,
            uint32_t uFlags,
            ViewPoint point) override;
    int OnMouseMove(ITerrainModification* pModification,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override;
    bool Render(ITerrainModification* pModification, const SVec3* pPickedPoint) override;

    void SetPowerModifier(float fPower) override { m_PowerModifier = fPower; }

    float GetPowerModifier() const override { return m_PowerModifier; }

    void SetUsageDensity(float fDensity) override { m_UsageDensity = fDensity; }

    float GetUsageDensity() const override { return m_UsageDensity; }

    void SetFadeFactor(float fFade) override { m_FadeFactor = fFade; }

    float GetFadeFactor() const override { return m_FadeFactor; }

    void SetHardness(float fHardness) override { m_Hardness = fHardness; }

    float GetHardness() const override { return m_Hardness; }

    void SetVerticalDistance(float fDistance) override { m_VerticalDistance = fDistance; }

    float GetVerticalDistance() const override { return m_VerticalDistance; }

    void SetBitmap(CTellurBitmap* pBitmap) override;
    IImage* GetBitmapImage() override;
    const IImage* GetBitmapImage() const override;
    const char* GetBitmapPath() const override;
    bool LoadBitmap(const char* pszPath) override;

    bool IsBitmapChanged() const override { return m_BitmapChanged; }

    void SetBitmapChanged(bool bChanged) override { m_BitmapChanged = bChanged; }

    void SetFunction(ITellurFunction* pFunction) override;
    const char* GetFunctionName() const override;
    EStrokePath GetStrokePath() const;               // of the function; None without one
    bool HeedsModeKeys() const;                      // as above; false without one
    bool GetEnds(SVec3& first, SVec3& second) const; // as above
    CRTTIObject* GetRTTIObject() override;
    const CRTTIObject* GetRTTIObject() const override;

    void SetMask(const char* pszPath) override;

    const std::string& GetMaskPath() const override { return m_MaskPath; }

    void DropMask(); // there is none afterwards

    bool IsMaskEnabled() const override { return m_MaskEnabled; }

    void SetMaskEnabled(bool bEnable) override { m_MaskEnabled = bEnable; }

    bool IsMaskActing() const { return m_MaskTexture != nullptr && m_MaskEnabled; }

    void ApplyMask(CVertDataSet& set, const SExtents& terrainBox) override;

    uint32_t GetMaskHandle() const override { return m_MaskHandle; }

    float GetMaskXSize(float fLength, int iRepeats) const override;
    bool SetCursor() override;

    void SetExtent(float fExtent) override { m_Extent = fExtent; }

    float GetExtent() const override { return m_Extent; }

    SExtents& GetExtents(SExtents& clipped,
                         float fX,
                         float fZ,
                         SExtents& raw,
                         float fSizeX,
                         float fSizeZ) const override;
    void CalculateWeights(CVertDataSet& set, const SVec3& center) override;
    bool GetShape(SBrushShape& shape) const override;

    void FreeTurned(); // the copies of the image that points made

    bool Save(fs::ifile& file, int iIndent) const override;
    bool Load(const CTCPARSE_KEYWORD* pBlock) override;

private:
    CTellurBitmap* GetShapeImage(const SPointForm& form) const;
    void LimitTurned(); // a drag is over: small copies stay for the next one
    void ReleaseMask();
    bool LoadFunction(const CTCPARSE_KEYWORD* pKey);
    bool LoadKey(const CTCPARSE_KEYWORD* pKey);

    std::optional<std::string> m_Name;
    float m_PowerModifier = 1.0F;
    float m_UsageDensity = 1.0F;
    float m_Extent = 3200.0F;
    float m_FadeFactor = 0.0F;
    float m_Hardness = 0.0F;
    float m_VerticalDistance = 0.0F;
    std::unique_ptr<CTellurBitmap> m_Bitmap;
    std::unique_ptr<ITellurFunction> m_Function;
    bool m_BitmapChanged = false;

    // The image as the latest points had it turned, an entry a form: images of a stroke take turns.
    struct STurned
    {
        SPointForm form;
        std::unique_ptr<CTellurBitmap> pBitmap;
    };

    mutable std::vector<STurned> m_Turned;
    mutable size_t m_NextTurned = 0;   // the one that gives way
    ITexture* m_MaskTexture = nullptr; // one reference at the host's texture manager
    std::string m_MaskPath;
    bool m_MaskEnabled = false;
    uint32_t m_MaskHandle = 0; // registration at the world
};
