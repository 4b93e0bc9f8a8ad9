#include "editor/app/CProgressWindow.h"
#include "host/Progress.h"

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{

class CProgressWindowTest : public testing::Test
{
protected:
    CProgressWindowTest() { m_Parent.show(); }

    QProgressDialog* GetDialog() { return m_Parent.findChild<QProgressDialog*>(); }

    QWidget m_Parent;
};

TEST_F(CProgressWindowTest, ShowsWorkUntilItEndsAndLetsItBeCancelled)
{
    CProgressWindow progress(0);
    ASSERT_TRUE(progress.Report(&m_Parent, "Reading heights", 0.25F));
    ASSERT_NE(GetDialog(), nullptr);
    EXPECT_TRUE(GetDialog()->isVisible());
    EXPECT_EQ(GetDialog()->labelText(), "Reading heights");
    EXPECT_EQ(GetDialog()->value(), GetDialog()->maximum() / 4);
    EXPECT_TRUE(progress.Report(&m_Parent, "Reading heights", 1.0F));
    EXPECT_EQ(GetDialog(), nullptr);
    EXPECT_FALSE(progress.TakeCancelled());

    ASSERT_TRUE(progress.Report(&m_Parent, "Writing heights", 0.5F));
    auto* pCancel = GetDialog()->findChild<QPushButton*>();
    ASSERT_NE(pCancel, nullptr);
    pCancel->click();
    EXPECT_FALSE(progress.Report(&m_Parent, "Writing heights", 0.75F));
    EXPECT_EQ(GetDialog(), nullptr);
    EXPECT_TRUE(progress.TakeCancelled());
    EXPECT_FALSE(progress.TakeCancelled()) << "taken already";

    ASSERT_TRUE(progress.Report(&m_Parent, "Writing heights", 0.5F));
    GetDialog()->findChild<QPushButton*>()->click();
    EXPECT_FALSE(progress.Report(&m_Parent, "Writing heights", 0.75F));
    QApplication::processEvents(); // nobody asked in time
    EXPECT_FALSE(progress.TakeCancelled());
}

TEST_F(CProgressWindowTest, WorkThatMustNotBeStoppedOffersNoButton)
{
    CProgressWindow progress(0);
    const CUncancellable whole;
    ASSERT_TRUE(progress.Report(&m_Parent, "Writing heights", 0.5F));
    EXPECT_EQ(GetDialog()->findChild<QPushButton*>(), nullptr);
    GetDialog()->close();
    EXPECT_TRUE(progress.Report(&m_Parent, "Writing heights", 0.75F));
    EXPECT_TRUE(progress.Report(&m_Parent, "Writing heights", 1.0F));
    EXPECT_FALSE(progress.TakeCancelled());
}

TEST_F(CProgressWindowTest, ShortWorkShowsNothingAndTakesNoEvents)
{
    constexpr int ONE_DAY = 86'400'000;
    CProgressWindow progress(ONE_DAY);
    bool bTurned = false;
    QTimer::singleShot(0, [&bTurned] { bTurned = true; });
    for (const float fDone : {0.0F, 0.5F, 0.99F, 1.0F})
    {
        EXPECT_TRUE(progress.Report(&m_Parent, "Reading heights", fDone));
        EXPECT_EQ(progress.IsWorking(), fDone < 1.0F);
        EXPECT_EQ(GetDialog(), nullptr);
    }
    EXPECT_FALSE(bTurned);
    EXPECT_FALSE(progress.IsWorking());
}

} // namespace
