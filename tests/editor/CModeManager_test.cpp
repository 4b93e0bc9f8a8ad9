#include "editor/core/CModeManager.h"
#include "host/IEditorMode.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace
{

// Writes each call with its arguments to a shared text.
class CSpyMode : public IEditorMode
{
public:
    CSpyMode(std::string& strCalls, const char* pszName)
        : m_Calls(strCalls)
        , m_Name(pszName)
    {
    }

    ~CSpyMode() override { Say("end"); }

    void SetId(uint32_t uId) override { m_Id = uId; }

    uint32_t GetId() const override { return m_Id; }

    const char* GetName() const override { return m_Name.c_str(); }

    uint32_t GetUserData() const override { return 0; }

    void SetUserData(uint32_t) override {}

    bool IsAvailable() override { return Say("available"), bAvailable; }

    bool CanDeactivate() override { return Say("leave?"), bMayLeave; }

    bool SetCursor() override { return true; }

    void Activate() override { Say("on"); }

    void Deactivate() override { Say("off", {}, true); }

    void Suspend(bool bSuspended) override { Say(bSuspended ? "suspend" : "resume"); }

    void OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags) override
    {
        Say("down", {view, point, uFlags});
    }

    void OnMouseMove(
        ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uFirst, uintptr_t uSecond) override
    {
        Say("move", {view, point, uFlags});
        uExtra1 = uFirst;
        uExtra2 = uSecond;
    }

    void OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags) override
    {
        Say("up", {view, point, uFlags}, true);
    }

    void OnAction(ViewId view, int iAction, uint32_t uCount) override
    {
        Say("action", {view, static_cast<uintptr_t>(iAction), uCount});
    }

    void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) override
    {
        Say("notify", {uFirst, uSecond, uThird});
    }

    void Render() override { Say("render"); }

    bool bAvailable = true;
    bool bMayLeave = true;
    std::function<void()> onEvent; // run by Deactivate and OnLButtonUp
    uintptr_t uExtra1 = 0;
    uintptr_t uExtra2 = 0;

private:
    void Say(const char* pszWhat, std::vector<uintptr_t> numbers = {}, bool bEvent = false)
    {
        m_Calls += m_Name + " " + pszWhat;
        for (const uintptr_t uNumber : numbers)
        {
            m_Calls += " " + std::to_string(uNumber);
        }
        m_Calls += ", ";
        if (bEvent && onEvent)
        {
            onEvent();
        }
    }

    std::string& m_Calls;
    std::string m_Name;
    uint32_t m_Id = 99;
};

class CModeManagerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Modes.RegisterMode(m_A, 7);
        m_Modes.RegisterMode(m_B, 8);
    }

    std::string TakeCalls() { return std::exchange(m_Calls, ""); }

    std::string m_Calls;
    CModeManager m_Modes;
    CSpyMode* m_A = new CSpyMode(m_Calls, "a"); // owned by m_Modes
    CSpyMode* m_B = new CSpyMode(m_Calls, "b");
};

} // namespace

TEST_F(CModeManagerTest, GivesIdsInOrderAndOwnsEachModeOnce)
{
    EXPECT_EQ(m_Modes.RegisterMode(nullptr, 7), -1);
    EXPECT_EQ(m_A->GetId(), 0U);
    EXPECT_EQ(m_B->GetId(), 1U);
    EXPECT_EQ(m_Modes.RegisterMode(m_A, 9), 0);
    EXPECT_EQ(m_Modes.GetCurrentModeId(), -1);
    EXPECT_EQ(m_Modes.GetCurrentModeGroup(), -1);
    EXPECT_TRUE(m_Modes.ActivateMode(0, 0));
    EXPECT_EQ(m_Modes.GetCurrentModeGroup(), 7);
    TakeCalls();
    m_Modes.DestroyModes();
    EXPECT_EQ(TakeCalls(), "a end, b end, ");
    EXPECT_EQ(m_Modes.GetCurrentModeId(), -1);
}

