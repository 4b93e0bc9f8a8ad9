// The mark under the cursor tells what a press would do, in the editor's views.

#include "editor/view/CMarkOverlay.h"
#include "tests/editor/app/ToolKeysFixture.h"

#include <QDir>
#include <QPainter>
#include <QSlider>
#include <QStatusBar>

#include <algorithm>
#include <cmath>

namespace
{

class CToolMark : public CToolKeys
{
protected:
    static constexpr int COLUMNS = 4;
    static constexpr int WIDTH = 220;
    static constexpr int HEIGHT = 150;
    static constexpr int CAPTION = 22;

    void SetGround(const std::function<float(int x, int z)>& getHeight)
    {
        for (int i = 0; i < 33 * 33; ++i)
        {
            const float fHeight = getHeight(i % 33, i / 33);
            GetHost().GetEngine().GetCWorld().GetCTerrain()->SetRowHeights(
                static_cast<uint32_t>(i % 33), static_cast<uint32_t>(i / 33), &fHeight, 1);
        }
        m_Window->GetViews().FrameAll();
        Settle();
    }

    // The middle of the first view, where the cursor is, has the colour of that sign beside it. It
    // gets a place in the sheet.
    void Expect(EToolSign eSign, const char* pszCaption)
    {
        Settle();
        const QImage picture = GetView().grabFramebuffer();
        const QPoint middle = picture.rect().center();
        const SColor wanted = GetMarkColor(eSign);
        EXPECT_NEAR(picture.pixelColor(middle + QPoint(6, -6)).hsvHue(),
                    QColor::fromRgbF(wanted.r, wanted.g, wanted.b).hsvHue(),
                    24) // ground has a colour, too; those of signs are twice as far apart
            << pszCaption;
        const QPoint corner = middle - QPoint(WIDTH / 2, HEIGHT / 2);
        m_Cells.emplace_back(picture.copy(QRect(corner, QSize(WIDTH, HEIGHT))), pszCaption);
    }

    void Take(const char* pszKey, float fExtent = 100.0F)
    {
        Key(pszKey);
        Tools().SetBrushValue(EBrushValue::Extent, fExtent);
    }

    void ExpectWhatKeysMakeOfIt()
    {
        Take("4");
        Expect(EToolSign::Raise, "relative height, raises");
        Key("x");
        Expect(EToolSign::Lower, "relative height, lowers");
        Hold("shift");
        Expect(EToolSign::Neutral, "Shift held: smooths");
        LetGo("shift");
        Expect(EToolSign::Lower, "");
        m_Cells.pop_back();
        Key("x");
        Take("3");
        Expect(EToolSign::Neutral, "set height");
        Tools().SetBrushValue(EBrushValue::Amount, 90.0F);
        Hold("r");
        Expect(EToolSign::RaiseOnly, "R: only raises");
        LetGo("r");
        Tools().SetBrushValue(EBrushValue::Amount, 5.0F);
        Hold("t");
        Expect(EToolSign::LowerOnly, "T: only lowers");
        LetGo("t");
    }

    void ExpectRamp()
    {
        Take("6", 40.0F);
        Expect(EToolSign::Neutral, "ramp, before the press");
        MoveTo(GetView(), {0.35, 0.5});
        Do({"mousedown", "1"});
        MoveTo(GetView(), {0.45, 0.5});
        MoveTo(GetView(), {0.58, 0.48});
        Expect(EToolSign::Neutral, "ramp, while it is drawn");
        Do({"mouseup", "1"});
    }

    void ExpectParameters()
    {
        const std::pair<const char*, const char*> parameters[] = {
            {"power_modifier( 0.4 )", "power 0.4"},
            {"hardness( 0.6 )", "hardness 0.6"},
            {"vertical_distance( 9.0 )", "vertical distance 9"},
            {"mask( \"data/samples/stripes.png\" ) mask_enabled( 1 )", "a mask"}};
        for (const auto& [pszKeyword, pszCaption] : parameters)
        {
            TakeBrush("RelativeHeightFunction",
                      "m_Height",
                      "5",
                      std::string("extent( 100.0 )") + pszKeyword);
            MoveTo(GetView(), {0.49, 0.5});
            MoveTo(GetView(), {0.5, 0.5});
            Expect(EToolSign::Raise, pszCaption);
        }
    }

    // What paints looks the same.
    void ExpectPainting()
    {
        GetDialog()->show();
        Settle();
        Click(Item(2143));
        MoveTo(GetView(), {0.5, 0.5});
        Tools().SetBrushValue(EBrushValue::Extent, 100.0F);
        Item<QSlider>(2145).setSliderPosition(0); // the ground alone
        GetDialog()->hide();
        MoveTo(GetView(), {0.49, 0.5});
        MoveTo(GetView(), {0.5, 0.5});
        Expect(EToolSign::Neutral, "painting");
        const auto* pBrush = m_Window->findChild<QLabel*>("status-brush");
        EXPECT_EQ(pBrush->text().toStdString(), "Set, brush 100.0");
    }

