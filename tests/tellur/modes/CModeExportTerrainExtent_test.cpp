#include "tellur/modes/CModeExportTerrainExtent.h"
#include "tests/tellur/modes/ModesFixture.h"

#include <limits>
#include <tuple>

namespace
{

constexpr ViewId VIEW = 2;
const std::string BROWSE = "Host.BrowseForFile(0, stl, null, data, STL files (*.stl)|*.stl)";

class CModeExportTerrainExtentTest : public CModesFixture
{
protected:
    CModeExportTerrainExtentTest() { m_Context.host.strBrowseAnswer = "out.stl"; }

    void Press(const SVec3& hit)
    {
        m_Context.host.picks = {{1, hit}};
        m_Export.OnLButtonDown(VIEW, 11, 0);
    }

    void Move(const SVec3& hit)
    {
        m_Context.host.picks = {{1, hit}};
        m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    }

    // What a frame draws, without the calls before it.
    Lines Render()
    {
        TakeCalls();
        m_Export.Render();
        return TakeCalls();
    }

    // What the release does, without the picks before it.
    Lines Release()
    {
        TakeCalls();
        m_Export.OnLButtonUp(VIEW, 13, 0);
        return TakeCalls();
    }

    Lines Drag(const SVec3& from, const SVec3& to)
    {
        Press(from);
        Move(to);
        return Release();
    }

    CModeExportTerrainExtent m_Export;
};

std::string Export(const char* pszBox)
{
    return std::string("Terrain.ExportToSTL(out.stl, ") + pszBox + ")";
}

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
        EXPECT_EQ(Drag(from, to), (Lines{BROWSE, Export("[0 5 0, 200 5 50]")}));
    }
}

TEST_F(CModeExportTerrainExtentTest, OnlyADiagonalAboveOneHundredExports)
{
    const std::tuple<SVec3, bool> cases[] = {
        {{60, 0, 80}, false}, // exactly 100
        {{0, 900, 100}, false},
        {{60.02F, 0, 80}, true},
        {{0, 0, 100.01F}, true},
        {{100.01F, 0, 0}, true},
        {{0, 900, 0}, false}, // heights do not count
        {{std::numeric_limits<float>::quiet_NaN(), 0, 0}, false},
    };

    for (const auto& [to, bExports] : cases)
    {
        SCOPED_TRACE(to.x + to.z);
        EXPECT_EQ(Drag({0, 0, 0}, to).size(), bExports ? 2U : 0U);
    }
}

TEST_F(CModeExportTerrainExtentTest, NothingIsWrittenWhenCancelledOrWithoutATerrain)
{
    m_Context.host.strBrowseAnswer.clear();
    EXPECT_EQ(Drag({0, 0, 0}, {500, 0, 0}), Lines{BROWSE});
    EXPECT_TRUE(m_Export.IsAvailable());
    m_Context.world.pTerrain = nullptr;
    EXPECT_EQ(Drag({0, 0, 0}, {500, 0, 0}), Lines{});
    EXPECT_FALSE(m_Export.IsAvailable());
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CModeExportTerrainExtentTest, MissesKeepTheBoxAndStillStartADrag)
{
    Drag({0, 3, 0}, {200, 3, 50});
    m_Context.host.picks = {{2, {999, 999, 999}}}; // not exactly 1: no hit
    m_Export.OnLButtonDown(VIEW, 11, 0);
    EXPECT_EQ(TakeCalls(), (Lines{"Host.PickTerrain(2, 11, 0)"}));
    EXPECT_EQ(Render(), (Lines{"Engine.DrawLines(4, 1)"})) << "the box before";
    m_Context.host.Miss();
    m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    EXPECT_EQ(TakeCalls(), (Lines{"Host.PickTerrain(2, 12, 0)"}));
    Move({300, 3, 50}); // the start is still the one before
    EXPECT_EQ(Release(), (Lines{BROWSE, Export("[0 3 0, 300 3 50]")}));

    m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    EXPECT_EQ(TakeCalls(), Lines{}) << "a move without a drag does not pick";
}

TEST_F(CModeExportTerrainExtentTest, TheOutlineIsDrawnOnlyWhileDragging)
{
    EXPECT_EQ(Render(), Lines{}) << "no press yet";
    Press({10, 7, 20});
    Move({30, 4, 60});
    EXPECT_EQ(Render(), (Lines{"Engine.DrawLines(4, 1)"}));
    const SVec3 corners[] = {{10, 4, 20}, {30, 4, 20}, {30, 4, 60}, {10, 4, 60}};
    ASSERT_EQ(m_Context.engine.linePoints.size(), 4U);
    for (size_t i = 0; i < 4; ++i)
    {
        SCOPED_TRACE(i);
        EXPECT_EQ(m_Context.engine.linePoints[i].x, corners[i].x);
        EXPECT_EQ(m_Context.engine.linePoints[i].y, corners[i].y);
        EXPECT_EQ(m_Context.engine.linePoints[i].z, corners[i].z);
    }
    const SColor color = m_Context.engine.lineColor;
    EXPECT_TRUE(color.r == 1.0F && color.g == 1.0F && color.b == 0.0F && color.a == 1.0F);

    m_Export.Suspend(true);
    EXPECT_EQ(Render(), Lines{}) << "suspended";
    m_Export.Suspend(false);
    m_Export.Deactivate();
    EXPECT_EQ(Render(), Lines{}) << "leaving the mode ends the drag";
}

TEST_F(CModeExportTerrainExtentTest, ASuspendedReleaseEndsTheDragAndExportsNothing)
{
    Press({0, 0, 0});
    Move({500, 0, 500});
    m_Export.Suspend(true);
    TakeCalls();
    m_Export.OnMouseMove(VIEW, 0, 12, 0, 0);
    EXPECT_EQ(TakeCalls(), Lines{});
    EXPECT_EQ(Release(), Lines{});
    m_Export.Suspend(false);
    EXPECT_EQ(Render(), Lines{}) << "the drag has ended";
}

TEST_F(CModeExportTerrainExtentTest, EnteringLeavingAndSuspendingFollowTheToolBarButton)
{
    const Lines enter = {"Host.SetModeCaption(Export terrain extent)",
                         "FrontEnd.SetCursorPos(12 34)",
                         "Host.RefreshView(5)",
                         "Context.SetToolBarButton(5, 1)"};
    m_Export.Activate();
    EXPECT_EQ(TakeCalls(), enter);
    m_Export.Suspend(true);
    EXPECT_EQ(TakeCalls(), (Lines{"Context.SetToolBarButton(5, 0)"}));
    m_Export.Suspend(false);
    EXPECT_EQ(TakeCalls(), enter);
    m_Export.Deactivate();
    EXPECT_EQ(TakeCalls(), (Lines{"Context.SetToolBarButton(5, 0)"}));
}
