// The Help menu: the guide at the right heading, the keys, a report of a fault.

#include "editor/app/CFaultReport.h"
#include "editor/app/CGuideWindow.h"
#include "editor/app/CKeyListDialog.h"
#include "editor/app/CKeysDialog.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/GuidePages.h"
#include "host/CommandLine.h"
#include "host/Log.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QClipboard>
#include <QDockWidget>
#include <QLabel>
#include <QListWidget>
#include <QProcess>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTreeWidget>

#include <utility>

namespace
{

class CHelp : public CDocuments
{
protected:
    CGuideWindow* FindGuide() { return m_Window->findChild<CGuideWindow*>(); }

    // The heading that the key of the guide leads to from what has the keyboard.
    std::string PressHelp()
    {
        Key("F1");
        CGuideWindow* pGuide = FindGuide();
        const std::string strPage = pGuide != nullptr ? pGuide->GetPage().toStdString() : "nowhere";
        if (pGuide != nullptr)
        {
            pGuide->close();
        }
        m_Window->activateWindow();
        WaitFor([this] { return m_Window->isActiveWindow(); }, "the window is active again");
        Settle();
        return strPage;
    }

    std::string PressHelpIn(QWidget& widget)
    {
        widget.setFocus();
        return PressHelp();
    }

    // What the program of the system unpacks, by name.
    QString Unpack(const std::string& strFile, const char* pszName)
    {
        QProcess process;
        process.start("tar", {"-xzOf", QString::fromStdString(strFile), pszName});
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }
};

} // namespace

TEST_F(CHelp, OpensTheGuideWhereItTellsAboutWhatHasTheKeyboard)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(PressHelpIn(GetView()), "the-level-editor");
    Key("F6");
    EXPECT_EQ(PressHelp(), "the-tool-panel");
    Key("F4");
    EXPECT_EQ(PressHelp(), "the-brush-library");
    m_Window->findChild<QDockWidget*>("history")->raise();
    EXPECT_EQ(PressHelpIn(*m_Window->findChild<QDockWidget*>("history")->widget()), "undo");
    EXPECT_EQ(PressHelpIn(*m_Window->GetMessages().widget()), "when-something-does-not-work");
    Answer<CKeysDialog>([this] { Trigger("edit.keys"); },
                        [this](CKeysDialog& dialog)
                        {
                            dialog.findChild<QTreeWidget*>("keys-list")->setFocus();
                            Key("F1");
                            auto* pGuide = dialog.findChild<CGuideWindow*>();
                            ASSERT_NE(pGuide, nullptr) << "the dialog would block it";
                            EXPECT_EQ(pGuide->GetPage(), "keys");
                            pGuide->close();
                            dialog.reject();
                        });

    Trigger("help.search");
    CGuideWindow& guide = *FindGuide();
    for (const QString& strPage : GetGuidePages())
    {
        EXPECT_TRUE(guide.GetAnchors().contains(strPage)) << strPage.toStdString();
    }
    auto& text = *guide.findChild<QTextBrowser*>();
    EXPECT_GT(text.document()->size().height(), 20 * text.height());
    guide.activateWindow();
    ASSERT_TRUE(WaitFor([&] { return guide.isActiveWindow(); }, "the guide is active"));
    Do({"type", "atlantis"});
    EXPECT_EQ(guide.findChild<QLabel*>("guide-found")->text(), "not found");
    Key("ctrl+a");
    Do({"type", "terraces"});
    Key("Return");
    EXPECT_EQ(text.textCursor().selectedText().toLower(), "terraces");
    const int iFirst = text.textCursor().position();
    Key("Return");
    EXPECT_GT(text.textCursor().position(), iFirst);
    Key("shift+Return");
    EXPECT_EQ(text.textCursor().position(), iFirst);
    guide.ShowPage("undo");
    const int iUndo = text.verticalScrollBar()->value();
    EXPECT_EQ(guide.findChild<QListWidget*>("guide-headings")->currentItem()->text(), "Undo");
    guide.ShowPage("functions");
    EXPECT_LT(text.verticalScrollBar()->value(), iUndo);
    EXPECT_NE(text.document()->resource(QTextDocument::ImageResource, QUrl("pictures/panel.png")),
              QVariant());
    EXPECT_TRUE(guide.grab().save("pictures/guide.png"));
}

