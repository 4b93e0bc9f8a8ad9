// What windows share: keys, tips, painting, capture, ownership; dialogs and views.

#include "framework/core/Capture.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/qt/CWidgetFrontEnd.h"
#include "tests/framework/widgets/ControlsForm.h"
#include "tests/support/CLogCatcher.h"

#include <QDialog>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QToolTip>

#include <cstdio>

namespace
{

// A form that takes TAB while the focus is in one of its edits, gives tips and counts updates.
class CTabForm : public CTestView
{
public:
    CTabForm()
        : CTestView(CONTROLS_FORM)
    {
        EnableToolTips(true);
    }

    int nUpdates = 0;
    int nTabs = 0;
    uint32_t uTipFor = 0;

protected:
    void OnUpdate() override { ++nUpdates; }

    bool TranslateKey(const SKeyEvent& key) override
    {
        nTabs += key.uKey == KEY_TAB ? 1 : 0;
        return key.uKey == KEY_TAB && !key.bControl;
    }

    bool OnToolTipText(SToolTipText& tip) override
    {
        uTipFor = tip.bIsWindow ? tip.uId : 0;
        std::snprintf(tip.szText, sizeof(tip.szText), "tip of %u", tip.uId);
        return tip.uId != ID_PUSH;
    }
};

// Paints itself, takes the mouse and notes what comes.
class CCanvas : public CWindow
{
public:
    std::string strEvents;
    SPoint lastPoint;

protected:
    void OnPaint(CDrawContext& context) override
    {
        context.FillRect(GetClientRect(), MakeColor(10, 90, 200));
    }

    bool OnLButtonDown(const SMouseEvent& mouse) override
    {
        lastPoint = mouse.point;
        strEvents += mouse.bControl ? "D" : "d";
        SetWindowCapture();
        return true;
    }

    bool OnMouseMove(const SMouseEvent& mouse) override
    {
        lastPoint = mouse.point;
        strEvents += "m";
        return true;
    }

    bool OnLButtonUp(const SMouseEvent&) override
    {
        strEvents += "u";
        ReleaseCapture();
        return true;
    }

    bool OnLButtonDblClk(const SMouseEvent&) override
    {
        strEvents += "2";
        return true;
    }

    bool OnKeyDown(const SKeyEvent& key) override
    {
        strEvents += "k" + std::to_string(key.uKey) + (key.bShift ? "s" : "");
        return true;
    }
};

class CWindows : public CControlsForm
{
protected:
    CWindows()
        : m_pBefore(SetFrontEnd(&m_FrontEnd))
    {
    }

    ~CWindows() override { SetFrontEnd(m_pBefore); }

    CWidgetFrontEnd m_FrontEnd;
    IFrontEnd* m_pBefore;
    CLogCatcher m_Log;
};

// The dialog deletes itself from inside its own handler.
class CSelfEndingDialog : public CTestDialog
{
public:
    CSelfEndingDialog()
        : CTestDialog(CONTROLS_DIALOG)
    {
        OnClick(DIALOG_OK, [this] { delete this; });
    }
};

int CountWindows()
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return static_cast<int>(QApplication::topLevelWidgets().size());
}

} // namespace

TEST_F(CWindows, TabIsOfferedToTheFormBeforeTheFocusMoves)
{
    CTabForm form;
    ASSERT_TRUE(form.Create(nullptr));
    form.ShowWindow(true);
    QApplication::setActiveWindow(GetWidget(form));
    auto* pEdit = form.Find<QLineEdit>(ID_EDIT);
    pEdit->setFocus();
    QTest::keyClick(pEdit, Qt::Key_Tab);
    EXPECT_EQ(form.nTabs, 1);
    EXPECT_EQ(QApplication::focusWidget(), pEdit);
    QTest::keyClick(pEdit, Qt::Key_Tab, Qt::ControlModifier); // not taken, and asked once
    EXPECT_EQ(form.nTabs, 2);
    EXPECT_EQ(form.nUpdates, 1) << "when it is shown first";
    form.ShowWindow(false);
    form.ShowWindow(true);
    form.UpdateView();
    EXPECT_EQ(form.nUpdates, 2);

    // Without a form that takes it, TAB goes through the controls in the template's order.
    Open();
    QApplication::setActiveWindow(GetWidget(m_Form));
    Find(ID_PUSH)->setFocus();
    std::string strOrder;
    for (int i = 0; i < 8; ++i)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        strOrder += QApplication::focusWidget()->objectName().toStdString() + " ";
    }
    EXPECT_EQ(strOrder, "12 13 14 15 16 17 18 20 ") << "the spin is left out";
}

