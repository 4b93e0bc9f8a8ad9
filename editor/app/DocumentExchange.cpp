// Import and export: what the commands about files of other formats do.

#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CImportDialog.h"
#include "editor/core/LevelExchange.h"
#include "engine/elevation/ElevationFormat.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Notice.h"

#include <QFileInfo>
#include <QMessageBox>

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

void CDocumentActions::Import()
{
    const std::string strPath = AskForFile(false, "Import height map", HEIGHT_FILTER);
    if (!strPath.empty())
    {
        ImportFile(strPath);
    }
}

bool CDocumentActions::ImportFile(const std::string& strPath)
{
    const QString strName = QFileInfo(QString::fromStdString(strPath)).fileName();
    const EElevationFormat eFormat = FindFormatByName(strPath.c_str());
    const bool bRaw = eFormat == EElevationFormat::Raw16 || eFormat == EElevationFormat::Raw32;
    CLevelDocument& document = m_Editor.GetDocument();
    CImportDialog dialog(&m_Window, strName, bRaw, document.HasLevel());
    if (dialog.exec() != QDialog::Accepted)
    {
        return false;
    }
    const EImportAs eAs = dialog.GetTarget();
    if (eAs == EImportAs::NewLevel && !MayLeave())
    {
        return false;
    }
    std::vector<std::string> lines;
    const bool bDone =
        ImportLevel(m_Editor.GetHost(), document, strPath.c_str(), dialog.GetOptions(), eAs, lines);
    if (!Report(bDone, "The height map cannot be imported."))
    {
        return false;
    }
    if (eAs == EImportAs::NewLevel)
    {
        m_Editor.GetAutosave().Remove();
    }
    m_OnLevel();
    if (!lines.empty())
    {
        QMessageBox::information(&m_Window, "Imported " + strName, JoinLines(lines));
    }
    return true;
}

void CDocumentActions::Export()
{
    CLevelDocument& document = m_Editor.GetDocument();
    const std::string strPath =
        document.HasLevel() ? AskForFile(true, "Export height map", HEIGHT_FILTER) : "";
    if (strPath.empty())
    {
        return;
    }
    SExportPlan plan;
    if (!Report(PlanLevelExport(m_Editor.GetHost(), strPath.c_str(), {}, plan),
                "The export cannot be made."))
    {
        return;
    }
    const auto eAnswer = QMessageBox::question(&m_Window,
                                               "Export height map",
                                               JoinLines(plan.lines),
                                               QMessageBox::Save | QMessageBox::Cancel);
    if (eAnswer == QMessageBox::Save)
    {
        const CSaveNotice notice;
        if (Report(ExportLevel(m_Editor.GetHost(), strPath.c_str(), plan),
                   "The export cannot be written."))
        {
            notice.Say(strPath.c_str());
        }
    }
}

void CDocumentActions::ExportStl()
{
    CTerrain* pTerrain = m_Editor.GetHost().GetEngine().GetCWorld().GetCTerrain();
    const std::string strPath =
        pTerrain != nullptr ? AskForFile(true, "Export to STL", "STL files (*.stl)") : "";
    if (pTerrain == nullptr || strPath.empty())
    {
        return;
    }
    const CSaveNotice notice;
    if (Report(pTerrain->ExportToSTL(strPath.c_str(), nullptr), "The STL file was not written."))
    {
        notice.Say(strPath.c_str());
    }
}
