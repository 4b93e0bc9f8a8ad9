// What the status bar says of what would otherwise be silent, by the mouse of an X server.

#include "editor/app/CStatusLine.h"
#include "editor/core/SProtectAct.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginBrushes.h"
#include "host/Image.h"
#include "tests/editor/app/DocumentsFixture.h"
#include "tests/editor/app/PaintingFixture.h"

#include <QLabel>
#include <QScrollArea>

#include <algorithm>

namespace
{

// Of the window, from here on: each line that is shown, joined by bars.
class CListener : public QObject
{
public:
    explicit CListener(QWidget& window)
        : m_pWords(window.findChild<QLabel*>("status-words"))
    {
        m_pWords->installEventFilter(this);
        m_pWords->setText("-");
    }

    // And forgets it. Each line takes the place of one that is still shown.
    std::string Take()
    {
        const std::string strText = m_pWords->text().toStdString();
        m_pWords->setText("-");
        return strText;
    }

    bool IsShown() const { return m_pWords->isVisible(); }

    const QLabel& GetLabel() const { return *m_pWords; }

private:
    QLabel* m_pWords;
};

class CStatusWordsTest : public CDocuments
{
protected:
    void StartListening()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        m_Words = std::make_unique<CListener>(*m_Window);
    }

    void SetHeights(const std::function<float(uint32_t)>& ofColumn)
    {
        std::vector<float> heights(33U * 33U);
        for (uint32_t i = 0; i < heights.size(); ++i)
        {
            heights[i] = ofColumn(i % 33);
        }
        GetHost().GetEngine().GetWorld()->GetTerrain()->SetHeights(
            heights.data(), heights.size(), {{0.0F, 0.0F, 0.0F}, {320.0F, 100.0F, 320.0F}});
        Settle();
    }

    // Where the top view shows that spot, as a share of its size.
    QPointF FindSpot(const SVec3& at)
    {
        const SViewProjection view = GetView(1).GetNavigator().GetProjection(GetTerrain());
        float fX = 0.0F;
        float fY = 0.0F;
        EXPECT_TRUE(view.Project(at, fX, fY));
        return {fX / static_cast<float>(view.iWidth), fY / static_cast<float>(view.iHeight)};
    }

    std::string WritePicture(const char* pszName, uint8_t uShade)
    {
        const std::vector<uint8_t> texels(size_t{16} * 16 * 3, uShade);
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(16, 16, EImageFormat::Rgb24, texels.data()));
        EXPECT_TRUE(IL_SaveImage(m_Folder.Path(pszName).c_str(), pImage.get(), nullptr));
        return m_Folder.Path(pszName);
    }

    // A stroke in the perspective view; what is said of it, and expects that no height changed.
    std::string DragIdly()
    {
        const std::vector<float> before = GetHeights();
        Drag(GetView(), {0.4, 0.5}, {0.6, 0.55});
        EXPECT_EQ(GetHeights(), before);
        EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U);
        return m_Words->Take();
    }

    std::unique_ptr<CListener> m_Words;
};

} // namespace

TEST_F(CStatusWordsTest, SaysForThreeSecondsThatThereIsNoToolAndMovesNoField)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    ASSERT_EQ(m_Window->width(), 1280);
    const auto getFields = [this]
    {
        QList<QRect> places;
        for (const QLabel* pField : m_Window->statusBar()->findChildren<QLabel*>())
        {
            places << (pField != &m_Words->GetLabel() ? pField->geometry() : QRect());
        }
        return places;
    };
    MoveTo(GetView(), {0.6, 0.5});
    const QList<QRect> before = getFields();
    Click(GetView());
    const QString strText = "No tool: choose one in the panel or press 1 to 6";
    EXPECT_EQ(m_Words->Take(), strText.toStdString());
    EXPECT_GE(m_Words->GetLabel().width(),
              m_Words->GetLabel().fontMetrics().horizontalAdvance(strText));
    EXPECT_TRUE(m_Window->statusBar()->rect().contains(m_Words->GetLabel().geometry()));
    Click(GetView());
    EXPECT_EQ(m_Words->Take(), strText.toStdString());
    ASSERT_TRUE(WaitFor([this] { return m_Words->IsShown(); }, "the words are shown"));
    SavePicture("status-words");
    EXPECT_EQ(getFields(), before);
    WaitFor([this] { return !m_Words->IsShown(); }, "the words go by themselves");

    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.55});
    EXPECT_EQ(m_Words->Take(), "-") << "a stroke that works needs no words";
    Key("ctrl+t");
    EXPECT_EQ(m_Words->Take(), "Relative height was put away");

    auto* pPanel = m_Window->findChild<QWidget*>("panel");
    if (!pPanel->isVisible())
    {
        Key("F6");
    }
    auto* pButton = pPanel->findChild<QWidget*>("2133");
    pPanel->findChild<QScrollArea*>()->ensureWidgetVisible(pButton);
    Settle();
    Click(*pButton);
    EXPECT_EQ(m_Words->Take(), "-");
    Click(GetView()); // two clicks in one place may be a double one
    m_Words->Take();
    Click(*pButton);
    EXPECT_EQ(m_Words->Take(), "Set height was put away");
}

