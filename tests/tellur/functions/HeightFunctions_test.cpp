#include "tellur/functions/CPointHeightFunction.h"
#include "tellur/functions/CPosterizeFunction.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tests/support/CLogCatcher.h"
#include "tests/tellur/functions/FunctionParts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace
{

using CHeightFunctionTest = CDragTest;

} // namespace

TEST_F(CHeightFunctionTest, AMoveWithoutAStepBlockIsNoStep)
{
    Use(new CPointHeightFunction);
    Press(50, 0, 50);
    EXPECT_EQ(session.OnMouseMove(1, 2, 4, 0, 0), 1);
    EXPECT_EQ(Move(50, 0, 50, -7), 1);
    EXPECT_EQ(m_Host.At(5, 5), 7.0F);
}

TEST_F(CHeightFunctionTest, PosterizeTakesItsLevelsAnewWhenTheirNumberChanges)
{
    CPosterizeFunction* pFunction = Use(new CPosterizeFunction);
    for (const auto& [pszLevels, fHeight] : {std::pair("2", 500.0F), std::pair("4", 250.0F)})
    {
        m_Host.SetHeight(5, 5, 300.0F);
        SetField(*pFunction, "m_NumHeightDivisions", pszLevels);
        Press(50, 300, 50);
        Move(50, 300, 50);
        Release();
        EXPECT_NEAR(m_Host.At(5, 5), fHeight, 1.0e-3F);
    }
}

TEST(HeightFunctions, WithoutABrushSayItOnce)
{
    CLogCatcher log;
    const std::vector<float> heights = {1, 2, 3};
    CVertDataSet verts;
    verts.GetVerts().AppendRun(0, 0, heights.data(), heights.size());
    CRelativeHeightFunction relative;
    relative.DoOperation({{}, &verts, nullptr, nullptr, 1.0F});
    EXPECT_EQ(log.TakeLines(), Lines{"[CRelativeHeightFunction::DoOperation] no brush interface"});
    CSetHeightFunction set;
    set.DoOperation({{}, &verts, nullptr, nullptr, 1.0F});
    EXPECT_EQ(log.TakeLines(), Lines{"[CSetHeightFunction::DoOperation] no brush interface"});
    CPointHeightFunction point;
    point.Process({nullptr, {}, &verts, 7});
    EXPECT_EQ(log.GetText(), "");
    EXPECT_TRUE(std::equal(heights.begin(), heights.end(), verts.GetVerts().GetHeights()));
}
