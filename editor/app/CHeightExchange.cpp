#include "editor/app/CHeightExchange.h"

#include "editor/app/CDocumentQuestions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CImportDialog.h"
#include "editor/app/CImportSource.h"
#include "editor/app/FileChoice.h"
#include "editor/core/LevelExchange.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Notice.h"

#include <QFileInfo>
#include <QMessageBox>

#include <utility>

namespace
{

constexpr int SHOWN_LINES = 12;

QString JoinLines(const std::vector<std::string>& lines)
{
    QStringList shown;
    for (const std::string& strLine : lines)
    {
        if (shown.size() < SHOWN_LINES)
        {
            shown << QString::fromStdString(strLine);
        }
    }
    return shown.join('\n');
}

} // namespace

CHeightExchange::CHeightExchange(CEditor& editor,
                                 CDocumentQuestions& questions,
                                 std::function<bool()> mayLeave,
                                 std::function<void()> onLevel)
    : m_Editor(editor)
    , m_Questions(questions)
    , m_MayLeave(std::move(mayLeave))
    , m_OnLevel(std::move(onLevel))
{
}

void CHeightExchange::Import()
{
    const std::string strPath =
        m_Questions.AskForFile(false, "Import height map", GetHeightMapFilter());
    if (!strPath.empty())
    {
        ImportFile(strPath);
    }
}

bool CHeightExchange::ImportFile(const std::string& strPath)
{
    CImportSource source(strPath);
    // A raw file that is no square is read once its shape is told.
    const bool bRead = source.Read({});
    const bool bCancelled = !bRead && m_Questions.TakeCancelled();
    if (bCancelled || (!bRead && !source.IsRaw()))
    {
        return !bCancelled && m_Questions.Report(false, "The height map cannot be imported.");
    }
    CLevelDocument& document = m_Editor.GetDocument();
    CImportDialog dialog(&m_Questions.GetWindow(),
                         source,
                         document.HasLevel(),
                         [this] { return m_Questions.GetLastMessage(); });
    if (dialog.exec() != QDialog::Accepted)
    {
        return false;
    }
    // Heights for the open level are a step that undo takes back; only a new level asks about
    // changes.
    const EImportAs eAs = dialog.GetTarget();
    if (eAs == EImportAs::NewLevel && !m_MayLeave())
    {
        return false;
    }
    SImportReport report = source.GetReport();
    const bool bDone = ImportLevel(m_Editor.GetHost(),
                                   document,
                                   strPath.c_str(),
                                   std::move(source.GetGrid()),
                                   report,
                                   dialog.GetOptions(),
                                   eAs);
    if (!m_Questions.Report(bDone, "The height map cannot be imported."))
    {
        return false;
    }
    if (eAs == EImportAs::NewLevel)
    {
        m_Editor.GetAutosave().Remove();
    }
    m_OnLevel();
    // The dialog has shown all that was assumed.
    const QString strName = QFileInfo(QString::fromStdString(strPath)).fileName();
    Notice((strName + " imported").toUtf8().constData());
    return true;
}

void CHeightExchange::Export()
{
    CLevelDocument& document = m_Editor.GetDocument();
    const std::string strPath =
        document.HasLevel()
            ? m_Questions.AskForFile(true, "Export height map", GetHeightMapFilter())
            : "";
    if (strPath.empty())
    {
        return;
    }
    // The plan says what the export will lose, before anything is written.
    SExportPlan plan;
    if (!m_Questions.Report(PlanLevelExport(m_Editor.GetHost(), strPath.c_str(), {}, plan),
                            "The export cannot be made."))
    {
        return;
    }
    const auto eAnswer = QMessageBox::question(&m_Questions.GetWindow(),
                                               "Export height map",
                                               JoinLines(plan.lines),
                                               QMessageBox::Save | QMessageBox::Cancel);
    if (eAnswer == QMessageBox::Save)
    {
        const CSaveNotice notice;
        if (m_Questions.Report(ExportLevel(m_Editor.GetHost(), strPath.c_str(), plan),
                               "The export cannot be written."))
        {
            notice.Say(strPath.c_str());
        }
    }
}

void CHeightExchange::ExportStl()
{
    CTerrain* pTerrain = m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain();
    const std::string strPath =
        pTerrain != nullptr ? m_Questions.AskForFile(true, "Export to STL", "STL files (*.stl)")
                            : "";
    if (pTerrain == nullptr || strPath.empty())
    {
        return;
    }
    const CSaveNotice notice;
    if (m_Questions.Report(pTerrain->ExportToSTL(strPath.c_str(), nullptr),
                           "The STL file was not written."))
    {
        notice.Say(strPath.c_str());
    }
}