TEST_F(CStatusWordsTest, InASmallWindowWordsHaveARowOfTheirOwnAndCoverNothing)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    m_Window->resize(900, 600);
    Settle();
    const QSize view = GetView().size();
    Click(GetView());
    EXPECT_EQ(m_Words->GetLabel().text(), "No tool: choose one in the panel or press 1 to 6");
    SavePicture("status-words-small");
    EXPECT_EQ(GetView().size(), view);
    for (const char* pszField : {"status-mode", "status-brush", "status-position"})
    {
        const auto& field = *m_Window->findChild<QLabel*>(pszField);
        EXPECT_TRUE(field.isVisible()) << pszField;
        EXPECT_FALSE(field.geometry().intersects(m_Words->GetLabel().geometry())) << pszField;
    }
}

TEST_F(CStatusWordsTest, SaysWhatOfTheBrushKeepsAPointFromChangingAnything)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    const std::string strBlack = WritePicture("black.png", 0);
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"power_modifier( 0.0 )", "5", "Nothing changed: the power of the brush is 0"},
        {"bitmap() { path( \"" + strBlack + "\" ) }",
         "5",
         "Nothing changed: the brush image is black here"},
        {"mask( \"" + strBlack + "\" ) mask_enabled( 1 )",
         "5",
         "Nothing changed: the mask is black here"},
        {"", "0", "Nothing changed: the tool has nothing to do with its numbers in the panel"},
        {"extent( -1.0 )", "5", "Nothing changed: the extent of the brush is not above 0"},
        {"extent( 1.0 )", "5", "Nothing changed: no vertex that can change lies under the brush"},
    };
    for (const auto& [strMore, strHeight, strSaid] : cases)
    {
        ASSERT_NO_FATAL_FAILURE(
            TakeBrush("RelativeHeightFunction", "m_Height", strHeight.c_str(), strMore));
        if (strMore == "extent( 1.0 )")
        {
            const std::vector<float> before = GetHeights();
            Drag(GetView(1), FindSpot({164.0F, 20.0F, 164.0F}), FindSpot({166.0F, 20.0F, 166.0F}));
            EXPECT_EQ(GetHeights(), before);
            EXPECT_EQ(m_Words->Take(), strSaid);
            continue;
        }
        EXPECT_EQ(DragIdly(), strSaid) << strMore;
    }
    ASSERT_NO_FATAL_FAILURE(TakeBrush("PosterizeFunction", "m_NumHeightDivisions", "-3"));
    EXPECT_EQ(DragIdly(), std::get<2>(cases[3]));
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RampFunction", "m_SideInterpolation", "1", "extent( 0.0 )"));
    EXPECT_EQ(DragIdly(), std::get<2>(cases[4]));
    EXPECT_EQ(m_Window->findChild<QLabel*>("status-brush")->text(), "Ramp, brush 0.0");
    ASSERT_NO_FATAL_FAILURE(TakeBrush("BlurFunction", "m_Mode", "0", "extent( 0.0 )"));
    Click(GetView()); // no point at all
    EXPECT_EQ(m_Words->Take(), std::get<2>(cases[4]));
    ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "20"));
    EXPECT_EQ(DragIdly(), "Nothing changed: the ground is already as the tool would make it");
    const std::vector<float> before = GetHeights();
    Click(GetView());
    EXPECT_EQ(m_Words->Take(), "Nothing changed: the ground is already as the tool would make it");
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RampFunction", "m_SideInterpolation", "1"));
    Click(GetView());
    EXPECT_EQ(m_Words->Take(), "No ramp: it begins and ends on one spot");
    EXPECT_EQ(GetHeights(), before);
}

