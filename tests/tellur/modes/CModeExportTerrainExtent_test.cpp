#include "tellur/modes/CModeExportTerrainExtent.h"
#include "tests/tellur/modes/ModesFixture.h"

#include <limits>
#include <tuple>

namespace
{

constexpr ViewId VIEW = 2;
const std::string BROWSE = "Host.BrowseForFile(0, stl, null, data, STL files (*.stl)|*.stl)";

// A terrain of 640 x 1000 x 640 units, a vertex every 10, so that the triangles of a file say how
// large a box it has.
class CModeExportTerrainExtentTest : public CModesFixture
{
protected:
    CModeExportTerrainExtentTest()
    {
        m_Host.NewLevel(64, {640.0F, 1000.0F, 640.0F});
        m_Face.strBrowseAnswer = "out.stl";
    }

    void Press(const SVec3& hit)
    {
        m_Face.picks = {hit};
        m_Export.OnLButtonDown(VIEW, 11, 0);
    }

    void Move(const SVec3& hit)
    {
        m_Face.picks = {hit};
        m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    }

    // The lines that a frame draws.
    const std::vector<SDebugLine>& Render()
    {
        m_Host.GetEngine().BeginFrame();
        m_Export.Render();
        return m_Host.GetEngine().GetDebugLines();
    }

    // Cells in the file that the release writes; -1 when it writes none.
    int Release()
    {
        TakeCalls();
        std::filesystem::remove(m_Folder.Path("out.stl"));
        m_Export.OnLButtonUp(VIEW, 13, 0);
        const bool bWritten = std::filesystem::exists(m_Folder.Path("out.stl"));
        EXPECT_EQ(TakeCalls(), bWritten ? Lines{BROWSE} : Lines{});
        const std::string strFile = bWritten ? ReadBytes(m_Folder.Path("out.stl")) : "";
        return bWritten ? static_cast<int>((strFile.size() - 84) / 100) : -1;
    }

    int Drag(const SVec3& from, const SVec3& to)
    {
        Press(from);
        Move(to);
        return Release();
    }

    CModeExportTerrainExtent m_Export;
};

} // namespace

TEST_F(CModeExportTerrainExtentTest, TheBoxIsFlatAndAnyDragDirectionGivesTheSame)
{
    const SVec3 drags[][2] = {{{0, 5, 0}, {200, 9, 50}},
                              {{200, 9, 50}, {0, 5, 0}},
                              {{200, 5, 0}, {0, 9, 50}},
                              {{0, 9, 50}, {200, 5, 0}}};
    for (const auto& [from, to] : drags)
    {
        SCOPED_TRACE(from.x + from.y);
        EXPECT_EQ(Drag(from, to), 20 * 5);
        Press(from);
        Move(to);
        EXPECT_EQ(Render().front().from.y, 5.0F) << "at the lower height";
        m_Export.Deactivate();
    }
}

TEST_F(CModeExportTerrainExtentTest, OnlyADiagonalAboveOneHundredExports)
{
    const std::tuple<SVec3, bool> cases[] = {
        {{60, 0, 80}, false}, // exactly 100
        {{0, 900, 100}, false},
        {{60.02F, 0, 80}, true},
        {{10, 0, 100.01F}, true},
        {{100.01F, 0, 10}, true},
        {{0, 900, 0}, false}, // heights do not count
        {{std::numeric_limits<float>::quiet_NaN(), 0, 0}, false},
    };

    for (const auto& [to, bExports] : cases)
    {
        SCOPED_TRACE(to.x + to.z);
        EXPECT_EQ(Drag({0, 0, 0}, to) >= 0, bExports);
    }
}

TEST_F(CModeExportTerrainExtentTest, NothingIsWrittenWhenCancelledOrWithoutATerrain)
{
    m_Face.strBrowseAnswer.clear();
    Press({0, 0, 0});
    Move({500, 0, 500});
    TakeCalls();
    m_Export.OnLButtonUp(VIEW, 13, 0);
    EXPECT_EQ(TakeCalls(), Lines{BROWSE});
    EXPECT_TRUE(m_Export.IsAvailable());
    m_Host.GetWorld().CloseTerrain();
    EXPECT_EQ(Drag({0, 0, 0}, {500, 0, 500}), -1);
    EXPECT_FALSE(m_Export.IsAvailable());
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CModeExportTerrainExtentTest, MissesKeepTheBoxAndStillStartADrag)
{
    Drag({0, 3, 0}, {200, 3, 50});
    m_Face.Miss();
    m_Export.OnLButtonDown(VIEW, 11, 0);
    EXPECT_EQ(Render().size(), 4U) << "the box before";
    m_Face.Miss();
    m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    EXPECT_EQ(TakeCalls(), (Lines{"Host.PickTerrain(2, 11)", "Host.PickTerrain(2, 12)"}));
    Move({300, 3, 50}); // the start is still the one before
    EXPECT_EQ(Release(), 30 * 5);
    m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    EXPECT_EQ(TakeCalls(), Lines{}) << "a move without a drag does not pick";
}

TEST_F(CModeExportTerrainExtentTest, TheOutlineIsDrawnOnlyWhileDragging)
{
    EXPECT_TRUE(Render().empty()) << "no press yet";
    Press({10, 7, 20});
    Move({30, 4, 60});
    const SVec3 corners[] = {{10, 4, 20}, {30, 4, 20}, {30, 4, 60}, {10, 4, 60}};
    ASSERT_EQ(Render().size(), 4U);
    for (size_t i = 0; i < 4; ++i)
    {
        SCOPED_TRACE(i);
        const SDebugLine& line = m_Host.GetEngine().GetDebugLines()[i];
        const SVec3& to = corners[(i + 1) % 4];
        EXPECT_EQ(ToText({line.from, line.to}), ToText({corners[i], to}));
        EXPECT_TRUE(line.color.r == 1.0F && line.color.g == 1.0F && line.color.b == 0.0F);
        EXPECT_EQ(line.color.a, 1.0F);
    }
    m_Export.Suspend(true);
    EXPECT_TRUE(Render().empty()) << "suspended";
    m_Export.Suspend(false);
    m_Export.Deactivate();
    EXPECT_TRUE(Render().empty()) << "leaving the mode ends the drag";
}

TEST_F(CModeExportTerrainExtentTest, ASuspendedReleaseEndsTheDragAndExportsNothing)
{
    Press({0, 0, 0});
    Move({500, 0, 500});
    m_Export.Suspend(true);
    TakeCalls();
    m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    EXPECT_EQ(TakeCalls(), Lines{});
    EXPECT_EQ(Release(), -1);
    m_Export.Suspend(false);
    EXPECT_TRUE(Render().empty()) << "the drag has ended";
}

TEST_F(CModeExportTerrainExtentTest, EnteringAndResumingTakeTheInput)
{
    const Lines enter = {"Host.SetModeCaption(Export terrain extent)",
                         "FrontEnd.SetCursorPos(12 34)",
                         "Host.RefreshView(1)"};
    m_Export.Activate();
    EXPECT_EQ(TakeCalls(), enter);
    m_Export.Suspend(true);
    EXPECT_EQ(TakeCalls(), Lines{});
    m_Export.Suspend(false);
    EXPECT_EQ(TakeCalls(), enter);
}