    void SaveSheet()
    {
        const int nRows = (static_cast<int>(m_Cells.size()) + COLUMNS - 1) / COLUMNS;
        QImage sheet(COLUMNS * WIDTH, nRows * (HEIGHT + CAPTION), QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        for (int i = 0; i < static_cast<int>(m_Cells.size()); ++i)
        {
            const QPoint at(i % COLUMNS * WIDTH, i / COLUMNS * (HEIGHT + CAPTION));
            painter.drawImage(at, m_Cells[static_cast<size_t>(i)].first);
            painter.drawText(QRect(at + QPoint(0, HEIGHT), QSize(WIDTH, CAPTION)),
                             Qt::AlignCenter,
                             m_Cells[static_cast<size_t>(i)].second);
        }
        painter.end();
        QDir().mkpath("pictures");
        EXPECT_TRUE(sheet.save("pictures/marks.png"));
    }

    std::vector<std::pair<QImage, QString>> m_Cells;
};

} // namespace

TEST_F(CToolMark, TellsEachToolAndWhatTheKeysMakeOfIt)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    GetDialog()->hide();
    m_Window->activateWindow();
    SetGround(
        [](int x, int z)
        {
            const auto fAway = static_cast<float>((x - 12) * (x - 12) + (z - 16) * (z - 16));
            return 20.0F + 25.0F * std::exp(-fAway / 40.0F);
        });
    MoveTo(GetView(), {0.5, 0.5});
    ExpectWhatKeysMakeOfIt();
    const std::pair<const char*, const char*> neutral[] = {
        {"1", "blur"}, {"2", "point height"}, {"5", "posterize"}};
    for (const auto& [pszKey, pszCaption] : neutral)
    {
        Take(pszKey);
        Expect(EToolSign::Neutral, pszCaption);
    }
    ExpectRamp();
    ExpectParameters();
    ExpectPainting();
    SaveSheet();
}

// The strip is as wide as the ground that the release then changes.
TEST_F(CToolMark, OfARampIsTheGroundThatItChanges)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RampFunction", "m_SideInterpolation", "0.5"));
    SetGround([](int x, int z) { return 20.0F + 15.0F * static_cast<float>((x * 7 + z * 3) % 4); });
    const std::vector<float> before = GetHeights();
    CViewWidget& view = GetView(1);
    MoveTo(view, {0.3, 0.4});
    Do({"mousedown", "1"});
    MoveTo(view, {0.5, 0.5});
    MoveTo(view, {0.7, 0.55});
    Settle();
    const QImage picture = view.grabFramebuffer();
    Do({"mouseup", "1"});
    const std::vector<float> after = GetHeights();
    int nChanged = 0;
    int nWrong = 0;
    for (size_t i = 0; i < after.size(); ++i)
    {
        const SVec3 vertex = {
            static_cast<float>(i % 33) * 10.0F, before[i], static_cast<float>(i / 33) * 10.0F};
        float fX = 0.0F;
        float fY = 0.0F;
        ASSERT_TRUE(view.GetNavigator().GetProjection(GetTerrain()).Project(vertex, fX, fY));
        if (i % 33 == 0 || i % 33 == 32 || i / 33 == 0 || i / 33 == 32) // the sky is beside them
        {
            continue;
        }
        const QColor color = picture.pixelColor(static_cast<int>(fX), static_cast<int>(fY));
        const bool bChanged = after[i] != before[i];
        nChanged += bChanged ? 1 : 0;
        nWrong += (color.green() > color.red() + 4) != bChanged ? 1 : 0;
    }
    EXPECT_GT(nChanged, 60);
    EXPECT_LE(nWrong, nChanged / 20) << "of " << nChanged; // where the tool's own lines are
}

// What brings no move of the mouse: another level, and views of another size.
TEST_F(CToolMark, StandsUnderTheCursorOrNowhere)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RampFunction", "m_SideInterpolation", "0.5"));
    CViewWidget& view = GetView(1);
    const auto countLines = [&] // of the ramp, which are white
    {
        Settle();
        const QImage picture = view.grabFramebuffer().convertToFormat(QImage::Format_RGB32);
        int nWhite = 0;
        for (int y = 0; y < picture.height(); ++y)
        {
            const auto* pRow = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
            nWhite +=
                static_cast<int>(std::count(pRow, pRow + picture.width(), qRgb(0xFF, 0xFF, 0xFF)));
        }
        return nWhite;
    };
    MoveTo(view, {0.5, 0.5});
    EXPECT_GT(countLines(), 100);
    MoveTo(*m_Window->statusBar(), {0.5, 0.5});
    EXPECT_EQ(countLines(), 0);
    ASSERT_TRUE(GetHost().NewLevel(32, {320.0F, 100.0F, 320.0F}));
    EXPECT_EQ(countLines(), 0) << "another level";

    MoveTo(view, {0.3, 0.5});
    m_Window->resize(m_Window->width() - 160, m_Window->height() - 80);
    Settle();
    SVec3 at;
    ASSERT_TRUE(view.GetInput().FindMark(at));
    float fX = 0.0F;
    float fY = 0.0F;
    ASSERT_TRUE(view.GetNavigator().GetProjection(GetTerrain()).Project(at, fX, fY));
    const QPointF cursor = QPointF(view.mapFromGlobal(QCursor::pos())) * view.devicePixelRatioF();
    EXPECT_NEAR(static_cast<double>(fX), cursor.x(), 2.0);
    EXPECT_NEAR(static_cast<double>(fY), cursor.y(), 2.0);
    EXPECT_GT(countLines(), 100) << "so do the tool's own lines";
}
