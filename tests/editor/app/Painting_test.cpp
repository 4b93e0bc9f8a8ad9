// The terrain-type bitmap painted in the editor with the mouse and the keys of an X server.

#include "editor/app/CMessagesDock.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/IPluginPainting.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tests/editor/app/PaintingFixture.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPalette>
#include <QSlider>
#include <QWindow>

TEST_F(CPainting, AStrokeIsSavedAsItsReplayPaintsIt)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    const std::string strScript = m_Folder.Path("stroke.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    EXPECT_FALSE(IsChecked(2143));
    Click(Item(2143)); // "Edit"
    EXPECT_TRUE(IsChecked(2143));
    EXPECT_EQ(GetHost().GetCaption(), "Edit terrain type");
    const std::vector<uint8_t> before = GetTexels();

    const uint64_t uRevision = GetHost().GetCPaintLayer().GetRevision();
    Drag(GetView(), {0.35, 0.45}, {0.6, 0.6});
    EXPECT_NE(GetTexels(), before);
    EXPECT_NE(GetHost().GetCPaintLayer().GetRevision(), uRevision);
    SavePicture("painting");
    Click(Item(2147 + 2)); // blue
    TypeInto(2108, "0.6");
    Drag(GetView(), {0.55, 0.4}, {0.4, 0.6});
    const std::vector<uint8_t> painted = GetTexels();

    Click(Item(2117)); // "Undo"
    EXPECT_NE(GetTexels(), painted);
    EXPECT_NE(GetTexels(), before);
    Click(Item(2117));
    EXPECT_EQ(GetTexels(), before);
    Click(Item(2118)); // "Redo"
    Click(Item(2118));
    EXPECT_EQ(GetTexels(), painted);
    EXPECT_EQ(GetDialog()->windowHandle()->transientParent(), m_Window->windowHandle())
        << "it stays in front";

    // The script knows nothing of these steps, so the next stroke begins with the bitmap as it is.
    Click(Item(2176)); // "Mul"
    Click(Item(2164)); // red alone
    Drag(GetView(), {0.3, 0.5}, {0.5, 0.5}, 4);
    Click(Item(2156)); // "Save"
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());

    // The stroke as the script has it, through the headless host, into a file of the same kind.
    std::string strText = ReadBytes(strScript) + "save_bitmap( \"replayed.png\" )\n";
    WriteBytes(strScript, strText);
    EXPECT_NE(ReplayScript(strScript, m_Folder.Path("replayed.height")), "");
    const std::string strSaved = ReadWithAnotherProgram(m_Bitmap);
    ASSERT_EQ(strSaved.size(), size_t{SIDE} * SIDE * 3);
    EXPECT_TRUE(strSaved == ReadWithAnotherProgram(m_Folder.Path("replayed.png"))) << strText;
    EXPECT_GT(CountRed(strSaved), 20U);
    EXPECT_TRUE(fs::exists(m_Folder.Path("stroke.2.png").c_str()));
    EXPECT_FALSE(fs::exists(m_Folder.Path("stroke.3.png").c_str()));

    Click(Item(2143));
    EXPECT_FALSE(IsChecked(2143));
    EXPECT_EQ(GetHost().GetCPaintLayer().GetImage(), nullptr);
    EXPECT_EQ(GetHost().GetModes().GetCurrentModeId(), -1);
}

TEST_F(CPainting, UndoTakesBackWhatWasDoneLastBeItNoStroke)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    Click(Item(2143)); // "Edit"
    const std::vector<uint8_t> before = GetTexels();
    Drag(GetView(), {0.35, 0.45}, {0.6, 0.6});
    const std::vector<uint8_t> painted = GetTexels();
    Trigger("protection.invert");
    Trigger("edit.undo");
    EXPECT_FALSE(GetHost().GetProtection().IsAny());
    EXPECT_EQ(GetTexels(), painted);
    Trigger("edit.redo");
    EXPECT_TRUE(GetHost().GetProtection().IsAny());
    Trigger("edit.undo");
    Trigger("edit.undo");
    EXPECT_EQ(GetTexels(), before);
}

