#include "editor/app/CFileCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CScriptRunner.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"

#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>

#include <utility>

namespace
{

constexpr const char* RECORD = TextKey("Re&cord...");

} // namespace

CFileCommands::CFileCommands(QWidget& window,
                             CEditor& editor,
                             CDocumentActions& documents,
                             CScriptRunner& scripts,
                             std::function<void()> showState,
                             std::function<void()> onLevel)
    : m_Window(window)
    , m_Editor(editor)
    , m_Documents(documents)
    , m_Scripts(scripts)
    , m_ShowState(std::move(showState))
    , m_OnLevel(std::move(onLevel))
{
}

void CFileCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    AddLevels(menu, commands);
    AddScripts(menu, commands);
    commands.Add(menu,
                 {SCommand::Line(),
                  SCommand::Run("file.quit", "&Quit", Ctrl('Q'), [this] { m_Window.close(); })});
}

void CFileCommands::AddLevels(QMenu& menu, CCommandList& commands)
{
    commands.Add(
        menu,
        {
            SCommand::Run("file.new", "&New level...", Ctrl('N'), [this] { m_Documents.New(); }),
            SCommand::Run("file.open", "&Open...", Ctrl('O'), [this] { m_Documents.Open(); }),
        });
    QMenu* pRecent = menu.addMenu(Words("Open &recent"));
    QObject::connect(
        pRecent, &QMenu::aboutToShow, &m_Window, [this, pRecent] { FillRecentFiles(*pRecent); });
    CHeightExchange& exchange = m_Documents.GetExchange();
    const auto hasLevel = [this]
    {
        return m_Editor.GetDocument().HasLevel();
    };
    const auto save = [this]
    {
        m_Documents.Save();
        m_ShowState();
    };
    const auto saveAs = [this]
    {
        m_Documents.SaveAs();
        m_ShowState();
    };
    commands.Add(
        menu,
        {
            SCommand::Run("file.save", "&Save", Ctrl('S'), save, hasLevel),
            SCommand::Run("file.save_as", "Save &as...", CtrlShift('S'), saveAs, hasLevel),
            SCommand::Line(),
            SCommand::Run(
                "file.import", "&Import height map...", NO_KEY, [&exchange] { exchange.Import(); }),
            SCommand::Run(
                "file.export", "&Export height map...", NO_KEY, [&exchange] { exchange.Export(); }),
            SCommand::Run("file.export_stl",
                          "Export to S&TL...",
                          NO_KEY,
                          [&exchange] { exchange.ExportStl(); }),
        });
}

void CFileCommands::AddScripts(QMenu& menu, CCommandList& commands)
{
    const auto record = [this]
    {
        ToggleRecording();
        m_ShowState();
    };
    const auto getText = [this]
    {
        return IsRecording() ? Words("Stop re&cording") : RECORD;
    };
    commands.Add(
        menu,
        {
            SCommand::Line(),
            {.pszId = "file.record",
             .pszText = RECORD,
             .key = CtrlShift('R'),
             .run = record,
             .getText = getText},
            SCommand::Run("file.play", "&Play script...", NO_KEY, [this] { AskForScript(); }),
        });
}

void CFileCommands::ToggleRecording()
{
    CRecorder* pRecorder = m_Editor.GetRecorder();
    if (pRecorder == nullptr)
    {
        return;
    }
    CDocumentQuestions& questions = m_Documents.GetQuestions();
    if (pRecorder->IsRecording())
    {
        const bool bWhole = pRecorder->Stop();
        questions.Report(bWhole,
                         Words("The script is not complete. What was recorded is in\n") +
                             QString::fromStdString(pRecorder->GetPartPath()));
        return;
    }
    const std::string strPath = questions.AskForFile(
        true, Words("Record a replay script"), Words("Replay scripts (*.tellur)"));
    if (!strPath.empty())
    {
        questions.Report(pRecorder->Start(strPath), Words("The script cannot be recorded."));
    }
}

void CFileCommands::FillRecentFiles(QMenu& menu)
{
    menu.clear();
    for (const std::string& strPath : m_Editor.GetRecentFiles().GetPaths())
    {
        // A single '&' would mark the letter behind it as a key of the menu.
        const QString strText = QString::fromStdString(strPath).replace('&', "&&");
        menu.addAction(strText, &m_Window, [this, strPath] { m_Documents.OpenFile(strPath); });
    }
    menu.addSeparator();
    menu.addAction(Words("Clear"), &m_Window, [this] { m_Editor.GetRecentFiles().Clear(); });
}

void CFileCommands::AskForScript()
{
    const QString strPath =
        QFileDialog::getOpenFileName(&m_Window,
                                     Words("Play script"),
                                     QString(),
                                     Words("Replay scripts (*.tellur);;All files (*)"));
    if (strPath.isEmpty() || !m_Documents.MayLeave())
    {
        return;
    }
    std::string strFault;
    const EScriptEnd eEnd = m_Scripts.Play(strPath.toStdString(), strFault);
    if (eEnd == EScriptEnd::Failed ||
        eEnd == EScriptEnd::Unusable) // the status bar tells of a stop
    {
        QMessageBox::warning(&m_Window, "Tellur", QString::fromStdString(strFault));
    }
    m_OnLevel();
}

bool CFileCommands::IsRecording() const
{
    const CRecorder* pRecorder = m_Editor.GetRecorder();
    return pRecorder != nullptr && pRecorder->IsRecording();
}
