#include "editor/app/CLevelCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/KeyChords.h"
#include "host/FileSystem.h"

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
    QMenu* pMaterials = menu.addMenu("&Material");
    QObject::connect(
        pMaterials, &QMenu::aboutToShow, [this, pMaterials] { FillMaterials(*pMaterials); });
    const auto choose = [this]
    {
        m_Documents.ChooseBitmap();
    };
    commands.Add(
        menu,
        {
            SCommand::Run("level.bitmap", "Terrain-type &bitmap...", NO_KEY, choose),
            SCommand::Run("level.no_bitmap", "&No bitmap", NO_KEY, [this] { DropBitmap(); }),
        });
}

// Those that come along and the user's own; the folder is read anew each time.
void CLevelCommands::FillMaterials(QMenu& menu)
{
    menu.clear();
    const std::string strFolder = "data/materials";
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
            pMaterial->setChecked(strName == m_Editor.GetDocument().GetMaterial());
        }
    }
    menu.addSeparator();
    menu.addAction("Other...", [this] { m_Documents.ChooseMaterial(); });
}

void CLevelCommands::DropBitmap()
{
    m_Editor.GetDocument().SetBitmap("");
    m_OnLevel();
}
