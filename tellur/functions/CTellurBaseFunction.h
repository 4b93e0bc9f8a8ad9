#pragma once

#include "framework/core/Cursor.h"
#include "host/Reflection.h"
#include "tellur/stroke/ITellurFunction.h"
#include "tellur/stroke/SVertexRule.h"

// The fixed texts and numbers of one function class.
struct SFunctionTraits
{
    const char* pszClassName = nullptr; // in files and in the function container
    const char* pszLogName = nullptr;   // in messages: the C++ class
    const char* pszNoCursor = nullptr;  // what SetCursor says without one
    const char* pszNoName = nullptr;    // what Save says without a class name
    uint32_t uCursorId = 0;             // cursor resource of the plug-in
    bool bHeedsKeys = false;            // asks GetEffectiveMode
};

// What all functions share: the reflected object, the cursor, and the block in a brush file. A copy
// shares the cursor of its original.
class CTellurBaseFunction : public ITellurFunction, public CRTTIObject
{
public:
    static const CRTTI s_RTTI;

    const char* GetClassName() const override { return m_Traits->pszClassName; }

    bool Render(ITerrainModification*, ITellurBrush*, const SVec3*) override { return false; }

    CRTTIObject* GetRTTIObject() override { return this; }

    const CRTTIObject* GetRTTIObject() const override { return this; }

    bool HeedsModeKeys() const override { return m_Traits->bHeedsKeys; }

    bool SetCursor() override;
    bool Save(fs::ifile& file, int iIndent) const override;
    bool Load(const CTCPARSE_KEYWORD* pBlock) override;

protected:
    // Loads the cursor from the current resource module. traits: static storage.
    explicit CTellurBaseFunction(const SFunctionTraits& traits);

private:
    const SFunctionTraits* m_Traits;
    CursorHandle m_Cursor;
};

// The height band of a brush around a point: full effect at the point's height, none from fDistance
// away. No band when the distance is (nearly) 0.
class CVerticalBand
{
public:
    CVerticalBand(float fDistance, float fCenter)
        : m_Distance(fDistance)
        , m_Center(fCenter)
    {
    }

    bool IsActive() const;

    void SetIn(SVertexRule& rule) const
    {
        rule.bBand = IsActive();
        rule.fBandDistance = m_Distance;
        rule.fBandCenter = m_Center;
    }

    // The share of the effect at a height: 1 at the band's centre, 0 from its distance on.
    float GetFactor(float fHeight) const
    {
        const float fOffset = fHeight - m_Center;
        const float fFactor = (m_Distance - (fOffset < 0.0F ? -fOffset : fOffset)) / m_Distance;
        return fFactor < 0.0F ? 0.0F : fFactor;
    }

private:
    float m_Distance;
    float m_Center;
};