TEST_F(CWindows, TipsAreAskedOfTheFormByControlId)
{
    CTabForm form;
    ASSERT_TRUE(form.Create(nullptr));
    form.ShowWindow(true);
    const auto hover = [&form](uint32_t uId)
    {
        QWidget* pWidget = form.Find(uId);
        QHelpEvent help(QEvent::ToolTip, QPoint(3, 3), pWidget->mapToGlobal(QPoint(3, 3)));
        QApplication::sendEvent(pWidget, &help);
    };
    hover(ID_SLIDER);
    EXPECT_EQ(form.uTipFor, uint32_t{ID_SLIDER});
    EXPECT_EQ(QToolTip::text(), "tip of 18");
    QToolTip::hideText();
    hover(ID_PUSH);
    EXPECT_EQ(form.uTipFor, uint32_t{ID_PUSH});
    form.EnableToolTips(false);
    form.uTipFor = 0;
    hover(ID_SLIDER);
    EXPECT_EQ(form.uTipFor, 0U);
}

TEST_F(CWindows, AChildWindowPaintsAndTakesMouseKeysAndCapture)
{
    CCanvas canvas;
    EXPECT_FALSE(canvas.Create(m_Form, 300, {10, 20, 110, 90})) << "the parent has no window";
    Open();
    const SRect place = {ToPixels(10), ToPixels(20), ToPixels(110), ToPixels(90)};
    ASSERT_TRUE(canvas.Create(m_Form, 300, place));
    EXPECT_FALSE(canvas.Create(m_Form, 301, {0, 0, 5, 5})) << "it has one";
    EXPECT_EQ(canvas.GetWindowRect(), place);
    EXPECT_EQ(canvas.GetClientRect(), (SRect{0, 0, ToPixels(100), ToPixels(70)}));
    EXPECT_EQ(canvas.GetControlId(), 300U);
    QWidget* pCanvas = GetWidget(canvas);
    const QImage picture = pCanvas->grab().toImage();
    EXPECT_EQ(picture.width(), ToPixels(100));
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, picture.height() - 1), QColor(10, 90, 200));

    QTest::mousePress(pCanvas, Qt::LeftButton, Qt::ControlModifier, QPoint(7, 9));
    const double fScale = canvas.GetScale();
    const auto toPoint = [fScale](double fX, double fY)
    {
        return SPoint{qFloor(fX * fScale), qFloor(fY * fScale)};
    };
    EXPECT_EQ(canvas.lastPoint, toPoint(7, 9));
    EXPECT_EQ(QWidget::mouseGrabber(), pCanvas);
    QTest::mouseMove(pCanvas, QPoint(-30, 9));
    EXPECT_EQ(canvas.lastPoint, toPoint(-30, 9));
    QTest::mouseRelease(pCanvas, Qt::LeftButton, Qt::NoModifier, QPoint(-30, 9));
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    EXPECT_EQ(canvas.strEvents, "Dmu");
    canvas.strEvents.clear();
    QTest::mouseDClick(pCanvas, Qt::LeftButton);
    QTest::keyClick(pCanvas, Qt::Key_Delete, Qt::ShiftModifier);
    QTest::keyClick(pCanvas, Qt::Key_T);
    QTest::keyClick(pCanvas, Qt::Key_Backtab);
    EXPECT_EQ(canvas.strEvents, "2k0sk46sk84k9");

    // Captured and destroyed: nobody holds the mouse.
    canvas.SetWindowCapture();
    EXPECT_EQ(QWidget::mouseGrabber(), pCanvas);
    const QPointer<QWidget> pGone(pCanvas);
    canvas.DestroyWindow();
    EXPECT_EQ(pGone, nullptr);
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    ReleaseCapture();
    EXPECT_FALSE(canvas.IsWindow());
    canvas.Invalidate();
    canvas.SetFocus();
    EXPECT_EQ(canvas.GetHandle(), 0U);
}

