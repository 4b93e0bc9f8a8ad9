// Each text of the editor's own passes one place: with a catalogue that puts all of them into
// brackets, no window shows one without.

#include "editor/app/CGuideWindow.h"
#include "editor/app/CTextTranslator.h"
#include "editor/app/KeyChords.h"
#include "editor/app/ReplaceQuestion.h"
#include "engine/reflection/EditFlags.h"
#include "framework/core/CMenu.h"
#include "host/Log.h"
#include "tests/editor/app/DocumentsFixture.h"
#include "tests/support/TestPaths.h"

#include <QDialog>
#include <QDir>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>
#include <QTabBar>

#include <algorithm>

namespace
{

class CTexts : public CDocuments
{
protected:
    void SetUp() override
    {
        QProcess list;
        list.start(TELLUR_SOURCE_DIR "/cmake/list-texts", QStringList());
        ASSERT_TRUE(list.waitForFinished());
        QString strFile;
        for (const QString& strLine : QString::fromUtf8(list.readAllStandardOutput()).split('\n'))
        {
            const bool bText = !strLine.isEmpty() && !strLine.startsWith('#');
            strFile += strLine + '\n' + (bText ? "[~" + strLine + "~]\n" : QString());
        }
        std::filesystem::create_directories(m_Folder.Path("root/data/texts"));
        WriteBytes(m_Folder.Path("root/data/texts/brackets.texts"), strFile.toStdString());
        ASSERT_TRUE(m_Texts.Read("brackets"));
    }

    void TearDown() override { Stop(); } // windows go before the texts that they show

    // What is not the editor's own: names, keys, the plug-in's texts, and what files and the log
    // have. Longer ones first: some are parts of others.
    void Exempt(QString strText)
    {
        if (strText.remove('&').remove("...").size() > 1)
        {
            const auto isShorter = [&](const QString& strOther)
            {
                return strOther.size() < strText.size();
            };
            m_Other.insert(std::find_if(m_Other.begin(), m_Other.end(), isShorter), strText);
        }
    }

    void ExemptMenu(const CMenu& menu)
    {
        for (size_t i = 0; i < menu.GetItemCount(); ++i)
        {
            Exempt(QString::fromStdString(menu.GetItemText(i)));
            if (const CMenu* pSubMenu = menu.GetSubMenu(i))
            {
                ExemptMenu(*pSubMenu);
            }
        }
    }

    void ExemptOthers()
    {
        const CPluginRegistry& registry = GetHost().GetRegistry();
        for (const SInsertedMenu& menu : registry.GetMenus())
        {
            Exempt(QString::fromStdString(menu.strTitle));
            ExemptMenu(*menu.pPopup);
        }
        for (const SKeyCommand& command : m_Editor->GetKeys().GetCommands())
        {
            if (command.iAction >= 0 || command.strId.starts_with("tool."))
            {
                Exempt(QString::fromStdString(command.strText));
            }
            Exempt(GetSequence(command.key).toString(QKeySequence::NativeText));
        }
        for (const SSetting& setting : GetHost().GetSettings().GetRegistered())
        {
            SEditFlags flags;
            ParseEditFlags(setting.strEditFlags, flags);
            Exempt(QString::fromStdString(flags.strCategory));
            Exempt(QString::fromStdString(flags.strDescription));
        }
        const QDir materials(TELLUR_SOURCE_DIR "/data/materials");
        for (const QFileInfo& file : materials.entryInfoList({"*.mat"}))
        {
            Exempt(file.completeBaseName());
        }
        Exempt("Tellur");
        Exempt("1.asc");
        for (size_t i = 0; i < registry.GetProcessCount(); ++i)
        {
            Exempt(QString::fromUtf8(registry.GetProcess(i)->GetName()));
        }
    }

    // The letters of a text that are in no brackets and nobody else's.
    QString FindPlain(QString strText) const
    {
        strText.remove('&');
        for (const QString& strOther : m_Other)
        {
            strText.remove(strOther);
        }
        static const QRegularExpression s_Inner("\\[~((?!\\[~|~\\]).)*~\\]",
                                                QRegularExpression::DotMatchesEverythingOption);
        while (strText.contains(s_Inner))
        {
            strText.remove(s_Inner);
        }
        static const QRegularExpression s_Values(
            "\\*\\.\\w+|#[0-9a-f]+"); // patterns of files, colours
        strText.remove(s_Values);
        static const QRegularExpression s_Words("\\p{L}{2,}");
        return s_Words.match(strText).captured();
    }

    void Look(const QString& strWhere, const QString& strText)
    {
        const QString strLine = strWhere + ": " + strText;
        if (!FindPlain(strText).isEmpty() && !m_Plain.contains(strLine))
        {
            m_Plain << strLine;
        }
    }

    void LookAtActions(const QWidget& widget)
    {
        for (const QAction* pAction : widget.actions())
        {
            Look("action " + pAction->objectName(), pAction->text());
            Look("tip of action " + pAction->objectName(), pAction->toolTip());
            if (pAction->menu() != nullptr)
            {
                LookAtActions(*pAction->menu());
            }
        }
    }

    void LookAt(QWidget& root)
    {
        LookAtOne(root);
        for (QWidget* pWidget : root.findChildren<QWidget*>())
        {
            LookAtOne(*pWidget);
        }
    }

