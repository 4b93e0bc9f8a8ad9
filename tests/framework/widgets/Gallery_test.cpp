// The gallery worked through with the keyboard alone, and pictures of it.

#include "framework/core/ResourceModule.h"
#include "framework/qt/CWidgetFrontEnd.h"
#include "framework/qt/WidgetAccess.h"
#include "tests/support/CLogCatcher.h"
#include "tools/gallery/CGalleryView.h"
#include "tools/gallery/GalleryIds.h"

#include <QApplication>
#include <QGroupBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace
{

using Notes = std::vector<std::string>;

class CGallery : public testing::Test
{
protected:
    CGallery()
        : m_pBefore(SetFrontEnd(&m_FrontEnd))
    {
        RegisterResourceModule(&GetGalleryResources());
    }

    ~CGallery() override
    {
        m_View.DestroyWindow();
        UnregisterResourceModule(&GetGalleryResources());
        SetFrontEnd(m_pBefore);
    }

    void SetUp() override
    {
        ASSERT_TRUE(m_View.Create(nullptr));
        GetWidget(m_View)->resize(900, 540);
        m_View.ShowWindow(true);
        QApplication::setActiveWindow(GetWidget(m_View));
        QApplication::processEvents();
        m_View.TakeNotes();
    }

    static void Press(Qt::Key eKey) { QTest::keyClick(QApplication::focusWidget(), eKey); }

    // To the next control; titles of groups lie between them.
    static void GoOn()
    {
        Press(Qt::Key_Tab);
        if (qobject_cast<QGroupBox*>(QApplication::focusWidget()) != nullptr)
        {
            Press(Qt::Key_Tab);
        }
    }

    static std::string GetFocus()
    {
        return QApplication::focusWidget() != nullptr
                   ? QApplication::focusWidget()->objectName().toStdString()
                   : std::string();
    }

    // Presses keys in the window that opens next.
    static void PressWhenOpen(const QList<Qt::Key>& keys)
    {
        QTimer::singleShot(0,
                           [keys]
                           {
                               for (const Qt::Key eKey : keys)
                               {
                                   QWidget* pOpen = QApplication::activePopupWidget();
                                   pOpen =
                                       pOpen != nullptr ? pOpen : QApplication::activeModalWidget();
                                   ASSERT_NE(pOpen, nullptr);
                                   QWidget* pFocus = pOpen->focusWidget();
                                   QTest::keyClick(pFocus != nullptr ? pFocus : pOpen, eKey);
                               }
                           });
    }

    CWidgetFrontEnd m_FrontEnd;
    IFrontEnd* m_pBefore;
    CLogCatcher m_Log;
    CGalleryView m_View;
};

} // namespace

