// The dialog that shows what an import makes before it is made, worked by mouse and keyboard.

#include "editor/app/CExportDialog.h"
#include "editor/app/CFormScroll.h"
#include "editor/app/CImportPicture.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSpinBox>

#include <array>

namespace
{

class CImports : public CDocuments
{
protected:
    // 5 x 3 samples, flat but for corners of 100, 200, 300 and 400.
    std::string WriteCorners(const char* pszName = "corners.asc")
    {
        const std::string strPath = m_Folder.Path(pszName);
        WriteBytes(strPath,
                   "ncols 5\nnrows 3\nxllcorner 600000\nyllcorner 5100000\ncellsize 10\n"
                   "100 50 50 50 200\n50 50 50 50 50\n300 50 50 50 400\n");
        return strPath;
    }

    // A tile whose samples are all 7.
    std::string WriteTile(const char* pszName)
    {
        constexpr size_t SIDE = 11;
        std::string strBytes;
        for (size_t i = 0; i < SIDE * SIDE; ++i)
        {
            strBytes += std::string("\0\7", 2);
        }
        const std::string strPath = m_Folder.Path(pszName);
        WriteBytes(strPath, strBytes);
        return strPath;
    }

    void Work(const std::string& strPath, const std::function<void(CImportDialog&)>& answer)
    {
        Answer<CImportDialog>([&] { m_Window->GetDocuments().OpenFile(strPath); }, answer);
        Settle();
    }

    static QString GetWord(const QDialog& dialog, const char* pszName)
    {
        const auto* pText = dialog.findChild<QLabel*>(QString("import-word-%1").arg(pszName));
        return pText != nullptr ? pText->text() : "none";
    }

    static QString GetFault(const QDialog& dialog)
    {
        return dialog.findChild<QLabel*>("import-fault")->text();
    }

    template <typename TWidget> static TWidget& Get(const QDialog& dialog, const char* pszName)
    {
        return *dialog.findChild<TWidget*>(pszName);
    }

    // The second lines of what the picture says of its corners.
    static QStringList GetCornerNames(const QDialog& dialog)
    {
        QStringList names;
        for (const QString& strCorner : Get<CImportPicture>(dialog, "import-picture").GetCorners())
        {
            names << strCorner.section('\n', 1);
        }
        return names;
    }

    void Type(QWidget& box, const char* pszText)
    {
        Click(box);
        Key("ctrl+a");
        Do({"type", pszText});
    }

    std::array<float, 4> GetCornerHeights()
    {
        const std::vector<float> heights = GetHeights();
        const size_t nRow = GetTerrain()->GetVerticesX();
        return {heights[0], heights[nRow - 1], heights[heights.size() - nRow], heights.back()};
    }
};

} // namespace

