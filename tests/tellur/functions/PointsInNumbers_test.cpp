// A point in one pass over the heights, beside the same point with a set of vertices.

#include "tellur/functions/CBlurFunction.h"
#include "tellur/functions/CPointHeightFunction.h"
#include "tellur/functions/CPosterizeFunction.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tellur/modification/HeightPass.h"
#include "tests/support/CNumbers.h"
#include "tests/tellur/functions/FunctionParts.h"

#include <cmath>
#include <cstring>
#include <memory>

namespace
{

// A brush that does not tell its shape in numbers.
class CSetBrush : public CTellurBrush
{
public:
    bool GetShape(SBrushShape&) const override { return false; }
};

ITellurFunction* MakeFunction(int iKind)
{
    switch (iKind)
    {
    case 0:
        return new CRelativeHeightFunction;
    case 1:
        return new CSetHeightFunction;
    case 2:
        return new CPosterizeFunction;
    case 3:
        return new CBlurFunction;
    default:
        return new CPointHeightFunction;
    }
}

class CPointsInNumbers : public CPluginFixture
{
protected:
    // Sizes that are no multiple of tiles or groups, steps that are no whole numbers.
    void MakeGround(CNumbers& numbers)
    {
        const uint32_t uSizeX = 150;
        const uint32_t uSizeZ = 131;
        SHeightField field;
        ASSERT_TRUE(field.Allocate(uSizeX, uSizeZ));
        field.size = {-311.0F, 600.0F, 200.0F};
        for (size_t i = 0; i < field.GetCount(); ++i)
        {
            const int iKind = numbers.Int(0, 60);
            field.pHeights[i] = iKind == 0   ? -1.0F
                                : iKind == 1 ? 0.0F
                                : iKind == 2 ? 600.0F
                                             : numbers.Float(0.0F, 600.0F);
        }
        m_Before.assign(field.pHeights.get(), field.pHeights.get() + field.GetCount());
        m_Host.GetTerrain().ReplaceField(std::move(field));
    }

    void MakeBrush(CTellurBrush& brush, uint32_t uSeed, int iKind)
    {
        CNumbers numbers(uSeed);
        ASSERT_TRUE(brush.LoadBitmap("shape.png"));
        ITellurFunction* pFunction = MakeFunction(iKind);
        brush.SetFunction(pFunction);
        const char* modes[] = {"mode_default", "mode_min", "mode_max"};
        const char* fields[][2] = {{"m_Mode", modes[numbers.Int(0, 2)]},
                                   {"m_Height", numbers.Int(0, 1) == 0 ? "-250" : "333.3"},
                                   {"m_UseOnlyDestBuffer", numbers.Int(0, 1) == 0 ? "0" : "1"},
                                   {"m_NeighbourhoodSize", "3"},
                                   {"m_NumHeightDivisions", "7"}};
        for (const auto& [pszName, pszValue] : fields)
        {
            CRTTIObject* pObject = pFunction->GetRTTIObject();
            if (CRTTIField* pField = pObject->FindField(pszName))
            {
                ASSERT_TRUE(pField->FromString(pObject, pszValue));
            }
        }
        brush.SetExtent(numbers.Float(2.0F, 400.0F));
        brush.SetPowerModifier(numbers.Float(0.1F, 1.5F));
        brush.SetHardness(numbers.Int(0, 1) == 0 ? 0.0F : numbers.Float(-0.5F, 0.5F));
        brush.SetVerticalDistance(numbers.Int(0, 1) == 0 ? 0.0F : numbers.Float(20.0F, 400.0F));
        brush.SetFadeFactor(numbers.Int(0, 1) == 0 ? 0.0F : numbers.Float(50.0F, 500.0F));
    }

    // Heights after a drag, and what it told of itself.
    std::vector<float> Drag(CTellurBrush& brush, uint32_t uSeed, std::string& strTold)
    {
        CNumbers numbers(uSeed);
        CTerrain& terrain = m_Host.GetTerrain();
        const auto aim = [&]
        {
            const float fX = numbers.Float(0.0F, 311.0F);
            const float fZ = numbers.Float(0.0F, 200.0F);
            m_Face.Hit(fX, terrain.GetHeightAt(fX, fZ), fZ);
        };
        CTerrainModification session;
        aim();
        EXPECT_TRUE(session.Start(1, 2, 3, &terrain, &brush));
        for (int i = 0; i < 5; ++i)
        {
            aim();
            const SStepBlock step = {0, numbers.Int(-90, 90)};
            session.OnMouseMove(1, 2, 4, 0, reinterpret_cast<uintptr_t>(&step));
            const SPointOutcome outcome = m_Plugin->TakePointOutcome();
            strTold += std::to_string(static_cast<int>(outcome.eKind)) + " " +
                       std::to_string(outcome.fValue) + "\n";
        }
        session.End(1, 2, 5);
        const SDragStatistics statistics = m_Plugin->TakeDragStatistics();
        strTold += std::to_string(statistics.nVisited) + " " + std::to_string(statistics.nChanged);
        const float* pHeights = terrain.GetHeightData();
        return {pHeights, pHeights + m_Before.size()};
    }

