// The window of the brush library, and the dialogs that choose a brush's pictures.

#include "editor/app/CBrushLibraryDock.h"
#include "host/BrushBlock.h"
#include "host/IPluginTools.h"
#include "host/Image.h"
#include "tests/editor/app/PanelFixture.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPixmap>

namespace
{

class CBrushLibraryWindow : public CPanel
{
protected:
    // A library of brushes with these names, functions in turn, extents 10, 20, and so on. Bare has
    // no image, so it cannot be saved.
    void WriteLibrary(const std::vector<std::string>& names)
    {
        const char* const functions[] = {"RelativeHeight", "SetHeight", "Blur"};
        std::string strText = "!brush()\n" + GetBrushDeclarations(EBrushBlock::Library);
        for (size_t i = 0; i < names.size(); ++i)
        {
            strText +=
                "brush()\n{\n brush_name( \"" + names[i] + "\" )\n function( \"" +
                functions[i % 3] + "Function\" )\n extent( " + std::to_string(i + 1) + "0.0 )\n" +
                (names[i] == "Bare" ? "" : " bitmap() { path( \"data/brushes/cone.png\" ) }\n") +
                "}\n";
        }
        WriteBytes(LibraryFile(), strText);
    }

    std::string LibraryFile() { return m_Folder.Path("root/PredefinedBrushes.ini"); }

    void OpenLibrary()
    {
        Key("F4");
        ASSERT_TRUE(List().hasFocus());
    }

    QListWidget& List() { return *m_Window->findChild<QListWidget*>("library-list"); }

    std::string Line()
    {
        return m_Window->findChild<QLabel*>("library-line")->text().toStdString();
    }

    // The names that are shown, the current one in brackets.
    std::string Shown()
    {
        std::string strNames;
        for (int i = 0; i < List().count(); ++i)
        {
            const std::string strName = List().item(i)->text().toStdString();
            strNames += List().isRowHidden(i)      ? ""
                        : i == List().currentRow() ? '[' + strName + "] "
                                                   : strName + ' ';
        }
        return strNames;
    }

    // The names in the file.
    std::string Saved()
    {
        std::string strNames;
        const std::string strFile = ReadBytes(LibraryFile());
        const std::string strBefore = "  brush_name( \"";
        for (size_t i = strFile.find(strBefore); i != std::string::npos;
             i = strFile.find(strBefore, i + 1))
        {
            const size_t iName = i + strBefore.size();
            strNames += strFile.substr(iName, strFile.find('"', iName) - iName) + ' ';
        }
        return strNames;
    }

    QPoint ScreenAt(int iRow, double fShare)
    {
        const QRect at = List().visualItemRect(List().item(iRow));
        const QPoint local(at.left() + static_cast<int>(at.width() * fShare), at.center().y());
        return List().viewport()->mapToGlobal(local) * List().devicePixelRatio();
    }

    // A grey picture of each format, one that is none, and one that claims to be huge.
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

    float Extent() { return m_Editor->FindInterface<IPluginTools>()->GetBrushExtent(); }
};

} // namespace

