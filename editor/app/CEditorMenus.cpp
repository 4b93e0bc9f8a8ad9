#include "editor/app/CEditorMenus.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/Words.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPoint>

#include <vector>

CEditorMenus::CEditorMenus(const SMenuParts& parts)
    : m_Window(parts.window)
    , m_Commands(parts.commands)
    , m_Spot(parts.views)
    , m_Plugin(parts.plugin)
    , m_File(parts.window,
             parts.editor,
             parts.documents,
             parts.scripts,
             parts.showState,
             parts.onLevel)
    , m_Edit(parts.window, parts.editor, parts.views, parts.settings, parts.hand, parts.showState)
    , m_View(parts.editor, parts.views, parts.layout, parts.plugin, parts.settings.render)
    , m_Level(parts.editor, parts.documents, parts.onLevel)
    , m_Protection(parts.window, parts.editor, parts.views, parts.showState)
    , m_Measure(parts.window,
                parts.editor,
                parts.views,
                m_Spot,
                parts.measure,
                parts.settings,
                parts.showState)
    , m_Camera(parts.views, parts.levelViews, parts.plugin, parts.showState)
    , m_Brush(parts.editor, parts.views, parts.plugin)
    , m_Form(parts.window, parts.views, parts.settings.input.form)
    , m_Library(parts.library, parts.views)
    , m_Strokes(parts.editor, parts.views, parts.settings.input, parts.hand, parts.showState)
    , m_Symmetry(parts.window, parts.views, m_Spot, parts.settings.input.symmetry, parts.showState)
    , m_Centre(parts.editor.GetHost(), parts.settings.input.symmetry)
    , m_Help(parts.window, parts.editor, parts.views, parts.documents.GetQuestions())
    , m_pToolBar(new CEditToolBar(&parts.window, parts.editor, parts.views))
{
    // The plug-in asks for a menu by its English name, whatever is shown.
    const auto add = [&bar = *m_Window.menuBar()](const char* pszText)
    {
        QMenu* pMenu = bar.addMenu(Words(pszText));
        pMenu->setObjectName(QString(pszText).remove('&'));
        return pMenu;
    };
    m_File.AddTo(*add(TextKey("&File")), m_Commands);
    m_Edit.AddTo(*add(TextKey("&Edit")), m_Commands);
    QMenu* pView = add(TextKey("&View"));
    m_View.AddTo(*pView, m_Commands);
    m_View.AddDocks(*pView, m_Window);
    QMenu* pLevel = add(TextKey("&Level"));
    m_Level.AddTo(*pLevel, m_Commands);
    m_Protection.AddTo(*pLevel, m_Commands);
    m_Measure.AddTo(*pLevel, m_Commands);
    m_Camera.AddTo(*add(TextKey("&Camera")), m_Commands);
    QMenu* pBrush = add(TextKey("&Brush"));
    m_Brush.AddTo(*pBrush, m_Commands);
    m_Form.AddTo(*pBrush, m_Commands);
    m_Strokes.AddTo(*pBrush, m_Commands);
    m_Symmetry.AddTo(*add(TextKey("&Symmetry")), m_Commands);
    // Last, when all menus are there that the plug-in may want its own to lie in.
    QMenu* pTools = add(TextKey("&Tools"));
    m_Plugin.AddMenus(m_Window, *pTools);
    m_Library.AddTo(*pTools, m_Commands);
    m_Help.AddTo(*add(TextKey("&Help")), m_Commands);
    m_Plugin.AddToolBars(m_Window);
    m_pToolBar->Fill(
        m_Commands, m_Brush.GetToolIds(), pView, pLevel->findChild<QMenu*>("materials"));
    m_Window.addToolBar(m_pToolBar);
    m_Commands.AddPluginActions([this](int32_t iAction) { m_Plugin.SendAction(iAction); });
    m_Commands.NeedLevel({"action.",
                          "brush.",
                          "camera.",
                          "file.export",
                          "level.",
                          "path.",
                          "stroke.",
                          "tool.",
                          "turn.",
                          "view.add",
                          "view.close",
                          "view.wire"},
                         [&document = parts.editor.GetDocument()] { return document.HasLevel(); });
    m_Commands.ApplyKeys();
}

void CEditorMenus::Follow()
{
    m_Strokes.Follow(); // first: it may change what the others show
    m_Measure.Follow();
    m_Commands.Follow();
    m_pToolBar->Follow();
}

void CEditorMenus::ShowContextMenu(ViewId view, const QPoint& screen)
{
    std::vector<QAction*> more;
    for (const char* pszId : {"camera.frame",
                              "camera.frame_all",
                              "view.wire",
                              CMeasureCommands::PROBE_HERE,
                              CSymmetryCommands::CENTRE_HERE,
                              "edit.undo"})
    {
        more.push_back(m_Commands.Find(pszId));
    }
    m_Spot.Set(view); // while the menu is open the cursor is over it
    m_Plugin.ShowContextMenu(m_Window, view, screen, more);
    m_Spot.Set(NO_VIEW);
}
