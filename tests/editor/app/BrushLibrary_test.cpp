// The window of the brush library.

#include "editor/app/CBrushLibraryDock.h"
#include "editor/app/CMessagesDock.h"
#include "host/BrushBlock.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/PanelFixture.h"

#include <QApplication>
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
        const QPointF screen = QPointF(List().viewport()->mapToGlobal(local));
        return (screen * List().devicePixelRatioF()).toPoint();
    }

    // To a share of the other row's width. All at once: a drag answers events by itself until it is
    // dropped.
    void DragRow(int iRow, int iTarget, double fShare)
    {
        const auto getShare = [this](int i, double f)
        {
            const QRectF at = List().visualItemRect(List().item(i));
            return QPointF((at.left() + at.width() * f) / List().viewport()->width(),
                           at.center().y() / List().viewport()->height());
        };
        Drag(*List().viewport(), getShare(iRow, 0.5), getShare(iTarget, fShare));
    }

    std::string Status() // as it is shown, with dots where it is too long
    {
        auto* pWords = m_Window->findChild<QLabel*>("status-words");
        return pWords->isVisible() ? pWords->text().toStdString() : "";
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
    EXPECT_EQ(Saved(), "Hill Plateau Smooth Peak \\ ");   // the name's own mark ends this reading
    EXPECT_EQ(Line(), "\"Hill\" is now \"Peak \"1\"\"."); // and is not taken once more
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

    DragRow(0, 2, 0.8);
    EXPECT_TRUE(WaitFor([&] { return Saved() == "B C A D "; }, "it is dropped behind C"))
        << Saved();
    EXPECT_EQ(Shown(), "B C [A] D ");
    DragRow(3, 0, 0.2);
    EXPECT_TRUE(WaitFor([&] { return Saved() == "D B C A "; }, "it is dropped before B"))
        << Saved();
    EXPECT_EQ(Item<QListWidget>(2113).item(0)->text(), "D");
    const QRect last = List().visualItemRect(List().item(2));
    ASSERT_GT(List().viewport()->width(), last.right() + 8) << "there is room beside C";
    DragRow(0, 2, 1.05);
    EXPECT_TRUE(WaitFor([&] { return Saved() == "B C D A "; }, "it is dropped into that room"))
        << Saved();
    DragRow(2, 0, 0.2);
    EXPECT_TRUE(WaitFor([&] { return Saved() == "D B C A "; }, "and back")) << Saved();

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
    const std::string strWhy =
        "The brushes cannot be saved until \"Bare\" (no image), \"Bare\" (no image) are removed "
        "together";
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    Answer<QMessageBox>([this] { Key("Delete"); },
                        [this](QMessageBox& box)
                        {
                            EXPECT_EQ(box.text(), "Failed to save brushes");
                            Key("Return");
                        });
    EXPECT_EQ(Shown(), "[A] Bare B Bare ");
    EXPECT_EQ(Line(), strWhy + "; they are as they were.");
    EXPECT_EQ(Status(), strWhy + " (F4)") << "as long as it is so";
    EXPECT_EQ(ReadBytes(LibraryFile()), strFile);
    EXPECT_FALSE(m_Editor->FindInterface<IPluginBrushes>()->HasUnsavedBrushes());
    EXPECT_TRUE(List().item(1)->toolTip().contains("no image"));
    SavePicture("brush-library-no-image");
    // Those that keep the others from being saved are found, and can go, together.
    auto* pFilter = m_Window->findChild<QLineEdit*>("library-filter");
    pFilter->setFocus();
    Type("no image");
    Key("Return");
    EXPECT_EQ(Shown(), "[Bare] Bare ");
    Do({"key", "ctrl+a", "key", "Delete"});
    EXPECT_EQ(Saved(), "A B ");
    EXPECT_EQ(Status().find("cannot be saved"), std::string::npos) << Status();
    pFilter->clear();
    EXPECT_EQ(Shown(), "A [B] ");
    Answer<QMessageBox>([this] { Key("ctrl+z"); }, [this](QMessageBox&) { Key("Return"); });
    EXPECT_EQ(Saved(), "A B ");
    EXPECT_EQ(Line(),
              "A brush without an image or a function cannot be saved; they are as they were.");
    Key("F2");
    Type(" ");
    Key("Return");
    EXPECT_EQ(Line(), "Not done: a brush has to have a name.");
    EXPECT_EQ(Shown(), "A [B] ");

    CBrushLibraryDock without(nullptr, GetHost(), nullptr, {});
    without.TakeFocus(); // a plug-in that has no library
    EXPECT_FALSE(without.HasLibrary());
}

