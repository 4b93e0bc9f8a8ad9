#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "tests/engine/terrain/TerrainFields.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();

TEST(CTerrain, SetHeightsTakesExactlyTheVerticesUnderTheBox)
{
    // 9 x 5 vertices, 10 units apart along x and 2 along z.
    const std::tuple<const char*, SExtents, SVertexRect> aCases[] = {
        {"on vertices", MakeBox(20, 2, 30, 4), {2, 1, 4, 3}},
        {"one vertex", MakeBox(50, 6, 50, 6), {5, 3, 6, 4}},
        {"between vertices", MakeBox(21, 2.5F, 29, 3), {2, 1, 4, 3}},
        {"whole", MakeBox(0, 0, 80, 8), {0, 0, 9, 5}},
        {"beyond every border", MakeBox(-500, -5, 500, 100), {0, 0, 9, 5}},
        {"over the far corner", MakeBox(75, 7, 1e30F, INFINITE), {7, 3, 9, 5}},
        {"outside", MakeBox(95, 0, 200, 8), {}},
        {"before the origin", MakeBox(-200, 0, -11, 8), {}},
        {"upside down", MakeBox(60, 6, 20, 2), {}},
        {"no number", MakeBox(NOT_A_NUMBER, 2, 30, NOT_A_NUMBER), {0, 1, 4, 5}},
    };
    for (const auto& [pszName, box, rect] : aCases)
    {
        SCOPED_TRACE(pszName);
        CTerrain terrain(MakeField(9, 5, {80, 10, -8}));
        uint64_t uSeen = terrain.GetRevision();
        const std::vector<float> source(45, 3.0F);
        terrain.SetHeights(source.data(), source.size(), box);
        for (uint32_t i = 0; i < 45; ++i)
        {
            const bool bInside = i % 9 >= rect.uMinX && i % 9 < rect.uEndX && i / 9 >= rect.uMinZ &&
                                 i / 9 < rect.uEndZ;
            EXPECT_EQ(terrain.GetHeightData()[i], bInside ? 3.0F : 0.0F) << "vertex " << i;
        }
        std::vector<SVertexRect> dirty;
        EXPECT_EQ(terrain.TakeDirtyRects(uSeen, dirty), !rect.IsEmpty());
        EXPECT_EQ(dirty.empty() ? SVertexRect() : dirty.front(), rect);
    }
}

TEST(CTerrain, SetHeightsRefusesAnotherCount)
{
    CLogCatcher log;
    CTerrain terrain(MakeField(3, 3, {2, 2, 2}));
    const uint64_t uRevision = terrain.GetRevision();
    const std::vector<float> source(12, 1.0F);
    for (const size_t nCount : {8U, 12U, 0U})
    {
        const float* pSource = nCount != 0 ? source.data() : nullptr;
        terrain.SetHeights(pSource, nCount != 0 ? nCount : 9, MakeBox(0, 0, 2, 2));
        EXPECT_EQ(log.GetText(),
                  "[CTerrain::SetHeights] " + std::to_string(nCount) +
                      " heights for a terrain of 9 vertices\n");
        log.Clear();
    }
    EXPECT_EQ(terrain.GetRevision(), uRevision);
    EXPECT_EQ(terrain.GetHeightAt(1, 1), 0.0F);
}

TEST(CTerrain, BlockHeightsReachTheirVerticesAndNoOthers)
{
    CTerrain terrain(MakeField(70, 40, {69, 10, 39}));
    uint64_t uSeen = terrain.GetRevision();
    const SBlockEntry aEntries[] = {
        {0, 1, 0},
        {5, 2, 7},
        {6, 3, 0},  // column 70: outside the terrain
        {0, 4, 8},  // row 40: outside
        {33, 5, 0}, // outside the block
        {-1, 6, 0}, // outside the block, inside the terrain
        {NOT_A_NUMBER, 7, 0},
        {0, 8, INFINITE},
        {0.5F, 10, 0.49999997F}, // column 65, row 32
    };
    terrain.SetBlockHeights(2, 1, aEntries, std::size(aEntries));
    std::vector<SVertexRect> dirty;
    ASSERT_TRUE(terrain.TakeDirtyRects(uSeen, dirty));
    EXPECT_EQ(dirty, (std::vector<SVertexRect>{{64, 32, 70, 40}}));

    // The last row and column of a block are the first of its neighbours.
    const SBlockEntry shared{32, 9, 32};
    terrain.SetBlockHeights(0, 0, &shared, 1);
    terrain.SetBlockHeights(-1, 0, &shared, 1);
    terrain.SetBlockHeights(std::numeric_limits<int>::max(), 0, aEntries, 1);
    terrain.SetBlockHeights(0, std::numeric_limits<int>::min(), aEntries, 1);
    terrain.SetBlockHeights(0, 0, nullptr, 1);
    for (uint32_t i = 0; i < 70 * 40; ++i)
    {
        float fExpected = 0.0F;
        fExpected = i == 32 * 70 + 64 ? 1.0F : fExpected;
        fExpected = i == 39 * 70 + 69 ? 2.0F : fExpected;
        fExpected = i == 32 * 70 + 65 ? 10.0F : fExpected;
        fExpected = i == 32 * 70 + 32 || i == 32 * 70 ? 9.0F : fExpected;
        EXPECT_EQ(terrain.GetHeightData()[i], fExpected) << "vertex " << i;
    }
}

