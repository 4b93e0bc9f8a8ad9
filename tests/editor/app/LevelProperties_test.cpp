// Level > Properties by mouse and keyboard: what it says before, what it does, and what a person
// who thinks better of it leaves alone.

#include "editor/app/CNewBitmapDialog.h"
#include "editor/app/CPropertiesDialog.h"
#include "host/IPluginScript.h"
#include "host/Image.h"
#include "parser/CTCParseNodes.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QLabel>
#include <QTabBar>

#include <cstdio>

namespace
{

class CLevelProperties : public CDocuments
{
protected:
    // work does what a hand does in it, Return or Escape at the end.
    void Ask(const std::function<void(CPropertiesDialog&)>& work)
    {
        Answer<CPropertiesDialog>([this] { Trigger("level.properties"); }, work);
    }

    void OpenPage(CPropertiesDialog& dialog, int iPage)
    {
        auto* pBar = dialog.findChild<QTabBar*>();
        const QRect at = pBar->tabRect(iPage);
        MoveTo(*pBar,
               {at.center().x() / static_cast<double>(pBar->width()),
                at.center().y() / static_cast<double>(pBar->height())});
        Do({"click", "1"});
    }

    // Takes the place of what the field has.
    void TypeInto(CPropertiesDialog& dialog, const char* pszField, const char* pszText)
    {
        Click(*dialog.findChild<QWidget*>(pszField));
        Key("ctrl+a");
        Do({"type", "--", pszText});
    }

    static std::string GetText(CPropertiesDialog& dialog, const char* pszLabel)
    {
        return dialog.findChild<QLabel*>(pszLabel)->text().toStdString();
    }

    static std::string GetOutcome(CPropertiesDialog& dialog)
    {
        return GetText(dialog, "properties-outcome");
    }

    // Level > New bitmap at that path; boxes on the way are read and answered with Yes, or with
    // their first button.
    QStringList MakeBitmap(const std::string& strPath)
    {
        QStringList texts;
        QTimer timer; // works what comes behind the first dialog
        timer.callOnTimeout(
            [&]
            {
                QWidget* pShown = QApplication::activeModalWidget();
                if (auto* pFile = dynamic_cast<QFileDialog*>(pShown))
                {
                    pFile->findChild<QLineEdit*>("fileNameEdit")
                        ->setText(QString::fromStdString(strPath));
                    QMetaObject::invokeMethod(pFile, "accept", Qt::QueuedConnection);
                }
                else if (auto* pBox = dynamic_cast<QMessageBox*>(pShown))
                {
                    texts << pBox->text() + " " + pBox->informativeText();
                    QAbstractButton* pYes = pBox->button(QMessageBox::Yes);
                    (pYes != nullptr ? pYes : pBox->buttons().front())->click();
                }
            });
        Answer<CNewBitmapDialog>([this] { Trigger("level.new_bitmap"); },
                                 [&](CNewBitmapDialog&)
                                 {
                                     timer.start(20);
                                     Key("Return");
                                 });
        return texts;
    }

    size_t GetSteps() { return GetHost().GetUndoStack().GetCount(); }
};

} // namespace

TEST_F(CLevelProperties, WhatIsTypedIsToldBeforeAndDoneAsOneStepAfterTheStrokeUnderTheHand)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    GetHost().GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            EXPECT_FALSE(GetHost().GetInput().IsDragging());
            EXPECT_TRUE(GetOutcome(dialog).starts_with("Nothing changes"));
            Do({"type", "--", "640"}); // the first field has the keyboard
            Key("Tab");
            Key("Tab");
            Do({"type", "--", "50.5"});
            EXPECT_EQ(
                GetOutcome(dialog),
                "The level will have 33 x 33 vertices on 640.00 x 320.00 cm, 20.00 x 10.00 cm "
                "apart; its highest ground is 50.50 cm.");
            Click(*dialog.findChild<QWidget*>("size-scale"));
            SavePicture("level-size");
            Key("Return");
        });
    EXPECT_EQ(GetTerrain()->GetSizeVector().x, 640.0F);
    EXPECT_EQ(GetTerrain()->GetSizeVector().y, 50.5F);
    EXPECT_EQ(GetTerrain()->GetSizeVector().z, 320.0F);
    EXPECT_EQ(GetHeights().front(), static_cast<float>(20.0 * (50.5 / 100.0)));
    EXPECT_EQ(GetSteps(), 1U);
    Key("ctrl+z");
    EXPECT_EQ(GetTerrain()->GetSizeVector().x, 320.0F);
    EXPECT_EQ(GetHeights().front(), 20.0F);
}

