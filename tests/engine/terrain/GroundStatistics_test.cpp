#include "engine/terrain/CTerrain.h"
#include "engine/terrain/GroundStatistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

TEST(CGroundStatistics, StatisticsOfAPlaneAreThoseOfPaper)
{
    SHeightField field; // 2 higher with each of 5 columns, 1 with each of 9 rows
    ASSERT_TRUE(field.Allocate(5, 9));
    field.size = {16.0F, 90.0F, -16.0F};
    for (size_t i = 0; i < field.GetCount(); ++i)
    {
        field.pHeights[i] = static_cast<float>(2 * (i % 5) + i / 5) - 3.0F;
    }
    const SGroundStatistics found = MeasureStatistics(CTerrain(std::move(field)));
    EXPECT_EQ(found.nVertices, 45U);
    EXPECT_EQ(found.fLowest, -3.0F);
    EXPECT_EQ(found.fHighest, 13.0F);
    EXPECT_EQ(found.nUneditable, 4U);
    EXPECT_FLOAT_EQ(static_cast<float>(found.dMeanSlope), std::sqrt(0.5F));
    EXPECT_FLOAT_EQ(static_cast<float>(found.dSteepest), std::sqrt(0.5F));
    EXPECT_EQ(found.bars.front(), 1U);
    EXPECT_EQ(found.bars[HISTOGRAM_BARS / 2], 5U) << "the height in the middle";
    EXPECT_EQ(found.bars.back(), 1U);
}