TEST_F(CPainting, TheViewShowsTheStrokeAndTheBrushAtOnce)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    Click(Item(2143));
    Item<QSlider>(2145).setSliderPosition(100); // the bitmap alone
    Click(Item(2147));                          // red
    MoveTo(GetView(), {0.1, 0.1});
    Settle();
    const auto look = [this](double fX, double fY)
    {
        Settle();
        const QImage picture = GetView().grabFramebuffer();
        return picture.pixelColor(static_cast<int>(fX * picture.width()),
                                  static_cast<int>(fY * picture.height()));
    };
    EXPECT_LT(look(0.5, 0.55).red(), 150);
    Drag(GetView(), {0.45, 0.55}, {0.55, 0.55});
    MoveTo(GetView(), {0.1, 0.1});
    const QColor painted = look(0.5, 0.55);
    EXPECT_GT(painted.red(), 200);
    EXPECT_LT(painted.green(), 80);
    Click(Item(2163)); // red is not shown any more
    MoveTo(GetView(), {0.1, 0.1});
    EXPECT_LT(look(0.5, 0.55).red(), 80);
    Click(Item(2161)); // all are again

    const QImage without = GetView().grabFramebuffer();
    MoveTo(GetView(), {0.5, 0.5});
    Settle();
    EXPECT_NE(GetView().grabFramebuffer(), without) << "the outline of the brush";
    SavePicture("painting-outline");
    Click(Item(2117));
    MoveTo(GetView(), {0.1, 0.1});
    EXPECT_LT(look(0.5, 0.55).red(), 150);
}

TEST_F(CPainting, WhatIsSavedIsWhatTheLevelShowsAfterwards)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        m_Folder.Path("flat.height").c_str(), nullptr, 0, 0));
    WriteBytes(m_Folder.Path("flat.level"),
               "!height_map( s )\n!terrain_size( v3 )\n!terrain_bitmap( s )\n"
               "height_map( \"flat.height\" )\nterrain_bitmap( \"" +
                   m_Bitmap + "\" )\n");
    ASSERT_TRUE(m_Window->GetDocuments().OpenFile(m_Folder.Path("flat.level")));
    GetDialog()->activateWindow();
    MoveTo(GetView(), {0.1, 0.1});
    Settle();
    const auto look = [this]
    {
        Settle();
        const QImage picture = GetView().grabFramebuffer();
        const QColor color = picture.pixelColor(picture.width() / 2, picture.height() * 55 / 100);
        return color.red() - color.green();
    };
    EXPECT_LT(look(), 30);
    for (const bool bSave : {false, true})
    {
        Click(Item(2143));
        Drag(GetView(), {0.45, 0.55}, {0.55, 0.55});
        if (bSave)
        {
            Click(Item(2156));
        }
        Click(Item(2143)); // the level's own picture is shown again
        MoveTo(GetView(), {0.1, 0.1});
        EXPECT_EQ(look() > 60, bSave) << look();
    }
}

TEST_F(CPainting, TheDialogIsAlignedAndItsNumbersFitUnderTheCursorsScale)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    Click(Item(2143));
    const auto right = [this](int iId)
    {
        return Item(iId).geometry().right();
    };
    const auto left = [this](int iId)
    {
        return Item(iId).geometry().left();
    };
    for (const int iId : {2134, 2185, 2157, 2184})
    {
        EXPECT_EQ(left(iId), left(2146)) << iId << ": one column of controls";
    }
    EXPECT_EQ(right(2134), right(2185));
    EXPECT_EQ(right(2134), right(2146));
    EXPECT_EQ(right(2141), right(2181));
    for (int iId = 2163; iId <= 2169; iId += 2)
    {
        EXPECT_EQ(left(iId), left(2161)) << iId;
        EXPECT_EQ(left(iId + 1), left(2162)) << iId;
    }
    for (int iId = 2147; iId <= 2155; ++iId)
    {
        const QWidget& swatch = Item(iId);
        EXPECT_LE(swatch.fontMetrics().horizontalAdvance("255, 255, 255"), swatch.width()) << iId;
        EXPECT_LE(swatch.fontMetrics().height(), swatch.height()) << iId;
    }
    const QPalette light = QApplication::palette();
    const QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    const std::string strScale = std::to_string(qRound(m_Window->devicePixelRatioF() * 100));
    for (const bool bDark : {false, true})
    {
        QApplication::setPalette(bDark ? dark : light);
        Settle();
        QDir().mkpath("pictures");
        EXPECT_TRUE(GetDialog()->grab().save(QString("pictures/draw-dialog-%1-%2.png")
                                                 .arg(strScale.c_str(), bDark ? "dark" : "light")));
    }
    // Which buttons are on is seen on any ground.
    EXPECT_EQ(IsChecked(2143), true);
    const QImage off = Item(2117).grab().toImage();
    const QImage on = Item(2143).grab().toImage();
    const auto apart = [](const QColor& a, const QColor& b)
    {
        return std::abs(a.red() - b.red()) + std::abs(a.blue() - b.blue());
    };
    EXPECT_GT(apart(on.pixelColor(8, 8), off.pixelColor(8, 8)), 60);
    QApplication::setPalette(light);
}

