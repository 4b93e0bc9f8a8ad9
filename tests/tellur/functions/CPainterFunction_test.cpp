#include "tellur/functions/CPainterFunction.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"
#include "tests/tellur/functions/FunctionParts.h"

#include <gtest/gtest.h>

namespace
{

using CPainterFunctionTest = CDragTest;

} // namespace

TEST_F(CPainterFunctionTest, StrokeFadesWithTheLengthBehindIt)
{
    struct SCase
    {
        const char* pszName;
        float fFade;
        std::vector<std::optional<SVec3>> picks; // the press, then the moves
        std::vector<float> weights;
    };

    const auto hit = [](float fX, float fY = 0.0F, float fZ = 40.0F)
    {
        return std::optional<SVec3>({fX, fY, fZ});
    };
    const std::optional<SVec3> miss;
    // clang-format off
    const SCase cases[] = {
        {"steps of 30, fade 100", 100, {hit(10), hit(40), hit(70), hit(100), hit(130), hit(10)},
         {0.7F, 0.4F, 0.1F, 0, 0}},
        {"no fade", 0, {hit(10), hit(150), hit(10)}, {1, 1}},
        {"below 0 never fades", -5, {hit(10), hit(150)}, {1}},
        {"at the very length", 30, {hit(10), hit(40)}, {0}},
        {"height and z count", 100, {hit(10, 0, 40), hit(10, 30, 80), hit(22, 30, 96)},
         {0.5F, 0.3F}},
        {"standing still", 100, {hit(10), hit(10), hit(10)}, {1, 1}},
        {"off the terrain and back", 100, {hit(10), hit(40), miss, miss, hit(80)}, {0.7F, 0.3F}},
        {"pressed off the terrain", 100, {miss, hit(40), hit(70)}, {1, 0.7F}},
        {"left of 0 each point is a first one", 100, {hit(-5), hit(-30), hit(-60), hit(-80)},
         {1, 1, 1}},
        {"coming from left of 0", 100, {hit(-5), hit(30), hit(60)}, {1, 0.7F}},
    };
    // clang-format on
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        Calls calls;
        Use(new CTestPainter(&calls));
        brush.SetFadeFactor(test.fFade);
        m_Face.picks.assign(test.picks.begin(), test.picks.end());
        ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &brush));
        for (size_t i = 1; i < test.picks.size(); ++i)
        {
            EXPECT_EQ(session.OnMouseMove(1, 2, 3, 0, 0), test.picks[i].has_value());
        }
        Release();
        std::vector<float> weights;
        for (const std::string& strCall : calls)
        {
            if (strCall.rfind("DoOperation", 0) == 0)
            {
                weights.push_back(std::stof(strCall.substr(strCall.rfind(' '))));
            }
        }
        ASSERT_EQ(weights.size(), test.weights.size());
        for (size_t i = 0; i < weights.size(); ++i)
        {
            EXPECT_NEAR(weights[i], test.weights[i], 1.0e-4F) << i;
        }
    }
}

