// The colours of the draw dialog and the dialog with the colours of a palette.

#include "tellur/painting/CPaletteColorDlg.h"
#include "tests/tellur/painting/PaintingFixture.h"

#include <QDialog>
#include <QTimer>

namespace
{

constexpr uint32_t FIRST = DRAW_FIRST_COLOR;

// Red, green and blue, then what a fourth or undefined entry would be.
const std::vector<uint8_t> PALETTE = {250, 0, 0, 0, 240, 0, 0, 0, 230};

class CDialogColors : public CPaintingFixture
{
protected:
    // The colour in the middle of a swatch, above its numbers.
    QColor Look(uint32_t uId) { return Find(uId)->grab().toImage().pixelColor(3, 3); }

    void DoubleClick(uint32_t uId)
    {
        QTest::mouseClick(Find(uId), Qt::LeftButton);
        QTest::mouseDClick(Find(uId), Qt::LeftButton);
    }

    // What one stroke of full strength makes of a texel.
    Texel Paint()
    {
        Stroke({{40, 0, 40}});
        return At(3, 3);
    }

    // Answers the palette dialog that an action opens: a click at a place of its colours, then one
    // of its buttons.
    void WithPaletteDialog(const std::function<void()>& action, QPoint at, uint32_t uButton)
    {
        QTimer timer;
        timer.setSingleShot(true);
        bool bAnswered = false;
        timer.callOnTimeout(
            [&]
            {
                auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                ASSERT_NE(pDialog, nullptr);
                auto* pColors = pDialog->findChild<QWidget*>("3");
                ASSERT_NE(pColors, nullptr);
                m_Colors = pColors->geometry();
                m_Picture = pColors->grab().toImage();
                QTest::mouseClick(pColors, Qt::LeftButton, Qt::NoModifier, at);
                m_PictureAfter = pColors->grab().toImage();
                QTest::mouseClick(pDialog->findChild<QWidget*>(QString::number(uButton)),
                                  Qt::LeftButton);
                bAnswered = true;
            });
        timer.start(0);
        action();
        EXPECT_TRUE(bAnswered);
    }

    QRect m_Colors;
    QImage m_Picture;
    QImage m_PictureAfter;
};

} // namespace

TEST_F(CDialogColors, EightPlainColoursWaitForABitmapWithoutPalette)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    const QColor expected[] = {
        Qt::red, Qt::green, Qt::blue, Qt::yellow, Qt::magenta, Qt::cyan, Qt::black, Qt::white};
    for (uint32_t i = 0; i < 8; ++i)
    {
        EXPECT_EQ(Look(FIRST + i), expected[i]) << i;
        Click(FIRST + i);
        EXPECT_EQ(Look(DRAW_CURRENT_COLOR), expected[i]) << i;
        EXPECT_EQ(Paint(),
                  (Texel{expected[i].red(), expected[i].green(), expected[i].blue(), 255}));
    }
    // Another function takes the colour along.
    Click(FIRST + 3);
    Click(DRAW_MUL);
    Paint();
    EXPECT_EQ(Paint(), (Texel{255, 255, 0, 255}));
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CDialogColors, TheChooserGivesWholeColours)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    m_FrontEnd.uChosenColor = 0x030201;
    DoubleClick(FIRST + 1);
    EXPECT_EQ(Look(FIRST + 1), QColor(1, 2, 3));
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(1, 2, 3));
    EXPECT_EQ(Paint(), (Texel{1, 2, 3, 255}));
    m_FrontEnd.uChosenColor = 0x302010;
    Click(DRAW_CURRENT_COLOR);
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(16, 32, 48));
    EXPECT_EQ(Look(FIRST + 1), QColor(1, 2, 3));
    EXPECT_EQ(Paint(), (Texel{16, 32, 48, 255}));
    Edit();
    Edit();
    EXPECT_EQ(Look(FIRST + 1), QColor(1, 2, 3)) << "another bitmap of the same kind keeps them";
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(16, 32, 48));
    const float half[] = {0.5F, 0.5F, 0.5F, 0.25F};
    Dialog().ChooseColor(half);
    m_FrontEnd.uChosenColor = 0xFFFFFFFF; // cancelled
    Click(DRAW_CURRENT_COLOR);
    EXPECT_EQ(Dialog().GetCurrentColor()[3], 0.25F);
    EXPECT_EQ(Dialog().GetCurrentColor()[0], 0.5F);
}

