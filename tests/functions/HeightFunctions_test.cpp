#include "functions/CPointHeightFunction.h"
#include "functions/CRelativeHeightFunction.h"
#include "functions/CSetHeightFunction.h"
#include "tests/functions/FunctionParts.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CNumbers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using Lines = std::vector<std::string>;

using CRelativeHeightFunctionTest = CDragTest;
using CSetHeightFunctionTest = CDragTest;
using CPointHeightFunctionTest = CDragTest;

// A working set with given heights and weights, one row of a terrain.
class CRow
{
public:
    explicit CRow(const std::vector<float>& heights, const std::vector<float>& weights)
    {
        m_Set.GetVerts().AppendRun(0, 0, heights.data(), heights.size());
        std::copy(weights.begin(), weights.end(), m_Set.GetVerts().GetWeights());
    }

    CVertDataSet* operator&() { return &m_Set; }

    std::vector<float> GetHeights() const
    {
        const CVertList& verts = m_Set.GetVerts();
        return {verts.GetHeights(), verts.GetHeights() + verts.GetCount()};
    }

private:
    CVertDataSet m_Set;
};

float GetBand(float fDistance, float fHeight, float fCenter)
{
    const float t = (fDistance - std::fabs(fHeight - fCenter)) / fDistance;
    return std::fabs(fDistance) < 0.0001F ? 1.0F : std::max(t, 0.0F);
}

struct SRandomRow
{
    explicit SRandomRow(CNumbers& numbers)
        : heights(static_cast<size_t>(numbers.Int(1, 70)))
        , weights(heights.size())
        , fCenter(static_cast<float>(numbers.Int(0, 100) * 10))
        , fStroke(numbers.Float(0.0F, 1.0F))
    {
        constexpr float DISTANCES[] = {0.0F, 0.00009F, 0.0001F, 55.5F, 400.0F, -120.0F};
        fDistance = DISTANCES[numbers.Int(0, 5)];
        for (size_t i = 0; i < heights.size(); ++i)
        {
            heights[i] = static_cast<float>(numbers.Int(0, 100) * 10);
            weights[i] = numbers.Float(-0.5F, 1.5F);
        }
    }

    std::vector<float> heights;
    std::vector<float> weights;
    float fCenter;
    float fStroke;
    float fDistance;
};

void ExpectNear(const std::vector<float>& heights, const std::vector<float>& plain)
{
    ASSERT_EQ(heights.size(), plain.size());
    for (size_t i = 0; i < plain.size(); ++i)
    {
        ASSERT_NEAR(heights[i], plain[i], std::fabs(plain[i]) * 1.0e-6F + 1.0e-4F) << i;
    }
}

} // namespace

TEST_F(CRelativeHeightFunctionTest, RaisesByHeightTimesWeightStrokeAndBand)
{
    CNumbers numbers(1);
    CRelativeHeightFunction function;
    for (int iRound = 0; iRound < 200; ++iRound)
    {
        SCOPED_TRACE(iRound);
        const SRandomRow row(numbers);
        const int iHeight = numbers.Int(-600, 600);
        SetField(function, "m_Height", std::to_string(iHeight).c_str());
        brush.SetVerticalDistance(row.fDistance);
        std::vector<float> plain = row.heights;
        for (size_t i = 0; i < plain.size(); ++i)
        {
            plain[i] += row.weights[i] * row.fStroke * static_cast<float>(iHeight) *
                        GetBand(row.fDistance, row.heights[i], row.fCenter);
        }
        CRow verts(row.heights, row.weights);
        function.DoOperation({{1, row.fCenter, 2}, &verts, &brush, nullptr, row.fStroke});
        ExpectNear(verts.GetHeights(), plain);
    }
}

