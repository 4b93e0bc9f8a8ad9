#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/HeightMerge.h"
#include "tellur/modification/HeightPass.h"
#include "tests/support/CRecordingFunction.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace
{

constexpr float MAX_HEIGHT = 100.0F;

float MergeHigher(float /*fSrc*/, float fDst, float fCandidate)
{
    return fCandidate > fDst ? fCandidate : fDst;
}

const CRecordingFunction g_Strongest(EMergeRule::Strongest);
const CRecordingFunction g_Candidate(EMergeRule::Candidate);
const CRecordingFunction g_Higher(EMergeRule::ByCall, MergeHigher);

} // namespace

TEST(HeightMerge, WritesWhatTheRuleTakesWithinTheLimits)
{
    struct SCase
    {
        const char* pszName;
        const CRecordingFunction* pFunction;
        float fSrc;
        float fDst;
        float fCandidate;
        float fWritten; // -1: not written
    };

    const float fNoNumber = std::numeric_limits<float>::quiet_NaN();
    // clang-format off
    const SCase cases[] = {
        {"first change up", &g_Strongest, 50, 50, 60, 60},
        {"first change down", &g_Strongest, 50, 50, 40, 40},
        {"stronger up", &g_Strongest, 50, 60, 61, 61},
        {"weaker up", &g_Strongest, 50, 60, 59, -1},
        {"as strong on the other side", &g_Strongest, 50, 60, 40, 40},
        {"weaker on the other side", &g_Strongest, 50, 60, 41, -1},
        {"stronger on the other side", &g_Strongest, 50, 60, 30, 30},
        {"back to the source", &g_Strongest, 50, 60, 50, -1},
        {"no change", &g_Strongest, 50, 60, 60, -1},
        {"below 0", &g_Strongest, 5, 5, -20, 0},
        {"below 0 again", &g_Strongest, 5, 0, -20, 0},
        {"minus nothing", &g_Strongest, 5, 5, -0.0F, 0},
        {"at the limit", &g_Strongest, 50, 50, 100, 100},
        {"above the limit", &g_Strongest, 50, 50, 100.5F, 100},
        {"above the limit again", &g_Strongest, 50, 100, 120, 100},
        {"no number", &g_Strongest, 50, 50, fNoNumber, -1},
        {"without end", &g_Strongest, 50, 50, INFINITY, 100},
        {"always: back to the source", &g_Candidate, 50, 60, 50, 50},
        {"always: weaker", &g_Candidate, 50, 60, 51, 51},
        {"always: no change", &g_Candidate, 50, 60, 60, -1},
        {"always: below 0", &g_Candidate, 50, 60, -1.0e30F, 0},
        {"always: above the limit", &g_Candidate, 50, 60, 1000, 100},
        {"always: no number", &g_Candidate, 50, 60, fNoNumber, -1},
        {"asked: taken", &g_Higher, 50, 60, 61, 61},
        {"asked: refused", &g_Higher, 50, 60, 30, -1},
        {"asked: no change", &g_Higher, 50, 60, 60, -1},
        {"asked: above the limit", &g_Higher, 50, 60, 101, 100},
        {"asked: below 0", &g_Higher, -30, -30, -20, 0},
    };
    // clang-format on
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        const bool bWritten = test.fWritten >= 0.0F;
        float fDst = test.fDst;
        const SMergeSpan span =
            MergeHeights(*test.pFunction, &test.fSrc, &fDst, &test.fCandidate, 1, MAX_HEIGHT);
        EXPECT_EQ(fDst, bWritten ? test.fWritten : test.fDst);
        EXPECT_FALSE(std::signbit(fDst));
        EXPECT_EQ(span.nChanged, bWritten ? 1 : 0);
        EXPECT_EQ(span.iLast, bWritten ? 0 : -1);
        EXPECT_EQ(span.fMin, bWritten ? test.fWritten : 0.0F);
        EXPECT_EQ(span.fMax, bWritten ? test.fWritten : 0.0F);
    }
}

TEST(HeightMerge, ASpanReachesFromTheFirstToTheLastVertexWritten)
{
    for (const CRecordingFunction* pFunction : {&g_Strongest, &g_Candidate, &g_Higher})
    {
        const std::array<float, 6> source = {};
        std::array<float, 6> dest = {};
        const std::array<float, 6> candidates = {0, 30, 0, 120, 20, 0};
        const SMergeSpan span = MergeHeights(
            *pFunction, source.data(), dest.data(), candidates.data(), dest.size(), MAX_HEIGHT);
        EXPECT_EQ(dest, (std::array<float, 6>{0, 30, 0, 100, 20, 0}));
        EXPECT_EQ(span.iFirst, 1);
        EXPECT_EQ(span.iLast, 4);
        EXPECT_EQ(span.nChanged, 3);
        EXPECT_EQ(span.fMin, 20.0F);
        EXPECT_EQ(span.fMax, 100.0F);
    }
}

TEST(HeightMerge, AChangeIsMoreThanAMillionthOnAnEditableVertex)
{
    struct SCase
    {
        float fSource;
        float fDest;
        bool bChange;
    };

    const float fLimit = 1.0e-6F;
    // clang-format off
    const SCase cases[] = {
        {0, 0, false}, {0, fLimit, false}, {fLimit, 0, false},
        {0, std::nextafter(fLimit, 1.0F), true}, {std::nextafter(fLimit, 1.0F), 0, true},
        {5, 6, true}, {6, 5, true}, {5, 0, true}, {5, -1, false}, {-5, 3, true}, {-5, -5, false},
    };
    // clang-format on
    std::array<float, 64> source{};
    for (const auto find : {&FindRowChangesPlain, GetRowChanges()})
    {
        std::array<float, 64> dest{};
        uint64_t uExpected = 0;
        bool bTraces = false;
        for (size_t i = 0; i < std::size(cases); ++i)
        {
            source[3 * i] = cases[i].fSource;
            dest[3 * i] = cases[i].fDest;
            uExpected |= uint64_t{cases[i].bChange} << (3 * i);
        }
        EXPECT_EQ(find(source.data(), dest.data(), bTraces), uExpected);
        EXPECT_TRUE(bTraces);
        EXPECT_EQ(dest[3], 0.0F) << "the trace is taken back";
        EXPECT_EQ(dest[9], cases[3].fDest);
    }
}

TEST(HeightTiles, AreKeptForTheNextDragOnceNobodyUsesThem)
{
    FreeKeptTiles();
    const std::vector<float> ground(200 * 100, 5.0F);
    CHeightTiles tiles;
    ASSERT_TRUE(tiles.Reset(200, 100));
    tiles.SetGround(ground.data());
    ASSERT_TRUE(tiles.Take({60, 60, 70, 70}));
    EXPECT_EQ(tiles.GetCount(), 4U);
    ++tiles.Find(0, 0)->uUsers; // a record has it, too
    SHeightTile* pShared = tiles.Find(0, 0);
    tiles.Clear();
    EXPECT_EQ(GetKeptTileCount(), 3U);
    ReleaseTile(pShared);
    EXPECT_EQ(GetKeptTileCount(), 4U);
    ASSERT_TRUE(tiles.Reset(200, 100));
    tiles.SetGround(ground.data());
    ASSERT_TRUE(tiles.Take({199, 99, 199, 99}));
    EXPECT_EQ(GetKeptTileCount(), 3U);
    EXPECT_EQ(tiles.GetSource(199, 99), 5.0F);
    EXPECT_FALSE(tiles.Find(3, 1)->bWritten);
    tiles.Clear();
    FreeKeptTiles();
    EXPECT_EQ(GetKeptTileCount(), 0U);
}