TEST_F(CDialogColors, SwatchesShowTheChannelsThatAreEdited)
{
    ASSERT_NO_FATAL_FAILURE(OpenDialog());
    Edit();
    Click(FIRST + 7); // white
    const std::pair<uint32_t, QColor> shown[] = {{0x1FF, Qt::white},
                                                 {0x019, Qt::red},
                                                 {0x601, Qt::red},
                                                 {0x061, Qt::green},
                                                 {0x181, Qt::blue},
                                                 {0x0AB, Qt::black}};
    for (const auto& [uMask, color] : shown)
    {
        Dialog().ChooseChannelMask(uMask);
        EXPECT_EQ(Look(DRAW_CURRENT_COLOR), color) << uMask;
    }
}

TEST_F(CDialogColors, APaletteGivesItsFirstEntriesAndNoOthers)
{
    ASSERT_NO_FATAL_FAILURE(WritePaletted("palette.png", PALETTE, 0));
    ASSERT_NO_FATAL_FAILURE(OpenDialog("palette.png"));
    Edit();
    EXPECT_EQ(Look(FIRST), QColor(250, 0, 0));
    EXPECT_EQ(Look(FIRST + 1), QColor(0, 240, 0));
    EXPECT_EQ(Look(FIRST + 2), QColor(0, 0, 230));
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(250, 0, 0));
    const QImage undefined = Find(FIRST + 3)->grab().toImage();
    EXPECT_EQ(undefined.pixelColor(0, 0), QColor(Qt::black)) << "crossed out";
    EXPECT_EQ(undefined.pixelColor(undefined.width() / 2, 1), QColor(128, 128, 128));
    Click(FIRST + 3);
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(250, 0, 0)) << "there is none to take";
    Click(FIRST + 2);
    EXPECT_EQ(Paint(), (Texel{0, 0, 230, 255}));

    // The chooser of a palette: cells of 20 x 20 pixels and a line between them.
    WithPaletteDialog([&] { Click(DRAW_CURRENT_COLOR); }, {21 + 10, 10}, 1);
    EXPECT_EQ(m_Colors, QRect(2, 2, 337, 337));
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(0, 240, 0));
    EXPECT_EQ(Paint(), (Texel{0, 240, 0, 255}));
    WithPaletteDialog([&] { DoubleClick(FIRST + 3); }, {10, 10}, 1);
    EXPECT_EQ(Look(FIRST + 3), QColor(250, 0, 0)) << "an undefined button takes one";
    WithPaletteDialog([&] { Click(DRAW_CURRENT_COLOR); }, {10, 10}, 2);
    EXPECT_EQ(Paint(), (Texel{250, 0, 0, 255})) << "from before, the dialog was cancelled";

    // Back to a bitmap without one.
    Edit();
    Type(DRAW_BITMAP_FILE, "types.png");
    Edit();
    EXPECT_EQ(Look(FIRST + 3), QColor(Qt::yellow));
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(Qt::red));
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CDialogColors, ThePaletteDialogDrawsAGridAndTheSelectionLarger)
{
    std::vector<uint8_t> colors;
    for (int i = 0; i < 40; ++i)
    {
        colors.insert(colors.end(), {static_cast<uint8_t>(i), 100, 200});
    }
    ASSERT_NO_FATAL_FAILURE(WritePaletted("palette.png", colors, 0));
    ASSERT_NO_FATAL_FAILURE(OpenDialog("palette.png"));
    Edit();
    // Right of the last column begins the next row.
    WithPaletteDialog([&] { Click(DRAW_CURRENT_COLOR); }, {336 + 1, 21 + 5}, 1);
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(32, 100, 200));
    WithPaletteDialog([&] { Click(DRAW_CURRENT_COLOR); }, {2 * 21 + 20, 2 * 21 + 20}, 1);
    EXPECT_EQ(Look(DRAW_CURRENT_COLOR), QColor(34, 100, 200));

    const auto at = [&](int x, int y)
    {
        return m_Picture.pixelColor(x, y);
    };
    for (const int i : {0, 15, 16, 39})
    {
        const int x = i % 16 * 21 + 1;
        const int y = i / 16 * 21 + 1;
        const QColor color(i, 100, 200);
        EXPECT_EQ(at(x, y), color) << i;
        EXPECT_EQ(at(x + 19, y + 19), color) << i;
        EXPECT_NE(at(x + 20, y + 10), color) << i;
    }
    EXPECT_EQ(at(0, 42), QColor(32, 100, 200)) << "the selection reaches over the lines around it";
    EXPECT_EQ(at(21, 62), QColor(32, 100, 200));
    EXPECT_EQ(at(42, 42), QColor(Qt::black)) << "dotted from the first pixel on";
    EXPECT_EQ(at(42, 0), QColor(Qt::black));
    EXPECT_NE(at(42, 1), QColor(Qt::black));
    EXPECT_EQ(m_PictureAfter.pixelColor(2 * 21, 2 * 21), QColor(34, 100, 200));
    EXPECT_NE(m_PictureAfter.pixelColor(0, 42), QColor(32, 100, 200));
}