TEST_F(CGallery, IsWorkedWithTheKeyboardAlone)
{
    // Where TAB leads, the keys that are pressed there, and all that is notified. A list that gets
    // the focus has its mark on the first item, from which the arrows go on.
    const struct
    {
        uint32_t uId;
        QList<Qt::Key> keys;
        Notes notes;
    } steps[] = {
        {GALLERY_PUSH, {Qt::Key_Space}, {"push"}},
        {GALLERY_CHECK, {Qt::Key_Space, Qt::Key_Space}, {"check 1", "check 0"}},
        {GALLERY_THREE,
         {Qt::Key_Space, Qt::Key_Space, Qt::Key_Space},
         {"three 1", "three 2", "three 0"}},
        {GALLERY_TOGGLE, {Qt::Key_Space}, {"toggle 1"}},
        {GALLERY_DRAWN, {Qt::Key_Space}, {"drawn"}},
        {GALLERY_EDIT, {Qt::Key_A, Qt::Key_B, Qt::Key_Backspace}, {"text a", "text ab", "text a"}},
        {GALLERY_READ_ONLY, {Qt::Key_A}, {"text left"}},
        {GALLERY_SLIDER,
         {Qt::Key_Right, Qt::Key_Left, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home},
         {"line right 51",
          "number 51",
          "line left 50",
          "number 50",
          "page right 70",
          "number 70",
          "page left 50",
          "number 50",
          "right 100",
          "number 100",
          "left 0",
          "number 0"}},
        {GALLERY_NUMBER,
         {Qt::Key_Up, Qt::Key_Up, Qt::Key_Down},
         {"spin 1", "number 1", "spin 1", "number 2", "spin -1", "number 1"}},
        {GALLERY_LIST, {Qt::Key_Down, Qt::Key_Down}, {"list hard", "list round"}},
        {GALLERY_REPORT, {Qt::Key_Down, Qt::Key_Down}, {"row 1", "row 2"}},
        {GALLERY_DROP, {Qt::Key_Down, Qt::Key_Down}, {"drop 33x33", "drop 65x65"}},
    };

    QWidget* pFirst = GetWidget(m_View)->findChild<QWidget*>(QString::number(GALLERY_PUSH));
    pFirst->setFocus();
    for (const auto& [uId, keys, notes] : steps)
    {
        SCOPED_TRACE(uId);
        ASSERT_EQ(GetFocus(), std::to_string(uId));
        for (const Qt::Key eKey : keys)
        {
            Press(eKey);
        }
        EXPECT_EQ(m_View.TakeNotes(), notes);
        GoOn();
    }

    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CGallery, QuestionsAreAnsweredByKeys)
{
    const struct
    {
        uint32_t uId;
        QList<Qt::Key> answer;
        std::string strNote;
    } questions[] = {
        {GALLERY_DIALOG_BUTTON, {Qt::Key_X, Qt::Key_Return}, "dialog x"},
        {GALLERY_DIALOG_BUTTON, {Qt::Key_X, Qt::Key_Escape}, "dialog cancelled"},
        {GALLERY_MESSAGE, {Qt::Key_Return}, "message yes"},
        {GALLERY_MESSAGE, {Qt::Key_Escape}, "message no"},
        {GALLERY_COLOR, {Qt::Key_Escape}, "color cancelled"},
        {GALLERY_MENU, {Qt::Key_Down, Qt::Key_Return}, "menu 1"},
        {GALLERY_MENU, {Qt::Key_Escape}, "menu 0"},
    };

    for (const auto& [uId, answer, strNote] : questions)
    {
        SCOPED_TRACE(strNote);
        while (GetFocus() != std::to_string(uId) && GetFocus() != std::to_string(GALLERY_NOTES))
        {
            GoOn();
        }
        ASSERT_EQ(GetFocus(), std::to_string(uId));
        m_View.TakeNotes(); // of fields on the way
        PressWhenOpen(answer);
        Press(Qt::Key_Space);
        EXPECT_EQ(m_View.TakeNotes(), (Notes{strNote}));
        QApplication::setActiveWindow(GetWidget(m_View));
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CGallery, GroupsFoldByTheMouseAndByKeys)
{
    QWidget* pForm = GetWidget(m_View);
    auto* pGroup = pForm->findChild<QGroupBox*>("Fields");
    const auto* pBelow = pForm->findChild<QWidget*>("Lists");
    auto* pEdit = pForm->findChild<QWidget*>(QString::number(GALLERY_EDIT));
    const int iOpen = pGroup->height();
    const int iBelow = pBelow->height();
    const auto expectFolded = [&](bool bFolded, const char* pszBy)
    {
        SCOPED_TRACE(pszBy);
        QApplication::processEvents();
        EXPECT_EQ(pEdit->isVisible(), !bFolded);
        EXPECT_EQ(GetFoldedGroups(m_View), bFolded ? QStringList{"Fields"} : QStringList());
        EXPECT_LE(pGroup->height(), bFolded ? 2 * pGroup->fontMetrics().height() : iOpen);
        EXPECT_EQ(pBelow->height() > iBelow, bFolded) << "others get the room";
        EXPECT_TRUE(pForm->rect().contains(
            QRect(pGroup->mapTo(pForm, QPoint()), pGroup->size().boundedTo(pForm->size()))));
    };
    const QPoint title(pGroup->fontMetrics().height(), pGroup->fontMetrics().height() / 2);
    QTest::mouseClick(pGroup, Qt::LeftButton, {}, title);
    expectFolded(true, "mouse");
    QTest::mouseClick(pGroup, Qt::LeftButton, {}, title);
    expectFolded(false, "mouse");
    QTest::mouseClick(pGroup, Qt::LeftButton, {}, {pGroup->width() / 2, iOpen - 3});
    QTest::mouseClick(pGroup, Qt::RightButton, {}, title);
    expectFolded(false, "beside the title, and another button");
    // The title lies on the way from control to control.
    pForm->findChild<QWidget*>(QString::number(GALLERY_DRAWN))->setFocus();
    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), pGroup);
    const std::pair<Qt::Key, bool> keys[] = {{Qt::Key_Space, true},
                                             {Qt::Key_Return, false},
                                             {Qt::Key_Left, true},
                                             {Qt::Key_Left, true},
                                             {Qt::Key_Right, false},
                                             {Qt::Key_Right, false}};
    for (const auto& [eKey, bFolded] : keys)
    {
        Press(eKey);
        expectFolded(bFolded, "key");
    }
    // The keyboard never stays where nothing is to be seen, and goes round it. What is pressed in a
    // control means the control, also when it has no use for it.
    pEdit->setFocus();
    Press(Qt::Key_Return);
    expectFolded(false, "key of a control");
    m_View.TakeNotes();
    FoldGroups(m_View, {"Fields"});
    expectFolded(true, "program");
    EXPECT_EQ(QApplication::focusWidget(), pGroup);
    GoOn();
    EXPECT_EQ(GetFocus(), std::to_string(GALLERY_LIST));
    // What was hidden before stays so when the group is opened.
    pForm->findChild<QWidget*>(QString::number(GALLERY_SPIN))->hide();
    FoldGroups(m_View, {});
    expectFolded(false, "program");
    EXPECT_FALSE(pForm->findChild<QWidget*>(QString::number(GALLERY_SPIN))->isVisible());
}

TEST_F(CGallery, DrawsTheSameSheetAtEveryDepth)
{
    QWidget* pCanvas = GetWidget(m_View)->findChild<QWidget*>(QString::number(GALLERY_CANVAS));
    const QImage picture = pCanvas->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const int iWidth = picture.width() / 3;
    int nInk = 0;
    for (int iY = 0; iY < picture.height(); ++iY)
    {
        for (int iX = 0; iX < iWidth - 2; ++iX)
        {
            const QColor coarse = picture.pixelColor(iX, iY);
            const QColor middle = picture.pixelColor(iX + iWidth, iY);
            const QColor fine = picture.pixelColor(iX + 2 * iWidth, iY);
            const bool bTitle = iY < 24 * pCanvas->devicePixelRatioF(); // another text on each
            nInk += fine != QColor(Qt::white) ? 1 : 0;
            ASSERT_TRUE(bTitle || middle == fine) << iX << ", " << iY;
            // 5 bits of red and blue, 6 of green.
            ASSERT_TRUE(bTitle || (std::abs(coarse.red() - fine.red()) < 8 &&
                                   std::abs(coarse.green() - fine.green()) < 4 &&
                                   std::abs(coarse.blue() - fine.blue()) < 8))
                << iX << ", " << iY;
        }
    }
    EXPECT_GT(nInk, iWidth * 20);
}