TEST_F(CBrushLibraryWindow, ADayInTheLibraryByTheKeyboardAlone)
{
    WriteLibrary({"Hill", "Plateau", "Smooth", "Hill"});
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    EXPECT_EQ(Shown(), "[Hill] Plateau Smooth Hill ");
    EXPECT_EQ(List().item(1)->data(Qt::AccessibleTextRole).toString(),
              "Plateau, Set height, 20 units");
    // The pictures are those of the brushes: bright in the middle, black at the rim.
    const QImage picture = List().item(1)->icon().pixmap(List().iconSize()).toImage();
    EXPECT_GT(qGray(picture.pixel(picture.width() / 2, picture.height() / 2)), 200);
    EXPECT_LT(qGray(picture.pixel(4, 4)), 40);
    SavePicture("brush-library");

    // Arrows are the list's, not the camera's; taking goes on to terraforming, as in the panel.
    Do({"key", "Right", "key", "Right", "key", "Right", "key", "Return"});
    EXPECT_EQ(Shown(), "Hill Plateau Smooth [Hill] ");
    EXPECT_EQ(Extent(), 40.0F) << "not the first of that name";
    EXPECT_EQ(GetHost().GetCaption(), "Terraforming");
    EXPECT_EQ(Line(), "\"Hill\" is at hand.");

    Key("F2");
    Type("Peak \"1\"");
    Key("Return");
    EXPECT_EQ(Shown(), "Hill Plateau Smooth [Peak \"1\"] ");
    EXPECT_EQ(Saved(), "Hill Plateau Smooth Peak \\ "); // the name's own mark ends this reading
    Do({"key", "F2"});
    Type("Gone");
    Key("Escape");
    EXPECT_EQ(Shown(), "Hill Plateau Smooth [Peak \"1\"] ");
    Do({"key", "alt+Up", "key", "alt+Left"});
    EXPECT_EQ(Shown(), "Hill [Peak \"1\"] Plateau Smooth ");
    Do({"key", "Home", "key", "ctrl+d"});
    EXPECT_EQ(Shown(), "Hill [Hill000] Peak \"1\" Plateau Smooth ");
    Do({"key", "Home", "key", "shift+Right", "key", "Delete"});
    EXPECT_EQ(Shown(), "[Peak \"1\"] Plateau Smooth ");
    EXPECT_EQ(Saved(), "Peak \\ Plateau Smooth ");
    Do({"key", "ctrl+z", "key", "ctrl+z"});
    EXPECT_EQ(Shown(), "Hill [Hill000] Peak \"1\" Plateau Smooth ");
    Do({"key", "ctrl+z"}); // the copy
    EXPECT_EQ(Saved(), "Hill Peak \\ Plateau Smooth ");
    Do({"key", "ctrl+shift+z"});
    EXPECT_EQ(Saved(), "Hill Hill000 Peak \\ Plateau Smooth ");

    // Under a filter places are counted among what is shown.
    Do({"key", "shift+Tab", "key", "shift+Tab"});
    Type("height");
    EXPECT_EQ(Shown(), "Hill [Hill000] Peak \"1\" Plateau ");
    Key("ctrl+a");
    Type("blur");
    Key("Return");
    EXPECT_EQ(Shown(), "[Smooth] ");
    EXPECT_TRUE(List().hasFocus());
    Key("alt+Up"); // there is nothing before it
    EXPECT_EQ(Saved(), "Hill Hill000 Peak \\ Plateau Smooth ");
    Key("F4");
    EXPECT_EQ(QApplication::focusWidget(), m_Window->GetViews().GetActive());
    m_Window->close(); // everything is saved, so nothing is asked
    EXPECT_FALSE(m_Window->isVisible());
}

