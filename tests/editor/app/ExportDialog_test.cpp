// From the level into the files of another program and back, by mouse and keyboard.

#include "editor/app/CExportDialog.h"
#include "editor/core/ExportTargets.h"
#include "engine/elevation/TileSet.h"
#include "engine/terrain/SHeightField.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QClipboard>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>

namespace
{

class CExports : public CDocuments
{
protected:
    // 65 x 33 vertices, no two corners alike, 10 to 105.5 high of 250.
    void OpenSlope()
    {
        SHeightField field;
        ASSERT_TRUE(field.Allocate(65, 33));
        field.size = {640.0F, 250.0F, 320.0F};
        for (uint32_t i = 0; i < field.GetCount(); ++i)
        {
            const uint32_t uX = i % 65;
            const uint32_t uZ = i / 65;
            field.pHeights[i] = 10.0F + static_cast<float>(uX * uX + 2016 * uZ / 32) / 64.0F;
        }
        GetHost().TakeLevel(std::move(field));
        Settle();
    }

    // Works the dialog; then names the file, and says "Save" to what may be asked. Gives that.
    QStringList Export(const std::function<void(CExportDialog&)>& answer,
                       const std::string& strPath)
    {
        QStringList texts;
        bool bNamed = false;
        QTimer timer;
        timer.callOnTimeout(
            [&]
            {
                QWidget* pModal = QApplication::activeModalWidget();
                auto* pFiles = dynamic_cast<QFileDialog*>(pModal);
                if (pFiles != nullptr && !bNamed)
                {
                    bNamed = true;
                    auto* pName = pFiles->findChild<QLineEdit*>("fileNameEdit");
                    pName->setText(QString::fromStdString(strPath));
                    pName->setFocus();
                    Key("Return");
                }
                if (auto* pBox = dynamic_cast<QMessageBox*>(pModal))
                {
                    texts << pBox->text();
                    QAbstractButton* pSave = pBox->button(QMessageBox::Save);
                    (pSave != nullptr ? pSave : pBox->buttons().front())->click();
                }
            });
        timer.start(20);
        Answer<CExportDialog>([this] { Trigger("file.export"); }, answer);
        return texts;
    }

    static QStringList GetRow(const QDialog& dialog, const char* pszTarget)
    {
        const auto* pRows = dialog.findChild<QTreeWidget*>("export-targets");
        const auto found = pRows->findItems(pszTarget, Qt::MatchExactly);
        QStringList cells;
        for (int i = 1; found.size() == 1 && i < pRows->columnCount(); ++i)
        {
            cells << found.front()->text(i);
        }
        return cells;
    }

    template <typename TWidget> static TWidget& Get(const QDialog& dialog, const char* pszName)
    {
        return *dialog.findChild<TWidget*>(pszName);
    }

    void Type(QWidget& box, const char* pszText)
    {
        Click(box);
        Key("ctrl+a");
        Do({"type", pszText});
    }

    // The first tile of them brings the whole back, with what stands in the text beside them.
    void TakeSlopeTiles(const std::string& strFirst)
    {
        Answer<CImportDialog>([&] { m_Window->GetDocuments().OpenFile(strFirst); },
                              [&](CImportDialog& dialog)
                              {
                                  EXPECT_EQ(dialog.windowTitle(), "Import 4 tiles of slope.png");
                                  EXPECT_EQ(Get<QLabel>(dialog, "import-word-samples").text(),
                                            "65 columns x 33 rows");
                                  EXPECT_EQ(Get<QLabel>(dialog, "import-word-tiles").text(),
                                            "2 x 2 of 33 x 17 samples, edges are shared");
                                  // The rest stands in the text beside the tiles.
                                  EXPECT_TRUE(Get<QLabel>(dialog, "import-notes")
                                                  .text()
                                                  .startsWith("Filled in from slope.png.txt"));
                                  SavePicture("import-notes");
                                  auto& vertices = Get<QComboBox>(dialog, "import-vertices");
                                  vertices.setCurrentIndex(vertices.findText("65 x 65"));
                                  Key("Return");
                              });
        EXPECT_EQ(m_Window->findChild<QLabel*>("status-words")->text(),
                  "4 tiles of slope.png imported");
        EXPECT_EQ(GetTerrain()->GetSizeVector().x, 640.0F);
        EXPECT_EQ(GetTerrain()->GetSizeVector().y, 250.0F);
        EXPECT_EQ(GetTerrain()->GetSizeVector().z, 320.0F);
    }

    // 50 x 50 vertices, from 20 below 0 to above the maximum height.
    void OpenBasin()
    {
        SHeightField field;
        ASSERT_TRUE(field.Allocate(50, 50));
        field.size = {490.0F, 80.0F, 245.0F};
        for (uint32_t i = 0; i < field.GetCount(); ++i)
        {
            field.pHeights[i] = static_cast<float>(i % 50 + i / 50 * 2) - 20.0F;
        }
        GetHost().TakeLevel(std::move(field));
        Settle();
    }