    std::vector<float> m_Before;
};

SVertexRule MakeRule(CNumbers& numbers, int iCase)
{
    SVertexRule rule;
    rule.eRule = static_cast<EVertexRule>(iCase % 3);
    rule.eMerge = iCase % 2 == 0 ? EMergeRule::Strongest : EMergeRule::Candidate;
    rule.bFromDest = numbers.Int(0, 1) == 0;
    rule.fStroke = numbers.Float(0.0F, 1.0F);
    rule.fAmount = numbers.Float(-300.0F, 300.0F);
    rule.bRaise = numbers.Int(0, 3) > 0;
    rule.bLower = numbers.Int(0, 3) > 0;
    rule.bBand = numbers.Int(0, 1) == 0;
    rule.fBandDistance = numbers.Float(10.0F, 200.0F);
    rule.fBandCenter = numbers.Float(0.0F, 300.0F);
    return rule;
}

void FillGroup(SColumnGroup& group, CNumbers& numbers)
{
    group.iNear = numbers.Int(0, 1);
    group.iBase = group.iNear * numbers.Int(0, 16);
    for (int i = 0; i < PASS_LANES; ++i)
    {
        group.aFirst[i] = numbers.Int(0, group.iNear != 0 ? 7 : 23);
        group.aSecond[i] = numbers.Int(0, group.iNear != 0 ? 7 : 23);
        group.aWeight[i] = numbers.Float(0.0F, 1.0F);
    }
}

} // namespace

TEST_F(CPointsInNumbers, GiveTheBitsAndTheWordsOfPointsWithASet)
{
    std::vector<uint8_t> shape(9 * 9);
    CNumbers numbers(3);
    for (uint8_t& uPixel : shape)
    {
        uPixel = static_cast<uint8_t>(numbers.Int(0, 3) == 0 ? 0 : numbers.Int(0, 255));
    }
    WriteGrey("shape.png", 9, 9, shape);
    size_t nChanged = 0;
    for (uint32_t uSeed = 0; uSeed < 200; ++uSeed)
    {
        const int iKind = static_cast<int>(uSeed % 5);
        SCOPED_TRACE(testing::Message() << "seed " << uSeed << ", function " << iKind);
        MakeGround(numbers);
        const std::vector<float> before = m_Before;
        std::string told[2];
        std::vector<float> heights[2];
        for (const bool bNumbers : {false, true})
        {
            const std::unique_ptr<CTellurBrush> brush(bNumbers ? new CTellurBrush : new CSetBrush);
            MakeBrush(*brush, uSeed, iKind);
            m_Face.picks.clear();
            heights[bNumbers] = Drag(*brush, uSeed, told[bNumbers]);
            SHeightField field;
            ASSERT_TRUE(field.Allocate(150, 131));
            field.size = {-311.0F, 600.0F, 200.0F};
            std::copy(before.begin(), before.end(), field.pHeights.get());
            m_Host.GetTerrain().ReplaceField(std::move(field));
        }
        EXPECT_EQ(told[0], told[1]);
        ASSERT_EQ(std::memcmp(heights[0].data(), heights[1].data(), before.size() * sizeof(float)),
                  0);
        nChanged += heights[0] != before ? 1 : 0;
    }
    EXPECT_GT(nChanged, 150U);
}

TEST_F(CPointsInNumbers, HaveTheSameBitsInBothForms)
{
    CNumbers numbers(11);
    for (int iCase = 0; iCase < 300; ++iCase)
    {
        SCOPED_TRACE(iCase);
        const SVertexRule rule = MakeRule(numbers, iCase);
        alignas(32) float aSource[128];
        alignas(32) float aDest[2][128];
        float aShown[2][128] = {};
        float aTargets[128];
        float aShape[32];
        SColumnGroup aGroups[8];
        for (int i = 0; i < 128; ++i)
        {
            aSource[i] = numbers.Int(0, 9) == 0 ? -1.0F : numbers.Float(0.0F, 300.0F);
            aDest[0][i] = aDest[1][i] = numbers.Int(0, 1) == 0 ? aSource[i] : 150.0F;
            aTargets[i] = numbers.Float(-10.0F, 300.0F);
            aShape[i % 32] = numbers.Float(0.0F, 1.0F);
        }
        for (SColumnGroup& group : aGroups)
        {
            FillGroup(group, numbers);
        }
        SPassResult results[2];
        const int iFirst = numbers.Int(0, 60);
        const int iEnd = numbers.Int(iFirst + 1, 61);
        const float fHardness = iCase % 2 == 0 ? 0.0F : numbers.Float(-0.5F, 0.5F);
        const FnTilePass passes[] = {&RunTilePassPlain, GetTilePass()};
        for (int n = 0; n < 2; ++n)
        {
            SPassTile tile;
            tile.pSource = aSource;
            tile.pDest = aDest[n];
            tile.pShown = aShown[n];
            tile.nShownPitch = 64;
            tile.iFirst = iFirst;
            tile.iEnd = iEnd;
            tile.iThere = 61;
            tile.iRows = 2;
            tile.pGroups = aGroups;
            tile.pShape = aShape;
            tile.pTargets = aTargets;
            tile.nTargetPitch = 64;
            tile.fPower = 1.25F;
            tile.fHardness = fHardness;
            tile.fMaxHeight = 280.0F;
            passes[n](rule, tile, results[n]);
        }
        EXPECT_EQ(std::memcmp(aDest[0], aDest[1], sizeof(aDest[0])), 0);
        EXPECT_EQ(std::memcmp(aShown[0], aShown[1], sizeof(aShown[0])), 0);
        EXPECT_EQ(results[0].uColumns, results[1].uColumns);
        EXPECT_EQ(results[0].nWritten, results[1].nWritten);
        EXPECT_TRUE(results[0].iFirstRow == results[1].iFirstRow &&
                    results[0].iLastRow == results[1].iLastRow);
        EXPECT_EQ(results[0].fMin, results[1].fMin);
        EXPECT_EQ(results[0].fMax, results[1].fMax);
        EXPECT_EQ(results[0].nVisited, results[1].nVisited);
        EXPECT_EQ(aShown[0][63], 0.0F) << "not on the terrain";
    }
}
