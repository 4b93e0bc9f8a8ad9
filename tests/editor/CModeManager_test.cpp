#include "editor/core/CModeManager.h"
#include "host/IEditorMode.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace
{

// Writes each call to a shared text, and keeps the arguments of the last mouse event.
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

    bool IsAvailable() override
    {
        Say("available");
        return bAvailable;
    }

    bool CanDeactivate() override
    {
        Say("leave?");
        return bMayLeave;
    }

    bool SetCursor() override { return true; }

    void Activate() override { Say("on"); }

    void Deactivate() override
    {
        Say("off");
        if (onEvent)
        {
            onEvent();
        }
    }

    void Suspend(bool bSuspended) override { Say(bSuspended ? "suspend" : "resume"); }

    void OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags) override
    {
        Keep(view, point, uFlags, "down");
    }

    void OnMouseMove(
        ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uFirst, uintptr_t uSecond) override
    {
        uExtra1 = uFirst;
        uExtra2 = uSecond;
        Keep(view, point, uFlags, "move");
    }

    void OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags) override
    {
        Keep(view, point, uFlags, "up");
        if (onEvent)
        {
            onEvent();
        }
    }

    void OnAction(ViewId, int iAction, uint32_t uCount) override
    {
        Say("action " + std::to_string(iAction) + " x " + std::to_string(uCount));
    }

    void Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird) override
    {
        Say("notify " + std::to_string(uFirst * 100 + uSecond * 10 + uThird));
    }

    void Render() override { Say("render"); }

    bool bAvailable = true;
    bool bMayLeave = true;
    std::function<void()> onEvent;
    ViewId viewLast = 0;
    ViewPoint pointLast = 0;
    uint32_t uFlagsLast = 0;
    uintptr_t uExtra1 = 0;
    uintptr_t uExtra2 = 0;

private:
    void Keep(ViewId view, ViewPoint point, uint32_t uFlags, const char* pszWhat)
    {
        viewLast = view;
        pointLast = point;
        uFlagsLast = uFlags;
        Say(pszWhat);
    }

    void Say(const std::string& strWhat) { m_Calls += m_Name + " " + strWhat + ", "; }

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
    struct SCase
    {
        int32_t iX;
        int32_t iY;
        ViewPoint point;
    };

    const SCase cases[] = {
        {0, 0, 0},
        {1, 2, 0x00020001},
        {640, 480, 0x01E00280},
        {65535, 65535, 0xFFFFFFFF},
        {-1, 3, 0x0003FFFF},
        {3, -1, 0xFFFF0003},
        {65536, 0, 0},
    };
    ASSERT_TRUE(m_Modes.ActivateMode(0, 0));
    for (const SCase& item : cases)
    {
        SCOPED_TRACE(testing::Message() << item.iX << ", " << item.iY);
        const SButtonBlock button = {item.iX, item.iY, 5, 6};
        const SPointBlock point = {item.iX, item.iY};
        const SWheelBlock wheel;
        const SStepBlock step;
        m_Modes.OnLButtonDown(3, 9, &button);
        EXPECT_EQ(m_A->pointLast, item.point);
        m_A->pointLast = 12345;
        m_Modes.OnMouseMove(3, 9, &point, &wheel, &step);
        EXPECT_EQ(m_A->pointLast, item.point);
        m_A->pointLast = 12345;
        m_Modes.OnLButtonUp(3, 9, &button);
        EXPECT_EQ(m_A->pointLast, item.point);
        EXPECT_EQ(m_A->viewLast, 3U);
        EXPECT_EQ(m_A->uFlagsLast, 9U);
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
    EXPECT_EQ(TakeCalls(), "b action 2 x 4294967295, b notify 123, b suspend, b render, ");
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
    EXPECT_EQ(TakeCalls(), "a up, b available, a leave?, a off, b available, b on, ");
    EXPECT_EQ(m_Modes.GetCurrentModeId(), 1);
}
