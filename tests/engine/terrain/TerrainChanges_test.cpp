// What a terrain says of its changes to those who follow it.

#include "engine/terrain/GroundChange.h"
#include "tests/engine/terrain/TerrainFields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace
{

// Vertices that changed, and when, beside what a terrain says of it.
class CChangeModel
{
public:
    CChangeModel(uint32_t uSizeX, uint32_t uSizeZ)
        : m_SizeX(uSizeX)
        , m_SizeZ(uSizeZ)
        , m_Turns(size_t{uSizeX} * uSizeZ, 0)
    {
    }

    void Change(CTerrain& terrain, const SVertexRect& rect)
    {
        ++m_Turn;
        terrain.SetHeights(terrain.GetHeightData(),
                           m_Turns.size(),
                           MakeBox(static_cast<float>(rect.uMinX),
                                   static_cast<float>(rect.uMinZ),
                                   static_cast<float>(rect.uEndX - 1),
                                   static_cast<float>(rect.uEndZ - 1)));
        ForEach(rect, [&](size_t i) { m_Turns[i] = m_Turn; });
    }

    int GetTurn() const { return m_Turn; }

    // Every vertex that changed after a turn is in one rectangle, none is in two, and what lies in
    // one beside them is in a square of 64 with one that changed.
    void Check(const std::vector<SVertexRect>& rects, int iAfter) const
    {
        std::vector<int> hits(m_Turns.size());
        for (const SVertexRect& rect : rects)
        {
            ASSERT_FALSE(rect.IsEmpty());
            ASSERT_TRUE(rect.uEndX <= m_SizeX && rect.uEndZ <= m_SizeZ);
            ForEach(rect, [&](size_t i) { ++hits[i]; });
        }
        std::vector<char> squares(size_t{m_SizeX / 64 + 1} * (m_SizeZ / 64 + 1));
        const auto getSquare = [&](size_t i)
        {
            return i / m_SizeX / 64 * (m_SizeX / 64 + 1) + i % m_SizeX / 64;
        };
        for (size_t i = 0; i < hits.size(); ++i)
        {
            if (m_Turns[i] > iAfter)
            {
                squares[getSquare(i)] = 1;
            }
            ASSERT_TRUE(hits[i] == 1 || (hits[i] == 0 && m_Turns[i] <= iAfter)) << i;
        }
        for (size_t i = 0; i < hits.size(); ++i)
        {
            ASSERT_TRUE(hits[i] == 0 || squares[getSquare(i)] != 0) << i;
        }
    }

private:
    template <typename TVisit> void ForEach(const SVertexRect& rect, TVisit visit) const
    {
        for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
        {
            for (uint32_t x = rect.uMinX; x < rect.uEndX; ++x)
            {
                visit(size_t{z} * m_SizeX + x);
            }
        }
    }

    uint32_t m_SizeX;
    uint32_t m_SizeZ;
    std::vector<int> m_Turns;
    int m_Turn = 0;
};

} // namespace