    // Looks at what targets say, and takes one's own.
    void ChooseOurs(CExportDialog& dialog)
    {
        auto& rows = Get<QTreeWidget>(dialog, "export-targets");
        rows.setCurrentItem(rows.findItems("Raw 32-bit float, regions", Qt::MatchExactly)[0]);
        EXPECT_TRUE(Get<QLabel>(dialog, "export-use")
                        .text()
                        .endsWith("\nThe level's 50 x 50 vertices are interpolated to "
                                  "256 x 256 samples."));
        EXPECT_EQ(GetRow(dialog, "EXR half")[1], "0 to 1") << "what is below 0 is cut";
        auto& unit = Get<QComboBox>(dialog, "export-unit");
        EXPECT_FALSE(unit.isEnabled());
        const auto getScale = [&]
        {
            const QString strText = Get<QPlainTextEdit>(dialog, "export-numbers").toPlainText();
            return strText.section("Scale x: ", 1).section('\n', 0, 0);
        };
        rows.setCurrentItem(rows.findItems("16-bit PNG, 0 in the middle", Qt::MatchExactly)[0]);
        EXPECT_EQ(getScale(), "7.777778") << "490 units in 63 cells, which the level says is cm";
        Key("alt+u");
        Key("Down");
        EXPECT_TRUE(WaitFor([&] { return getScale() == "777.7778"; }, "metres"));
        SavePicture("export-unit");
        rows.setCurrentItem(rows.findItems("Ours", Qt::MatchExactly).front());
        Key("alt+e");
    }
};

} // namespace

TEST_F(CExports, ALevelGoesOutInTilesWithWhatToTypeAndComesBack)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_NO_FATAL_FAILURE(OpenSlope());
    const std::vector<float> before = GetHeights();
    const std::string strPath = m_Folder.Path("slope.png");
    QString strNumbers;
    const auto choose = [&](CExportDialog& dialog)
    {
        EXPECT_EQ(GetRow(dialog, "16-bit PNG"),
                  (QStringList{"65 x 33", "2621 to 27656", "0.003814755"}));
        EXPECT_EQ(GetRow(dialog, "EXR half"), (QStringList{"65 x 33", "0.04 to 0.422", "float"}));
        EXPECT_EQ(GetRow(dialog, "Raw 16-bit, square")[0], "65 x 65");
        Key("Down");
        WaitFor([&] { return dialog.GetTarget()->strName == "16-bit PNG, full range"; }, "a row");
        Type(Get<QSpinBox>(dialog, "export-tiles"), "2");
        WaitFor([&] { return dialog.GetTiles() == 2; }, "tiles");
        EXPECT_EQ(GetRow(dialog, "16-bit PNG, full range")[0], "2 x 2 tiles of 33 x 17");
        Key("alt+c");
        strNumbers = Get<QPlainTextEdit>(dialog, "export-numbers").toPlainText();
        WaitFor([&] { return QApplication::clipboard()->text() == strNumbers; }, "a copy");
        EXPECT_TRUE(strNumbers.contains("\nOffset, height of black: 10\n"));
        EXPECT_TRUE(strNumbers.contains("\nHeight from black to white: 95.5\n"));
        SavePicture("export");
        Key("alt+e");
    };
    EXPECT_EQ(Export(choose, strPath), QStringList());
    EXPECT_EQ(ReadBytes(strPath + ".txt"), strNumbers.toStdString());
    EXPECT_FALSE(std::filesystem::exists(strPath));
    const std::string strFirst = GetTilePath(strPath, 0, 0);
    const std::string strTile = ReadBytes(strFirst);
    // One question for all that nobody has agreed to; a tile of a larger set goes.
    const std::string strStale = GetTilePath(strPath, 2, 0);
    WriteBytes(strStale, strTile);
    EXPECT_EQ(
        Export(choose, strPath),
        QStringList{"5 files are replaced: slope_x0_y0.png, slope_x1_y0.png, slope_x0_y1.png, "
                    "slope_x1_y1.png and 1 more\n"
                    "1 tile of a larger set is removed: slope_x2_y0.png"});
    EXPECT_TRUE(ReadBytes(strFirst) == strTile);
    EXPECT_FALSE(std::filesystem::exists(strStale));
    EXPECT_EQ(m_Window->findChild<QLabel*>("status-words")->text(), "4 tiles of slope.png saved");

    ASSERT_NO_FATAL_FAILURE(TakeSlopeTiles(strFirst));
    const std::vector<float> after = GetHeights();
    ASSERT_EQ(after.size(), 65U * 65U);
    for (size_t i = 0; i < before.size(); ++i)
    {
        // Two rows of the square for one of the file.
        ASSERT_NEAR(after[i / 65 * 130 + i % 65], before[i], 0.01F) << i;
    }
}

