// The spinner under a real mouse: the drag is captured, and the cursor comes back on the other side
// of the screen.

#include "framework/qt/CWidgetFrontEnd.h"
#include "tests/tellur/proplist/PropListFixture.h"

#include <QProcess>
#include <QScreen>

#include <cmath>

using CSpinnerDrag = CPropListTest;

TEST_F(CSpinnerDrag, GoesOnFromTheBottomOfTheScreen)
{
    CWidgetFrontEnd real;
    IFrontEnd* pFake = SetFrontEnd(&real);
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    GetWidget(m_Form)->move(0, 0);
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    const QRect cell = View()->visualRect(View()->model()->index(FindRow("m_Free"), 1));
    const QPoint arrow =
        View()->viewport()->mapToGlobal(QPoint(cell.right() - 4, cell.top() + 4)); // the upper one
    const int nHeight = QGuiApplication::primaryScreen()->size().height();
    const auto moveTo = [](int iX, int iY)
    {
        return QStringList{"mousemove", QString::number(iX), QString::number(iY)};
    };
    // Until the value is what it should become, however long a loaded machine takes.
    const auto expect = [this](const QStringList& arguments, float fExpected)
    {
        QProcess process;
        process.start("xdotool", arguments);
        const auto isDone = [&]
        {
            return process.state() == QProcess::NotRunning &&
                   std::fabs(m_Thing.m_Free - fExpected) < 1e-3F;
        };
        EXPECT_TRUE(QTest::qWaitFor(isDone, 60000)) << m_Thing.m_Free << " not " << fExpected;
    };
    // One batch: no time for the arrow to repeat.
    const float fAtTop = 2.0F + 0.125F * static_cast<float>(1 + arrow.y());
    expect(moveTo(arrow.x(), arrow.y()) + QStringList{"mousedown", "1"} + moveTo(1200, 0), fAtTop);
    EXPECT_EQ(QCursor::pos(), QPoint(1200, nHeight - 5));
    // Far from the window, yet the spinner's.
    expect(moveTo(1200, nHeight - 25), fAtTop + 0.125F * 20);
    expect(QStringList{"mouseup", "1"} + moveTo(1200, nHeight - 60) + moveTo(arrow.x(), arrow.y()) +
               QStringList{"click", "1"},
           fAtTop + 0.125F * 21); // let go: only the click counts
    SetFrontEnd(pFake);
}
