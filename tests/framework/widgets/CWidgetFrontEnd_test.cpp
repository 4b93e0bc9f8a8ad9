// The front end with real windows, answered as a person would.

#include "framework/core/CMenu.h"
#include "framework/core/Capture.h"
#include "framework/core/ChooseColor.h"
#include "framework/core/ChooseFolder.h"
#include "framework/core/Cursor.h"
#include "framework/core/CursorPos.h"
#include "framework/core/KeyState.h"
#include "framework/core/MessageBox.h"
#include "framework/core/PopupMenu.h"
#include "framework/qt/CWidgetFrontEnd.h"
#include "framework/qt/WidgetAccess.h"
#include "tellur/resources/PluginResources.h"
#include "tests/framework/widgets/CTestForms.h"
#include "tests/support/CTempFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace
{

class CFrontEndWindows : public testing::Test
{
protected:
    CFrontEndWindows()
        : m_pBefore(SetFrontEnd(&m_FrontEnd))
    {
    }

    ~CFrontEndWindows() override { SetFrontEnd(m_pBefore); }

    // Runs once the next window or menu has opened.
    template <class TWidget> static void WhenOpen(std::function<void(TWidget&)> act)
    {
        QTimer::singleShot(0,
                           [act]
                           {
                               QWidget* pWidget = QApplication::activePopupWidget();
                               pWidget =
                                   pWidget != nullptr ? pWidget : QApplication::activeModalWidget();
                               auto* pOpen = qobject_cast<TWidget*>(pWidget);
                               ASSERT_NE(pOpen, nullptr);
                               act(*pOpen);
                           });
    }

    CWidgetFrontEnd m_FrontEnd;
    IFrontEnd* m_pBefore;
};

} // namespace

TEST_F(CFrontEndWindows, MessageBoxesHaveTheirButtonsIconAndAnswer)
{
    const struct
    {
        uint32_t uFlags;
        QMessageBox::StandardButtons buttons;
        QMessageBox::Icon eIcon;
        Qt::Key eKey; // 0: the first button is clicked
        EMessageBoxAnswer eAnswer;
    } cases[] = {
        {MB_OK, QMessageBox::Ok, QMessageBox::NoIcon, Qt::Key(0), EMessageBoxAnswer::Ok},
        {MB_OK | MB_ICONEXCLAMATION,
         QMessageBox::Ok,
         QMessageBox::Warning,
         Qt::Key(0),
         EMessageBoxAnswer::Ok},
        {MB_YESNO | MB_ICONQUESTION,
         QMessageBox::Yes | QMessageBox::No,
         QMessageBox::Question,
         Qt::Key_Y,
         EMessageBoxAnswer::Yes},
        {MB_YESNO | MB_ICONQUESTION,
         QMessageBox::Yes | QMessageBox::No,
         QMessageBox::Question,
         Qt::Key_N,
         EMessageBoxAnswer::No},
    };

    for (const auto& test : cases)
    {
        SCOPED_TRACE(test.uFlags);
        WhenOpen<QMessageBox>(
            [&test](QMessageBox& box)
            {
                EXPECT_EQ(box.text(), "Are <b>You</b> sure?");
                EXPECT_EQ(box.textFormat(), Qt::PlainText);
                EXPECT_EQ(box.standardButtons(), test.buttons);
                EXPECT_EQ(box.icon(), test.eIcon);
                QAbstractButton* pButton =
                    box.button(test.eKey == Qt::Key_Y
                                   ? QMessageBox::Yes
                                   : (test.eKey == Qt::Key_N ? QMessageBox::No : QMessageBox::Ok));
                ASSERT_NE(pButton, nullptr);
                QTest::mouseClick(pButton, Qt::LeftButton);
            });
        EXPECT_EQ(ShowMessageBox("Are <b>You</b> sure?", test.uFlags), test.eAnswer);
    }
}