TEST_F(CBrushLibraryWindow, ABrushOfAScriptWithoutAnImageIsNamedOnceThePanelHasAddedIt)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    const std::string strScript = m_Folder.Path("bare.tellur");
    WriteBytes(strScript,
               "!brush()\n" + GetBrushDeclarations(EBrushBlock::Script) +
                   "brush()\n{\n function( \"BlurFunction\" )\n}\n");
    std::string strFault;
    ASSERT_EQ(m_Window->GetScripts().Play(strScript, strFault), EScriptEnd::Played) << strFault;
    AddBrush("Foggy");
    const std::string strWhy =
        "The brushes cannot be saved until \"Foggy\" (no image) is removed (F4)";
    EXPECT_TRUE(WaitFor([&] { return Status() == strWhy; }, "the status bar says so")) << Status();
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    Key("Delete");
    EXPECT_EQ(List().count(), 0);
    EXPECT_EQ(Status().find("Foggy"), std::string::npos) << Status();
    EXPECT_TRUE(std::filesystem::exists(LibraryFile()));
    EXPECT_FALSE(m_Editor->FindInterface<IPluginBrushes>()->HasUnsavedBrushes());
}

TEST_F(CBrushLibraryWindow, WhatAnotherProgramHasSavedIsKeptBeforeItIsReplaced)
{
    WriteLibrary({"A", "B", "C", "D"});
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    Do({"key", "Delete", "key", "Delete"});
    Click(Item(2120)); // the panel's button
    EXPECT_EQ(Saved(), "C D ");
    EXPECT_FALSE(std::filesystem::exists(LibraryFile() + ".bak")) << "nobody else has saved";

    const std::string strScript = m_Folder.Path("save.tellur");
    WriteBytes(strScript, "!save_brushes( s )\nsave_brushes( \"root/PredefinedBrushes.ini\" )\n");
    const auto expectKept = [&](const char* pszOther, const std::function<void()>& save)
    {
        SCOPED_TRACE(pszOther);
        WriteLibrary({pszOther});
        const std::string strOther = ReadBytes(LibraryFile());
        save();
        EXPECT_EQ(Saved(), "C D ");
        EXPECT_EQ(ReadBytes(LibraryFile() + pszOther), strOther);
        EXPECT_TRUE(m_Window->GetMessages().GetText().contains(
            "Another program has changed PredefinedBrushes.ini, which is kept as " +
            QString::fromStdString(LibraryFile() + pszOther)));
    };
    expectKept(".bak", [this] { Click(Item(2120)); });
    EXPECT_EQ(Status(),
              "PredefinedBrushes.ini is saved; what another program had put there is kept as "
              "PredefinedBrushes.ini.bak");
    expectKept(".bak2",
               [&]
               {
                   std::string strFault;
                   EXPECT_EQ(m_Window->GetScripts().Play(strScript, strFault), EScriptEnd::Played);
               });
    List().setFocus();
    expectKept(".bak3", [this] { Do({"key", "alt+Right", "key", "alt+Left"}); });
    EXPECT_FALSE(std::filesystem::exists(LibraryFile() + ".bak4"));
}

TEST_F(CBrushLibraryWindow, TheLineSaysThatABrushIsAtHandAsLongAsItIs)
{
    WriteLibrary({"A", "B", "C", "D"}); // A and D are of one function
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    ASSERT_NO_FATAL_FAILURE(OpenLibrary());
    const auto take = [this]
    {
        List().setFocus();
        Do({"key", "Home", "key", "Return"});
        EXPECT_EQ(Line(), "\"A\" is at hand.");
        GetView().setFocus();
    };
    take();
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5});
    Do({"keydown", "shift"});
    Drag(GetView(), {0.4, 0.6}, {0.6, 0.6}); // smooths
    Do({"keyup", "shift"});
    EXPECT_EQ(Line(), "\"A\" is at hand.");
    EXPECT_EQ(List().selectedItems().size(), 1);
    Key("3");
    EXPECT_EQ(Line(), "") << "another tool";
    EXPECT_TRUE(List().selectedItems().isEmpty());
    take();
    QListWidget& panel = Item<QListWidget>(2113);
    const QPoint at = panel.visualItemRect(panel.item(3)).center();
    MoveTo((QPointF(panel.viewport()->mapToGlobal(at)) * panel.devicePixelRatioF()).toPoint());
    Do({"click", "1"});
    EXPECT_EQ(Extent(), 40.0F);
    EXPECT_EQ(Line(), "") << "another brush of the same tool";
    take();
    Click(Item(2132)); // the tool's button puts it away
    EXPECT_EQ(Line(), "");
}