TEST_F(CStatusWordsTest, SaysWhatOfTheGroundKeepsAPointFromChangingAnything)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    SetHeights([](uint32_t) { return 100.0F; });
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    EXPECT_EQ(DragIdly(), "Nothing changed: the ground is at its highest height, 100");
    SetHeights([](uint32_t) { return 0.0F; });
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RelativeHeightFunction", "m_Height", "-5"));
    EXPECT_EQ(DragIdly(), "Nothing changed: the ground is at its lowest height, 0");
    ASSERT_NO_FATAL_FAILURE(TakeBrush("PointHeightFunction", "none", "0"));
    Drag(GetView(), {0.5, 0.5}, {0.5, 0.6});
    EXPECT_EQ(m_Words->Take(), "Nothing changed: the ground is at its lowest height, 0");
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5});
    EXPECT_EQ(m_Words->Take(), "Nothing changed: this tool follows the mouse up and down");

    // Steep walls beside the cursor, which moves in the middle of their slope.
    const QPointF from = FindSpot({165.0F, 40.0F, 100.0F});
    const QPointF to = FindSpot({165.0F, 40.0F, 200.0F});
    SetHeights([](uint32_t uColumn) { return uColumn % 2 == 0 ? 20.0F : 60.0F; });
    const std::vector<float> walls = GetHeights();
    for (const char* pszFunction : {"RelativeHeightFunction", "BlurFunction"})
    {
        ASSERT_NO_FATAL_FAILURE(
            TakeBrush(pszFunction, "m_Height", "5", "vertical_distance( 8.0 )"));
        Drag(GetView(1), from, to);
        EXPECT_EQ(m_Words->Take(), "Nothing changed: no height within the vertical distance of 8")
            << pszFunction;
    }
    Drag(GetView(1), {0.005, 0.005}, {0.01, 0.01});
    EXPECT_EQ(m_Words->Take(), "No ground under the cursor");
    EXPECT_EQ(GetHeights(), walls);

    ASSERT_NO_FATAL_FAILURE(
        TakeBrush("RampFunction", "m_Mode", "mode_max", "vertical_distance( 3.0 )"));
    Drag(GetView(1), from, to);
    EXPECT_EQ(m_Words->Take(), "Nothing changed: no height within the vertical distance of 3");
    EXPECT_EQ(GetHeights(), walls);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U);
}

TEST_F(CStatusWordsTest, SaysEachReasonOnceInAStrokeAndAgainInTheNext)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    m_Window->GetSettings().input.bSampleStrokes = false;
    ASSERT_NO_FATAL_FAILURE(
        TakeBrush("RelativeHeightFunction", "m_Height", "5", "fade_factor( 60.0 )"));
    const std::string strFaded = "The stroke has faded out after 60";
    const auto go = [this](float fX)
    {
        MoveTo(GetView(1), FindSpot({fX, 20.0F, 160.0F}));
    };
    const std::vector<float> before = GetHeights();
    go(80.0F);
    Do({"mousedown", "1"});
    go(100.0F);
    const std::vector<float> after = GetHeights();
    EXPECT_NE(after, before);
    EXPECT_EQ(m_Words->Take(), "-") << "not yet";
    go(180.0F);
    EXPECT_EQ(m_Words->Take(), strFaded);
    go(200.0F);
    EXPECT_EQ(m_Words->Take(), "-") << "once";
    MoveTo(GetView(1), {0.005, 0.005});
    EXPECT_EQ(m_Words->Take(), "No ground under the cursor") << "another reason";
    Do({"mouseup", "1"});
    EXPECT_EQ(m_Words->Take(), "-");
    EXPECT_EQ(GetHeights(), after);
    Drag(GetView(1), FindSpot({80.0F, 20.0F, 60.0F}), FindSpot({180.0F, 20.0F, 60.0F}));
    EXPECT_EQ(m_Words->Take(), strFaded);

    // To and fro over one spot, which does not pile up.
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RelativeHeightFunction", "m_Height", "5"));
    go(80.0F);
    Do({"mousedown", "1"});
    for (const float fX : {100.0F, 105.0F, 100.0F, 180.0F}) // the third changes nothing
    {
        go(fX);
        EXPECT_EQ(m_Words->Take(), "-");
    }
    go(100.0F);
    const std::string strMost = "Nothing changes here: this stroke has done the most it can";
    EXPECT_EQ(m_Words->Take(), strMost);
    go(240.0F);
    Do({"mouseup", "1"});
    EXPECT_FALSE(m_Words->IsShown()) << "something did";
    Key("ctrl+z");
    go(80.0F); // there and back
    Do({"mousedown", "1"});
    for (const float fX : {100.0F, 180.0F, 100.0F})
    {
        go(fX);
    }
    EXPECT_EQ(m_Words->Take(), strMost);
    Do({"mouseup", "1"});
    EXPECT_FALSE(m_Words->IsShown());
}