TEST_F(CHelp, ListsTheKeysToBeCopiedAndSaysWhatTheProgramIsMadeOf)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    m_Editor->GetKeys().Set("file.open", {'Q', 0});
    Answer<CKeyListDialog>([this] { Trigger("help.keys"); },
                           [this](CKeyListDialog& dialog)
                           {
                               Click(*dialog.findChild<QWidget*>("key-list-copy"));
                               dialog.reject();
                           });
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    EXPECT_TRUE(lines.contains("Q\tOpen")) << lines.join('\n').toStdString();
    EXPECT_TRUE(lines.contains("F1\tGuide"));
    EXPECT_TRUE(lines.contains("C\tKeep the stroke on a straight line"));
    Answer<QDialog>(
        [this] { Trigger("help.about"); },
        [](QDialog& dialog)
        {
            const QString strText = dialog.findChild<QLabel*>("about-text")->text();
            for (const QString& strPart :
                 {QString(GetProgramVersion()), QString("Qt ") + qVersion(), QString("OpenGL 3.3")})
            {
                EXPECT_TRUE(strText.contains(strPart)) << strText.toStdString();
            }
            EXPECT_TRUE(dialog.findChild<QTextBrowser*>()->toPlainText().contains("libpng"));
            EXPECT_TRUE(dialog.grab().save("pictures/about.png"));
            dialog.reject();
        });
}

TEST_F(CHelp, PacksWhatHelpsToFindAFault)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    CrashLog("[Test::Fault] it was this\n");
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    m_Editor->GetAutosave().Tick(CAutosave::TimePoint());
    const std::string strFile = m_Folder.Path("fault.tar.gz");
    QString strSaid;
    bool bNamed = false;
    QTimer timer;
    timer.callOnTimeout(
        [&]
        {
            QWidget* pShown = QApplication::activeModalWidget();
            if (auto* pBox = dynamic_cast<QMessageBox*>(pShown))
            {
                strSaid = pBox->informativeText();
                pBox->button(QMessageBox::Save)->click();
            }
            auto* pDialog = dynamic_cast<QFileDialog*>(pShown);
            if (pDialog != nullptr && !std::exchange(bNamed, true))
            {
                pDialog->activateWindow();
                WaitFor([pDialog] { return pDialog->isActiveWindow(); }, "the dialog is active");
                pDialog->findChild<QLineEdit*>("fileNameEdit")
                    ->setText(QString::fromStdString(m_Folder.Path("fault")));
                Key("Return");
            }
        });
    timer.start(20);
    Trigger("help.report");
    timer.stop();
    ASSERT_TRUE(std::filesystem::exists(strFile));
    EXPECT_EQ(Unpack(strFile, "fault-report/contents.txt"), strSaid + '\n');
    for (const QString& strLine : strSaid.split('\n'))
    {
        const QString strName = "fault-report/" + strLine.section(':', 0, 0);
        const QString strSize =
            QString(", %1 bytes")
                .arg(Unpack(strFile, strName.toUtf8().constData()).toUtf8().size());
        EXPECT_TRUE(strLine.endsWith(strSize)) << strLine.toStdString();
    }
    EXPECT_TRUE(Unpack(strFile, "fault-report/log.txt").contains("[Test::Fault] it was this\n"));
    EXPECT_TRUE(Unpack(strFile, "fault-report/system.txt").startsWith("Tellur "));
    EXPECT_TRUE(Unpack(strFile, "fault-report/level.txt").contains("height_map("));
    EXPECT_TRUE(Unpack(strFile, "fault-report/autosave.txt").contains("autosave_flat("));
    const QString strSteps = strSaid.section("steps-", 1).section(':', 0, 0);
    EXPECT_TRUE(Unpack(strFile, ("fault-report/steps-" + strSteps).toUtf8().constData())
                    .contains("press("));
    // A stroke is in it, and no heights.
    EXPECT_LT(std::filesystem::file_size(strFile), 20000U);
}
