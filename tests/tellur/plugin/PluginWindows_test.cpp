// The library that ships with its windows: the panel that the host docks and the dialog that the
// plug-in opens, and that nothing of them is left when the library is closed.

#include "framework/core/CRuntimeClass.h"
#include "framework/core/ResourceModule.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CFormView.h"
#include "tests/tellur/plugin/PluginLibraryFixture.h"

#include <malloc.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>

namespace
{

constexpr uint32_t PANEL_COMMAND = 1;
constexpr uint32_t DIALOG_COMMAND = 4;

class CPluginWindows : public CPluginLibrary
{
protected:
    CPluginWindows()
    {
        m_Host.onOpenView = [this](const CRuntimeClass* pClass)
        {
            m_View.reset(pClass->Create());
            ASSERT_TRUE(m_View->Create(nullptr));
            m_View->ShowWindow(true);
        };
        m_Host.onCloseView = [this]
        {
            m_View.reset();
        };
    }

    static QWidget* FindWindow(const char* pszTitle)
    {
        for (QWidget* pWindow : QApplication::topLevelWidgets())
        {
            if (pWindow->windowTitle() == pszTitle)
            {
                return pWindow;
            }
        }
        return nullptr;
    }

    static std::string GetTip(QWidget* pWidget)
    {
        QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), pWidget->mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(pWidget, &help);
        const std::string strTip = QToolTip::text().toStdString();
        QToolTip::hideText();
        return strTip;
    }

    static size_t CountWindows()
    {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return static_cast<size_t>(QApplication::allWidgets().size());
    }

    std::unique_ptr<CFormView> m_View; // as the host keeps it
};

} // namespace