TEST_F(CLevelProperties, TheMouseGrowsTurnsAndRaisesAndTheDialogWarns)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            OpenPage(dialog, 1);
            TypeInto(dialog, "edges-x", "16384");
            EXPECT_EQ(GetOutcome(dialog),
                      "Not possible: a level has 2 to 16385 vertices per side.");
            Key("Return"); // does nothing
            EXPECT_TRUE(dialog.isVisible());
            TypeInto(dialog, "edges-x", "32");
            TypeInto(dialog, "edges-z", "-8");
            Click(*dialog.findChild<QWidget*>("edges-anchor-2"));           // north-east
            MoveTo(*dialog.findChild<QWidget*>("edges-zero"), {0.05, 0.5}); // at its mark
            Do({"click", "1"});
            EXPECT_TRUE(GetOutcome(dialog).starts_with("The level will have 65 x 25 vertices on "
                                                       "640.00 x 240.00 cm, 10.00 x 10.00 cm"));
            EXPECT_NE(GetOutcome(dialog).find("The tool panel has no such resolution"),
                      std::string::npos);
            SavePicture("level-edges");
            Key("Return");
        });
    ASSERT_EQ(GetTerrain()->GetVerticesX(), 65U);
    ASSERT_EQ(GetTerrain()->GetVerticesZ(), 25U);
    EXPECT_EQ(GetHeights()[31], 0.0F); // new ground in the west
    EXPECT_EQ(GetHeights()[32], 20.0F);
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            OpenPage(dialog, 2);
            Click(*dialog.findChild<QWidget*>("move-x"));
            Key("shift+Tab"); // to the list of moves
            Key("Down");
            EXPECT_TRUE(GetOutcome(dialog).starts_with("The level will have 25 x 65 vertices"));
            EXPECT_FALSE(dialog.findChild<QWidget*>("move-x")->isEnabled());
            Key("Return");
        });
    ASSERT_EQ(GetTerrain()->GetVerticesX(), 25U);
    EXPECT_EQ(GetTerrain()->GetSizeVector().z, 640.0F);
    EXPECT_EQ(GetHeights().front(), 0.0F) << "the south-western corner";
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            OpenPage(dialog, 3);
            TypeInto(dialog, "raise-by", "90");
            EXPECT_TRUE(GetOutcome(dialog).ends_with(
                "825 of 1625 vertices end at 0 or at the highest ground."));
            SavePicture("level-raise");
            Key("Return");
        });
    EXPECT_EQ(GetHeights().front(), 90.0F);
    EXPECT_EQ(GetHeights().back(), 100.0F);
    EXPECT_EQ(GetSteps(), 3U);
    for (int i = 0; i < 3; ++i)
    {
        Key("ctrl+z");
    }
    EXPECT_EQ(GetHeights(), std::vector<float>(size_t{33} * 33, 20.0F));
}

TEST_F(CLevelProperties, WhoCancelsOrOnlyLooksChangesNothing)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const uint64_t uRevision = GetTerrain()->GetRevision();
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            TypeInto(dialog, "size-x", "10");
            OpenPage(dialog, 3);
            TypeInto(dialog, "raise-by", "5");
            Key("Escape");
        });
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            OpenPage(dialog, 4);
            EXPECT_EQ(GetText(dialog, "statistics-vertices"), "33 x 33");
            EXPECT_EQ(GetText(dialog, "statistics-spacing"), "10.00 x 10.00 cm");
            EXPECT_EQ(GetText(dialog, "statistics-range"), "20.00 to 20.00 cm");
            EXPECT_EQ(GetText(dialog, "statistics-mean"), "0.0\xC2\xB0");
            EXPECT_EQ(GetText(dialog, "statistics-uneditable"), "0.00 %");
            SavePicture("level-statistics");
            Key("Return");
        });
    EXPECT_EQ(GetTerrain()->GetRevision(), uRevision);
    EXPECT_EQ(GetSteps(), 0U);
}

