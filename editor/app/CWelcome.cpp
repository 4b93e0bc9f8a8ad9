#include "editor/app/CWelcome.h"

#include "editor/app/CBrushCatalogue.h"
#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CStartPage.h"
#include "editor/app/CStatusLine.h"
#include "editor/app/CViewArea.h"
#include "editor/app/HintWords.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/Words.h"
#include "engine/paint/CPaintLayer.h"
#include "host/FileSystem.h"
#include "host/IPlugin.h"
#include "host/IPluginMark.h"
#include "host/IPluginTools.h"

#include <QAction>
#include <QFileInfo>

#include <algorithm>

namespace
{

constexpr char PICTURE_FOLDER[] = "recent-pictures";
constexpr char FIRST_BRUSH[] = "Soft hill";
constexpr char HINT[] = "hint";
// The first one that is there: real elevation, which "./run" fetches, or the one that comes along.
constexpr const char* SAMPLES[] = {"data/samples/jacksboro.height", "data/samples/valley.height"};

} // namespace

CWelcome::CWelcome(const SWelcomeParts& parts)
    : m_Parts(parts)
    , m_Pictures(parts.editor, parts.editor.GetConfigFile(PICTURE_FOLDER))
    , m_pPage(nullptr)
{
    MakePage(m_Parts.views);
    m_Parts.editor.GetHost().GetObservers().Add(this);
}

CWelcome::~CWelcome()
{
    m_Parts.editor.GetHost().GetObservers().Remove(this);
    GiveKeyboardTo(nullptr);
    delete m_pPage; // what its buttons call goes with this
}

void CWelcome::MakePage(QWidget& views)
{
    const auto trigger = [this](const char* pszCommand)
    {
        return [this, pszCommand]
        {
            m_Parts.commands.Find(pszCommand)->trigger();
        };
    };
    m_pPage = new CStartPage(
        views,
        {{"start-new",
          Words("New level"),
          Words("Flat ground of any size"),
          {},
          trigger("file.new")},
         {"start-open", Words("Open"), Words("A level or a height map"), {}, trigger("file.open")},
         {"start-import",
          Words("Import an elevation model"),
          Words("GeoTIFF, 16-bit pictures, raw samples and others"),
          {},
          trigger("file.import")},
         {"start-sample",
          Words("Sample level"),
          Words("A valley to try the tools on"),
          {},
          [this]
          {
              OpenSample();
          }}});
}

void CWelcome::OpenSample()
{
    for (const char* pszSample : SAMPLES)
    {
        if (fs::exists(pszSample))
        {
            m_Parts.documents.OpenFile(fs::root_path(pszSample));
            return;
        }
    }
    m_Parts.status.Say(Words("The sample level is not there: ") + QString(SAMPLES[1]));
}

void CWelcome::BeginPerson()
{
    m_bPerson = true;
    FollowLevel();
    Follow();
}

void CWelcome::FollowLevel()
{
    const bool bLevel = m_Parts.editor.GetDocument().HasLevel();
    if (!bLevel && m_pPage->isHidden())
    {
        m_pPage->Begin();
        GiveKeyboardTo(m_pPage);
    }
    else if (bLevel && !m_pPage->isHidden())
    {
        const bool bKeyboard = m_pPage->isAncestorOf(m_pPage->window()->focusWidget());
        GiveKeyboardTo(nullptr);
        m_pPage->End();
        if (bKeyboard)
        {
            m_Parts.views.GetActive()->setFocus();
        }
    }
    // A script has the tools that it takes; the window looks again at its end.
    if (bLevel && m_bPerson && !m_bToolGiven && !m_Parts.face.IsScriptPlayed())
    {
        m_bToolGiven = true;
        if (m_Parts.settings.bBegun)
        {
            TakeLastTool();
        }
        else
        {
            TakeFirstBrush();
        }
    }
}

void CWelcome::TakeLastTool()
{
    auto* pTools = m_Parts.editor.FindInterface<IPluginTools>();
    const std::string& strTool = m_Parts.settings.strTool;
    const bool bMode = m_Parts.editor.GetHost().GetModes().GetCurrentModeId() != NO_MODE;
    if (pTools != nullptr && !bMode && !strTool.empty())
    {
        pTools->TakeTool(strTool.c_str());
    }
}