TEST_F(CPluginWindows, ThePanelOpensClosesAndKeepsItsLimits)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    m_Plugin->OnCommand(PANEL_COMMAND);
    ASSERT_NE(m_View, nullptr);
    QWidget* pPanel = GetWidget(*m_View);
    // Half a cell to a tenth of the terrain: 8 cells of 10 units.
    auto* pMax = pPanel->findChild<QLineEdit*>("2199");
    EXPECT_EQ(pPanel->findChild<QLineEdit*>("2198")->text(), "5");
    EXPECT_EQ(pMax->text(), "8");
    EXPECT_FALSE(pMax->isEnabled()) << "there is no brush";
    EXPECT_TRUE(pPanel->findChild<QWidget*>("2133")->isEnabled());
    EXPECT_EQ(GetTip(pPanel->findChild<QWidget*>("2200")), "Brush power");
    EXPECT_EQ(GetTip(pPanel->findChild<QWidget*>("2139")),
              "Enable auto update terrain normals while editing");

    ASSERT_NO_FATAL_FAILURE(PlayScript()); // a brush becomes current
    auto* pGrid = pPanel->findChild<QAbstractItemView*>("2123");
    const auto tipAt = [pGrid](const QPoint& at)
    {
        QHelpEvent help(QEvent::ToolTip, at, pGrid->viewport()->mapToGlobal(at));
        QApplication::sendEvent(pGrid->viewport(), &help);
        const std::string strTip = QToolTip::text().toStdString();
        QToolTip::hideText();
        return strTip;
    };
    EXPECT_NE(tipAt(QPoint(5, 5)), "Tool properties") << "a row says what its field is";
    EXPECT_EQ(tipAt(QPoint(5, pGrid->viewport()->height() - 3)), "Tool properties");
    EXPECT_TRUE(pMax->isEnabled());
    pMax->selectAll();
    QTest::keyClicks(pMax, "640");
    m_Plugin->OnCommand(PANEL_COMMAND);
    EXPECT_EQ(m_View, nullptr);
    m_Plugin->OnCommand(PANEL_COMMAND);
    ASSERT_NE(m_View, nullptr);
    EXPECT_EQ(GetWidget(*m_View)->findChild<QLineEdit*>("2199")->text(), "640");
    m_View.reset(); // by the person: the host says so afterwards
    m_Plugin->OnHostNotify(NOTIFY_PANEL_CLOSED, 0);
    ASSERT_NO_FATAL_FAILURE(Close());
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginWindows, WindowsAndTipsAreThePluginsUnderAnotherCurrentModule)
{
    // What a host might have current: the same ids, other content.
    static constexpr SStringResource s_Texts[] = {{2191, "other tip"}};
    static constexpr SDialogResource s_Dialogs[] = {{2101, "Other panel", {}},
                                                    {2111, "Other dialog", {}}};
    static const SResourceModule s_Other = {
        .pszName = "other", .strings = s_Texts, .dialogs = s_Dialogs};
    ASSERT_NO_FATAL_FAILURE(Open());
    {
        const CResourceScope other(&s_Other);
        m_Plugin->OnCommand(PANEL_COMMAND);
        EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
        ASSERT_NE(m_View, nullptr);
        EXPECT_NE(GetWidget(*m_View)->findChild<QWidget*>("2200"), nullptr);
        m_Plugin->OnCommand(DIALOG_COMMAND);
        EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
        QWidget* pDialog = FindWindow("Edit bitmap on terrain");
        ASSERT_NE(pDialog, nullptr);
        EXPECT_EQ(GetTip(pDialog->findChild<QWidget*>("2191")), "Mapping mode");
        EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
        m_Plugin->OnCommand(PANEL_COMMAND);
        EXPECT_EQ(GetCurrentResourceModule(), &s_Other);
    }
    ASSERT_NO_FATAL_FAILURE(Close());
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginWindows, TheDrawDialogIsMadeOnceAndOnlyHidden)
{
    ASSERT_NO_FATAL_FAILURE(Open());
    EXPECT_EQ(FindWindow("Edit bitmap on terrain"), nullptr);
    m_Plugin->OnCommand(DIALOG_COMMAND);
    QWidget* pDialog = FindWindow("Edit bitmap on terrain");
    ASSERT_NE(pDialog, nullptr);
    EXPECT_TRUE(pDialog->isVisible());
    EXPECT_EQ(GetTip(pDialog->findChild<QWidget*>("2191")), "Mapping mode");
    pDialog->close();
    EXPECT_FALSE(pDialog->isVisible());
    m_Plugin->OnCommand(DIALOG_COMMAND);
    EXPECT_EQ(FindWindow("Edit bitmap on terrain"), pDialog);
    EXPECT_TRUE(pDialog->isVisible());
    ASSERT_NO_FATAL_FAILURE(Close());
    EXPECT_EQ(FindWindow("Edit bitmap on terrain"), nullptr);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPluginWindows, AHundredLoadsLeaveNoWindowNoCodeAndNoMemory)
{
    constexpr int WARM_UP = 120; // what the libraries below keep for good is there by then
    constexpr int ROUNDS = WARM_UP + 100;
    size_t nBefore = 0;
    size_t nBytes = 0;
    for (int iRound = 0; iRound < ROUNDS; ++iRound)
    {
        SCOPED_TRACE(iRound);
        ASSERT_FALSE(IsMapped());
        ASSERT_NO_FATAL_FAILURE(Open());
        m_Plugin->OnCommand(PANEL_COMMAND);
        m_Plugin->OnCommand(DIALOG_COMMAND);
        ASSERT_NE(m_View, nullptr);
        GetTip(GetWidget(*m_View)->findChild<QWidget*>("2200"));
        if (iRound % 2 == 0)
        {
            QApplication::processEvents();
        }
        m_Plugin->OnCommand(PANEL_COMMAND);
        ASSERT_NO_FATAL_FAILURE(Close());
        QApplication::processEvents(); // nothing of the library may be waiting in the event loop
        m_Fake.calls.clear();
        m_Host.settings.clear();
        m_Host.actions.clear();
        if (iRound == WARM_UP)
        {
            nBefore = CountWindows();
            nBytes = ::mallinfo2().uordblks;
        }
    }
    EXPECT_EQ(CountWindows(), nBefore);
    EXPECT_EQ(m_Log.GetText(), "");
    // The allocator counts what it keeps at hand as used, some hundred bytes a round; the smallest
    // control is larger. The sanitized build looks for lost blocks of any size.
    EXPECT_LT(::mallinfo2().uordblks, nBytes + (ROUNDS - WARM_UP) * size_t{500});
}
