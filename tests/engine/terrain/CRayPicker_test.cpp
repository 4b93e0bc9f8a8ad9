#include "engine/terrain/CTerrain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{

using DVec = std::array<double, 3>;

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

float Random(std::mt19937& random, float fMin, float fMax)
{
    return fMin + (fMax - fMin) * static_cast<float>(random() % 100003) / 100002.0F;
}

SHeightField MakeRough(uint32_t uSizeX, uint32_t uSizeZ, const SVec3& size, std::mt19937& random)
{
    SHeightField field;
    field.Allocate(uSizeX, uSizeZ);
    field.size = size;
    for (size_t i = 0; i < field.GetCount(); ++i)
    {
        field.pHeights[i] = Random(random, -20.0F, 80.0F);
    }
    return field;
}

DVec GetVertex(const CTerrain& terrain, uint32_t uX, uint32_t uZ)
{
    const SVec3 size = terrain.GetSize();
    return {static_cast<double>(size.x) * uX / terrain.GetCellsPerSide(),
            terrain.GetHeightData()[uZ * terrain.GetVerticesX() + uX],
            static_cast<double>(size.z) * uZ / terrain.GetCellsPerSideZ()};
}

DVec Minus(const DVec& a, const DVec& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

DVec Cross(const DVec& a, const DVec& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Dot(const DVec& a, const DVec& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// How many directions along the line a triangle is; infinite for a miss.
double HitTriangle(const DVec& a, const DVec& b, const DVec& c, const DVec& from, const DVec& by)
{
    const DVec normal = Cross(Minus(b, a), Minus(c, a));
    const double t = Dot(normal, Minus(a, from)) / Dot(normal, by);
    const DVec at = {from[0] + t * by[0], from[1] + t * by[1], from[2] + t * by[2]};
    const double aSides[] = {Dot(Cross(Minus(b, a), Minus(at, a)), normal),
                             Dot(Cross(Minus(c, b), Minus(at, b)), normal),
                             Dot(Cross(Minus(a, c), Minus(at, c)), normal)};
    const double fSlack = -1e-9 * Dot(normal, normal);
    const bool bInside = aSides[0] >= fSlack && aSides[1] >= fSlack && aSides[2] >= fSlack;
    return t >= 0.0 && bInside ? t : INFINITE;
}

double HitByLoop(const CTerrain& terrain, const SVec3& origin, const SVec3& direction)
{
    const DVec from = {origin.x, origin.y, origin.z};
    const DVec by = {direction.x, direction.y, direction.z};
    double fFirst = INFINITE;
    for (uint32_t z = 0; z < terrain.GetCellsPerSideZ(); ++z)
    {
        for (uint32_t x = 0; x < terrain.GetCellsPerSide(); ++x)
        {
            const DVec eastNorth = GetVertex(terrain, x + 1, z);
            const DVec westSouth = GetVertex(terrain, x, z + 1);
            const DVec aOthers[] = {GetVertex(terrain, x, z), GetVertex(terrain, x + 1, z + 1)};
            for (const DVec& other : aOthers)
            {
                fFirst = std::min(fFirst, HitTriangle(other, westSouth, eastNorth, from, by));
            }
        }
    }
    return fFirst;
}

// Random lines from inside and outside the box, at the terrain and past it.
void ExpectHitsAsByLoop(const CTerrain& terrain, std::mt19937& random, int nRays)
{
    const SVec3 size = terrain.GetSize();
    int nHits = 0;
    for (int i = 0; i < nRays; ++i)
    {
        const float fAway = i % 2 == 0 ? 0.0F : 1.0F;
        const SVec3 origin = {Random(random, -fAway, 1.0F + fAway) * size.x,
                              Random(random, -100.0F, 200.0F),
                              Random(random, -fAway, 1.0F + fAway) * size.z};
        const float fScale = std::pow(10.0F, Random(random, -6.0F, 6.0F));
        SVec3 direction = {(Random(random, 0.0F, size.x) - origin.x) * fScale,
                           (Random(random, -20.0F, 80.0F) - origin.y) * fScale,
                           (Random(random, 0.0F, size.z) - origin.z) * fScale};
        direction.x = i % 7 == 0 ? 0.0F : direction.x;
        direction.y = i % 11 == 0 ? 0.0F : direction.y;
        const double fExpected = HitByLoop(terrain, origin, direction);
        SVec3 hit = {-1.0F, -1.0F, -1.0F};
        ASSERT_EQ(terrain.PickRay(origin, direction, hit), std::isfinite(fExpected)) << "ray " << i;
        if (!std::isfinite(fExpected))
        {
            EXPECT_EQ(hit.y, -1.0F);
            continue;
        }
        ++nHits;
        EXPECT_NEAR(hit.x, origin.x + fExpected * direction.x, 1e-4 * size.x) << "ray " << i;
        EXPECT_NEAR(hit.y, origin.y + fExpected * direction.y, 1e-2) << "ray " << i;
        EXPECT_NEAR(hit.z, origin.z + fExpected * direction.z, 1e-4 * size.z) << "ray " << i;
    }
    EXPECT_GT(nHits, nRays / 3);
    EXPECT_LT(nHits, nRays);
}

// Height of the triangles at a place; the diagonal runs from south-west to north-east.
double GetGround(const CTerrain& terrain, double fX, double fZ)
{
    const double fColumn = fX * terrain.GetCellsPerSide() / terrain.GetSize().x;
    const double fRow = fZ * terrain.GetCellsPerSideZ() / terrain.GetSize().z;
    const auto uX = std::min(static_cast<uint32_t>(fColumn), terrain.GetCellsPerSide() - 1);
    const auto uZ = std::min(static_cast<uint32_t>(fRow), terrain.GetCellsPerSideZ() - 1);
    const double u = fColumn - uX;
    const double v = fRow - uZ;
    const double fNorthEast = GetVertex(terrain, uX + 1, uZ)[1];
    const double fSouthWest = GetVertex(terrain, uX, uZ + 1)[1];
    return u + v <= 1.0
               ? GetVertex(terrain, uX, uZ)[1] * (1.0 - u - v) + fNorthEast * u + fSouthWest * v
               : GetVertex(terrain, uX + 1, uZ + 1)[1] * (u + v - 1.0) + fNorthEast * (1.0 - v) +
                     fSouthWest * (1.0 - u);
}

TEST(CRayPicker, FindsTheFirstOfAllTrianglesAlsoAfterEdits)
{
    std::mt19937 random(7);
    CTerrain terrain(MakeRough(2, 2, {10, 10, 10}, random));
    const std::tuple<uint32_t, uint32_t, SVec3> aSizes[] = {{2, 2, {10, 10, 10}},
                                                            {3, 40, {7, 10, -400}},
                                                            {100, 20, {-3000, 10, 90}},
                                                            {65, 65, {64, 10, 64}},
                                                            {66, 67, {1000, 10, 1000}}};
    for (const auto& [uSizeX, uSizeZ, size] : aSizes)
    {
        SCOPED_TRACE(uSizeX);
        terrain.ReplaceField(MakeRough(uSizeX, uSizeZ, size, random));
        ExpectHitsAsByLoop(terrain, random, 150);
        // A peak and a pit, each far out of the range that its blocks had.
        const SHeightField other = MakeRough(uSizeX, uSizeZ, size, random);
        const uint32_t uX = random() % uSizeX;
        const uint32_t uZ = random() % uSizeZ;
        other.pHeights[uZ * uSizeX + uX] = 190.0F;
        const SVec3 at = {
            terrain.GetSize().x * static_cast<float>(uX) / static_cast<float>(uSizeX - 1),
            0,
            terrain.GetSize().z * static_cast<float>(uZ) / static_cast<float>(uSizeZ - 1)};
        terrain.SetHeights(other.pHeights.get(), other.GetCount(), {at, at});
        const SBlockEntry pit = {static_cast<float>((uSizeX - 1) % 32), -90.0F, 1.0F};
        terrain.SetBlockHeights(static_cast<int>((uSizeX - 1) / 32), 0, &pit, 1);
        ExpectHitsAsByLoop(terrain, random, 150);
    }
}

TEST(CRayPicker, LinesThroughVerticesAndAlongBordersFindNoGap)
{
    std::mt19937 random(11);
    const SVec3 aScales[] = {{40.0F, 1.0F, 24.0F}, {33.3F, 1.0F, 0.7F}, {12345.6F, 1.0F, 777.7F}};
    for (const SVec3& size : aScales)
    {
        SCOPED_TRACE(size.x);
        const CTerrain terrain(MakeRough(41, 25, size, random));
        for (int i = 0; i < 3000; ++i)
        {
            // Half columns and rows: vertices, middles of borders and of diagonals, all borders.
            const float fX = size.x * (static_cast<float>(random() % 81) / 80.0F);
            const float fZ = size.z * (static_cast<float>(random() % 49) / 48.0F);
            SVec3 hit;
            for (const float fSign : {1.0F, -1.0F})
            {
                const SVec3 start = {fX, 500.0F * fSign, fZ};
                ASSERT_TRUE(terrain.PickRay(start, {0, -fSign, 0}, hit)) << fX << ' ' << fZ;
                EXPECT_NEAR(hit.y, GetGround(terrain, fX, fZ), 1e-3);
            }
            // From above the terrain to below it, along a column, a row, a diagonal or any line.
            const float fCellX =
                size.x / 40.0F * static_cast<float>(static_cast<int>(random() % 9) - 4);
            const float fCellZ =
                size.z / 24.0F * static_cast<float>(static_cast<int>(random() % 9) - 4);
            const SVec3 from = {fX - fCellX, 81.0F, fZ - fCellZ};
            if (from.x < 0.0F || from.x > size.x || from.z < 0.0F || from.z > size.z)
            {
                continue;
            }
            const SVec3 by = {fX - from.x, -21.0F - 81.0F, fZ - from.z};
            ASSERT_TRUE(terrain.PickRay(from, by, hit)) << fX << ' ' << fZ;
            EXPECT_NEAR(hit.y, GetGround(terrain, hit.x, hit.z), 0.05);
        }
    }
}

TEST(CRayPicker, MissesLeaveTheHitAlone)
{
    SHeightField field;
    field.Allocate(5, 3);
    field.size = {4, 10, 2};
    const CTerrain terrain(std::move(field));
    const std::tuple<const char*, SVec3, SVec3, bool> aCases[] = {
        {"down", {1, 5, 1}, {0, -1, 0}, true},
        {"up from below", {1, -5, 1}, {0, 1e-30F, 0}, true},
        {"starts on the ground", {1, 0, 1}, {0, 1, 0}, true},
        {"down on the far corner", {4, 5, 2}, {0, -1e30F, 0}, true},
        {"along the ground", {-3, 0, 1}, {1, 0, 0}, true},
        {"from far away", {1e7F, 1e7F, 1e7F}, {-1e7F + 2, -1e7F, -1e7F + 1}, true},
        {"up from above", {1, 5, 1}, {0, 1, 0}, false},
        {"level above", {-3, 0.01F, 1}, {1, 0, 0}, false},
        {"beside", {-0.01F, 5, 1}, {0, -1, 0}, false},
        {"ends before the border", {-3, 1, 1}, {2, -1, 0}, false},
        {"away", {-3, 1, 1}, {-4, -1, 0}, false},
        {"no direction", {1, 5, 1}, {0, 0, 0}, false},
        {"no number in the direction", {1, 5, 1}, {0, -1, NOT_A_NUMBER}, false},
        {"no number in the start", {NOT_A_NUMBER, 5, 1}, {0, -1, 0}, false},
        {"infinite start", {1, INFINITE, 1}, {0, -1, 0}, false},
        {"infinite direction", {1, 5, 1}, {0, -INFINITE, 0}, false},
    };
    for (const auto& [pszName, origin, direction, bHit] : aCases)
    {
        SCOPED_TRACE(pszName);
        SVec3 hit = {-7, -7, -7};
        EXPECT_EQ(terrain.PickRay(origin, direction, hit), bHit);
        EXPECT_NEAR(hit.y, bHit ? 0.0F : -7.0F, 1e-6);
        EXPECT_EQ(hit.x != -7.0F, bHit);
    }
}

TEST(CRayPicker, HeightsThatAreNoNumbersAreHoles)
{
    SHeightField field;
    field.Allocate(40, 40);
    field.size = {39, 10, 39};
    std::fill_n(field.pHeights.get(), 20 * 40, NOT_A_NUMBER); // rows 0 to 19
    const CTerrain terrain(std::move(field));
    SVec3 hit;
    EXPECT_FALSE(terrain.PickRay({20, 5, 10}, {0, -1, 0}, hit));
    EXPECT_FALSE(terrain.PickRay({20, 5, 1}, {0, -5, 10}, hit)) << "out below through the hole";
    ASSERT_TRUE(terrain.PickRay({20, 5, 1}, {0, -5, 30}, hit));
    EXPECT_NEAR(hit.z, 31.0F, 1e-4);
    float fMin = 1.0F;
    float fMax = 1.0F;
    EXPECT_FALSE(terrain.GetHeightRange({0, 0, 40, 20}, fMin, fMax));
    EXPECT_TRUE(terrain.GetHeightRange({0, 0, 40, 21}, fMin, fMax));
    EXPECT_EQ(fMax, 0.0F);
}

TEST(CHeightPyramid, RangesAreThoseOfTheVerticesAlsoAfterEdits)
{
    std::mt19937 random(5);
    for (const auto& [uSizeX, uSizeZ] : {std::pair{2U, 2U}, {9U, 130U}, {65U, 65U}, {150U, 33U}})
    {
        SCOPED_TRACE(uSizeX);
        CTerrain terrain(MakeRough(uSizeX, uSizeZ, {100, 10, 100}, random));
        for (int i = 0; i < 300; ++i)
        {
            for (int iEdit = i % 100 == 0 ? 80 : 1 + i % 2; iEdit > 0; --iEdit)
            {
                const SBlockEntry entry = {static_cast<float>(random() % 5 * 8),
                                           Random(random, -300.0F, 300.0F) + static_cast<float>(i),
                                           static_cast<float>(random() % 33)};
                terrain.SetBlockHeights(static_cast<int>(random() % 5), 0, &entry, 1);
            }
            // Half of them end at borders of blocks, where vertices belong to two blocks.
            const uint32_t uGrid = i % 2 == 0 ? 1 : CHeightPyramid::BLOCK;
            SVertexRect rect;
            rect.uMinX = random() % uSizeX / uGrid * uGrid;
            rect.uMinZ = random() % uSizeZ / uGrid * uGrid;
            rect.uEndX =
                std::min<size_t>(rect.uMinX + random() % uSizeX / uGrid * uGrid + 1, uSizeX);
            rect.uEndZ =
                std::min<size_t>(rect.uMinZ + random() % uSizeZ / uGrid * uGrid + 1, uSizeZ);
            float fExpectedMin = INFINITE;
            float fExpectedMax = -INFINITE;
            for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
            {
                const float* pRow = terrain.GetHeightData() + z * uSizeX;
                const auto [pMin, pMax] = std::minmax_element(pRow + rect.uMinX, pRow + rect.uEndX);
                fExpectedMin = std::min(fExpectedMin, *pMin);
                fExpectedMax = std::max(fExpectedMax, *pMax);
            }
            float fMin = 0.0F;
            float fMax = 0.0F;
            ASSERT_TRUE(terrain.GetHeightRange(rect, fMin, fMax));
            EXPECT_EQ(fMin, fExpectedMin);
            EXPECT_EQ(fMax, fExpectedMax);
        }
        float fSame = 5.0F;
        EXPECT_FALSE(terrain.GetHeightRange({1, 1, 1, 2}, fSame, fSame));
        EXPECT_EQ(fSame, 5.0F);
    }
}

} // namespace
