#include "editor/app/CLevelCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CNewBitmapDialog.h"
#include "editor/app/CPropertiesDialog.h"
#include "editor/app/FileChoice.h"
#include "editor/app/KeyChords.h"
#include "editor/core/LevelBitmap.h"
#include "editor/core/SLevelText.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/IPluginPainting.h"
#include "host/Log.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>

#include <utility>

CLevelCommands::CLevelCommands(CEditor& editor,
                               CDocumentActions& documents,
                               std::function<void()> onLevel)
    : m_Editor(editor)
    , m_Documents(documents)
    , m_OnLevel(std::move(onLevel))
{
}

void CLevelCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto hasLevel = [this]
    {
        return m_Editor.GetDocument().HasLevel();
    };
    commands.Add(
        menu,
        {SCommand::Run(
             "level.properties", "P&roperties...", NO_KEY, [this] { ShowProperties(); }, hasLevel),
         SCommand::Line()});
    QMenu* pMaterials = menu.addMenu(Words("&Material"));
    pMaterials->setObjectName("materials"); // the toolbar has it, too
    QObject::connect(
        pMaterials, &QMenu::aboutToShow, [this, pMaterials] { FillMaterials(*pMaterials); });
    const auto choose = [this]
    {
        m_Documents.ChooseBitmap();
    };
    commands.Add(
        menu,
        {
            SCommand::Run(
                "level.new_bitmap", "N&ew bitmap...", NO_KEY, [this] { NewBitmap(); }, hasLevel),
            SCommand::Run("level.bitmap", "Terrain-type &bitmap...", NO_KEY, choose),
            SCommand::Run("level.no_bitmap", "&No bitmap", NO_KEY, [this] { DropBitmap(); }),
        });
}

// Those that come along and the user's own; the folder is read anew each time.
void CLevelCommands::FillMaterials(QMenu& menu)
{
    menu.clear();
    if (!m_Editor.GetDocument().HasLevel())
    {
        menu.addAction(Words("There is no level"))->setEnabled(false);
        return;
    }
    const std::string strFolder = "data/materials";
    const std::string& strNamed = m_Editor.GetDocument().GetMaterial();
    const std::string strNow = strNamed.empty() ? strFolder + "/terrain.mat" : strNamed;
    for (const std::string& strRoot : {fs::get_user_root(), fs::get_data_root()})
    {
        const QDir folder(QDir(QString::fromStdString(strRoot)).filePath(strFolder.c_str()));
        for (const QFileInfo& file : folder.entryInfoList({"*.mat"}, QDir::Files, QDir::Name))
        {
            const std::string strName = strFolder + "/" + file.fileName().toStdString();
            QAction* pMaterial = menu.addAction(file.completeBaseName(),
                                                [this, strName]
                                                {
                                                    m_Editor.GetDocument().SetMaterial(strName);
                                                    m_OnLevel();
                                                });
            pMaterial->setCheckable(true);
            pMaterial->setChecked(strName == strNow);
        }
    }
    menu.addSeparator();
    menu.addAction(Words("Other..."), [this] { m_Documents.ChooseMaterial(); });
}

void CLevelCommands::DropBitmap()
{
    m_Editor.GetDocument().SetBitmap("");
    m_OnLevel();
}

// An older file of the name was asked about; what shows it takes the new one.
void CLevelCommands::NewBitmap()
{
    if (!m_Editor.GetDocument().HasLevel())
    {
        return; // gone since the menu was shown
    }
    CDocumentQuestions& questions = m_Documents.GetQuestions();
    CEngineHost& engine = m_Editor.GetHost().GetEngine();
    const CTerrain& terrain = *engine.GetCWorld().GetCTerrain();
    CNewBitmapDialog dialog(
        &questions.GetWindow(), terrain.GetCellsPerSide(), terrain.GetCellsPerSideZ());
    if (dialog.exec() != QDialog::Accepted)
    {
        return;
    }
    std::string strPath =
        questions.AskForFile(true, Words("New bitmap"), Words("PNG pictures (*.png)"));
    if (strPath.empty() ||
        !questions.Report(
            !IsPainted(strPath) &&
                MakeLevelBitmap(strPath, dialog.GetWidth(), dialog.GetHeight(), dialog.GetColor()),
            Words("The bitmap cannot be written.")))
    {
        return;
    }
    const std::string strName = MakeRootRelative(strPath);
    if (strName == m_Editor.GetDocument().GetBitmap())
    {
        engine.ReloadTexture(strName.c_str());
    }
    m_Editor.GetDocument().SetBitmap(strName);
    m_OnLevel();
}

// The plug-in has the file's texels and would put them back with its next save. True after one
// logged line.
bool CLevelCommands::IsPainted(const std::string& strPath) const
{
    auto* pPainting = m_Editor.FindInterface<IPluginPainting>();
    const bool bPainted =
        pPainting != nullptr && pPainting->GetBitmap() != nullptr &&
        GetFullPath(pPainting->GetBitmapFile().c_str()) == GetFullPath(strPath.c_str());
    if (bPainted)
    {
        CrashLog("[CLevelCommands::NewBitmap] %s is being painted: choose another name\n",
                 strPath.c_str());
    }
    return bPainted;
}

void CLevelCommands::ShowProperties()
{
    if (!m_Editor.GetDocument().HasLevel())
    {
        return;
    }
    CEditorHost& host = m_Editor.GetHost();
    host.GetInput().EndDrag(); // the stroke under the hand counts for what the dialog shows
    host.GetProtection().End();
    CDocumentQuestions& questions = m_Documents.GetQuestions();
    CPropertiesDialog dialog(&questions.GetWindow(),
                             *host.GetEngine().GetCWorld().GetCTerrain(),
                             !m_Editor.GetDocument().GetBitmap().empty());
    if (dialog.exec() != QDialog::Accepted)
    {
        return;
    }
    size_t nDone = 0;
    for (const SGroundAct& act : dialog.GetActs())
    {
        if (!questions.Report(host.GetGround().Do(act),
                              nDone == 0
                                  ? Words("The ground cannot be changed.")
                                  : Words("The ground cannot be changed further. The steps before "
                                          "are done.")))
        {
            return;
        }
        ++nDone;
    }
}