void CWelcome::NoteTool()
{
    auto* pTools = m_Parts.editor.FindInterface<IPluginTools>();
    if (m_bToolGiven && pTools != nullptr && m_Parts.editor.GetDocument().HasLevel() &&
        !m_Parts.face.IsScriptPlayed())
    {
        m_Parts.settings.strTool = pTools->IsTerraforming() ? pTools->GetFunctionName() : "";
    }
}

void CWelcome::GiveKeyboardTo(QWidget* pWidget)
{
    for (CViewWidget* pView : m_Parts.views.GetViews())
    {
        pView->setFocusProxy(pWidget);
    }
}

// Everything fits the level by itself: the brush as it is taken, the views as the panel narrows
// them.
void CWelcome::TakeFirstBrush()
{
    m_Parts.settings.bBegun = true;
    IPlugin* pPlugin = m_Parts.editor.GetPlugin();
    if (m_Parts.panel.isHidden() && pPlugin != nullptr)
    {
        pPlugin->Activate(true);
    }
    auto* pTools = m_Parts.editor.FindInterface<IPluginTools>();
    const bool bChosen = pTools != nullptr && !pTools->GetFunctionName().empty(); // in the panel
    CBrushCatalogue library(m_Parts.editor.GetHost(), pPlugin);
    if (bChosen || !library.IsThere() || !library.Follow())
    {
        return;
    }
    const std::vector<SDefinedBrush>& brushes = library.GetBrushes();
    const auto found =
        std::find_if(brushes.begin(),
                     brushes.end(),
                     [](const SDefinedBrush& brush) { return brush.strName == FIRST_BRUSH; });
    if (found != brushes.end())
    {
        library.Take(static_cast<size_t>(found - brushes.begin()));
    }
}

void CWelcome::Follow()
{
    m_Pictures.Follow();
    ListRecent();
    NoteTool();
    ShowHint();
}

void CWelcome::ListRecent()
{
    const std::vector<std::string>& recent = m_Parts.editor.GetRecentFiles().GetPaths();
    if (m_pPage->isHidden() || recent == m_Listed)
    {
        return;
    }
    m_Listed = recent;
    std::vector<SStartEntry> entries;
    for (const std::string& strLevel : recent)
    {
        const QFileInfo file(QString::fromStdString(strLevel));
        entries.push_back({{},
                           file.fileName(),
                           file.absolutePath(),
                           m_Pictures.Find(strLevel),
                           [this, strLevel]
                           {
                               m_Parts.documents.OpenFile(strLevel);
                               ListRecent(); // without one that is not there
                           }});
    }
    m_pPage->ShowRecent(entries);
}

void CWelcome::ShowHint()
{
    const SHandState& hand = m_Parts.face.GetEditorFrontEnd().GetHand();
    const bool bMode = m_Parts.editor.GetHost().GetModes().GetCurrentModeId() != NO_MODE;
    const bool bShown = m_bPerson && m_Parts.editor.GetDocument().HasLevel() &&
                        (!m_Parts.settings.bStrokeMade || IsHandEmpty(hand, bMode));
    m_Parts.status.Stand(
        HINT,
        bShown ? GetHintWords(m_Parts.editor.FindInterface<IPluginMark>(),
                              hand,
                              m_Parts.editor.GetKeys(),
                              bMode,
                              m_Parts.views.GetActive()->GetKind() != EViewKind::Perspective)
               : QString());
}

void CWelcome::OnBeforeEvent(const SHostEvent& event)
{
    if (event.eKind == EHostEvent::ButtonDown)
    {
        m_bPressed = m_bPerson && !m_Parts.face.IsScriptPlayed();
    }
}

void CWelcome::OnEvent(const SHostEvent& event)
{
    // What is painted is no step of the level's history.
    const bool bPainted =
        event.eKind == EHostEvent::ButtonUp && m_Parts.editor.GetHost().GetCPaintLayer().IsShown();
    if ((event.eKind == EHostEvent::UndoAdded || bPainted) && m_bPressed)
    {
        m_Parts.settings.bStrokeMade = true; // the line goes when the state is shown
    }
}
