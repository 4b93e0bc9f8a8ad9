#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/Progress.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tests/editor/CStep.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/FakeFrontEnd.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{

class CEditorHostTest : public testing::Test
{
protected:
    CHeadlessFace m_Face;
    CEditorHost m_Host{m_Face};
};

} // namespace

TEST_F(CEditorHostTest, KnowsTheEnvironmentOnlyWhileALevelHasOne)
{
    const CTempFolder folder;
    const std::string strName = folder.Path("level.height");
    std::string strPath = "untouched";
    EXPECT_FALSE(m_Host.QueryEntityClass("Environment"));
    m_Host.GetEnvironmentFile(ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, &strName, &strPath);
    EXPECT_EQ(strPath, "untouched");

    ASSERT_TRUE(m_Host.NewLevel(4, {40.0F, 50.0F, 40.0F}));
    EXPECT_TRUE(m_Host.QueryEntityClass("Environment"));
    EXPECT_FALSE(m_Host.QueryEntityClass("Light"));
    EXPECT_FALSE(m_Host.QueryEntityClass(nullptr));
    m_Host.GetEnvironmentFile(ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, &strName, &strPath);
    EXPECT_EQ(std::filesystem::path(strPath).lexically_normal(), strName);
    const std::string strEmpty;
    m_Host.GetEnvironmentFile(
        ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, &strEmpty, &strPath);
    EXPECT_TRUE(strPath.ends_with("/level.height")) << "one of the program's own: " << strPath;
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(strPath).parent_path()))
        << "not before it is needed";
    m_Host.GetEnvironmentFile(ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, nullptr, nullptr);
    fs::set_user_root(folder.GetFolder().c_str());
    const std::string strRelative = "level.height";
    m_Host.GetEnvironmentFile(
        ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, &strRelative, &strPath);
    EXPECT_EQ(std::filesystem::path(strPath).lexically_normal(), strName);
    fs::set_user_root(nullptr);
}

TEST(CEditorHost, MakesItsFacesFrontEndAndProgressCurrentForItsLife)
{
    class CFace : public CHeadlessFace
    {
    public:
        IFrontEnd* GetFrontEnd() override { return &frontEnd; }

        bool OnProgress(const char*, float fDone) override { return fDone < 0.5F; }

        std::string
        BrowseForFile(EFileDialog, const char*, const char*, const char*, const char*) override
        {
            return strChosen;
        }

        std::string strChosen;

        CFakeFrontEnd frontEnd;
    };

    CFace face;
    const CFakeFrontEnd before; // is current until the host comes
    {
        const CEditorHost host(face);
        EXPECT_EQ(&GetFrontEnd(), &face.frontEnd);
        EXPECT_TRUE(ReportProgress("Work", 0.25F));
        EXPECT_FALSE(ReportProgress("Work", 0.75F));
    }
    // What a file of a plug-in could not name is refused where it is chosen.
    {
        CEditorHost host(face);
        CLogCatcher log;
        face.frontEnd.calls.clear();
        face.strChosen = "folder/a\"b.png";
        EXPECT_EQ(host.BrowseForFile(FILE_DIALOG_SAVE, "png", "", "data", ""), face.strChosen)
            << "to save";
        EXPECT_EQ(log.GetText(), "");
        EXPECT_EQ(host.BrowseForFile(FILE_DIALOG_OPEN, nullptr, "", "data", ""), "");
        const std::string strFault =
            "folder/a\"b.png: a file with a quotation mark in its path cannot be used here";
        EXPECT_EQ(log.GetText(), "[CEditorHost::BrowseForFile] " + strFault + "\n");
        EXPECT_EQ(face.frontEnd.calls, Calls{"FrontEnd.MessageBox(" + strFault + ", 0x30)"});
        face.strChosen = "folder/a'b.png";
        EXPECT_EQ(host.BrowseForFile(FILE_DIALOG_OPEN, nullptr, "", "data", ""), face.strChosen);
    }
    EXPECT_EQ(&GetFrontEnd(), &before);
    EXPECT_TRUE(ReportProgress("Work", 0.75F));
}

TEST_F(CEditorHostTest, CountsWhatARecordTakesFromWhatTheTerrainReports)
{
    constexpr size_t SQUARE_BYTES = size_t{16} * 16 * 9; // vertices of a square, bytes of a vertex
    ASSERT_TRUE(m_Host.NewLevel(100, {100.0F, 50.0F, 100.0F}));
    m_Host.GetUndoStack().SetLimit(3 * SQUARE_BYTES);
    const auto stroke = [this](int nSquares)
    {
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        for (int i = 0; i < nSquares; ++i)
        {
            const SBlockEntry entry = {static_cast<float>(16 * i), 5.0F, 1.0F};
            m_Host.GetEngine().GetWorld()->GetTerrain()->SetBlockHeights(0, 0, &entry, 1);
            m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {}, {});
            m_Host.GetEngine().GetWorld()->GetTerrain()->SetBlockHeights(0, 0, &entry, 1);
        }
        m_Host.AddUndo(new CStep);
        m_Host.GetInput().SendButtonUp(1, 0, {});
    };
    stroke(1); // a place that changes twice counts once
    stroke(2);
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 2U);
    stroke(1);
    EXPECT_EQ(m_Host.GetUndoStack().GetGivenUpCount(), 1U);
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 2U);
    stroke(3);
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 1U);
}

TEST_F(CEditorHostTest, ADragBelongsToItsViewAndGivesTheMouseBack)
{
    class CEvents : public IHostObserver
    {
    public:
        void OnEvent(const SHostEvent& event) override
        {
            constexpr const char* NAMES[] = {"press", "move", "release"};
            strEvents += NAMES[static_cast<int>(event.eKind)] + std::to_string(event.view) + " ";
        }

        std::string strEvents;
    };

    CFakeFrontEnd frontEnd;
    CEvents events;
    m_Host.GetObservers().Add(&events);
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.GetInput().SendMouseMove(2, 0, {}, {}, {}); // the cursor of another view hovers
    m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {}, {});
    m_Host.GetInput().SendButtonUp(2, 0, {});
    EXPECT_EQ(events.strEvents, "press1 move1 release1 ");
    EXPECT_FALSE(m_Host.GetInput().IsDragging());
    EXPECT_EQ(frontEnd.calls, (Calls{"FrontEnd.ReleaseCapture()"}));
    events.strEvents.clear();
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.GetInput().SendButtonDown(2, MOUSE_LEFT, {});
    m_Host.GetInput().EndDrag();
    m_Host.GetInput().EndDrag();
    m_Host.GetInput().SendButtonUp(2, 0, {});
    EXPECT_EQ(events.strEvents, "press1 release1 press2 release2 release2 ");
    EXPECT_EQ(frontEnd.calls.size(), 3U) << "once a drag";
    m_Host.GetObservers().Remove(&events);
}