TEST_F(CRelativeHeightFunctionTest, KeepsTheStrongestPassOfADrag)
{
    Use(new CRelativeHeightFunction);
    context.terrain.At(5, 5) = 100.0F;
    Press(50, 100, 50);

    struct SCase
    {
        float fPower; // the weight, the brush being white
        float fHeight;
    };

    const SCase cases[] = {{0.5F, 350}, {0.25F, 350}, {1.0F, 600}, {0.5F, 600}, {1.0F, 600}};
    for (const SCase& test : cases)
    {
        brush.SetPowerModifier(test.fPower);
        Move(50, 0, 50);
        EXPECT_NEAR(context.terrain.At(5, 5), test.fHeight, 1.0e-3F);
    }
    Release();
    // A new drag starts from what the last one left; the limit holds.
    Press(50, 600, 50);
    Move(50, 0, 50);
    EXPECT_EQ(context.terrain.At(5, 5), 1000.0F);
    EXPECT_EQ(context.terrain.At(4, 5), 1000.0F); // 500 and 500
    Release();
    EXPECT_EQ(context.host.undos.size(), 2U);
}

TEST_F(CRelativeHeightFunctionTest, BandOnPaper)
{
    brush.SetVerticalDistance(200.0F);
    CRelativeHeightFunction function;
    CRow verts({300, 450, 250, 500, 499, 900, 100}, {1, 1, 1, 1, 1, 1, 1});
    function.DoOperation({{0, 300, 0}, &verts, &brush, nullptr, 1.0F});
    ExpectNear(verts.GetHeights(), {800, 575, 625, 500, 501.5F, 900, 100});
}

TEST_F(CSetHeightFunctionTest, PullsTowardTheTargetWhereTheModeLetsIt)
{
    struct SKeys
    {
        const char* pszName;
        std::set<EKey> keys;
        int iForced; // -1: the stored mode counts
    };

    const SKeys keys[] = {{"none", {}, -1},
                          {"ctrl", {EKey::Control}, 1},
                          {"alt", {EKey::Alt}, 2},
                          {"both", {EKey::Control, EKey::Alt}, 2},
                          {"shift", {EKey::Shift}, -1}};
    constexpr const char* MODES[] = {"mode_default", "mode_min", "mode_max"};
    CNumbers numbers(2);
    CSetHeightFunction function;
    for (int iRound = 0; iRound < 300; ++iRound)
    {
        const SKeys& held = keys[iRound % 5];
        const int iStored = numbers.Int(0, 2);
        SCOPED_TRACE(testing::Message() << iRound << " " << held.pszName << " " << MODES[iStored]);
        const int iMode = held.iForced >= 0 ? held.iForced : iStored;
        frontEnd.keys = held.keys;
        const SRandomRow row(numbers);
        const float fTarget = static_cast<float>(numbers.Int(0, 100) * 10);
        SetField(function, "m_Mode", MODES[iStored]);
        SetField(function, "m_Height", std::to_string(static_cast<int>(fTarget)).c_str());
        brush.SetVerticalDistance(row.fDistance);
        std::vector<float> plain = row.heights;
        for (size_t i = 0; i < plain.size(); ++i)
        {
            const float y = row.heights[i];
            if ((iMode == 1 && y >= fTarget) || (iMode == 2 && y <= fTarget))
            {
                continue;
            }
            plain[i] = y + (fTarget - y) * row.weights[i] * row.fStroke *
                               GetBand(row.fDistance, y, row.fCenter);
        }
        CRow verts(row.heights, row.weights);
        function.DoOperation({{1, row.fCenter, 2}, &verts, &brush, nullptr, row.fStroke});
        ExpectNear(verts.GetHeights(), plain);
        EXPECT_EQ(GetField(function, "m_Mode"), MODES[iStored]); // is not changed
    }
}

TEST_F(CSetHeightFunctionTest, DragOnPaper)
{
    CSetHeightFunction* pFunction = Use(new CSetHeightFunction);
    SetField(*pFunction, "m_Height", "300");
    SetField(*pFunction, "m_Mode", "mode_min");
    brush.SetPowerModifier(0.5F);
    context.terrain.At(5, 5) = 100.0F;
    context.terrain.At(6, 5) = 400.0F;
    Press(50, 100, 50);
    Move(50, 100, 50);
    EXPECT_NEAR(context.terrain.At(5, 5), 200.0F, 1.0e-3F);
    EXPECT_EQ(context.terrain.At(6, 5), 400.0F);
    // Alt cuts down for this operation, whatever is stored; Ctrl and Alt do too.
    frontEnd.keys = {EKey::Control, EKey::Alt};
    Move(50, 100, 50);
    EXPECT_NEAR(context.terrain.At(5, 5), 200.0F, 1.0e-3F);
    EXPECT_NEAR(context.terrain.At(6, 5), 350.0F, 1.0e-3F);
    frontEnd.keys = {};
    brush.SetPowerModifier(1.0F);
    Move(50, 100, 50);
    EXPECT_EQ(context.terrain.At(5, 5), 300.0F); // full weight lands on the target
}

