#pragma once

#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modification/CTellurUndo.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/modification/CVertDataSet.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CNumbers.h"
#include "tests/support/CRecordingFunction.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

inline const CRecordingFunction g_Strongest(EMergeRule::Strongest);

// A function as SetVerts takes it.
inline CRecordingFunction* AlwaysCandidate()
{
    static CRecordingFunction s_Function(EMergeRule::Candidate);
    return &s_Function;
}

// A brush whose function does nothing but record the drag.
class CRecordingBrush : public CTellurBrush
{
public:
    CRecordingBrush() { SetFunction(new CRecordingFunction("A", &calls)); }

    ~CRecordingBrush() override { SetFunction(nullptr); } // while its list is there

    Calls calls;
};

// Sets the one vertex (iX, iZ) of a terrain with cells of 10 units.
inline void SetOne(CTerrainModification& session, int iX, int iZ, float fHeight)
{
    const auto fX = static_cast<float>(iX) * 10.0F;
    const auto fZ = static_cast<float>(iZ) * 10.0F;
    CVertDataSet set;
    session.GetDstVerts({{fX, 0, fZ}, {fX, 0, fZ}}, set);
    ASSERT_EQ(set.GetVerts().GetCount(), 1U);
    set.GetVerts().GetHeights()[0] = fHeight;
    session.SetVerts(set, AlwaysCandidate());
}

// Compares bytes: -0 is not 0.
inline void ExpectSameBytes(const std::vector<float>& a, const std::vector<float>& b)
{
    ASSERT_EQ(a.size(), b.size());
    EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(float)), 0);
}

// Drags without a mode, on a terrain of 8 x 8 cells of 10 units.
class CDragTest : public CPluginFixture
{
protected:
    std::vector<float> Heights()
    {
        const CTerrain& terrain = m_Host.GetTerrain();
        const size_t nCount = size_t{terrain.GetVerticesX()} * terrain.GetVerticesZ();
        return {terrain.GetHeightData(), terrain.GetHeightData() + nCount};
    }

    // A flat terrain of other sizes in the same object.
    void Replace(uint32_t uCellsX, uint32_t uCellsZ)
    {
        SHeightField field;
        ASSERT_TRUE(field.Allocate(uCellsX + 1, uCellsZ + 1));
        field.size = {80.0F, 1000.0F, 80.0F};
        m_Host.GetTerrain().ReplaceField(std::move(field));
    }

    // A brush shape of those grey values, row by row.
    std::unique_ptr<CTellurBitmap> MakeShape(int iSide, const std::vector<uint8_t>& bytes)
    {
        WriteGrey("shape.png", static_cast<uint32_t>(iSide), static_cast<uint32_t>(iSide), bytes);
        auto pShape = std::make_unique<CTellurBitmap>();
        EXPECT_TRUE(pShape->Load("shape.png"));
        return pShape;
    }

    size_t CountUndos() { return m_Host.GetUndoStack().GetCount(); }

    // Undo gives the bytes from before the drag, redo those after it.
    void ExpectUndoRedo(const std::vector<float>& before)
    {
        const std::vector<float> after = Heights();
        ASSERT_EQ(CountUndos(), 1U);
        ASSERT_TRUE(m_Host.Undo());
        ExpectSameBytes(Heights(), before);
        ASSERT_TRUE(m_Host.Redo());
        ExpectSameBytes(Heights(), after);
    }

    CRecordingBrush m_Brush;
};
