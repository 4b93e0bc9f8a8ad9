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
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Notice.h"

#include <QFileInfo>
#include <QMessageBox>

#include <algorithm>
#include <utility>

namespace
{

constexpr int SHOWN_LINES = 12;
constexpr size_t NAMED_FILES = 4;

QString GetFileName(const std::string& strPath)
{
    return QFileInfo(QString::fromStdString(strPath)).fileName();
}

// "5 files are replaced: a, b, c, d and 1 more"; without files nothing is added.
void AddFiles(const std::vector<std::string>& files,
              const char* pszOne,
              const char* pszMany,
              QStringList& lines)
{
    QStringList names;
    for (size_t i = 0; i < std::min(files.size(), NAMED_FILES); ++i)
    {
        names << GetFileName(files[i]);
    }
    QString strNames = names.join(", ");
    if (files.size() > NAMED_FILES)
    {
        strNames += QString(Words(" and %1 more")).arg(files.size() - NAMED_FILES);
    }
    if (!files.empty())
    {
        lines << QString(files.size() == 1 ? pszOne : pszMany).arg(files.size()) + strNames;
    }
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
    const bool bRead = source.Read();
    const bool bCancelled = !bRead && m_Questions.TakeCancelled();
    if (bCancelled || (!bRead && !source.IsRaw()))
    {
        return !bCancelled &&
               m_Questions.Report(false, Words("The height map cannot be imported."));
    }
    CImportDialog dialog(&m_Questions.GetWindow(),
                         source,
                         m_Editor.GetDocument().HasLevel(),
                         [this] { return m_Questions.GetLastMessage(); });
    // Heights for the open level are a step that undo takes back; only a new level asks about
    // changes. Who thinks better of it there is back at what was set.
    do
    {
        if (dialog.exec() != QDialog::Accepted)
        {
            return false;
        }
    } while (dialog.GetTarget() == EImportAs::NewLevel && !m_MayLeave());
    return Take(source, dialog.GetOptions(), dialog.GetTarget());
}

bool CHeightExchange::Take(CImportSource& source, const SImportOptions& options, EImportAs eAs)
{
    SImportReport report = source.GetReport();
    const bool bDone = ImportLevel(m_Editor.GetHost(),
                                   m_Editor.GetDocument(),
                                   source.GetPath().c_str(),
                                   std::move(source.GetGrid()),
                                   report,
                                   options,
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
    Notice((QString::fromStdString(source.GetName()) + Words(" imported")).toUtf8().constData());
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
    pTarget != nullptr ? ExportForTarget(*pTarget, {dialog.GetTiles(), dialog.GetUnit()})
                       : ExportByName();
}

void CHeightExchange::ExportForTarget(const SExportTarget& target, const STargetChoice& choice)
{
    const QString strFilter = Words("Height maps (*.%1)");
    const std::string strPath =
        m_Questions.AskForFile(true,
                               Words("Export height map"),
                               strFilter.arg(QString::fromStdString(target.strExtension)),
                               false);
    if (strPath.empty())
    {
        return;
    }
    STargetExport made;
    if (!m_Questions.Report(PlanLevelExport(m_Editor.GetHost(), strPath, target, choice, made),
                            Words("The export cannot be made.")))
    {
        return;
    }
    // The dialog has shown the rest; nobody has been asked about files that are there yet.
    QStringList losses;
    AddFiles(
        made.replaced, Words("%1 file is replaced: "), Words("%1 files are replaced: "), losses);
    AddFiles(made.removed,
             Words("%1 tile of a larger set is removed: "),
             Words("%1 tiles of a larger set are removed: "),
             losses);
    const bool bReplaces = !losses.isEmpty();
    for (const std::string& strLine : made.plan.lines)
    {
        if (strLine.starts_with("warning: ") || strLine.starts_with("fit: "))
        {
            losses << QString::fromStdString(strLine);
        }
    }
    if (!losses.isEmpty() && !AskToSave(losses, bReplaces))
    {
        return;
    }
    const CSaveNotice notice;
    if (!m_Questions.Report(ExportLevel(m_Editor.GetHost(), strPath, made),
                            Words("The export cannot be written.")))
    {
        return;
    }
    if (choice.uTiles > 1)
    {
        Notice(QString(Words("%1 tiles of %2 saved"))
                   .arg(choice.uTiles * choice.uTiles)
                   .arg(GetFileName(strPath))
                   .toUtf8()
                   .constData());
        return;
    }
    notice.Say(strPath.c_str());
}

bool CHeightExchange::AskToSave(const QStringList& lines, bool bReplaces)
{
    // The return key alone must not replace anything.
    return QMessageBox::question(&m_Questions.GetWindow(),
                                 Words("Export height map"),
                                 lines.mid(0, SHOWN_LINES).join('\n'),
                                 QMessageBox::Save | QMessageBox::Cancel,
                                 bReplaces ? QMessageBox::Cancel : QMessageBox::Save) ==
           QMessageBox::Save;
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
    if (AskToSave(lines, false)) // the file dialog has asked
    {
        const CSaveNotice notice;
        if (m_Questions.Report(ExportLevel(m_Editor.GetHost(), strPath.c_str(), plan),
                               Words("The export cannot be written.")))
        {
            DropOldText(strPath);
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