TEST_F(CFrontEndWindows, ChooserAndMenuGiveWhatWasChosen)
{
    uint32_t uColor = 0x102030;
    WhenOpen<QColorDialog>(
        [](QColorDialog& chooser)
        {
            EXPECT_EQ(chooser.currentColor(), QColor(0x30, 0x20, 0x10));
            chooser.setCurrentColor(QColor(1, 2, 3));
            chooser.accept();
        });
    EXPECT_TRUE(ChooseColor(uColor));
    EXPECT_EQ(uColor, 0x030201U);
    WhenOpen<QColorDialog>([](QColorDialog& chooser) { chooser.reject(); });
    EXPECT_FALSE(ChooseColor(uColor));
    EXPECT_EQ(uColor, 0x030201U);

    const CTempFolder folder;
    std::filesystem::create_directories(folder.Path("levels"));
    std::string strFolder = folder.GetFolder();
    WhenOpen<QFileDialog>(
        [&folder](QFileDialog& chooser)
        {
            EXPECT_EQ(chooser.directory().path().toStdString(), folder.GetFolder());
            chooser.findChild<QLineEdit*>()->setText(QString::fromStdString(folder.Path("levels")));
            QTest::keyClick(chooser.findChild<QLineEdit*>(), Qt::Key_Return);
        });
    EXPECT_TRUE(ChooseFolder(strFolder));
    EXPECT_EQ(strFolder, folder.Path("levels"));
    WhenOpen<QFileDialog>([](QFileDialog& chooser) { chooser.reject(); });
    EXPECT_FALSE(ChooseFolder(strFolder));
    EXPECT_EQ(strFolder, folder.Path("levels"));

    CMenu menu;
    menu.InsertItem(0, 7, "first");
    menu.InsertSeparator(1);
    CMenu below;
    below.InsertItem(0, 8, "below");
    menu.AppendSubMenu("more", std::move(below));
    const auto choose = [&menu](const QList<Qt::Key>& keys)
    {
        WhenOpen<QMenu>(
            [keys](QMenu& shown)
            {
                EXPECT_EQ(shown.actions().size(), 3);
                for (const Qt::Key eKey : keys)
                {
                    QWidget* pPopup = QApplication::activePopupWidget();
                    QTest::keyClick(pPopup != nullptr ? pPopup : &shown, eKey);
                }
            });
        return TrackPopupMenu(menu, {50, 60});
    };
    EXPECT_EQ(choose({Qt::Key_Down, Qt::Key_Return}), 7U);
    EXPECT_EQ(choose({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}), 8U);
    EXPECT_EQ(choose({Qt::Key_Escape}), 0U);
}

TEST_F(CFrontEndWindows, CursorCaptureAndKeysAreTheWindowSystems)
{
    QWidget view;
    view.resize(100, 100);
    const uintptr_t uView = RegisterView(view);
    ASSERT_NE(uView, 0U);
    view.show();
    const CResourceScope scope(&GetPluginResources());
    ::SetCursor(LoadCursorResource(2106));
    EXPECT_EQ(view.cursor().hotSpot(), QPoint(15, 15));
    const QPixmap picture = view.cursor().pixmap();
    EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(32, 32));
    EXPECT_EQ(MakeCursor(LoadCursorResource(2106), 2.0).pixmap().width(), 64);
    ::SetCursor(nullptr);
    EXPECT_EQ(view.cursor().shape(), Qt::ArrowCursor);

    SetCapture(uView);
    EXPECT_EQ(QWidget::mouseGrabber(), &view);
    SetCapture(0);
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    SetCapture(uView);
    ReleaseCapture();
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    ReleaseCapture();
    SetCapture(uView + 1000); // no such window
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);

    SetCursorPos({31, 47});
    EXPECT_EQ(GetCursorPos().x * 100 + GetCursorPos().y, 3147);
    EXPECT_EQ(QCursor::pos(), QPoint(31, 47));
    EXPECT_GT(GetScreenSize().x, 0);
    EXPECT_GT(GetScreenSize().y, 0);
    QTest::keyPress(&view, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_TRUE(IsKeyDown(EKey::Control));
    EXPECT_FALSE(IsKeyDown(EKey::Alt));
    QTest::keyRelease(&view, Qt::Key_Control, Qt::NoModifier);
    EXPECT_FALSE(IsKeyDown(EKey::Control));
}