TEST_F(CModeManagerTest, SwitchesInTheStatedOrder)
{
    EXPECT_TRUE(m_Modes.ActivateMode(0, 0));
    EXPECT_EQ(TakeCalls(), "a available, a on, ");
    EXPECT_TRUE(m_Modes.ActivateMode(1, 0));
    EXPECT_EQ(TakeCalls(), "b available, a leave?, a off, b on, ");
    EXPECT_TRUE(m_Modes.ActivateMode(1, 0));
    EXPECT_EQ(TakeCalls(), "");
    EXPECT_TRUE(m_Modes.DeactivateMode(0));
    EXPECT_EQ(TakeCalls(), "b leave?, b off, ");
    EXPECT_TRUE(m_Modes.DeactivateMode(0));
    EXPECT_TRUE(m_Modes.CanDeactivateCurrentMode());
    EXPECT_EQ(TakeCalls(), "");
}

TEST_F(CModeManagerTest, RefusalsLeaveTheCurrentModeAlone)
{
    ASSERT_TRUE(m_Modes.ActivateMode(0, 0));
    for (const int iUnknown : {-2, -1, 2, 1000})
    {
        EXPECT_FALSE(m_Modes.ActivateMode(iUnknown, 0)) << iUnknown;
        EXPECT_FALSE(m_Modes.IsModeAvailable(iUnknown)) << iUnknown;
    }
    TakeCalls();
    m_B->bAvailable = false;
    EXPECT_FALSE(m_Modes.IsModeAvailable(1));
    EXPECT_FALSE(m_Modes.ActivateMode(1, 0));
    EXPECT_EQ(TakeCalls(), "b available, b available, ");
    m_B->bAvailable = true;
    m_A->bMayLeave = false;
    EXPECT_FALSE(m_Modes.CanDeactivateCurrentMode());
    EXPECT_FALSE(m_Modes.ActivateMode(1, 0));
    EXPECT_FALSE(m_Modes.DeactivateMode(0));
    EXPECT_EQ(m_Modes.GetCurrentModeId(), 0);
    TakeCalls();
    m_Modes.ForceDeactivate();
    EXPECT_EQ(TakeCalls(), "a off, ");
    EXPECT_EQ(m_Modes.GetCurrentModeId(), -1);
}

TEST_F(CModeManagerTest, PacksThePointOfEveryMouseEvent)
{
    const struct
    {
        int32_t iX;
        int32_t iY;
        ViewPoint point;
    } cases[] = {{0, 0, 0},
                 {640, 480, 0x01E00280},
                 {65535, 65535, 0xFFFFFFFF},
                 {-1, 3, 0x0003FFFF},
                 {3, -1, 0xFFFF0003},
                 {65536, 0, 0}};

    ASSERT_TRUE(m_Modes.ActivateMode(0, 0));
    TakeCalls();
    for (const auto& item : cases)
    {
        SCOPED_TRACE(testing::Message() << item.iX << ", " << item.iY);
        const SButtonBlock button = {item.iX, item.iY, 5, 6};
        const SPointBlock point = {item.iX, item.iY};
        const SWheelBlock wheel;
        const SStepBlock step;
        m_Modes.OnLButtonDown(3, 9, &button);
        m_Modes.OnMouseMove(3, 9, &point, &wheel, &step);
        m_Modes.OnLButtonUp(3, 9, &button);
        const std::string strArguments = " 3 " + std::to_string(item.point) + " 9, ";
        EXPECT_EQ(TakeCalls(),
                  "a down" + strArguments + "a move" + strArguments + "a up" + strArguments);
    }
}

