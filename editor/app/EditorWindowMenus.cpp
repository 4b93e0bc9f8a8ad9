// The menus of the main window and the default keys of their commands.

#include "editor/app/CEditor.h"
#include "editor/app/CEditorWindow.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/KeyChords.h"
#include "host/ActionIds.h"
#include "host/FileSystem.h"
#include "host/IPluginTools.h"

#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>

namespace
{

constexpr SKeyChord NO_KEY = {};

constexpr SKeyChord Key(uint32_t uKey)
{
    return {uKey, 0};
}

constexpr SKeyChord Ctrl(uint32_t uKey)
{
    return {uKey, KEY_CONTROL};
}

constexpr SKeyChord CtrlShift(uint32_t uKey)
{
    return {uKey, KEY_CONTROL | KEY_SHIFT};
}

// Actions of the modes, see IPlugin::OnAction.
struct SCameraCommand
{
    const char* pszId = nullptr;
    const char* pszText = nullptr;
    SKeyChord key;
    int32_t iAction = 0;
};

constexpr SCameraCommand CAMERA_COMMANDS[] = {
    {"camera.from_east", "From the &east", Ctrl('6'), CAMERA_FROM_EAST},
    {"camera.from_south_east", "From the south-east", Ctrl('3'), CAMERA_FROM_SOUTH_EAST},
    {"camera.from_south", "From the &south", Ctrl('2'), CAMERA_FROM_SOUTH},
    {"camera.from_south_west", "From the south-west", Ctrl('1'), CAMERA_FROM_SOUTH_WEST},
    {"camera.from_west", "From the &west", Ctrl('4'), CAMERA_FROM_WEST},
    {"camera.from_north_west", "From the north-west", Ctrl('7'), CAMERA_FROM_NORTH_WEST},
    {"camera.from_north", "From the &north", Ctrl('8'), CAMERA_FROM_NORTH},
    {"camera.from_north_east", "From the north-east", Ctrl('9'), CAMERA_FROM_NORTH_EAST},
    {"camera.up", "Step &up", Key(Qt::Key_PageUp), CAMERA_UP},
    {"camera.down", "Step &down", Key(Qt::Key_PageDown), CAMERA_DOWN},
    {"camera.turn_left", "Turn &left", Key(Qt::Key_Left), CAMERA_TURN_LEFT},
    {"camera.turn_right", "Turn &right", Key(Qt::Key_Right), CAMERA_TURN_RIGHT},
};

constexpr std::tuple<const char*, const char*, uint32_t> STROKE_COMMANDS[] = {
    {"smooth", "Smooth with the stroke that begins", Qt::Key_Shift},
    {"line", "Keep the stroke on a straight line", 'C'},
    {"join", "Begin where the last stroke ended", Qt::Key_Space},
    {"raise", "Only raise", 'R'},
    {"lower", "Only lower", 'T'},
};

} // namespace

void CEditorWindow::MakeFileMenu()
{
    QMenu* pMenu = menuBar()->addMenu("&File");
    m_Commands.Add(pMenu, "file.new", "&New level...", Ctrl('N'), [this] { m_Documents.New(); });
    m_Commands.Add(pMenu, "file.open", "&Open...", Ctrl('O'), [this] { m_Documents.Open(); });
    m_pRecent = pMenu->addMenu("Open &recent");
    connect(m_pRecent, &QMenu::aboutToShow, this, [this] { FillRecentFiles(); });
    m_Commands.Add(pMenu,
                   "file.save",
                   "&Save",
                   Ctrl('S'),
                   [this]
                   {
                       m_Documents.Save();
                       ShowState();
                   });
    m_Commands.Add(pMenu,
                   "file.save_as",
                   "Save &as...",
                   CtrlShift('S'),
                   [this]
                   {
                       m_Documents.SaveAs();
                       ShowState();
                   });
    pMenu->addSeparator();
    m_Commands.Add(
        pMenu, "file.import", "&Import height map...", NO_KEY, [this] { m_Documents.Import(); });
    m_Commands.Add(
        pMenu, "file.export", "&Export height map...", NO_KEY, [this] { m_Documents.Export(); });
    m_Commands.Add(
        pMenu, "file.export_stl", "Export to S&TL...", NO_KEY, [this] { m_Documents.ExportStl(); });
    pMenu->addSeparator();
    m_Commands.Add(pMenu,
                   "file.record",
                   "Re&cord...",
                   CtrlShift('R'),
                   [this]
                   {
                       m_Documents.ToggleRecording();
                       ShowState();
                   });
    m_Commands.Add(pMenu, "file.play", "&Play script...", NO_KEY, [this] { AskForScript(); });
    pMenu->addSeparator();
    m_Commands.Add(pMenu, "file.quit", "&Quit", Ctrl('Q'), [this] { close(); });
}