TEST_F(CPainterFunctionTest, FirstPointOfAStrokeIsAnnounced)
{
    Calls calls;
    CTestPainter* pPainter = Use(new CTestPainter(&calls));
    m_Face.Hit(10, 5, 40);
    EXPECT_EQ(pPainter->Start(&session, &brush, 1, 2, 3), 1);
    EXPECT_EQ(pPainter->End(&session, &brush, 1, 2, 3), 0);
    EXPECT_EQ(TakeCalls(), Calls{"Host.PickTerrain(1, 3)"});
    EXPECT_EQ(calls, Calls{"OnStartPoint(10 5 40)"});
    calls.clear();

    // A press that misses keeps the last point of the drag before: the stroke goes on from there.
    m_Face.Miss();
    EXPECT_EQ(pPainter->Start(&session, &brush, 1, 2, 3), 0);
    brush.SetFadeFactor(100.0F);
    m_Face.Hit(10, 5, 70);
    pPainter->OnMouseMove(&session, &brush, 1, 2, 3, 0, 0);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0], "DoOperation(10 5 70, 0, 0.7)");
    calls.clear();

    // Left of 0 every move announces a first point, at 0 none does.
    m_Face.Hit(-1, 0, 0);
    m_Face.Hit(0, 0, 0);
    m_Face.Hit(50, 0, 0);
    for (int i = 0; i < 3; ++i)
    {
        pPainter->OnMouseMove(&session, &brush, 1, 2, 3, 0, 0);
    }
    EXPECT_EQ(calls,
              (Calls{"DoOperation(-1 0 0, 0, 0)",
                     "OnStartPoint(0 0 0)",
                     "DoOperation(0 0 0, 0, 1)",
                     "DoOperation(50 0 0, 0, 0.5)"}));

    // Without a host there is nothing under the cursor.
    m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0);
    EXPECT_EQ(pPainter->Start(&session, &brush, 1, 2, 3), 0);
    EXPECT_EQ(pPainter->OnMouseMove(&session, &brush, 1, 2, 3, 0, 0), 0);
}

TEST_F(CPainterFunctionTest, SaysWhatIsMissingInWholeLines)
{
    CTestPainter painter(nullptr);
    m_Face.lastPick = {10, 0, 10};
    EXPECT_EQ(painter.Start(nullptr, nullptr, 1, 2, 3), 1);
    EXPECT_EQ(painter.OnMouseMove(&session, nullptr, 1, 2, 3, 0, 0), 1);
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CPainterFunction::EvaluateOperationPoints] no brush"});
    EXPECT_EQ(painter.OnMouseMove(nullptr, &brush, 1, 2, 3, 0, 0), 1);
    EXPECT_EQ(m_Log.TakeLines(), Lines{"[CPainterFunction::DoOperationAux] no interfaces"});

    // A drag without a terrain reports step by step, in this order.
    Use(new CTestPainter(nullptr));
    ASSERT_TRUE(session.Start(1, 2, 3, nullptr, &brush));
    EXPECT_EQ(m_Log.TakeLines().size(), 3U);
    session.OnMouseMove(1, 2, 3, 0, 0);
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTerrainModification::GetXSize] terrain set to NULL",
                     "[CTerrainModification::GetZSize] terrain set to NULL",
                     "[CTerrainModification::GetVerts] no terrain interface",
                     "[CTerrainModification::GetTerrainExtents] terrain set to NULL",
                     "[CTerrainModification::SetVerts] no terrain interface"}));
}

TEST_F(CPainterFunctionTest, MovesOfADragAllocateNothing)
{
    Use(new CTestPainter(nullptr))->bUseDest = true;
    brush.SetExtent(80.0F);
    m_Face.pCalls = nullptr;
    m_Face.lastPick = {50, 0, 50};
    ASSERT_TRUE(session.Start(1, 2, 3, &m_Host.GetTerrain(), &brush));
    session.OnMouseMove(1, 2, 3, 0, 0);
    const size_t nBefore = GetAllocationCount();
    m_Face.lastPick = {100, 0, 80};
    session.OnMouseMove(1, 2, 3, 0, 0);
    session.OnMouseMove(1, 2, 3, 0, 0);
    EXPECT_EQ(GetAllocationCount(), nBefore);
    EXPECT_GT(m_Host.At(10, 8), 0.0F);
}

TEST_F(CPainterFunctionTest, APointThatIsDrawnAsksForNewPicturesAndAMissDoesNothing)
{
    Use(new CTestPainter(nullptr));
    Press(50, 0, 50);
    TakeCalls();
    EXPECT_EQ(Move(55, 0, 50), 1);
    EXPECT_EQ(TakeCalls(), (Calls{"Host.PickTerrain(1, 4)", "Host.RedrawViews()"}));
    m_Face.Miss();
    EXPECT_EQ(session.OnMouseMove(1, 2, 4, 0, 0), 0);
    EXPECT_EQ(TakeCalls(), Calls{"Host.PickTerrain(1, 4)"});
}
