// Each text of the editor's own passes one place: with a catalogue that puts all of them into
// brackets, no window shows one without.

#include "editor/app/CTextTranslator.h"
#include "editor/core/ExportTargets.h"
#include "framework/core/CMenu.h"
#include "tests/editor/app/DocumentsFixture.h"
#include "tests/support/TestPaths.h"

#include <QAbstractSpinBox>
#include <QDialog>
#include <QDockWidget>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTabBar>
#include <QToolBar>
#include <QTreeWidget>

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

    // What is not the editor's own: the plug-in's texts, and what files and the log have.
    void Exempt(const QString& strText) { m_Other << QString(strText).remove('&'); }

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
        }
        for (size_t i = 0; i < registry.GetProcessCount(); ++i)
        {
            Exempt(QString::fromUtf8(registry.GetProcess(i)->GetName()));
        }
        for (const SExportTarget& target : ReadExportTargets(READY_EXPORTS, ""))
        {
            Exempt(QString::fromStdString(target.strName));
            Exempt(QString::fromStdString(target.strUse));
        }
    }

    // The letters of a text that are in no brackets and nobody else's.
    QString FindPlain(QString strText) const
    {
        static const QRegularExpression s_Inner("\\[~((?!\\[~|~\\]).)*~\\]",
                                                QRegularExpression::DotMatchesEverythingOption);
        while (strText.contains(s_Inner))
        {
            strText.remove(s_Inner);
        }
        static const QRegularExpression s_Words("\\p{L}{2,}");
        return s_Words.match(strText).captured();
    }

    void Look(const QString& strWhere, const QString& strText)
    {
        if (!FindPlain(strText).isEmpty())
        {
            m_Plain << strWhere + ": " + strText;
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
            Look(strWhere + ' ' + pszProperty, widget.property(pszProperty).toString());
        }
        LookAtActions(widget);
        if (auto* pView = qobject_cast<QAbstractItemView*>(&widget))
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
            for (int iRow = 0; iRow < model.rowCount(); ++iRow)
            {
                Look(strWhere, model.index(iRow, iColumn).data().toString());
            }
        }
    }

    CTextTranslator m_Texts;
    QStringList m_Other;
    QStringList m_Plain;
};

} // namespace

TEST_F(CTexts, OfEveryWindowPassOnePlace)
{
    m_bTools = true;
    ASSERT_NO_FATAL_FAILURE(Start());
    GetHost().SwitchPanel();
    ExemptOthers();
    LookAt(*m_Window);
    std::printf("%s\n", m_Plain.join('\n').toUtf8().constData());
}