TEST(CTerrain, NormalsOfAPlaneAreItsNormalUpToTheBorder)
{
    // h = 0.5 x - 0.25 z: the normal is (-0.5, 1, 0.25) / sqrt(1 + 0.25 + 0.0625).
    SHeightField field = MakeField(130, 67, {-258, 100, 33});
    for (uint32_t i = 0; i < field.GetCount(); ++i)
    {
        const uint32_t uRow = i / 130;
        field.pHeights[i] =
            100.0F + static_cast<float>(i % 130) - 0.125F * static_cast<float>(uRow);
    }
    CTerrain terrain(std::move(field));
    const float fLength = std::sqrt(1.3125F);
    for (uint32_t i = 0; i < 130 * 67; ++i)
    {
        const SVec3 normal = terrain.GetNormal(i % 130, i / 130);
        ASSERT_NEAR(normal.x, -0.5F / fLength, 5e-5F) << i;
        ASSERT_NEAR(normal.y, 1.0F / fLength, 5e-5F) << i;
        ASSERT_NEAR(normal.z, 0.25F / fLength, 5e-5F) << i;
    }
    EXPECT_EQ(terrain.GetNormal(130, 0).y, 1.0F) << "no vertex";
}

TEST(CTerrain, NormalsFollowEveryEditAsIfComputedAfresh)
{
    constexpr uint32_t SIZE_X = 200;
    constexpr uint32_t SIZE_Z = 150;
    CTerrain terrain(MakeRandomField(SIZE_X, SIZE_Z, {398, 100, 149}));
    terrain.GetNormals();
    EXPECT_FALSE(terrain.UpdateNormals());

    std::vector<float> heights(SIZE_X * SIZE_Z);
    terrain.GetHeights(heights.data(), heights.size());
    std::mt19937 random(7);
    for (int iRound = 0; iRound < 60; ++iRound)
    {
        const uint32_t uX = random() % (SIZE_X - 2);
        const uint32_t uZ = random() % SIZE_Z;
        for (uint32_t i = 0; i < heights.size(); ++i)
        {
            const bool bTouched = i % SIZE_X >= uX && i % SIZE_X < uX + 3 && i / SIZE_X == uZ;
            heights[i] = bTouched ? static_cast<float>(random() % 1000) : heights[i];
        }
        const float fX = static_cast<float>(uX) * 2.0F;
        const auto fZ = static_cast<float>(uZ);
        terrain.SetHeights(heights.data(), heights.size(), MakeBox(fX, fZ, fX + 4.0F, fZ));
        const SBlockEntry entry{static_cast<float>(random() % 33), 77.0F, 3.0F};
        terrain.SetBlockHeights(iRound % 7, iRound % 5, &entry, 1);
        terrain.GetHeights(heights.data(), heights.size());
        EXPECT_TRUE(iRound % 3 != 0 || terrain.UpdateNormals());
    }
    SHeightField copy = MakeField(SIZE_X, SIZE_Z, {398, 100, 149});
    std::copy(heights.begin(), heights.end(), copy.pHeights.get());
    CTerrain fresh(std::move(copy));
    const int16_t* pExpected = fresh.GetNormals();
    EXPECT_TRUE(std::equal(pExpected, pExpected + 2 * heights.size(), terrain.GetNormals()));
}

TEST(CTerrain, NormalsWaitingToBeMadeAreDroppedWithTheFieldTheyBelongTo)
{
    CTerrain terrain(MakeField(300, 300, {299, 10, 299}));
    terrain.GetNormals();
    const SBlockEntry corner{10, 5, 10};
    terrain.SetBlockHeights(9, 9, &corner, 1);
    SHeightField small = MakeField(3, 3, {2, 2, 2});
    small.pHeights[4] = 1.0F;
    terrain.ReplaceField(std::move(small));
    EXPECT_TRUE(terrain.UpdateNormals());
    EXPECT_NEAR(terrain.GetNormal(0, 1).x, -1.0F / std::sqrt(2.0F), 5e-5F);
}

TEST(CTerrain, AnOverlayStillCoversATerrainOfAnotherWidth)
{
    CTerrain terrain(MakeField(5, 5, {-400, 10, 100}));
    SMatrix4 transform;
    transform.m[2] = 1.0F / 400.0F;
    terrain.SetEditOverlayTransform(transform);
    terrain.ReplaceField(MakeField(3, 3, {100, 10, 100}));
    EXPECT_FLOAT_EQ(terrain.GetEditOverlayTransform().m[2], 1.0F / 100.0F);
}

