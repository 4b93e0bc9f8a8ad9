// The dialogs that choose a brush's pictures.

#include "host/IPluginTools.h"
#include "host/Image.h"
#include "tests/editor/app/PanelFixture.h"

#include <QFileDialog>
#include <QLabel>
#include <QPixmap>

namespace
{

class CPictureChooser : public CPanel
{
protected:
    // A grey picture of each format, one that is none, and one too large to be shown.
    static void WritePictures(const std::string& strFolder)
    {
        std::filesystem::create_directories(strFolder);
        const std::vector<uint8_t> bytes(48 * 32 * 3, 200);
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(48, 32, EImageFormat::Rgb24, bytes.data()));
        for (const char* pszName : {"a.bmp", "b.tga", "c.dds", "d.png", "e.jpg"})
        {
            ASSERT_TRUE(IL_SaveImage((strFolder + pszName).c_str(), pImage.get(), nullptr));
        }
        WriteBytes(strFolder + "f.png", "no picture");
        const std::unique_ptr<IImage> pLarge(
            IL_CreateImageFromBufferFormat(4200, 4200, EImageFormat::Indexed8, nullptr));
        ASSERT_TRUE(IL_SaveImage((strFolder + "g.png").c_str(), pLarge.get(), nullptr));
    }
};

} // namespace

TEST_F(CPictureChooser, ShowsWhatItWouldChoose)
{
    const std::string strFolder = m_Folder.Path("root/data/brushes/");
    ASSERT_NO_FATAL_FAILURE(WritePictures(strFolder));
    ASSERT_NO_FATAL_FAILURE(Start());
    Key("4");
    Answer<QFileDialog>(
        [this] { Key("shift+m"); },
        [&](QFileDialog& dialog)
        {
            const QStringList filters = dialog.nameFilters();
            ASSERT_EQ(filters.size(), 3);
            EXPECT_EQ(filters[0], "All pictures (*.png *.jpg *.jpeg *.tga *.bmp *.dds)");
            EXPECT_EQ(filters[1], "Bitmap files (*.dds *.png *.jpg *.tga)");
            EXPECT_EQ(dialog.selectedNameFilter(), filters[0]);
            dialog.setDirectory(QString::fromStdString(strFolder));
            Settle();
            const std::pair<const char*, const char*> files[] = {
                {"a.bmp", "48 x 32"},
                {"b.tga", "48 x 32"},
                {"c.dds", "48 x 32"},
                {"d.png", "48 x 32"},
                {"e.jpg", "48 x 32"},
                {"f.png", "not a PNG, JPEG, TGA, BMP or DDS file"},
                {"g.png", "4200 x 4200\ntoo large to be shown here"},
            };
            dialog.findChild<QTreeView*>("treeView")->setFocus();
            for (const auto& [pszName, pszText] : files)
            {
                Key(pszName == files[0].first ? "Home" : "Down");
                auto* pText = dialog.findChild<QLabel*>("preview-text");
                ASSERT_TRUE(
                    WaitFor([pText] { return !pText->text().isEmpty(); }, "the file is read"));
                EXPECT_EQ(pText->text().toStdString(), pszText) << pszName;
                const QPixmap picture =
                    dialog.findChild<QLabel*>("preview-picture")->pixmap(Qt::ReturnByValue);
                EXPECT_EQ(picture.isNull(), std::string(pszText) != "48 x 32") << pszName;
                if (!picture.isNull())
                {
                    const QImage shown = picture.toImage();
                    EXPECT_NEAR(qGray(shown.pixel(shown.width() / 2, shown.height() / 2)), 200, 2);
                }
            }
            Do({"key", "Up", "key", "Return"}); // no picture, so it is not taken
            ASSERT_TRUE(dialog.isVisible());
            Do({"key", "Home"});
            SavePicture("picture-chooser");
            Key("Return");
        });
    EXPECT_EQ(m_Editor->FindInterface<IPluginTools>()->GetMaskPath(), "data/brushes/a.bmp");
}

TEST_F(CPictureChooser, TakesWhatIsTooLargeToBeShownAndIsNoneForLevels)
{
    const std::string strFolder = m_Folder.Path("root/data/brushes/");
    ASSERT_NO_FATAL_FAILURE(WritePictures(strFolder));
    ASSERT_NO_FATAL_FAILURE(Start());
    Key("4");
    Answer<QFileDialog>([this] { Key("shift+m"); },
                        [&](QFileDialog& dialog)
                        {
                            dialog.setDirectory(QString::fromStdString(strFolder));
                            Settle();
                            dialog.findChild<QTreeView*>("treeView")->setFocus();
                            Do({"key", "End", "key", "Return"});
                        });
    EXPECT_EQ(m_Editor->FindInterface<IPluginTools>()->GetMaskPath(), "data/brushes/g.png");
    Answer<QFileDialog>([this] { Trigger("file.open"); },
                        [](QFileDialog& dialog)
                        {
                            EXPECT_EQ(dialog.findChild<QWidget*>("preview"), nullptr);
                            dialog.reject();
                        });
}
