#pragma once

#include "host/FileSystem.h"
#include "host/Image.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/functions/CPainterFunction.h"
#include "tellur/modification/CTerrainModification.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// Fields as text, the way files set them.
inline void SetField(ITellurFunction& function, const char* pszField, const char* pszText)
{
    CRTTIObject* pObject = function.GetRTTIObject();
    CRTTIField* pField = pObject->FindField(pszField);
    ASSERT_NE(pField, nullptr) << pszField;
    ASSERT_TRUE(pField->FromString(pObject, pszText)) << pszText;
}

inline std::string GetField(ITellurFunction& function, const char* pszField)
{
    const CRTTIObject* pObject = function.GetRTTIObject();
    const CRTTIField* pField = pObject->FindField(pszField);
    return pField != nullptr ? pField->ToString(pObject) : "no field";
}

// A painter that raises by 100 times weight and stroke weight, and tells what it was handed.
class CTestPainter : public CPainterFunction
{
public:
    explicit CTestPainter(Calls* pCalls)
        : CPainterFunction(GetTestTraits())
        , m_Calls(pCalls)
    {
    }

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override { return new CTestPainter(*this); }

    float MergeHeight(float, float, float fCandidate) const override { return fCandidate; }

    bool UseOnlyDestBuffer() const override { return bUseDest; }

    void OnStartPoint(const SVec3& point) override
    {
        AddCall(m_Calls, "OnStartPoint(%g %g %g)", point.x, point.y, point.z);
    }

    void DoOperation(const SOperation& operation) override
    {
        CVertList& verts = operation.pVerts->GetVerts();
        AddCall(m_Calls,
                "DoOperation(%g %g %g, %zu, %.4g)",
                operation.point.x,
                operation.point.y,
                operation.point.z,
                verts.GetCount(),
                operation.fWeight);
        for (size_t i = 0; i < verts.GetCount(); ++i)
        {
            verts.GetHeights()[i] += 100.0F * verts.GetWeights()[i] * operation.fWeight;
        }
    }

    bool bUseDest = false;

private:
    static const SFunctionTraits& GetTestTraits()
    {
        static const SFunctionTraits s_Traits = {"Test", "CTest", "no cursor handle", "no name", 1};
        return s_Traits;
    }

    Calls* m_Calls;
};

// A drag over a terrain of 16 x 16 cells of 10 units, at most 1000 high, with a white square brush
// of 20 units.
class CDragTest : public CPluginFixture
{
protected:
    CDragTest()
    {
        m_Host.NewLevel(16, {160, 1000, 160});
        WriteGrey("white.png", 1, 1, {255});
        EXPECT_TRUE(brush.LoadBitmap("white.png"));
        brush.SetExtent(20.0F);
    }

    // The brush owns it.
    template <class TFunction> TFunction* Use(TFunction* pFunction)
    {
        brush.SetFunction(pFunction);
        return pFunction;
    }

    void Press(float fX, float fY, float fZ)
    {
        m_Face.Hit(fX, fY, fZ);
        EXPECT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &brush));
    }

    int Move(float fX, float fY, float fZ, int iStep = 0)
    {
        const SStepBlock step = {99, iStep};
        m_Face.Hit(fX, fY, fZ);
        return session.OnMouseMove(1, 2, 4, 0, reinterpret_cast<uintptr_t>(&step));
    }

    void Release() { session.End(1, 2, 5); }

    CTellurBrush brush;
    CTerrainModification session;
};