void CEditorWindow::FillRecentFiles()
{
    m_pRecent->clear();
    for (const std::string& strPath : m_Editor.GetRecentFiles().GetPaths())
    {
        const QString strText = QString::fromStdString(strPath).replace('&', "&&");
        m_pRecent->addAction(strText, this, [this, strPath] { m_Documents.OpenFile(strPath); });
    }
    m_pRecent->addSeparator();
    m_pRecent->addAction("Clear", this, [this] { m_Editor.GetRecentFiles().Clear(); });
}

void CEditorWindow::MakeEditMenu()
{
    QMenu* pMenu = menuBar()->addMenu("&Edit");
    m_Commands.Add(pMenu, "edit.undo", "&Undo", Ctrl('Z'), [this] { StepHistory(false); });
    m_Commands.Add(pMenu, "edit.redo", "&Redo", CtrlShift('Z'), [this] { StepHistory(true); });
    m_Commands.Add(pMenu,
                   "edit.cancel",
                   "Take the stroke &back",
                   Key(Qt::Key_Escape),
                   [this] { CancelWork(); });
    for (const auto& [pszName, pszText, uKey] : STROKE_COMMANDS)
    {
        m_Commands.AddHeld((std::string(STROKE_COMMAND) + pszName).c_str(), pszText, Key(uKey));
    }
    pMenu->addSeparator();
    m_Commands.Add(pMenu, "edit.keys", "&Keys...", NO_KEY, [this] { EditKeys(); });
    m_Commands.Add(pMenu, "edit.settings", "&Settings...", NO_KEY, [this] { EditSettings(); });
}

void CEditorWindow::MakeViewMenu()
{
    QMenu* pMenu = menuBar()->addMenu("&View");
    m_Commands.Add(pMenu,
                   "view.add_perspective",
                   "New &perspective view",
                   NO_KEY,
                   [this] { m_pViews->Add(EViewKind::Perspective); });
    m_Commands.Add(
        pMenu, "view.add_top", "New &top view", NO_KEY, [this] { m_pViews->Add(EViewKind::Top); });
    m_Commands.Add(pMenu, "view.close", "&Close view", NO_KEY, [this] { m_pViews->CloseActive(); });
    pMenu->addSeparator();
    m_Commands.Add(pMenu,
                   "view.wire",
                   "&Wire frame",
                   Key('Z'),
                   [this]
                   {
                       const CViewWidget* pView = m_pViews->GetActive();
                       m_pPluginCommands->SendAction(pView->IsWireFrame() ? CAMERA_TOGGLE_OFF
                                                                          : CAMERA_TOGGLE_ON);
                   });
    QAction* pGrid = m_Commands.Add(pMenu, "view.grid", "&Grid", Key('G'), [] {});
    pGrid->setCheckable(true);
    pGrid->setChecked(m_Settings.render.bGrid);
    connect(pGrid,
            &QAction::toggled,
            this,
            [this](bool bOn)
            {
                m_Settings.render.bGrid = bOn;
                m_pViews->RequestFrames();
            });
    pMenu->addSeparator();
    m_Commands.Add(
        pMenu, "view.panel", "&Terrain panel and back", Key(Qt::Key_F6), [this] { GoToPanel(); });
    for (QDockWidget* pDock : findChildren<QDockWidget*>())
    {
        if (pDock != FindPanel()) // the plug-in opens and closes it
        {
            pMenu->addAction(pDock->toggleViewAction());
        }
    }
}

