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
#include <QToolTip>

namespace
{

constexpr uint32_t DIALOG_COMMAND = 4;

class CPluginWindows : public CPluginLibrary
{
protected:
    CPluginWindows()
    {
        m_Face.onOpenView = [this](const CRuntimeClass* pClass)
        {
            m_View.reset(pClass->Create());
            ASSERT_TRUE(m_View->Create(nullptr));
            m_View->ShowWindow(true);
        };
        m_Face.onCloseView = [this]
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
        EXPECT_EQ(GetTip(GetWidget(*m_View)->findChild<QWidget*>("2200")), "Brush power");
        auto* pGrid = GetWidget(*m_View)->findChild<QAbstractItemView*>("2123");
        EXPECT_EQ(GetTip(pGrid->viewport()), "Tool properties");
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
        m_Face.calls.clear();
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
