#include "editor/view/CStrokeSampler.h"
#include "editor/view/SViewProjection.h"
#include "engine/terrain/CTerrain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();

using Positions = std::vector<std::pair<float, float>>;

// Flat ground seen straight from above, two units a pixel; sky where x is from 50 up to 70.
bool PickFlat(float fX, float fY, SVec3& hit)
{
    hit = {2.0F * fX, 0.0F, 2.0F * fY};
    return fX < 50.0F || fX >= 70.0F;
}

struct SRecorder
{
    CStrokeSampler::FnEmit GetEmit()
    {
        return [this](const SStrokePoint& point)
        {
            points.push_back(point);
        };
    }

    Positions GetPositions() const
    {
        Positions positions;
        for (const SStrokePoint& point : points)
        {
            positions.emplace_back(point.fX, point.fY);
        }
        return positions;
    }

    std::vector<SStrokePoint> points;
};

TEST(CStrokeSampler, SendsWhatThePathAndTheSpacingAskFor)
{
    // Spacing in units, reports (the last one is the release), what is sent. On a slope of two to
    // one a step of 8 units ends at 3.58 pixels along x; the next sixteenth is 3.625.
    const std::tuple<const char*, float, Positions, Positions> aCases[] = {
        {"one long report", 8, {{10, 10}, {20, 10}}, {{14, 10}, {18, 10}}},
        {"the rest waits", 8, {{10, 10}, {13, 10}, {14.5F, 10}, {18, 10}}, {{14, 10}, {18, 10}}},
        {"backward and up", 8, {{10, 10}, {10, 1}}, {{10, 6}, {10, 2}}},
        {"round a corner", 8, {{10, 10}, {12, 10}, {12, 20}}, {{12, 13.5F}, {12, 17.5F}}},
        {"to and fro", 8, {{10, 10}, {13, 10}, {8, 10}, {5, 10}}, {{6, 10}}},
        {"less than a pixel", 0.25F, {{10, 10}, {10.3F, 10}}, {{10.125F, 10}, {10.25F, 10}}},
        {"two to one", 8, {{0, 0}, {8, 4}}, {{3.625F, 1.8125F}, {7.25F, 3.625F}}},
        {"over sky", 50, {{46, 5}, {60, 5}, {71, 5}}, {{70, 5}}},
        {"near beyond the sky", 100, {{46, 5}, {60, 5}, {71, 5}}, {{71, 5}}},
        {"release in the sky", 100, {{46, 5}, {60, 5}}, {}},
        {"press in the sky", 100, {{60, 5}, {72, 5}, {75, 5}}, {{70, 5}}},
        {"stands still", 8, {{10, 10}, {10, 10}, {10.01F, 10}, {10, 10}}, {}},
        {"switched off",
         0,
         {{10, 10}, {90, 10}, {90, 10}, {60, 10}, {60.3F, 10}},
         {{90, 10}, {60, 10}, {60.3125F, 10}}},
        {"no number", NOT_A_NUMBER, {{10, 10}, {NOT_A_NUMBER, 3}, {30, 10}}, {{30, 10}}},
    };
    for (const auto& [pszName, fSpacing, reports, expected] : aCases)
    {
        SCOPED_TRACE(pszName);
        SRecorder recorder;
        CStrokeSampler sampler(PickFlat, recorder.GetEmit());
        sampler.Move(1, 1); // without a drag
        sampler.SetSpacing(fSpacing);
        sampler.Press(reports.front().first, reports.front().second);
        for (size_t i = 1; i + 1 < reports.size(); ++i)
        {
            sampler.Move(reports[i].first, reports[i].second);
        }
        sampler.Release(reports.back().first, reports.back().second);
        sampler.Move(500, 500);
        EXPECT_EQ(recorder.GetPositions(), expected);
        for (const SStrokePoint& point : recorder.points)
        {
            SVec3 hit;
            EXPECT_EQ(point.bHit, PickFlat(point.fX, point.fY, hit));
            EXPECT_EQ(point.hit.x, hit.x);
        }
    }
}

TEST(CStrokeSampler, StepsAndWheelAddUpToTheMovement)
{
    for (const float fSpacing : {0.0F, 1.7F, 9.0F})
    {
        SCOPED_TRACE(fSpacing);
        SRecorder recorder;
        CStrokeSampler sampler(PickFlat, recorder.GetEmit());
        sampler.SetSpacing(fSpacing);
        sampler.Press(10.3F, 200.8F);
        for (int i = 1; i <= 100; ++i)
        {
            sampler.Move(10.3F + 0.37F * static_cast<float>(i),
                         200.8F - 1.41F * static_cast<float>(i),
                         i % 3);
        }
        sampler.Release(47.3F, 59.8F);
        int aSums[3] = {};
        for (const SStrokePoint& point : recorder.points)
        {
            aSums[0] += point.iStepX;
            aSums[1] += point.iStepY;
            aSums[2] += point.iWheel;
        }
        const SStrokePoint& last = recorder.points.back();
        EXPECT_NEAR(static_cast<float>(aSums[0]), last.fX - 10.3F, 0.6F);
        EXPECT_NEAR(static_cast<float>(aSums[1]), last.fY - 200.8F, 0.6F);
        EXPECT_NEAR(last.fX, 47.3F, std::max(fSpacing, 0.1F)); // less than a spacing stays
        EXPECT_NEAR(aSums[2], 100, fSpacing);                  // 33 times 1 + 2, and 1
    }
}

