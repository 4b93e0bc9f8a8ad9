#pragma once

#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modification/CTellurUndo.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/modification/CVertDataSet.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CNumbers.h"
#include "tests/support/CRecordingFunction.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using Lines = std::vector<std::string>;

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

    FakeCalls calls;
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

// Undo gives the bytes from before the drag, redo those after it.
inline void ExpectUndoRedo(CFakeContext& context, const std::vector<float>& before)
{
    const std::vector<float> after = context.terrain.heights;
    ASSERT_EQ(context.host.undos.size(), 1U);
    context.host.undos[0]->Undo();
    ExpectSameBytes(context.terrain.heights, before);
    context.host.undos[0]->Redo();
    ExpectSameBytes(context.terrain.heights, after);
}