TEST_F(CModeManagerTest, MovesCarryTheAddressesOfTheirLastTwoBlocks)
{
    const SPointBlock point = {1, 2};
    const SWheelBlock wheel = {3, 4};
    const SStepBlock step = {5, -6};
    m_Modes.OnMouseMove(1, 0, &point, &wheel, &step);
    EXPECT_EQ(TakeCalls(), "");
    ASSERT_TRUE(m_Modes.ActivateMode(0, 0));
    m_Modes.OnMouseMove(1, 0, &point, &wheel, &step);
    EXPECT_EQ(m_A->uExtra1, reinterpret_cast<uintptr_t>(&wheel));
    EXPECT_EQ(m_A->uExtra2, reinterpret_cast<uintptr_t>(&step));
    static_assert(offsetof(SStepBlock, dy) == 4, "modes read the second number of the block");
    TakeCalls();
    m_Modes.OnMouseMove(1, 0, &point, nullptr, &step);
    m_Modes.OnLButtonDown(1, 0, nullptr);
    m_Modes.OnLButtonUp(1, 0, nullptr);
    EXPECT_EQ(TakeCalls(), "");
}

TEST_F(CModeManagerTest, OnlyTheCurrentModeHearsAnything)
{
    ASSERT_TRUE(m_Modes.ActivateMode(1, 0));
    TakeCalls();
    m_Modes.OnAction(1, 2, 4294967295U);
    m_Modes.Notify(1, 2, 3);
    m_Modes.SuspendCurrentMode(true);
    m_Modes.RenderCurrentMode();
    EXPECT_TRUE(m_Modes.SetModeCursor());
    EXPECT_EQ(TakeCalls(), "b action 1 2 4294967295, b notify 1 2 3, b suspend, b render, ");
    m_Modes.ForceDeactivate();
    EXPECT_FALSE(m_Modes.SetModeCursor());
}

TEST_F(CModeManagerTest, AModeMaySwitchFromInsideACallAndWhileItLeaves)
{
    const SButtonBlock block;
    ASSERT_TRUE(m_Modes.ActivateMode(0, 0));
    m_A->onEvent = [this]
    {
        EXPECT_TRUE(m_Modes.ActivateMode(1, 0));
    };
    TakeCalls();
    m_Modes.OnLButtonUp(1, 0, &block);
    EXPECT_EQ(TakeCalls(), "a up 1 0 0, b available, a leave?, a off, b available, b on, ");
    EXPECT_EQ(m_Modes.GetCurrentModeId(), 1);
}

TEST_F(CModeManagerTest, EndsTheDragAndTheSuspensionBeforeAModeIsLeft)
{
    const SButtonBlock last = {5, 6, 0, 0};
    bool bDragging = false;
    m_Modes.SetDragEnd(
        [&]
        {
            if (std::exchange(bDragging, false))
            {
                m_Modes.OnLButtonUp(1, 0, &last);
            }
        });
    const std::function<void()> ways[] = {[&] { m_Modes.DeactivateMode(0); },
                                          [&] { m_Modes.ForceDeactivate(); },
                                          [&]
                                          {
                                              m_Modes.ActivateMode(1, 0);
                                          }};
    for (const auto& leave : ways)
    {
        m_Modes.ForceDeactivate();
        ASSERT_TRUE(m_Modes.ActivateMode(0, 0));
        m_Modes.SuspendCurrentMode(true);
        m_Modes.SuspendCurrentMode(true);
        bDragging = true;
        TakeCalls();
        leave();
        const std::string strCalls = TakeCalls();
        EXPECT_NE(strCalls.find("a up 1 393221 0, a resume, a off, "), std::string::npos)
            << strCalls;
    }
    EXPECT_EQ(m_Modes.GetCurrentModeId(), 1) << "by the last one";
    m_Modes.SuspendCurrentMode(false);
    EXPECT_EQ(TakeCalls(), "") << "another mode is not suspended";

    // Refused: nothing ends. A release that switches by itself has switched.
    bDragging = true;
    m_B->bMayLeave = false;
    EXPECT_FALSE(m_Modes.ActivateMode(0, 0));
    EXPECT_TRUE(bDragging);
    m_B->bMayLeave = true;
    m_B->onEvent = [this]
    {
        m_Modes.ActivateMode(0, 0);
    };
    TakeCalls();
    EXPECT_TRUE(m_Modes.ActivateMode(0, 0));
    EXPECT_EQ(TakeCalls(),
              "a available, b leave?, b up 1 393221 0, a available, b leave?, b off, a available, "
              "a on, ");
}