TEST_F(CStatusWordsTest, JudgesAPathAndAStrokeWithItsImagesAsAWhole)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    const auto draw = [this](const std::vector<SVec3>& knots)
    {
        Key("k");
        for (const SVec3& knot : knots)
        {
            MoveTo(GetView(1), FindSpot(knot));
            Do({"click", "1"});
        }
        Key("Return");
        return m_Words->Take();
    };
    const std::vector<SVec3> closed = {{60.0F, 20.0F, 80.0F},
                                       {140.0F, 20.0F, 80.0F},
                                       {140.0F, 20.0F, 200.0F},
                                       {60.0F, 20.0F, 80.0F}};
    const std::string strSame = "Nothing changed: the ground is already as the tool would make it";
    Key("F7");
    // With a fade each image is a drag of its own.
    for (const char* pszMore : {"", "fade_factor( 9000.0 )"})
    {
        const std::string strMore = pszMore;
        const std::vector<float> before = GetHeights();
        ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "20", strMore, "disc"));
        EXPECT_EQ(draw(closed), strSame) << strMore;
        EXPECT_EQ(GetHeights(), before);
        ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "60", strMore, "disc"));
        EXPECT_EQ(draw(closed), "-") << strMore;
        EXPECT_NE(GetHeights(), before);
        Key("ctrl+z");
    }
    // From side to side: each point lies where an image has been.
    ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "60", "", "disc"));
    EXPECT_EQ(draw({{60.0F, 20.0F, 80.0F}, {260.0F, 20.0F, 80.0F}}), "-");
    Key("F7");
    // The first piece of a ramp is flat, the second leads up.
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RampFunction", "m_SideInterpolation", "1"));
    EXPECT_EQ(draw({{60.0F, 20.0F, 200.0F}, {160.0F, 20.0F, 200.0F}, {160.0F, 60.0F, 80.0F}}), "-");
    EXPECT_EQ(draw({{60.0F, 20.0F, 300.0F}, {160.0F, 20.0F, 300.0F}}), strSame);

    // An image changes what the hand must leave.
    const SProtectAct left = {EProtect::Disc, 80.0F, 240.0F, 60.0F};
    ASSERT_TRUE(GetHost().GetProtection().Do(left));
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    Key("F7");
    Drag(GetView(1), FindSpot({75.0F, 20.0F, 240.0F}), FindSpot({85.0F, 20.0F, 240.0F}));
    EXPECT_EQ(m_Words->Take(), "Nothing changes here: the ground is protected");
}

TEST_F(CStatusWordsTest, SaysWhatWasSavedHowLargeItIsAndHowLongItTook)
{
    ASSERT_NO_FATAL_FAILURE(StartListening());
    const auto expect = [this](const std::string& strFile, const std::string& strSize)
    {
        const std::string strWords = m_Words->Take();
        EXPECT_TRUE(strWords.starts_with(strFile + " saved: " + strSize) &&
                    strWords.ends_with(" s"))
            << strWords;
    };
    const std::string strLevel = SaveLevel();
    const auto uBytes = std::filesystem::file_size(strLevel) +
                        std::filesystem::file_size(m_Folder.Path("levels/valley.height"));
    const QString strSize = QString::number(static_cast<double>(uBytes) / 1000.0, 'f', 1);
    expect("valley.level", strSize.toStdString() + " KB in ");
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    Key("ctrl+s");
    expect("valley.level", strSize.toStdString() + " KB in ");
    ChooseFile([this] { Trigger("file.export_stl"); }, m_Folder.Path("valley.stl"));
    expect("valley.stl", "102.5 KB in ");
    ASSERT_TRUE(m_Editor->FindInterface<IPluginBrushes>()->SaveBrushes()); // as the panel's button
    expect("PredefinedBrushes.ini", "");
    std::filesystem::remove(m_Folder.Path("levels/valley.height"));
    std::filesystem::create_directories(m_Folder.Path("levels/valley.height/in the way"));
    Answer<QMessageBox>([this] { Key("ctrl+s"); }, [](QMessageBox& box) { box.reject(); });
    EXPECT_EQ(m_Words->Take(), "-") << "a message box has said it";
}

TEST_F(CPainting, TheStatusBarSaysThatTheBitmapIsSavedAndThatAStrokeMissesTheGround)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    CListener words(*m_Window);
    Click(Item(2143));
    Drag(GetView(1), {0.005, 0.005}, {0.01, 0.01});
    EXPECT_EQ(words.Take(), "No ground under the cursor");
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5}, 4);
    EXPECT_EQ(words.Take(), "-");
    Click(Item(2156)); // "Save"
    EXPECT_TRUE(words.Take().starts_with("types.png saved: "));
}
