#pragma once

#include "brushes/ITellurBitmap.h"
#include "brushes/ITellurBrush.h"
#include "functions/ITellurFunction.h"
#include "host/Image.h"
#include "tests/support/FakeWorld.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

// Stand-ins for the other folders of the plug-in that a drag talks to.

// A brush shape straight from bytes, row by row.
class CGreyBitmap : public ITellurBitmap
{
public:
    CGreyBitmap(int iWidth, int iHeight, const std::vector<uint8_t>& bytes)
        : m_Image(IL_CreateImageFromBufferBPP(
              static_cast<uint32_t>(iWidth), static_cast<uint32_t>(iHeight), 8, bytes.data()))
    {
    }

    CGreyBitmap() = default; // no image

    const char* GetPath() const override { return nullptr; }

    bool Load(const char*) override { return false; }

    int GetXSize() const override { return m_Image ? static_cast<int>(m_Image->GetWidth()) : 0; }

    int GetYSize() const override { return m_Image ? static_cast<int>(m_Image->GetHeight()) : 0; }

    ITellurBitmap* Clone() const override { return nullptr; }

    uint8_t GetPoint(int iX, int iY) const override
    {
        ++m_Points;
        return m_Image ? m_Image->GetRawData()[iY * GetXSize() + iX] : uint8_t(0);
    }

    IImage* GetImage() override { return m_Image.get(); }

    const IImage* GetImage() const override { return m_Image.get(); }

    bool Save(fs::ifile&, int) const override { return false; }

    bool LoadIni(const CTCPARSE_KEYWORD*) override { return false; }

    int GetPointCalls() const { return m_Points; }

private:
    std::unique_ptr<IImage> m_Image;
    mutable int m_Points = 0;
};

// Merges by a given rule; what a drag asks of it beside that does not happen here.
class CRuleFunction : public ITellurFunction
{
public:
    using FMerge = float (*)(float fSrc, float fDst, float fCandidate);

    // eRule: what it says about pMerge, which is asked for ByCall only.
    explicit CRuleFunction(EMergeRule eRule, FMerge pMerge = nullptr)
        : m_Rule(eRule)
        , m_Merge(pMerge)
    {
    }

    const char* GetClassName() const override { return "RuleFunction"; }

    int Start(ITerrainModification*, ITellurBrush*, ViewId, uint32_t, ViewPoint) override
    {
        return 0;
    }

    int End(ITerrainModification*, ITellurBrush*, ViewId, uint32_t, ViewPoint) override
    {
        return 0;
    }

    int OnMouseMove(ITerrainModification*,
                    ITellurBrush*,
                    ViewId,
                    uint32_t,
                    ViewPoint,
                    uintptr_t,
                    uintptr_t) override
    {
        return 0;
    }

    float MergeHeight(float fSrc, float fDst, float fCandidate) const override
    {
        return m_Merge(fSrc, fDst, fCandidate);
    }

    bool Render(ITerrainModification*, ITellurBrush*, const SVec3*) override { return false; }

    CRTTIObject* GetRTTIObject() override { return nullptr; }

    const CRTTIObject* GetRTTIObject() const override { return nullptr; }

    bool SetCursor() override { return false; }

    ITellurFunction* Clone() const override { return new CRuleFunction(m_Rule, m_Merge); }

    bool Save(fs::ifile&, int) const override { return false; }

    bool Load(const CTCPARSE_KEYWORD*) override { return true; }

    EMergeRule GetMergeRule() const override { return m_Rule; }

private:
    EMergeRule m_Rule;
    FMerge m_Merge;
};

// Records the drag events that reach it.
class CFakeBrush : public ITellurBrush
{
public:
    void SetName(const char*) override {}

    const char* GetName() const override { return "fake"; }

    ITellurBrush* Clone() const override { return nullptr; }

    int Start(ITerrainModification*, ViewId view, uint32_t uFlags, ViewPoint point) override
    {
        AddCall(&calls, "Start(%u, %u, %u)", view, uFlags, point);
        return 1;
    }

    int End(ITerrainModification*, ViewId view, uint32_t uFlags, ViewPoint point) override
    {
        AddCall(&calls, "End(%u, %u, %u)", view, uFlags, point);
        return 1;
    }

    int OnMouseMove(ITerrainModification*,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override
    {
        AddCall(&calls, "Move(%u, %u, %u, %zu, %zu)", view, uFlags, point, uExtra1, uExtra2);
        return 42;
    }

    bool Render(ITerrainModification*, const SVec3* pPickedPoint) override
    {
        AddCall(&calls, "Render(%g)", pPickedPoint->x);
        return true;
    }

    void SetPowerModifier(float) override {}

    float GetPowerModifier() const override { return 1.0F; }

    void SetUsageDensity(float) override {}

    float GetUsageDensity() const override { return 1.0F; }

    void SetFadeFactor(float) override {}

    float GetFadeFactor() const override { return 0.0F; }

    void SetHardness(float) override {}

    float GetHardness() const override { return 0.0F; }

    void SetVerticalDistance(float) override {}

    float GetVerticalDistance() const override { return 0.0F; }

    void SetBitmap(CTellurBitmap*) override {}

    IImage* GetBitmapImage() override { return nullptr; }

    const IImage* GetBitmapImage() const override { return nullptr; }

    const char* GetBitmapPath() const override { return nullptr; }

    bool LoadBitmap(const char*) override { return false; }

    bool IsBitmapChanged() const override { return false; }

    void SetBitmapChanged(bool) override {}

    void SetFunction(ITellurFunction*) override {}

    const char* GetFunctionName() const override { return nullptr; }

    CRTTIObject* GetRTTIObject() override { return nullptr; }

    const CRTTIObject* GetRTTIObject() const override { return nullptr; }

    void SetMask(const char*) override {}

    const std::string& GetMaskPath() const override { return m_Empty; }

    bool IsMaskEnabled() const override { return false; }

    void SetMaskEnabled(bool) override {}

    void ApplyMask(CVertDataSet&, const SExtents&) override {}

    uint32_t GetMaskHandle() const override { return 0; }

    float GetMaskXSize(float, int) const override { return 0.0F; }

    bool SetCursor() override { return false; }

    void SetExtent(float) override {}

    float GetExtent() const override { return 0.0F; }

    SExtents& GetExtents(SExtents& clipped, float, float, SExtents&, float, float) const override
    {
        return clipped;
    }

    void CalculateWeights(CVertDataSet&, const SVec3&) override {}

    bool Save(fs::ifile&, int) const override { return false; }

    bool Load(const CTCPARSE_KEYWORD*) override { return false; }

    FakeCalls calls;

private:
    std::string m_Empty;
};