TEST_F(CImports, WhatTheDialogShowsIsWhatTheLevelBecomes)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    Work(WriteCorners(),
         [this](CImportDialog& dialog)
         {
             EXPECT_EQ(GetWord(dialog, "samples"), "5 columns x 3 rows");
             EXPECT_EQ(GetWord(dialog, "numbers"), "ASCII grid, numbers as text");
             EXPECT_EQ(GetWord(dialog, "range"), "50 to 400");
             EXPECT_EQ(GetWord(dialog, "voids"), "none");
             EXPECT_EQ(GetWord(dialog, "spacing"), "10 x 10");
             EXPECT_EQ(GetWord(dialog, "place"), "600005, 5100025 to 600045, 5100005");
             EXPECT_EQ(GetWord(dialog, "system"), "the file says no system");
             EXPECT_EQ(GetWord(dialog, "size"), "33 x 33 vertices, 40 x 20 units");
             EXPECT_EQ(GetCornerNames(dialog)[0], "north-west of the file: 100");
             EXPECT_TRUE(Get<QPlainTextEdit>(dialog, "import-assumed")
                             .toPlainText()
                             .contains("the first row is north (z = 0)"));
             const QImage before = Grab(Get<CImportPicture>(dialog, "import-picture"));

             Key("alt+t"); // the keyboard alone, as far as it goes
             Key("Down");
             WaitFor([&] { return GetWord(dialog, "size").contains("20 x 40 units"); }, "a turn");
             EXPECT_FALSE(Grab(Get<CImportPicture>(dialog, "import-picture")) == before);
             Click(Get<QCheckBox>(dialog, "import-flip-x"));
             EXPECT_EQ(GetCornerNames(dialog),
                       (QStringList{"north-west of the file: 100",
                                    "south-west of the file: 300",
                                    "north-east of the file: 200",
                                    "south-east of the file: 400"}));
             Type(Get<QDoubleSpinBox>(dialog, "import-spacing-x"), "7,5");
             Type(Get<QDoubleSpinBox>(dialog, "import-size-z"), "90");
             Type(Get<QDoubleSpinBox>(dialog, "import-unit"), "0.1");
             Type(Get<QDoubleSpinBox>(dialog, "import-highest"), "60");
             WaitFor([&] { return GetWord(dialog, "heights") == "5 to 40, at most 60"; },
                     "the numbers that were typed");
             EXPECT_EQ(GetWord(dialog, "size"), "33 x 33 vertices, 15 x 90 units");
             EXPECT_EQ(GetCornerNames(dialog)[3], "south-east of the file: 40");
             EXPECT_EQ(Get<QDoubleSpinBox>(dialog, "import-spacing-z").text(), "auto");
             const QString strAssumed = Get<QPlainTextEdit>(dialog, "import-assumed").toPlainText();
             EXPECT_FALSE(strAssumed.contains("spacing")) << strAssumed.toStdString();
             EXPECT_TRUE(strAssumed.contains("assumed: 33 vertices a side"));
             EXPECT_FALSE(strAssumed.contains("first row is north")) << "it is turned";
             SavePicture("import");
             Key("Return");
         });
    ASSERT_NE(GetTerrain(), nullptr);
    EXPECT_EQ(GetCornerHeights(), (std::array<float, 4>{10, 30, 20, 40}));
    const SVec3 size = GetTerrain()->GetSize();
    EXPECT_EQ(size.x, 15.0F);
    EXPECT_EQ(size.y, 60.0F);
    EXPECT_EQ(size.z, 90.0F);
    EXPECT_EQ(GetTerrain()->GetGeoTags().first.dX, 600005.0);
    for (size_t i = 0; i < m_Window->GetViews().GetViews().size(); ++i)
    {
        MoveTo(GetView(i), {0.5, 0.5});
        SVec3 middle;
        EXPECT_TRUE(GetView(i).GetInput().PickCursor(middle)) << "view " << i << " shows the level";
    }
}

TEST_F(CImports, CancelChangesNothingAndAStepComesBack)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::vector<float> before = GetHeights();
    const uint64_t uGeneration = m_Editor->GetDocument().GetGeneration();
    Work(WriteCorners(),
         [this](CImportDialog& dialog)
         {
             Click(Get<QCheckBox>(dialog, "import-flip-z"));
             EXPECT_EQ(GetCornerNames(dialog)[0], "south-west of the file: 300");
             Key("Escape");
         });
    EXPECT_TRUE(GetHeights() == before);
    EXPECT_EQ(m_Editor->GetDocument().GetGeneration(), uGeneration);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U);

    Work(WriteCorners(),
         [this](CImportDialog& dialog)
         {
             auto& target = Get<QComboBox>(dialog, "import-target");
             target.setFocus();
             Key("Down");
             EXPECT_EQ(target.currentText(), "a step of this level");
             Click(*dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
         });
    EXPECT_EQ(GetCornerHeights(), (std::array<float, 4>{100, 200, 300, 400}));
    Key("ctrl+z");
    EXPECT_TRUE(GetHeights() == before);
}

TEST_F(CImports, FitsTheScreenHoweverSmallAndEveryFieldIsReached)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const auto shrink = [this](QDialog& dialog, const char* pszLast)
    {
        EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        const QSize least(640, 400);
        dialog.resize(least);
        EXPECT_TRUE(WaitFor([&] { return dialog.size() == least; }, "a small dialog"));
        auto* pScroll = dialog.findChild<CFormScroll*>();
        pScroll->verticalScrollBar()->setValue(pScroll->verticalScrollBar()->maximum());
        pScroll->horizontalScrollBar()->setValue(pScroll->horizontalScrollBar()->maximum());
        Settle();
        EXPECT_FALSE(Get<QWidget>(dialog, pszLast).visibleRegion().isEmpty());
        EXPECT_FALSE(dialog.findChild<QDialogButtonBox*>()->visibleRegion().isEmpty());
        SavePicture((std::string("small-") + pszLast).c_str());
        Key("Escape");
    };
    Work(WriteTile("N46E007.hgt"),
         [&](CImportDialog& dialog) { shrink(dialog, "import-assumed"); });
    Answer<CExportDialog>([this] { Trigger("file.export"); },
                          [&](CExportDialog& dialog) { shrink(dialog, "export-copy"); });
}