TEST(TerrainChanges, EachReaderGetsWhatIsNewToIt)
{
    constexpr uint32_t SIZE_X = 1300; // more than one group of tiles, and not a whole tile
    constexpr uint32_t SIZE_Z = 150;
    CTerrain terrain(MakeField(SIZE_X, SIZE_Z, {SIZE_X - 1, 10, SIZE_Z - 1}));
    CChangeModel model(SIZE_X, SIZE_Z);
    std::vector<SVertexRect> rects;
    uint64_t uPrompt = 0;
    ASSERT_TRUE(terrain.TakeDirtyRects(uPrompt, rects));
    EXPECT_EQ(rects, (std::vector<SVertexRect>{{0, 0, SIZE_X, SIZE_Z}})) << "all of it at first";
    EXPECT_FALSE(terrain.TakeDirtyRects(uPrompt, rects));
    std::mt19937 random(11);
    std::vector<std::pair<uint64_t, int>> readers; // revisions, and the turns of the model
    for (int i = 0; i < 400; ++i)
    {
        const auto roll = [&](uint32_t uBelow)
        {
            return static_cast<uint32_t>(random()) % uBelow;
        };
        SVertexRect rect = {roll(SIZE_X), roll(SIZE_Z), 0, 0};
        rect.uEndX = std::min(rect.uMinX + 1 + roll(40), SIZE_X);
        rect.uEndZ = std::min(rect.uMinZ + 1 + roll(40), SIZE_Z);
        model.Change(terrain, rect);
        ASSERT_TRUE(terrain.TakeDirtyRects(uPrompt, rects));
        EXPECT_EQ(rects, std::vector<SVertexRect>{rect}) << "what is recent is exact";
        readers.emplace_back(uPrompt, model.GetTurn());
        if (i % 10 == 0) // one that saw something between all of it and nothing
        {
            auto [uSeen, iTurn] = readers[readers.size() - 1 - random() % readers.size()];
            if (terrain.TakeDirtyRects(uSeen, rects))
            {
                model.Check(rects, iTurn);
            }
            EXPECT_EQ(uSeen, terrain.GetRevision());
        }
    }
    terrain.ReplaceField(MakeField(5, 5, {1, 1, 1}));
    ASSERT_TRUE(terrain.TakeDirtyRects(uPrompt, rects)) << "another terrain is all new";
    EXPECT_EQ(rects, (std::vector<SVertexRect>{{0, 0, 5, 5}}));
}

TEST(TerrainChanges, ChangesThatTouchBecomeOneRectangleAndTheEmptyMiddleStaysOut)
{
    CTerrain terrain(MakeField(1025, 1025, {1024, 10, 1024}));
    uint64_t uSeen = terrain.GetRevision();
    const std::vector<SBlockEntry> corners = {{0, 1, 0}, {32, 1, 32}};
    for (int i = 0; i < 32 * 32; ++i) // a frame of blocks, as an undo of a wide circle
    {
        if (i % 32 < 4 || i % 32 >= 28 || i / 32 < 4 || i / 32 >= 28)
        {
            terrain.SetBlockHeights(i % 32, i / 32, corners.data(), corners.size());
        }
    }
    std::vector<SVertexRect> rects;
    ASSERT_TRUE(terrain.TakeDirtyRects(uSeen, rects));
    EXPECT_LE(rects.size(), 12U);
    size_t nVertices = 0;
    for (const SVertexRect& rect : rects)
    {
        nVertices += size_t{rect.uEndX - rect.uMinX} * (rect.uEndZ - rect.uMinZ);
    }
    EXPECT_GE(nVertices, 1025U * 1025U - 767U * 767U);
    EXPECT_LE(nVertices, 1025U * 1025U - 640U * 640U);
}

// What another limit, or a step up or down, would keep from what is asked for.
TEST(GroundChange, CutVerticesAreThoseThatOneByOneWouldBe)
{
    SHeightField field = MakeRandomField(200, 131, {199.0F, 100.0F, 130.0F});
    for (size_t i = 0; i < field.GetCount(); ++i)
    {
        // Flat blocks beside rough ones, and in a corner some of both that nobody may edit.
        field.pHeights[i] = i % 200 < 70 ? 30.0F : field.pHeights[i];
        field.pHeights[i] -= i / 200 > 100 ? 40.0F : 0.0F;
    }
    const std::vector<float> heights(field.pHeights.get(), field.pHeights.get() + field.GetCount());
    const CTerrain terrain(std::move(field));
    for (const double dBy : {-200.0, -30.5, -30.0, 0.0, 0.125, 70.0, 70.5, 200.0})
    {
        const SGroundAct act{.eKind = EGround::Raise, .fBy = static_cast<float>(dBy)};
        const auto nCut = std::count_if(heights.begin(),
                                        heights.end(),
                                        [dBy](double d)
                                        { return d >= 0.0 && (d + dBy < 0.0 || d + dBy > 100.0); });
        EXPECT_EQ(CountCutVertices(terrain, act), static_cast<size_t>(nCut)) << dBy;
    }
}