TEST_F(CPainting, StrokesInNoFileAreAskedForBeforeAnotherBitmapIsRead)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    const std::string strBefore = ReadBytes(m_Bitmap);
    const std::string strOther = m_Folder.Path("other.png");
    const std::string strBroken = m_Folder.Path("broken.png");
    std::filesystem::copy_file(m_Bitmap, strOther);
    WriteBytes(strBroken, "no picture");
    const auto paint = [this]
    {
        Click(Item(2143));
        Drag(GetView(), {0.4, 0.5}, {0.6, 0.5}, 4);
        Click(Item(2143));
        EXPECT_FALSE(IsChecked(2143));
    };
    // "Edit" with a file while the strokes of another are in no file.
    const auto edit = [this](const std::string& strFile, QMessageBox::StandardButton eAnswer)
    {
        std::string strAsked;
        TypeInto(2140, strFile.c_str());
        Answer<QMessageBox>([this] { Click(Item(2143)); },
                            [&](QMessageBox& box)
                            {
                                strAsked = box.text().toStdString();
                                Click(*box.button(eAnswer));
                            });
        return strAsked;
    };
    paint();
    const std::string strQuestion = "Save the changes of " + m_Bitmap + "?";
    EXPECT_EQ(edit(strBroken, QMessageBox::Cancel), strQuestion);
    EXPECT_FALSE(IsChecked(2143));
    EXPECT_EQ(m_Editor->FindInterface<IPluginPainting>()->GetUnsavedBitmap(), m_Bitmap);
    EXPECT_EQ(ReadBytes(m_Bitmap), strBefore);
    EXPECT_EQ(edit(strOther, QMessageBox::Save), strQuestion);
    EXPECT_TRUE(IsChecked(2143));
    EXPECT_GT(CountRed(ReadWithAnotherProgram(m_Bitmap)), 0U);
    EXPECT_EQ(ReadBytes(strOther), strBefore);

    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5}, 4);
    Click(Item(2143));
    EXPECT_EQ(edit(strBroken, QMessageBox::Discard), "Save the changes of " + strOther + "?");
    EXPECT_EQ(ReadBytes(strOther), strBefore);
    EXPECT_EQ(m_Window->GetMessages().GetLastLine().toStdString(),
              strBroken +
                  " could not be read, nothing can be painted: it is read again when Edit is "
                  "switched on with another bitmap and then with this one");
    std::filesystem::copy_file(
        strOther, strBroken, std::filesystem::copy_options::overwrite_existing);
    Click(Item(2143));
    for (const std::string& strFile : {strOther, strBroken}) // without a question
    {
        TypeInto(2140, strFile.c_str());
        Click(Item(2143));
        EXPECT_TRUE(IsChecked(2143));
        EXPECT_NE(GetHost().GetCPaintLayer().GetImage(), nullptr) << strFile;
        Click(Item(2143));
    }
}