TEST(CStrokeSampler, GroundThatTheStrokeMovesDoesNotFeedIt)
{
    // Each point moves the ground under the cursor by more than the spacing.
    float fShift = 0.0F;
    int nSent = 0;
    CStrokeSampler sampler(
        [&](float fX, float fY, SVec3& hit)
        {
            hit = {fX + fShift, 0.0F, fY};
            return true;
        },
        [&](const SStrokePoint&)
        {
            fShift -= 30.0F;
            ++nSent;
        });
    sampler.SetSpacing(10);
    sampler.Press(0, 0);
    sampler.Release(100, 0);
    EXPECT_GE(nSent, 10);
    EXPECT_LE(nSent, 20);
}

TEST(CStrokeSampler, AReceiverMayCancelTheDrag)
{
    int nSent = 0;
    CStrokeSampler* pSampler = nullptr;
    CStrokeSampler sampler(PickFlat,
                           [&](const SStrokePoint&)
                           {
                               ++nSent;
                               pSampler->Cancel();
                           });
    pSampler = &sampler;
    sampler.SetSpacing(2);
    sampler.Press(0, 0);
    sampler.Move(40, 0);
    sampler.Release(41, 0);
    EXPECT_EQ(nSent, 1);
    EXPECT_FALSE(sampler.IsActive());
}

const Positions g_Corners = {{200, 500},
                             {460, 430},
                             {470, 250},
                             {700, 40},
                             {640, 380},
                             {900, 380},
                             {1010, 491},
                             {1013, 500},
                             {400, 650},
                             {350, 200},
                             {1100, 300}};

// One second of a path over hills with corners every tenth of a second; each point raises a dab.
std::vector<SStrokePoint> Sculpt(int iRate, float fSpacing, std::vector<float>& heights)
{
    SHeightField field;
    field.Allocate(129, 129);
    field.size = {256, 100, 256};
    for (uint32_t i = 0; i < field.GetCount(); ++i)
    {
        const float fX = static_cast<float>(i % 129);
        const float fZ = static_cast<float>(i / 129); // NOLINT(bugprone-integer-division): the row
        field.pHeights[i] = 20.0F + 12.0F * std::sin(fX * 0.11F) * std::cos(fZ * 0.07F);
    }
    CTerrain terrain(std::move(field));
    SViewProjection view;
    view.position = {128, 120, 330};
    view.up = {0, 0.8F, -0.6F};
    view.forward = {0, -0.6F, -0.8F};
    view.iWidth = 1280;
    view.iHeight = 720;
    std::vector<SStrokePoint> points;
    heights.resize(size_t{129} * 129);
    CStrokeSampler sampler(
        [&](float fX, float fY, SVec3& hit)
        {
            const SRay ray = view.GetRay(fX, fY);
            return terrain.PickRay(ray.origin, ray.direction, hit);
        },
        [&](const SStrokePoint& point)
        {
            points.push_back(point);
            terrain.GetHeights(heights.data(), heights.size());
            for (size_t i = 0; point.bHit && i < heights.size(); ++i)
            {
                const float fX = 2.0F * static_cast<float>(i % 129) - point.hit.x;
                const float fZ = 2.0F * static_cast<float>(i / 129) -
                                 point.hit.z; // NOLINT(bugprone-integer-division): the row
                heights[i] += std::max(0.0F, 1.0F - (fX * fX + fZ * fZ) / 225.0F);
            }
            terrain.SetHeights(heights.data(), heights.size(), {{0, 0, 0}, {256, 0, 256}});
        });
    sampler.SetSpacing(fSpacing);
    sampler.Press(200, 500);
    for (int i = 1; i <= iRate; ++i)
    {
        const int iPiece = (i - 1) / (iRate / 10);
        const double fAlong = static_cast<double>(i - iPiece * (iRate / 10)) / (iRate / 10);
        const auto& [fFromX, fFromY] = g_Corners[iPiece];
        const auto& [fToX, fToY] = g_Corners[iPiece + 1];
        sampler.Move(static_cast<float>(fFromX + (fToX - fFromX) * fAlong),
                     static_cast<float>(fFromY + (fToY - fFromY) * fAlong));
    }
    sampler.Release(1100, 300);
    terrain.GetHeights(heights.data(), heights.size());
    return points;
}

TEST(CStrokeSampler, TheRateOfReportsDoesNotShowInTheHeights)
{
    for (const float fSpacing : {1.0F, 7.5F, 30.0F})
    {
        std::vector<float> heights;
        const std::vector<SStrokePoint> points = Sculpt(30, fSpacing, heights);
        EXPECT_GT(points.size(), 500.0F / fSpacing);
        for (size_t i = 1; i + 1 < points.size(); ++i)
        {
            const float fX = points[i].hit.x - points[i - 1].hit.x;
            const float fZ = points[i].hit.z - points[i - 1].hit.z;
            EXPECT_GE(std::hypot(fX, fZ), 0.5F * fSpacing);
        }
        for (const int iRate : {60, 240, 1000})
        {
            SCOPED_TRACE(iRate);
            std::vector<float> others;
            const std::vector<SStrokePoint> same = Sculpt(iRate, fSpacing, others);
            ASSERT_EQ(same.size(), points.size());
            for (size_t i = 0; i < points.size(); ++i)
            {
                ASSERT_EQ(same[i].fX, points[i].fX) << "point " << i;
                ASSERT_EQ(same[i].fY, points[i].fY) << "point " << i;
                ASSERT_EQ(same[i].iStepY, points[i].iStepY) << "point " << i;
            }
            EXPECT_EQ(others, heights);
        }
    }
}

} // namespace