TEST_F(CExports, ARawSquareOfAnySideComesBackAsItWasWithoutAWordTyped)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_NO_FATAL_FAILURE(OpenBasin());
    const std::vector<float> before = GetHeights();
    // A row from the south, in the other byte order, from the lowest ground on.
    WriteBytes(m_Editor->GetConfigFile(OWN_EXPORTS),
               "!target( s ) !file( s, i ) !byte_order( s ) !first_row( s ) !heights( s, f )\n"
               "target( \"Ours\" ) { file( \"r16\", 16 ) byte_order( \"big\" )\n"
               "first_row( \"south\" ) heights( \"range\", 0 ) }\n");
    const std::string strPath = m_Folder.Path("ours.r16");
    WriteBytes(strPath + ".txt", "a note of mine");
    EXPECT_EQ(Export([this](CExportDialog& dialog) { ChooseOurs(dialog); }, strPath),
              QStringList{"1 file is replaced: ours.r16.txt"});
    ASSERT_TRUE(std::filesystem::exists(strPath));
    Answer<CImportDialog>([&] { m_Window->GetDocuments().OpenFile(strPath); },
                          [&](CImportDialog& dialog)
                          {
                              EXPECT_EQ(Get<QComboBox>(dialog, "import-vertices").currentText(),
                                        "50 x 50, as in the file");
                              Key("Return");
                          });
    const std::vector<float> after = GetHeights();
    ASSERT_EQ(after.size(), before.size());
    for (size_t i = 0; i < before.size(); ++i)
    {
        ASSERT_NEAR(after[i], before[i], 0.002F) << i;
    }
    EXPECT_EQ(GetTerrain()->GetSizeVector().x, 490.0F);
    EXPECT_EQ(GetTerrain()->GetSizeVector().z, 245.0F);
    // A text of other samples fills in nothing.
    WriteBytes(strPath, ReadBytes(strPath).substr(0, 2 * 49 * 49));
    Answer<CImportDialog>([&] { m_Window->GetDocuments().OpenFile(strPath); },
                          [&](CImportDialog& dialog)
                          {
                              EXPECT_EQ(dialog.findChild<QLabel*>("import-notes"), nullptr);
                              EXPECT_TRUE(dialog.IsPossible());
                              Key("Escape");
                          });
}

TEST_F(CExports, ATargetOfOnesOwnAndTheNameAloneAreOffered)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_NO_FATAL_FAILURE(OpenSlope());
    WriteBytes(m_Editor->GetConfigFile(OWN_EXPORTS),
               "!target( s ) !file( s, i ) !side( s, i ) !heights( s, f ) !number( s, s, f )\n"
               "target( \"Ours\" ) { file( \"asc\", 32 ) side( \"multiple\", 10 )\n"
               "heights( \"unit\", 2 ) number( \"Cells\", \"spacing_x\", 0.5 ) }\n");
    const std::string strPath = m_Folder.Path("ours.asc");
    const QStringList texts = Export(
        [&](CExportDialog& dialog)
        {
            auto& rows = Get<QTreeWidget>(dialog, "export-targets");
            rows.setCurrentItem(rows.findItems("Ours", Qt::MatchExactly).front());
            EXPECT_EQ(GetRow(dialog, "Ours"), (QStringList{"70 x 30", "5 to 52.75", "float"}));
            EXPECT_TRUE(Get<QPlainTextEdit>(dialog, "export-numbers")
                            .toPlainText()
                            .endsWith("Cells: 4.637681\n"));
            Key("alt+e");
        },
        strPath);
    EXPECT_EQ(texts, QStringList{"fit: 65 x 33 vertices interpolated to 70 x 30 samples"});
    EXPECT_EQ(ReadBytes(strPath).find("ncols 70\nnrows 30\n"), 0U);

    const std::string strOther = m_Folder.Path("other.npy");
    const QStringList lines = Export(
        [&](CExportDialog& dialog)
        {
            Key("End");
            WaitFor([&] { return dialog.GetTarget() == nullptr; }, "the last row");
            EXPECT_FALSE(Get<QSpinBox>(dialog, "export-tiles").isEnabled());
            Key("Return");
        },
        strOther);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QString::fromStdString(strOther) + ": 65 x 33 samples\n"));
    EXPECT_TRUE(std::filesystem::exists(strOther));
    const auto* pWords = m_Window->findChild<QLabel*>("status-words");
    EXPECT_TRUE(pWords->text().startsWith("other.npy saved: "));
}
