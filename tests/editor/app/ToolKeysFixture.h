#pragma once

#include "editor/app/CCursorNote.h"
#include "editor/app/CMessagesDock.h"
#include "editor/core/IHostObserver.h"
#include "host/IPluginScript.h"
#include "host/IPluginTools.h"
#include "parser/TCParseFile.h"
#include "tests/editor/app/PaintingFixture.h"

#include <QDockWidget>
#include <QKeyEvent>
#include <QScrollArea>
#include <QToolBar>

// Where the plug-in sees the cursor, and the actions that it is sent.
class CWatcher : public IHostObserver
{
public:
    void OnEvent(const SHostEvent& event) override
    {
        if (event.eKind == EHostEvent::MouseMove)
        {
            hover = event.bHit ? event.hit : SVec3{-1.0F, -1.0F, -1.0F};
        }
        if (event.eKind == EHostEvent::Action)
        {
            actions.push_back(event.iAction);
        }
    }

    SVec3 hover;
    std::vector<int32_t> actions;
};

class CToolKeys : public CPainting
{
protected:
    ~CToolKeys() override
    {
        if (m_Editor != nullptr)
        {
            GetHost().GetObservers().Remove(&m_Watcher);
        }
    }

    void StartWatched()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        GetHost().GetObservers().Add(&m_Watcher);
        MoveTo(GetView(), {0.5, 0.5});
    }

    // With a tool that raises by 500, 40 units wide.
    void StartWithTool()
    {
        ASSERT_NO_FATAL_FAILURE(StartWatched());
        Key("4");
        Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    }

    IPluginTools& Tools() { return *m_Editor->FindInterface<IPluginTools>(); }

    float Get(EBrushValue eValue) { return Tools().GetBrushValue(eValue); }

    std::string GetNote(size_t iView = 0)
    {
        const CCursorNote& note = GetView(iView).GetNote();
        return note.isVisible() ? note.text().toStdString() : "";
    }

    // By pixels of the server from the middle of the first view.
    void MoveBy(int iX, int iY)
    {
        CViewWidget& view = GetView();
        const QPointF middle = view.mapToGlobal(QPointF(view.width() * 0.5, view.height() * 0.5)) *
                               view.devicePixelRatioF();
        MoveTo(QPoint(static_cast<int>(middle.x()) + iX, static_cast<int>(middle.y()) + iY));
    }

    void Hold(const char* pszKey) { Do({"keydown", pszKey}); }

    void LetGo(const char* pszKey) { Do({"keyup", pszKey}); }

    // What the server's own repetition sends while a key is held.
    void Repeat(Qt::Key eKey, const char* pszText)
    {
        QKeyEvent up(QEvent::KeyRelease, eKey, Qt::NoModifier, pszText, true);
        QKeyEvent down(QEvent::KeyPress, eKey, Qt::NoModifier, pszText, true);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &up);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &down);
    }

    QWidget* OpenPanel()
    {
        auto* pToolBar = m_Window->findChild<QToolBar*>("plugin-toolbar");
        Click(*pToolBar->widgetForAction(pToolBar->actions().front()));
        return m_Window->findChild<QDockWidget*>("panel");
    }

    template <class TWidget> TWidget& PanelItem(int iId)
    {
        auto* pPanel = m_Window->findChild<QDockWidget*>("panel");
        auto* pWidget = pPanel->findChild<TWidget*>(QString::number(iId));
        pPanel->findChild<QScrollArea*>()->ensureWidgetVisible(pWidget);
        Settle();
        return *pWidget;
    }

    // Keywords for the plug-in, with a library of brushes beside them.
    void Play(const char* pszKeywords, const char* pszLibrary)
    {
        WriteBytes(m_Folder.Path("root/fading.ini"), pszLibrary);
        WriteBytes(m_Folder.Path("keywords.txt"), pszKeywords);
        const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(
            TCParseFile(m_Folder.Path("keywords.txt").c_str()));
        std::string strWhy;
        for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
        {
            EXPECT_EQ(m_Editor->FindInterface<IPluginScript>()->Play(pKey, strWhy),
                      EScriptResult::Done)
                << strWhy;
        }
    }

    int GetLines() { return m_Window->findChild<CMessagesDock*>()->GetLineCount(); }

    std::vector<float> GetStroke()
    {
        const std::vector<float> before = GetHeights();
        Drag(GetView(), {0.4, 0.5}, {0.6, 0.55});
        const std::vector<float> after = GetHeights();
        EXPECT_NE(after, before);
        Key("ctrl+z");
        EXPECT_EQ(GetHeights(), before);
        return after;
    }

    CWatcher m_Watcher;
};
