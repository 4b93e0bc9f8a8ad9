// What the panel does for the terrain: its mask in the views, its resolution.

#include "engine/terrain/CTerrain.h"
#include "tests/editor/app/PanelFixture.h"

#include <QComboBox>
#include <QMessageBox>

#include <algorithm>
#include <cmath>

TEST_F(CPanel, TheViewsShowTheMaskWhileItActs)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RelativeHeightFunction",
                                      "m_Height",
                                      "5",
                                      "mask( \"data/samples/stripes.png\" ) mask_enabled( 1 )"));
    const auto countRed = [this](size_t iView)
    {
        const QImage picture = Grab(GetView(iView));
        int nRed = 0;
        for (int y = 0; y < picture.height(); ++y)
        {
            for (int x = 0; x < picture.width(); ++x)
            {
                const QColor color = picture.pixelColor(x, y);
                nRed += color.red() > color.green() + 40 ? 1 : 0;
            }
        }
        return nRed;
    };
    QWidget& box = Item(2194);
    m_Window->GetViews().RequestFrames(); // as after a script
    MoveTo(box, {0.5, 0.5});              // no brush on the ground
    const int anBefore[] = {countRed(0), countRed(1)};
    EXPECT_GT(anBefore[0], 1000);
    EXPECT_GT(anBefore[1], 1000);
    SavePicture("mask-on");
    Click(box);
    EXPECT_EQ(countRed(0), 0);
    EXPECT_EQ(countRed(1), 0);
    SavePicture("mask-off");
    Click(box);
    EXPECT_NEAR(countRed(0), anBefore[0], 200);
    EXPECT_NEAR(countRed(1), anBefore[1], 200);
}

// Also for a level that was never saved.
TEST_F(CPanel, AResolutionChosenInTheListIsTheTerrainsAndAStepOfTheHistory)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    auto& list = Item<QComboBox>(2138);
    CLevelDocument& document = m_Editor->GetDocument();
    for (const bool bSaved : {true, false})
    {
        SCOPED_TRACE(bSaved);
        ASSERT_TRUE(document.New(32, {320.0F, 100.0F, 320.0F}, 20.0F));
        ASSERT_TRUE(!bSaved || document.SaveAs(m_Folder.Path("hill.level").c_str()));
        EXPECT_EQ(list.currentText(), "33x33");
        list.setFocus();
        Answer<QMessageBox>([this] { Key("Down"); },
                            [this](QMessageBox& box)
                            {
                                EXPECT_EQ(box.text(),
                                          "Are You sure You want to change terrain resolution from "
                                          "33x33 to 65x65?");
                                Key("alt+y");
                            });
        const auto expectVertices = [&](uint32_t uVertices)
        {
            EXPECT_EQ(GetTerrain()->GetVerticesX(), uVertices);
            EXPECT_EQ(list.currentText(), QString("%1x%1").arg(uVertices));
        };
        expectVertices(65);
        EXPECT_TRUE(!bSaved || document.FindReplaced().empty()) << "nobody else has written it";
        EXPECT_EQ(std::filesystem::exists(m_Folder.Path("hill.height.bak")), bSaved);
        Answer<QMessageBox>([this] { Key("Down"); }, [this](QMessageBox&) { Key("Escape"); });
        expectVertices(65);
        EXPECT_TRUE(m_Window->isWindowModified());
        Trigger("edit.undo");
        Settle();
        expectVertices(33);
        EXPECT_EQ(m_Window->isWindowModified(), bSaved) << "the file has the new size";
        Trigger("edit.redo");
        Settle();
        expectVertices(65);
        EXPECT_TRUE(m_Window->windowTitle().startsWith(bSaved ? "hill.level" : "Untitled"));
        std::filesystem::remove(m_Folder.Path("hill.height.bak"));
    }
}

TEST_F(CPanel, TheRangeOfTheExtentSuitsGroundOfAnotherSize)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    const auto& most = Item<QLineEdit>(2199);
    EXPECT_EQ(most.text().toFloat(), 32.0F) << "a tenth of the level";
    ASSERT_TRUE(GetHost().GetGround().Do({.eKind = EGround::Extend, .iEast = 32}));
    EXPECT_EQ(most.text().toFloat(), 64.0F);
    GetHost().Undo();
    EXPECT_EQ(most.text().toFloat(), 32.0F);
}