TEST_F(CLevelProperties, ANewBitmapIsMadeShownAndGoesAlongWithTheGround)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strPath = m_Folder.Path("root/types.png");
    MakeBitmap(strPath);
    EXPECT_EQ(m_Editor->GetDocument().GetBitmap(), "types.png");
    const std::unique_ptr<IImage> pImage(IL_LoadImage(strPath.c_str()));
    ASSERT_NE(pImage, nullptr);
    EXPECT_EQ(pImage->GetBitsPerPixel(), 32U);
    EXPECT_EQ(pImage->GetWidth(), 32U);
    const ITexture* pShown = m_Window->GetSettings().render.pTypeBitmap;
    EXPECT_NE(pShown, nullptr);
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            OpenPage(dialog, 1);
            TypeInto(dialog, "edges-x", "4");
            EXPECT_NE(GetOutcome(dialog).find("bitmap follows as a new file"), std::string::npos);
            Key("Return");
        });
    EXPECT_EQ(m_Editor->GetDocument().GetBitmap(), "types.1.png");
    const ITexture* pMoved = m_Window->GetSettings().render.pTypeBitmap;
    EXPECT_TRUE(pMoved != nullptr && pMoved->GetWidth() == 36U);
    Key("ctrl+z");
    EXPECT_EQ(m_Editor->GetDocument().GetBitmap(), "types.png");
    EXPECT_EQ(m_Window->GetSettings().render.pTypeBitmap->GetWidth(), 32U);
}

TEST_F(CLevelProperties, WhatIsChangedOnSeveralPagesIsSaidAndDoneInTheirOrder)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    SSymmetry& symmetry = m_Window->GetSettings().input.symmetry;
    symmetry.bOwnCentre = true;
    symmetry.centre = {80.0F, 0.0F, 200.0F};
    Ask(
        [this](CPropertiesDialog& dialog)
        {
            TypeInto(dialog, "size-x", "640");
            OpenPage(dialog, 1);
            TypeInto(dialog, "edges-x", "16384");
            OpenPage(dialog, 3);
            TypeInto(dialog, "raise-by", "5");
            EXPECT_EQ(GetOutcome(dialog),
                      "Not possible (Grow or crop): a level has 2 to 16385 vertices per side.");
            Key("Return"); // does nothing
            OpenPage(dialog, 1);
            TypeInto(dialog, "edges-x", "4");
            OpenPage(dialog, 2);
            Click(*dialog.findChild<QWidget*>("move-x"));
            Key("shift+Tab"); // to the list of moves
            Key("Down");
            OpenPage(dialog, 4);
            EXPECT_EQ(dialog.findChild<QTabBar*>()->tabText(3), "&Raise *");
            EXPECT_EQ(GetOutcome(dialog),
                      "4 steps: size of the level, grow or crop, turn ground right, raise all "
                      "ground. The level will have 33 x 37 vertices on 320.00 x 720.00 cm, 10.00 x "
                      "20.00 cm apart; its highest ground is 100.00 cm. No height goes below 0 or "
                      "above the highest ground. The tool panel has no such resolution: its own "
                      "are square, of 33, 65, 129 and so on.");
            SavePicture("level-several");
            Key("Return");
        });
    ASSERT_EQ(GetSteps(), 4U);
    EXPECT_EQ(GetTerrain()->GetVerticesZ(), 37U);
    EXPECT_EQ(GetHeights().back(), 25.0F);
    // The centre of the symmetry lies over the same ground: twice as far east, two cells of 20 more
    // in the west, turned.
    EXPECT_EQ(symmetry.centre.x, 120.0F);
    EXPECT_EQ(symmetry.centre.z, 200.0F);
    GetHost().GoToStep(1);
    EXPECT_EQ(symmetry.centre.x, 160.0F);
    GetHost().GoToStep(3);
    EXPECT_EQ(symmetry.centre.x, 120.0F);
    GetHost().GoToStep(0);
    EXPECT_EQ(symmetry.centre.x, 80.0F);
    EXPECT_EQ(symmetry.centre.z, 200.0F);
}

TEST_F(CLevelProperties, ABitmapThatIsBeingPaintedIsNotReplaced)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strPath = m_Folder.Path("root/types.png");
    EXPECT_EQ(MakeBitmap(strPath), QStringList());
    const std::string strBytes = ReadBytes(strPath);
    EXPECT_EQ(MakeBitmap(strPath).size(), 1) << "whether it is to be replaced";
    auto* pScript = m_Editor->FindInterface<IPluginScript>();
    for (const auto& [pszName, pszValue] :
         {std::pair("paint_bitmap", "types.png"), std::pair("mode", "edit_terrain_type")})
    {
        CTCPARSE_KEYWORD call;
        std::snprintf(call.name, sizeof(call.name), "%s", pszName);
        call.params = new CTCPARSE_STRING(pszValue);
        std::string strWhy;
        ASSERT_EQ(pScript->Play(&call, strWhy), EScriptResult::Done) << strWhy;
    }
    const QStringList texts = MakeBitmap(strPath);
    ASSERT_EQ(texts.size(), 2);
    EXPECT_TRUE(texts.back().contains("is being painted: choose another name"))
        << texts.back().toStdString();
    EXPECT_TRUE(ReadBytes(strPath) == strBytes);
}