TEST_F(CImports, WhoKeepsTheLevelIsBackAtWhatWasSet)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    const std::vector<float> before = GetHeights();
    int iAsked = 0;
    int iShown = 0;
    QTimer timer;
    timer.callOnTimeout(
        [&]
        {
            QWidget* pModal = QApplication::activeModalWidget();
            if (auto* pBox = dynamic_cast<QMessageBox*>(pModal))
            {
                ++iAsked;
                pBox->button(QMessageBox::Cancel)->click();
            }
            else if (auto* pImport = dynamic_cast<CImportDialog*>(pModal))
            {
                auto& flip = Get<QCheckBox>(*pImport, "import-flip-z");
                EXPECT_EQ(flip.isChecked(), iShown > 0);
                flip.setChecked(true);
                ++iShown == 1 ? pImport->accept() : pImport->reject();
            }
        });
    timer.start(20);
    m_Window->GetDocuments().OpenFile(WriteCorners());
    EXPECT_EQ(iAsked, 1);
    EXPECT_EQ(iShown, 2);
    EXPECT_TRUE(GetHeights() == before);
}

TEST_F(CImports, ATileWithoutALatitudeIsAskedForOne)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    Work(WriteTile("N46E007.hgt"),
         [this](CImportDialog& dialog)
         {
             EXPECT_EQ(GetWord(dialog, "spacing"), "0.1 x 0.1 degrees");
             EXPECT_EQ(GetWord(dialog, "samples-apart"),
                       "7676.3 x 11116.1; 7676.3 x 11116.1 m at latitude 46.5");
             EXPECT_EQ(GetWord(dialog, "step"), "1 m: 1 unit of height");
             EXPECT_EQ(dialog.findChild<QDoubleSpinBox*>("import-latitude"), nullptr);
             Key("Escape");
         });
    Work(WriteTile("white.hgt"),
         [this](CImportDialog& dialog)
         {
             EXPECT_FALSE(dialog.IsPossible());
             EXPECT_TRUE(GetFault(dialog).contains("neither its tags nor its name say a latitude"));
             EXPECT_EQ(GetWord(dialog, "size"), "none");
             SavePicture("import-latitude");
             Key("Return");
             EXPECT_TRUE(dialog.isVisible()) << "nothing is guessed";
             Type(Get<QDoubleSpinBox>(dialog, "import-latitude"), "60");
             WaitFor([&] { return dialog.IsPossible(); }, "the latitude");
             EXPECT_EQ(GetFault(dialog), "");
             Key("Return");
         });
    ASSERT_NE(GetTerrain(), nullptr);
    EXPECT_NEAR(GetTerrain()->GetSize().x, 55800.0F, 56.0F);
    EXPECT_NEAR(GetTerrain()->GetSize().z, 111412.0F, 111.0F);
}

TEST_F(CImports, ARawFileIsReadAgainWithTheShapeThatIsTyped)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    const std::string strPath = m_Folder.Path("codes.r16");
    WriteBytes(strPath, std::string("\0\1\0\0\0\2\0\0\0\0\0\4", 12)); // 256 0 512 0 0 1024
    Work(strPath,
         [this](CImportDialog& dialog)
         {
             EXPECT_TRUE(GetFault(dialog).contains("no square of 16-bit samples"))
                 << GetFault(dialog).toStdString();
             EXPECT_FALSE(dialog.IsPossible());
             Type(Get<QSpinBox>(dialog, "import-columns"), "3");
             Key("Tab");
             WaitFor([&] { return dialog.IsPossible(); }, "the columns");
             EXPECT_EQ(GetWord(dialog, "samples"), "3 columns x 2 rows");
             EXPECT_EQ(GetWord(dialog, "range"), "0 to 1024");
             Type(Get<QDoubleSpinBox>(dialog, "import-white"), "655.35");
             WaitFor([&] { return GetWord(dialog, "step") == "0.01 units of height"; }, "white");
             Type(Get<QDoubleSpinBox>(dialog, "import-unit"), "2");
             WaitFor([&] { return GetWord(dialog, "step") == "2 units of height"; }, "the unit");
             EXPECT_EQ(Get<QDoubleSpinBox>(dialog, "import-white").value(), 0.0);
             auto& order = Get<QComboBox>(dialog, "import-order");
             order.setFocus();
             Key("Down");
             WaitFor([&] { return GetWord(dialog, "range") == "0 to 4"; }, "the other order");
             Key("Return");
         });
    ASSERT_NE(GetTerrain(), nullptr);
    EXPECT_EQ(GetCornerHeights(), (std::array<float, 4>{2, 4, 0, 8}));
}