TEST_F(CPainting, KeysWorkTheDialogAndTakeBackAStroke)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    Click(Item(2158));
    for (int i = 0; i < 40 && QApplication::focusWidget() != &Item(2143); ++i)
    {
        Key("Tab");
    }
    ASSERT_EQ(QApplication::focusWidget(), &Item(2143));
    Key("space");
    EXPECT_TRUE(IsChecked(2143));
    const std::vector<uint8_t> before = GetTexels();

    // Escape in the middle of a stroke takes it back and keeps the mode.
    MoveTo(GetView(), {0.4, 0.5});
    Do({"mousedown", "1"});
    MoveTo(GetView(), {0.5, 0.5});
    EXPECT_NE(GetTexels(), before);
    GetView().setFocus();
    Key("Escape");
    EXPECT_EQ(GetTexels(), before);
    Do({"mouseup", "1"});
    EXPECT_EQ(GetTexels(), before);
    EXPECT_TRUE(IsChecked(2143));

    // Keys of undo take back what is being painted, and leave the heights.
    const size_t nHeightSteps = GetHost().GetUndoStack().GetCount();
    Drag(GetView(), {0.3, 0.4}, {0.5, 0.4}, 3);
    const std::vector<uint8_t> stroke = GetTexels();
    EXPECT_NE(stroke, before);
    GetView().setFocus();
    Key("ctrl+z");
    EXPECT_EQ(GetTexels(), before);
    Key("ctrl+shift+z");
    EXPECT_EQ(GetTexels(), stroke);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), nHeightSteps);

    // Another mode leaves the painting, a level that closes does it no harm.
    Drag(GetView(), {0.45, 0.5}, {0.55, 0.55});
    const std::vector<uint8_t> painted = GetTexels();
    TakeBrush();
    EXPECT_FALSE(IsChecked(2143));
    EXPECT_FALSE(Item(2171).isEnabled());
    Click(Item(2143));
    EXPECT_EQ(GetTexels(), painted);
    GetHost().GetEngine().GetCWorld().CloseTerrain();
    Drag(GetView(), {0.45, 0.5}, {0.55, 0.55});
    EXPECT_EQ(GetTexels(), painted);
    Click(Item(2158));
    Key("Escape");
    EXPECT_FALSE(GetDialog()->isVisible());
}

namespace
{

// Weak dabs of red from above, each out of reach of the others.
class CPaintedDabs : public CPainting
{
protected:
    void StartDabs()
    {
        ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
        Click(Item(2143));
        Click(Item(2147));
        TypeInto(2108, "0.3");
        GetDialog()->hide();
        m_Window->activateWindow();
        m_Window->GetSettings().input.iSpacingPercent = 150;
        ClickAt(0.35);
        GetView(1).setFocus();
        Key("ctrl+z");
        m_Before = GetTexels();
    }

    void ClickAt(double fX)
    {
        MoveTo(GetView(1), {fX, 0.5});
        Do({"click", "1"});
    }

    // How far the texels of a half are from what they were, all together.
    int GetChange(bool bRight)
    {
        const std::vector<uint8_t> texels = GetTexels();
        const size_t nRow = texels.size() / SIDE;
        int iChange = 0;
        for (size_t i = 0; i < texels.size(); ++i)
        {
            iChange += (i % nRow >= nRow / 2) == bRight ? std::abs(texels[i] - m_Before[i]) : 0;
        }
        return iChange;
    }

    std::vector<uint8_t> m_Before;
};

} // namespace

TEST_F(CPaintedDabs, APressHasItsImagesAndJointsAndPathsBeginWithIt)
{
    ASSERT_NO_FATAL_FAILURE(StartDabs());
    Key("F7");
    Drag(GetView(1), {0.35, 0.5}, {0.45, 0.5}, 3); // not as far as the next dab
    const int iOnce = GetChange(false);
    EXPECT_GT(iOnce, 1000);
    EXPECT_NEAR(GetChange(true), iOnce, iOnce / 20);
    Key("F7");
    Key("ctrl+z");
    ClickAt(0.35);
    ClickAt(0.35);
    const int iTwice = GetChange(false);
    EXPECT_GT(iTwice, iOnce + iOnce / 4) << "they add up";
    Key("ctrl+z");
    Do({"keydown", "space"}); // from the end of the last one
    ClickAt(0.7);
    Do({"keyup", "space"});
    EXPECT_EQ(GetChange(false), iTwice);
    EXPECT_GT(GetChange(true), 1000);
    Key("ctrl+z");

    GetView(1).GetInput().GetStroke().SetPressure(0.1F); // of a pen
    ClickAt(0.7);
    Key("ctrl+z");
    Key("ctrl+z");
    EXPECT_EQ(GetTexels(), m_Before);
    Key("k");
    ClickAt(0.35);
    ClickAt(0.7);
    Key("Return");
    EXPECT_EQ(GetChange(false), iOnce) << "with full power";
    EXPECT_GT(GetChange(true), 1000);
}