TEST_F(CBrushLibraryWindow, TheMouseTakesAndOrdersAndThePanelFollows)
{
    WriteLibrary({"A", "B", "C", "D"});
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    MoveTo(ScreenAt(1, 0.5));
    Do({"click", "--repeat", "2", "--delay", "20", "1"});
    EXPECT_EQ(Extent(), 20.0F);
    EXPECT_EQ(GetProperty("m_PickHeight"), "false") << "the panel shows the brush";

    // All at once: a drag answers events by itself until it is dropped.
    const auto drag = [this](int iRow, int iTarget, double fShare)
    {
        const auto getShare = [this](int i, double f)
        {
            const QRectF at = List().visualItemRect(List().item(i));
            return QPointF((at.left() + at.width() * f) / List().viewport()->width(),
                           at.center().y() / List().viewport()->height());
        };
        Drag(*List().viewport(), getShare(iRow, 0.5), getShare(iTarget, fShare));
    };
    drag(0, 2, 0.8);
    EXPECT_TRUE(WaitFor([&] { return Saved() == "B C A D "; }, "it is dropped behind C"))
        << Saved();
    EXPECT_EQ(Shown(), "B C [A] D ");
    drag(3, 0, 0.2);
    EXPECT_TRUE(WaitFor([&] { return Saved() == "D B C A "; }, "it is dropped before B"))
        << Saved();
    EXPECT_EQ(Item<QListWidget>(2113).item(0)->text(), "D");

    // What the panel adds comes into the library, and the next change saves it along.
    AddBrush("Panel's");
    EXPECT_EQ(Shown(), "[D] B C A Panel's ");
    EXPECT_EQ(Saved(), "D B C A ");
    List().setFocus();
    Key("Delete");
    EXPECT_EQ(Saved(), "B C A Panel's ");

    // A stroke under the hand keeps its brush and the library.
    GetView().setFocus();
    MoveTo(GetView(), {0.5, 0.5});
    Do({"mousedown", "1"});
    ASSERT_TRUE(GetHost().GetInput().IsDragging());
    Do({"key", "F4", "key", "Delete"});
    EXPECT_EQ(Line(), "Not during a stroke.");
    Do({"key", "Right", "key", "Return"});
    EXPECT_EQ(Extent(), 20.0F);
    Do({"mouseup", "1"});
    EXPECT_EQ(Saved(), "B C A Panel's ");
    Key("Return");
    EXPECT_EQ(Extent(), 30.0F);

    // A press in a view ends the typing, and the name is there before the stroke.
    Key("F2");
    Type("Typed");
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5});
    EXPECT_EQ(Saved(), "B Typed A Panel's ");
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 2U);
}

TEST_F(CBrushLibraryWindow, WhatCannotBeSavedIsSaidAndNothingIsLost)
{
    WriteLibrary({"A", "Bare", "B", "Bare"});
    const std::string strFile = ReadBytes(LibraryFile());
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    Answer<QMessageBox>([this] { Key("Delete"); },
                        [this](QMessageBox& box)
                        {
                            EXPECT_EQ(box.text(), "Failed to save brushes");
                            Key("Return");
                        });
    EXPECT_EQ(Shown(), "[A] Bare B Bare ");
    EXPECT_EQ(Line(), "The brushes cannot be saved; they are as they were.");
    EXPECT_EQ(ReadBytes(LibraryFile()), strFile);
    EXPECT_FALSE(m_Editor->FindInterface<IPluginBrushes>()->HasUnsavedBrushes());
    // Those that keep the others from being saved can go, together.
    List().setFocus();
    MoveTo(ScreenAt(1, 0.5));
    Do({"click", "1"});
    MoveTo(ScreenAt(3, 0.5));
    Do({"keydown", "ctrl", "click", "1", "keyup", "ctrl"});
    Key("Delete");
    EXPECT_EQ(Shown(), "A [B] ");
    EXPECT_EQ(Saved(), "A B ");
    Answer<QMessageBox>([this] { Key("ctrl+z"); }, [this](QMessageBox&) { Key("Return"); });
    EXPECT_EQ(Saved(), "A B ");
    Key("F2");
    Type(" ");
    Key("Return");
    EXPECT_EQ(Line(), "Not done: a brush has to have a name.");
    EXPECT_EQ(Shown(), "A [B] ");

    CBrushLibraryDock without(nullptr, GetHost(), nullptr, {});
    without.TakeFocus(); // a plug-in that has no library
    EXPECT_FALSE(without.HasLibrary());
}

TEST_F(CBrushLibraryWindow, AChooserOfPicturesShowsWhatItWouldChoose)
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
    Answer<QFileDialog>([this] { Key("shift+m"); },
                        [this](QFileDialog& dialog)
                        {
                            dialog.findChild<QTreeView*>("treeView")->setFocus();
                            Do({"key", "End", "key", "Return"}); // what is not shown may be chosen
                        });
    EXPECT_EQ(m_Editor->FindInterface<IPluginTools>()->GetMaskPath(), "data/brushes/g.png");

    // Others are as they were.
    Answer<QFileDialog>([this] { Trigger("file.open"); },
                        [](QFileDialog& dialog)
                        {
                            EXPECT_EQ(dialog.findChild<QWidget*>("preview"), nullptr);
                            dialog.reject();
                        });
}
