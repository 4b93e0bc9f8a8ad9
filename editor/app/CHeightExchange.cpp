#include "editor/app/CHeightExchange.h"

#include "editor/app/CDocumentQuestions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CExportDialog.h"
#include "editor/app/CImportDialog.h"
#include "editor/app/CImportSource.h"
#include "editor/app/FileChoice.h"
#include "editor/core/ExportTargets.h"
#include "editor/core/LevelExchange.h"
#include "editor/core/Words.h"
#include "engine/elevation/TileSet.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/Notice.h"

#include <QFileInfo>
#include <QMessageBox>

#include <utility>

namespace
{

constexpr int SHOWN_LINES = 12;

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
        m_Questions.AskForFile(false, Words("Import height map"), GetHeightMapFilter());
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
        return !bCancelled &&
               m_Questions.Report(false, Words("The height map cannot be imported."));
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
    if (!m_Questions.Report(bDone, Words("The height map cannot be imported.")))
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
    Notice((strName + Words(" imported")).toUtf8().constData());
    return true;
}

void CHeightExchange::Export()
{
    if (!m_Editor.GetDocument().HasLevel())
    {
        return;
    }
    const std::vector<SExportTarget> targets =
        ReadExportTargets(READY_EXPORTS, m_Editor.GetConfigFile(OWN_EXPORTS));
    CExportDialog dialog(&m_Questions.GetWindow(), GetGroundFacts(m_Editor.GetHost()), targets);
    if (dialog.exec() != QDialog::Accepted)
    {
        return;
    }
    const SExportTarget* pTarget = dialog.GetTarget();
    pTarget != nullptr ? ExportForTarget(*pTarget, dialog.GetTiles()) : ExportByName();
}

void CHeightExchange::ExportForTarget(const SExportTarget& target, uint32_t uTiles)
{
    const QString strFilter = Words("Height maps (*.%1)");
    const std::string strPath =
        m_Questions.AskForFile(true,
                               Words("Export height map"),
                               strFilter.arg(QString::fromStdString(target.strExtension)));
    if (strPath.empty())
    {
        return;
    }
    STargetExport made;
    if (!m_Questions.Report(PlanLevelExport(m_Editor.GetHost(), strPath, target, uTiles, made),
                            Words("The export cannot be made.")))
    {
        return;
    }
    // The dialog has shown the rest; nobody has been asked about tiles that are there yet.
    QStringList losses;
    for (const std::string& strLine : made.plan.lines)
    {
        if (strLine.starts_with("warning: ") || strLine.starts_with("fit: "))
        {
            losses << QString::fromStdString(strLine);
        }
    }
    const std::string strFirst = GetTilePath(strPath, 0, 0);
    if (uTiles > 1 && fs::exists(strFirst.c_str()))
    {
        losses << QString::fromStdString(strFirst + Words(" and its neighbours are replaced"));
    }
    if (losses.isEmpty() || AskToSave(losses))
    {
        const CSaveNotice notice;
        if (m_Questions.Report(ExportLevel(m_Editor.GetHost(), strPath, made),
                               Words("The export cannot be written.")))
        {
            notice.Say((uTiles > 1 ? strFirst : strPath).c_str());
        }
    }
}

bool CHeightExchange::AskToSave(const QStringList& lines)
{
    return QMessageBox::question(&m_Questions.GetWindow(),
                                 Words("Export height map"),
                                 lines.mid(0, SHOWN_LINES).join('\n'),
                                 QMessageBox::Save | QMessageBox::Cancel) == QMessageBox::Save;
}

void CHeightExchange::ExportByName()
{
    const std::string strPath =
        m_Questions.AskForFile(true, Words("Export height map"), GetHeightMapFilter());
    if (strPath.empty())
    {
        return;
    }
    // The plan says what the export will lose, before anything is written.
    SExportPlan plan;
    if (!m_Questions.Report(PlanLevelExport(m_Editor.GetHost(), strPath.c_str(), {}, plan),
                            Words("The export cannot be made.")))
    {
        return;
    }
    QStringList lines;
    for (const std::string& strLine : plan.lines)
    {
        lines << QString::fromStdString(strLine);
    }
    if (AskToSave(lines))
    {
        const CSaveNotice notice;
        if (m_Questions.Report(ExportLevel(m_Editor.GetHost(), strPath.c_str(), plan),
                               Words("The export cannot be written.")))
        {
            notice.Say(strPath.c_str());
        }
    }
}

void CHeightExchange::ExportStl()
{
    CTerrain* pTerrain = m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain();
    const std::string strPath =
        pTerrain != nullptr
            ? m_Questions.AskForFile(true, Words("Export to STL"), Words("STL files (*.stl)"))
            : "";
    if (pTerrain == nullptr || strPath.empty())
    {
        return;
    }
    const CSaveNotice notice;
    if (m_Questions.Report(pTerrain->ExportToSTL(strPath.c_str(), nullptr),
                           Words("The STL file was not written.")))
    {
        notice.Say(strPath.c_str());
    }
}