TEST_F(CSetHeightFunctionTest, TakesItsTargetWhereTheStrokeBegins)
{
    CSetHeightFunction* pFunction = Use(new CSetHeightFunction);
    Press(50, 820, 50);
    EXPECT_EQ(GetField(*pFunction, "m_Height"), "500");
    Release();
    SetField(*pFunction, "m_PickHeight", "1");
    context.TakeCalls();
    Press(50, 820, 50);
    EXPECT_EQ(GetField(*pFunction, "m_Height"), "820");
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Host.PickTerrain(1, 3, 0)", "Context.RefreshPanelProperties()"}));
    Move(50, 300, 50);
    EXPECT_EQ(GetField(*pFunction, "m_Height"), "820");
    EXPECT_NEAR(context.terrain.At(5, 5), 820.0F, 1.0e-3F);
    // A clone of a stroke begins its own.
    const std::unique_ptr<ITellurFunction> pClone(pFunction->Clone());
    EXPECT_EQ(GetField(*pClone, "m_Height"), "820");
    EXPECT_EQ(GetField(*pClone, "m_PickHeight"), "1");
}

TEST_F(CPointHeightFunctionTest, FollowsTheVerticalStepAndTheBand)
{
    CNumbers numbers(3);
    CPointHeightFunction function;
    for (int iRound = 0; iRound < 200; ++iRound)
    {
        SCOPED_TRACE(iRound);
        const SRandomRow row(numbers);
        const int iStep = numbers.Int(-40, 40);
        brush.SetVerticalDistance(row.fDistance);
        std::vector<float> plain = row.heights;
        for (size_t i = 0; i < plain.size(); ++i)
        {
            plain[i] += -static_cast<float>(iStep) * row.weights[i] *
                        GetBand(row.fDistance, row.heights[i], row.fCenter);
        }
        CRow verts(row.heights, row.weights);
        function.Process({&brush, {1, row.fCenter, 2}, &verts, iStep});
        ExpectNear(verts.GetHeights(), plain);
    }
}

TEST_F(CPointHeightFunctionTest, DragOnPaper)
{
    Use(new CPointHeightFunction);
    context.terrain.At(5, 5) = 25.0F;
    Press(50, 25, 50);
    constexpr int STEPS[][2] = {{10, 15}, {-30, 45}, {0, 45}, {60, 0}, {-5, 5}};
    for (const auto& step : STEPS)
    {
        Move(150, 0, 150, step[0]); // where the cursor is does not count
        EXPECT_EQ(context.terrain.At(5, 5), static_cast<float>(step[1])) << step[0];
    }
    // The others were at 0: down is cut off, and each way up counts from there.
    EXPECT_EQ(context.terrain.At(4, 4), 5.0F);
    EXPECT_EQ(context.terrain.At(15, 15), 0.0F);
    Release();
    ASSERT_EQ(context.host.undos.size(), 1U);
    context.host.undos[0]->Undo();
    EXPECT_EQ(context.terrain.At(5, 5), 25.0F);
    EXPECT_EQ(context.terrain.At(4, 4), 0.0F);
}

TEST(HeightFunctions, WithoutABrushSayItOnce)
{
    CLogCatcher log;
    CRow verts({1, 2, 3}, {1, 1, 1});
    CRelativeHeightFunction relative;
    relative.DoOperation({{}, &verts, nullptr, nullptr, 1.0F});
    EXPECT_EQ(log.TakeLines(), Lines{"[CRelativeHeightFunction::DoOperation] no brush interface"});
    CSetHeightFunction set;
    set.DoOperation({{}, &verts, nullptr, nullptr, 1.0F});
    EXPECT_EQ(log.TakeLines(), Lines{"[CSetHeightFunction::DoOperation] no brush interface"});
    CPointHeightFunction point;
    point.Process({nullptr, {}, &verts, 7});
    EXPECT_EQ(log.GetText(), "");
    EXPECT_EQ(verts.GetHeights(), (std::vector<float>{1, 2, 3}));
}