void CEditorWindow::MakeLevelMenu()
{
    QMenu* pMenu = menuBar()->addMenu("&Level");
    m_pMaterials = pMenu->addMenu("&Material");
    connect(m_pMaterials, &QMenu::aboutToShow, this, [this] { FillMaterials(); });
    m_Commands.Add(pMenu,
                   "level.bitmap",
                   "Terrain-type &bitmap...",
                   NO_KEY,
                   [this] { m_Documents.ChooseBitmap(); });
    m_Commands.Add(pMenu,
                   "level.no_bitmap",
                   "&No bitmap",
                   NO_KEY,
                   [this]
                   {
                       m_Editor.GetDocument().SetBitmap("");
                       OnLevel();
                   });
}

void CEditorWindow::FillMaterials()
{
    m_pMaterials->clear();
    const std::string strFolder = "data/materials";
    for (const std::string& strRoot : {fs::get_user_root(), fs::get_data_root()})
    {
        const QDir folder(QDir(QString::fromStdString(strRoot)).filePath(strFolder.c_str()));
        for (const QFileInfo& file : folder.entryInfoList({"*.mat"}, QDir::Files, QDir::Name))
        {
            const std::string strName = strFolder + "/" + file.fileName().toStdString();
            m_pMaterials->addAction(file.completeBaseName(),
                                    this,
                                    [this, strName]
                                    {
                                        m_Editor.GetDocument().SetMaterial(strName);
                                        OnLevel();
                                    });
        }
    }
    m_pMaterials->addSeparator();
    m_pMaterials->addAction("Other...", this, [this] { m_Documents.ChooseMaterial(); });
}

void CEditorWindow::MakeCameraMenu()
{
    QMenu* pMenu = menuBar()->addMenu("&Camera");
    m_Commands.Add(pMenu,
                   "camera.frame",
                   "&Frame the spot under the cursor",
                   Key('F'),
                   [this] { m_pViews->GetActive()->FrameSpot(); });
    m_Commands.Add(pMenu,
                   "camera.frame_all",
                   "Frame the &terrain",
                   Key(Qt::Key_Home),
                   [this] { m_pViews->GetActive()->FrameAll(); });
    pMenu->addSeparator();
    for (const SCameraCommand& command : CAMERA_COMMANDS)
    {
        const int32_t iAction = command.iAction;
        m_Commands.Add(pMenu,
                       command.pszId,
                       command.pszText,
                       command.key,
                       [this, iAction] { m_pPluginCommands->SendAction(iAction); });
    }
    constexpr std::tuple<const char*, const char*, uint32_t> FLY[] = {
        {"forward", "Fly forward", 'W'},
        {"back", "Fly back", 'S'},
        {"left", "Fly to the left", 'A'},
        {"right", "Fly to the right", 'D'},
        {"up", "Fly up", 'E'},
        {"down", "Fly down", 'Q'},
    };
    for (const auto& [pszName, pszText, uKey] : FLY)
    {
        m_Commands.AddHeld((std::string(FLY_COMMAND) + pszName).c_str(), pszText, Key(uKey));
    }
}

void CEditorWindow::MakeBrushMenu()
{
    m_pToolCommands = std::make_unique<CToolCommands>(GetHost(),
                                                      m_Editor.FindInterface<IPluginTools>(),
                                                      *m_pViews,
                                                      [this](int32_t iAction)
                                                      { m_pPluginCommands->SendAction(iAction); });
    m_pToolCommands->AddTo(*menuBar()->addMenu("&Brush"), m_Commands);
}

void CEditorWindow::MakeToolsMenu()
{
    m_pTools = menuBar()->addMenu("&Tools");
    m_pPluginCommands->AddMenus(*this, *m_pTools);
    m_pPluginCommands->AddToolBars(*this);
}