TEST_F(CWindows, ObjectsAndWindowsMayEndInEitherOrder)
{
    const int nBefore = CountWindows();
    {
        CTestView form(CONTROLS_FORM);
        CEdit outlived;
        form.Bind(ID_NUMBER, outlived);
        auto pEdit = std::make_unique<CEdit>();
        form.Bind(ID_EDIT, *pEdit);
        form.OnTextChange(ID_EDIT, [this] { m_Notes.emplace_back("text"); });
        ASSERT_TRUE(form.Create(nullptr));
        EXPECT_FALSE(form.Create(nullptr));
        pEdit.reset(); // the control stays, with the form's handler
        QTest::keyClicks(form.Find(ID_EDIT), "x");
        EXPECT_EQ(TakeNotes(), (Notes{"text"}));
        form.DestroyWindow();
        EXPECT_FALSE(outlived.IsWindow());
        EXPECT_EQ(form.GetItemText(ID_EDIT), "");
        EXPECT_EQ(form.GetItemRect(ID_EDIT), SRect{});
    }
    auto* pDialog = new CSelfEndingDialog;
    ASSERT_TRUE(pDialog->Create(nullptr));
    pDialog->ShowWindow(true);
    Click(GetWidget(*pDialog)->findChild<QPushButton*>("1"));
    EXPECT_EQ(CountWindows(), nBefore);
    EXPECT_EQ(m_Log.GetText(), "");
    CTestDialog unknown(77);
    EXPECT_FALSE(unknown.Create(nullptr));
    EXPECT_EQ(m_Log.GetText(), "[CFormWindow::FindTemplate] no dialog template 77\n");
}

TEST_F(CWindows, ModalDialogsAnswerAndModelessOnesHide)
{
    const struct
    {
        const char* pszHow;
        std::function<void(QWidget&)> act;
        uint32_t uAnswer;
    } cases[] = {
        {"OK", [](QWidget& dialog) { Click(dialog.findChild<QWidget*>("1")); }, DIALOG_OK},
        {"Cancel", [](QWidget& dialog) { Click(dialog.findChild<QWidget*>("2")); }, DIALOG_CANCEL},
        {"Enter", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }, DIALOG_OK},
        {"Escape",
         [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
         DIALOG_CANCEL},
        {"close", [](QWidget& dialog) { dialog.close(); }, DIALOG_CANCEL},
    };

    for (const auto& [pszHow, act, uAnswer] : cases)
    {
        SCOPED_TRACE(pszHow);
        CTestDialog dialog(CONTROLS_DIALOG);
        QTimer::singleShot(0, [&, &actNow = act] { actNow(*GetWidget(dialog)); });
        EXPECT_EQ(dialog.DoModal(nullptr), uAnswer);
        EXPECT_FALSE(dialog.IsWindow());

        CTestDialog modeless(CONTROLS_DIALOG);
        ASSERT_TRUE(modeless.Create(&m_Form));
        EXPECT_FALSE(modeless.IsWindowVisible());
        modeless.ShowWindow(true);
        EXPECT_EQ(GetWidget(modeless)->windowTitle(), "Answers");
        act(*GetWidget(modeless));
        EXPECT_TRUE(modeless.IsWindow());
        EXPECT_FALSE(modeless.IsWindowVisible());
        EXPECT_EQ(modeless.nCancels, uAnswer == DIALOG_CANCEL ? 1 : 0);
    }
}