    void LookAtOne(QWidget& widget)
    {
        const QString strWhere =
            QString(widget.metaObject()->className()) + ' ' + widget.objectName();
        Look(strWhere + " tip", widget.toolTip());
        Look(strWhere + " name", widget.accessibleName());
        Look(strWhere + " title", widget.windowTitle());
        for (const char* pszProperty :
             {"text", "title", "placeholderText", "specialValueText", "suffix"})
        {
            if (!strWhere.contains("import-word-numbers")) // what the engine calls a format
            {
                Look(strWhere + ' ' + pszProperty, widget.property(pszProperty).toString());
            }
        }
        LookAtActions(widget);
        auto* pView = qobject_cast<QAbstractItemView*>(&widget);
        if (pView != nullptr && !widget.inherits("QHeaderView")) // which has the model of its view
        {
            LookAtModel(strWhere, *pView->model());
        }
        if (auto* pBox = qobject_cast<QComboBox*>(&widget))
        {
            LookAtModel(strWhere, *pBox->model());
        }
        if (auto* pTabs = qobject_cast<QTabBar*>(&widget))
        {
            for (int i = 0; i < pTabs->count(); ++i)
            {
                Look(strWhere, pTabs->tabText(i));
            }
        }
    }

    void LookAtModel(const QString& strWhere, const QAbstractItemModel& model)
    {
        for (int iColumn = 0; iColumn < model.columnCount(); ++iColumn)
        {
            Look(strWhere + " head", model.headerData(iColumn, Qt::Horizontal).toString());
            for (int iRow = 0; iRow < model.rowCount() && !IsData(strWhere, iColumn); ++iRow)
            {
                Look(strWhere, model.index(iRow, iColumn).data().toString());
            }
        }
    }

    // What the log, the guide and the engine, which counts the samples of an export, have said.
    static bool IsData(const QString& strWhere, int iColumn)
    {
        return strWhere.contains("guide-headings") ||
               (iColumn > 0 &&
                (strWhere.contains("message-list") || strWhere.contains("export-targets")));
    }

    void LookAtDialog(const std::function<void()>& work)
    {
        Answer<QDialog>(work,
                        [this](QDialog& dialog)
                        {
                            Settle();
                            LookAt(dialog);
                            dialog.reject();
                        });
    }

    CTextTranslator m_Texts;
    QStringList m_Other;
    QStringList m_Plain;
};

} // namespace

TEST_F(CTexts, OfTheWindowAndItsMenusPassOnePlace)
{
    m_bTools = true;
    ASSERT_NO_FATAL_FAILURE(Start());
    ExemptOthers();
    LookAt(*m_Window);
    // Steps of the history, of a stroke and of commands, and what status and cursor say.
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5}, 3);
    LookAt(*m_Window);
    for (const char* pszCommand :
         {"symmetry.mirror_x", "stroke.build_up",   "path.set",         "brush.invert",
          "brush.pick_height", "brush.larger",      "brush.mask",       "turn.right",
          "turn.random",       "measure.ruler",     "measure.steep",    "measure.walk",
          "protection.paint",  "protection.invert", "protection.clear", "camera.frame",
          "bookmark.go_3",     "bookmark.set_3",    "view.add_top",     "edit.undo"})
    {
        Trigger(pszCommand);
        LookAt(*m_Window);
    }
    CrashLog("[CSomething::DoIt] [~a fault~]\n"); // the bar of faults
    Settle();
    LookAt(*m_Window);
    EXPECT_EQ(m_Plain.join('\n').toStdString(), "");
}

TEST_F(CTexts, OfEveryDialogPassOnePlace)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ExemptOthers();
    Trigger("protection.invert"); // so that it can grow
    for (const char* pszCommand : {"edit.keys",
                                   "edit.settings",
                                   "level.properties",
                                   "level.new_bitmap",
                                   "brush.pen",
                                   "measure.steep_angle",
                                   "protection.slope",
                                   "protection.heights",
                                   "protection.grow",
                                   "symmetry.turns",
                                   "turn.fixed",
                                   "file.export",
                                   "help.keys",
                                   "help.about",
                                   "help.report",
                                   "file.new"}) // asks about the changes
    {
        SCOPED_TRACE(pszCommand);
        LookAtDialog([&] { Trigger(pszCommand); });
    }
    for (const char* pszCommand : {"file.open",
                                   "file.save_as",
                                   "file.import",
                                   "file.export_stl",
                                   "file.record",
                                   "file.play",
                                   "level.bitmap"})
    {
        // What Qt shows in these is left out: only the title and the kinds of files are the
        // editor's.
        SCOPED_TRACE(pszCommand);
        Answer<QFileDialog>([&] { Trigger(pszCommand); },
                            [&](QFileDialog& dialog)
                            {
                                Look(pszCommand, dialog.windowTitle());
                                Look(pszCommand, dialog.nameFilters().join(' '));
                                dialog.reject();
                            });
    }
    const std::string strHeights = m_Folder.Path("1.asc");
    WriteBytes(strHeights, "ncols 3\nnrows 2\ncellsize 10\n100 50 50\n50 50 50\n");
    LookAtDialog([&] { m_Window->GetDocuments().OpenFile(strHeights); });
    LookAtDialog([&] { m_Window->GetDocuments().OpenFile(m_Folder.Path("1.level")); });
    LookAtDialog([&] { AskToReplace(m_Window.get(), {{"1", true}, {"2", false}}); });
    Trigger("help.search");
    LookAt(*m_Window->findChild<CGuideWindow*>());
    EXPECT_EQ(m_Plain.join('\n').toStdString(), "");
}

TEST_F(CTexts, OfTheStartPagePassOnePlace)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ExemptOthers();
    LookAt(*m_Window);
    LookAtDialog([&] { Trigger("file.new"); });
    EXPECT_EQ(m_Plain.join('\n').toStdString(), "");
}