TEST(CTerrain, UpdateNormalsSaysWhetherAnythingWasStaleAlsoWhileNobodyReadsThem)
{
    CTerrain terrain(MakeField(5, 5, {4, 4, 4}));
    const SBlockEntry bump{2, 1, 2};
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_TRUE(terrain.UpdateNormals());
        EXPECT_FALSE(terrain.UpdateNormals());
        terrain.SetBlockHeights(0, 0, &bump, 0);
        EXPECT_FALSE(terrain.UpdateNormals()) << "no entry, nothing stale";
        terrain.SetBlockHeights(0, 0, &bump, 1);
    }
    // The slope from (1, 2) up to the bump at (2, 2) is 1 over two steps.
    EXPECT_NEAR(terrain.GetNormal(1, 2).x, -0.5F / std::sqrt(1.25F), 5e-5F);

    SHeightField field = MakeField(3, 3, {2, 2, 2});
    field.pHeights[4] = NOT_A_NUMBER;
    field.pHeights[0] = INFINITE;
    CTerrain broken(std::move(field));
    const SVec3 normal = broken.GetNormal(1, 0);
    EXPECT_TRUE(std::isfinite(normal.x + normal.y + normal.z));
}

TEST(CTerrain, HeightAtIsBilinearInsideTheCellAndHeldAtTheBorder)
{
    // 3 x 2 vertices, cells of 10 x 4 units.
    SHeightField field = MakeField(3, 2, {-20, 50, 4});
    const float aHeights[] = {0, 10, 30, 20, 40, 50};
    std::copy_n(aHeights, 6, field.pHeights.get());
    const CTerrain terrain(std::move(field));

    const SVec3 aExpected[] = {
        // x, height, z
        {20, 50, 4},
        {15, 45, 4},
        {10, 17.5F, 1},
        {2.5F, 8.125F, 1},
        {-5, 10, 2},
        {1e9F, 40, 2},
        {5, 5, -1e9F},
        {5, 30, INFINITE},
        {NOT_A_NUMBER, 0, 0},
        {20, 30.005F, 1e-3F},
        {-INFINITE, 20, 4},
    };
    for (const SVec3& at : aExpected)
    {
        EXPECT_NEAR(terrain.GetHeightAt(at.x, at.z), at.y, 1e-5F) << at.x << ", " << at.z;
    }
}

TEST(CTerrain, HeightAtTheLastVertexIsItsHeightOnEverySize)
{
    for (const uint32_t uSize : {2U, 33U, 513U, 1025U})
    {
        const CTerrain terrain(MakeRandomField(uSize, uSize, {29748, 2000, 31556.7F}));
        EXPECT_EQ(terrain.GetHeightAt(29748.0F, 31556.7F),
                  terrain.GetHeightData()[uSize * uSize - 1]);
    }
}

TEST(CTerrain, CopiesOutWhatFitsAndFillsASquareWithZeros)
{
    const CTerrain terrain(MakeRandomField(3, 2, {-2, -9, 1}));
    EXPECT_EQ(terrain.GetSize().y, 9.0F);
    const float* pHeights = terrain.GetHeightData();
    std::vector<float> copy(8, -1.0F);
    terrain.GetHeights(copy.data(), 4);
    EXPECT_TRUE(std::equal(pHeights, pHeights + 4, copy.data()));
    EXPECT_EQ(copy[4], -1.0F);
    terrain.GetHeights(copy.data(), 8);
    EXPECT_EQ(copy[6], -1.0F);

    for (const uint32_t uSide : {4U, 2U})
    {
        std::vector<float> square(17, -1.0F);
        terrain.GetHeightMap(square.data(), uSide);
        for (uint32_t i = 0; i < uSide * uSide; ++i)
        {
            const bool bInside = i % uSide < 3 && i / uSide < 2;
            EXPECT_EQ(square[i], bInside ? pHeights[i / uSide * 3 + i % uSide] : 0.0F) << i;
        }
        EXPECT_EQ(square[uSide * uSide], -1.0F);
    }
}

TEST(CTerrain, SavesItsOwnHeightsOrOthersOfAnySize)
{
    CTempFolder folder;
    CLogCatcher log;
    const std::string strPath = folder.Path("t.height");
    CTerrain terrain(MakeRandomField(4, 3, {30, -20, 10}));
    SHeightField read;
    ASSERT_TRUE(terrain.SaveHeightMap(strPath.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(ReadHeightFile(strPath.c_str(), read));
    EXPECT_EQ(read.size.y, -20.0F);
    EXPECT_TRUE(std::equal(read.pHeights.get(), read.pHeights.get() + 12, terrain.GetHeightData()));

    const std::vector<float> others{1, 2, 3, 4};
    ASSERT_TRUE(terrain.SaveHeightMap(strPath.c_str(), others.data(), 2, 2));
    ASSERT_TRUE(ReadHeightFile(strPath.c_str(), read));
    EXPECT_EQ(read.uSizeZ, 2U);
    EXPECT_EQ(read.size.x, 30.0F);
    EXPECT_EQ(read.pHeights[2], 3.0F);

    EXPECT_FALSE(terrain.SaveHeightMap(strPath.c_str(), nullptr, 2, 2));
    EXPECT_FALSE(terrain.SaveHeightMap(strPath.c_str(), others.data(), 0, 0));
    EXPECT_EQ(log.TakeLines().size(), 2U);
    EXPECT_TRUE(ReadHeightFile(strPath.c_str(), read)) << "the file before stays";
}

} // namespace
