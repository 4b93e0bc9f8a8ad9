#include "engine/terrain/CTerrain.h"
#include "host/Progress.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>

namespace
{

// 6 x 4 vertices, cells of 10 x 5 units, heights that are no plane.
CTerrain MakeTerrain()
{
    SHeightField field;
    field.Allocate(6, 4);
    field.size = {50, 100, -15};
    for (uint32_t i = 0; i < 24; ++i)
    {
        field.pHeights[i] = static_cast<float>(i * i % 17);
    }
    return CTerrain(std::move(field));
}

struct STriangle
{
    SVec3 normal;
    SVec3 corners[3];
};

std::vector<STriangle> ReadTriangles(const std::string& strPath)
{
    const std::string strBytes = ReadBytes(strPath);
    uint32_t uCount = 0;
    strBytes.copy(reinterpret_cast<char*>(&uCount), 4, 80);
    EXPECT_EQ(strBytes.size(), 84 + size_t{uCount} * 50);
    EXPECT_NE(strBytes.substr(0, 5), "solid") << "readers would take it for text";
    std::vector<STriangle> triangles(strBytes.size() / 50 - 1);
    for (size_t i = 0; i < triangles.size(); ++i)
    {
        std::memcpy(&triangles[i], strBytes.data() + 84 + i * 50, sizeof(STriangle));
        EXPECT_EQ(strBytes.compare(132 + i * 50, 2, std::string(2, '\0')), 0)
            << "attributes of " << i;
    }
    return triangles;
}

SVec3 GetCross(const STriangle& t)
{
    const auto& [first, second, third] = t.corners;
    const SVec3 a{second.x - first.x, second.y - first.y, second.z - first.z};
    const SVec3 b{third.x - first.x, third.y - first.y, third.z - first.z};
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

class StlFile : public testing::Test
{
protected:
    CTempFolder m_Folder;
    std::string m_Path = m_Folder.Path("t.stl");
    CLogCatcher m_Log;
    CTerrain m_Terrain = MakeTerrain();
};

TEST_F(StlFile, TrianglesLieOnTheTerrainFaceUpwardAndCoverTheBox)
{
    const std::tuple<const char*, bool, SExtents, uint32_t> aCases[] = {
        {"whole", true, {}, 15},
        {"whole by its box", false, {{0, 0, 0}, {50, 0, 15}}, 15},
        {"cut to whole cells", false, {{5, 0, 4.9F}, {39, 0, 15.2F}}, 4},
        {"on vertices", false, {{10, 0, 5}, {30, 0, 10}}, 2},
        {"larger than the terrain", false, {{-1e9F, 0, -3}, {1e30F, 0, 6}}, 5},
    };
    for (const auto& [pszName, bWhole, box, uCells] : aCases)
    {
        SCOPED_TRACE(pszName);
        ASSERT_TRUE(m_Terrain.ExportToSTL(m_Path.c_str(), bWhole ? nullptr : &box));
        const std::vector<STriangle> triangles = ReadTriangles(m_Path);
        EXPECT_EQ(triangles.size(), 2 * uCells);
        float fArea = 0.0F;
        for (const STriangle& triangle : triangles)
        {
            const SVec3 cross = GetCross(triangle);
            const float fLength = std::hypot(cross.x, cross.y, cross.z);
            EXPECT_NEAR(triangle.normal.x, cross.x / fLength, 1e-5F);
            EXPECT_NEAR(triangle.normal.y, cross.y / fLength, 1e-5F);
            EXPECT_NEAR(triangle.normal.z, cross.z / fLength, 1e-5F);
            fArea += cross.z * 0.5F; // seen from above, negative when it faces down
            for (const SVec3& corner : triangle.corners)
            {
                EXPECT_EQ(corner.z, m_Terrain.GetHeightAt(corner.x, -corner.y));
                EXPECT_TRUE(bWhole || (corner.x >= box.min.x && corner.x <= box.max.x &&
                                       -corner.y >= box.min.z && -corner.y <= box.max.z));
            }
        }
        EXPECT_FLOAT_EQ(fArea, static_cast<float>(uCells) * 50.0F);
    }
}

TEST_F(StlFile, RowsLongerThanTheBufferArriveComplete)
{
    SHeightField field;
    field.Allocate(3001, 5);
    field.size = {3000, 1, 4};
    CTerrain large(std::move(field));
    EXPECT_FALSE(large.ExportToSTL("/dev/full", nullptr));
    EXPECT_EQ(m_Log.GetText(), "[WriteStlFile] /dev/full: No space left on device\n");
    ASSERT_TRUE(large.ExportToSTL(m_Path.c_str(), nullptr));
    const std::vector<STriangle> triangles = ReadTriangles(m_Path);
    ASSERT_EQ(triangles.size(), 24000U);
    for (size_t i = 0; i < triangles.size(); ++i)
    {
        const auto& [first, second, third] = triangles[i].corners;
        const auto fWest = static_cast<float>(i / 2 % 3000);
        const auto fSouth = -static_cast<float>(i / 6000 + 1);
        ASSERT_EQ(triangles[i].normal.z, 1.0F) << i;
        ASSERT_EQ(first.x, i % 2 == 0 ? fWest : fWest + 1.0F) << i;
        ASSERT_EQ(first.y, fSouth + 1.0F) << i;
        ASSERT_EQ(third.y, i % 2 == 0 ? fSouth + 1.0F : fSouth) << i;
        ASSERT_EQ(second.x + second.y, fWest + fSouth) << i;
    }
}

TEST_F(StlFile, ReportsProgressEvenlyAndACancelKeepsTheOldFile)
{
    class CSink : public IProgressSink
    {
    public:
        bool OnProgress(const char* pszWhat, float fDone) override
        {
            EXPECT_STREQ(pszWhat, "Export terrain to STL");
            done.push_back(fDone);
            return fDone < fEnd;
        }

        std::vector<float> done;
        float fEnd = 2.0F;
    };

    SHeightField field;
    field.Allocate(3, 501);
    field.size = {2, 1, 500};
    CTerrain large(std::move(field));
    CSink sink;
    IProgressSink* const pBefore = SetProgressSink(&sink);
    ASSERT_TRUE(large.ExportToSTL(m_Path.c_str(), nullptr));
    ASSERT_EQ(sink.done.size(), 101U);
    for (size_t i = 0; i < sink.done.size(); ++i)
    {
        EXPECT_FLOAT_EQ(sink.done[i], static_cast<float>(i) / 100.0F);
    }
    for (const float fEnd : {0.0F, 0.5F, 1.0F})
    {
        SCOPED_TRACE(fEnd);
        WriteBytes(m_Path, "old");
        sink.done.clear();
        sink.fEnd = fEnd;
        EXPECT_FALSE(large.ExportToSTL(m_Path.c_str(), nullptr));
        EXPECT_EQ(sink.done.back(), fEnd) << "no work after the cancel";
        EXPECT_EQ(m_Log.TakeLines(),
                  std::vector<std::string>{"[WriteStlFile] " + m_Path + ": cancelled"});
        EXPECT_EQ(ReadBytes(m_Path), "old");
        const std::filesystem::directory_iterator entries(m_Folder.GetFolder());
        EXPECT_EQ(std::distance(begin(entries), end(entries)), 1) << "nothing beside the old file";
    }
    EXPECT_EQ(SetProgressSink(pBefore), &sink);
}

TEST_F(StlFile, RefusesABoxWithoutACellAndAPathItCannotWrite)
{
    WriteBytes(m_Path, "old");
    const float fNan = std::nanf("");
    for (const SExtents& box : {SExtents{{11, 0, 0}, {29, 0, 15}},
                                SExtents{{60, 0, 0}, {90, 0, 15}},
                                SExtents{{-90, 0, 0}, {-1, 0, 15}},
                                SExtents{{fNan, 0, 0}, {50, 0, 15}},
                                SExtents{{40, 0, 15}, {10, 0, 0}}})
    {
        EXPECT_FALSE(m_Terrain.ExportToSTL(m_Path.c_str(), &box));
        EXPECT_EQ(
            m_Log.TakeLines(),
            std::vector<std::string>{"[WriteStlFile] " + m_Path + ": the box holds no whole cell"});
    }
    EXPECT_EQ(ReadBytes(m_Path), "old");
    EXPECT_FALSE(m_Terrain.ExportToSTL(m_Folder.GetFolder().c_str(), nullptr));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    EXPECT_FALSE(m_Terrain.ExportToSTL(nullptr, nullptr));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
}

} // namespace
