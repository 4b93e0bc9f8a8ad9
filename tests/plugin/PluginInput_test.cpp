// Mouse input and notifications on their way to the current mode.

#include "tests/plugin/PluginFixture.h"

namespace
{

// Writes down all four numbers of the button blocks.
class CBlockModes : public CFakeModeManager
{
public:
    using CFakeModeManager::CFakeModeManager;

    void OnLButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) override
    {
        AddCall(pCalls, "Block(%d %d %d %d)", pBlock->x, pBlock->y, pBlock->dx, pBlock->dy);
        CFakeModeManager::OnLButtonDown(view, uFlags, pBlock);
    }

    void OnLButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock) override
    {
        AddCall(pCalls, "Block(%d %d %d %d)", pBlock->x, pBlock->y, pBlock->dx, pBlock->dy);
        CFakeModeManager::OnLButtonUp(view, uFlags, pBlock);
    }
};

class CPluginInput : public CPluginFixture
{
protected:
    CPluginInput() { m_Host.pModes = &m_Modes; }

    // Makes a recording mode of this group current.
    void Enter(int iGroup)
    {
        m_Modes.iCurrent = m_Modes.RegisterMode(new CRecordingMode(&m_Fake.calls), iGroup);
        TakeCalls();
    }

    void SendAll()
    {
        m_Plugin->OnLButtonDown(3, 1, 10, 20, -5, 6);
        m_Plugin->OnMouseMove(3, 2, 11, 21, 7, 1, -8, 9);
        m_Plugin->OnLButtonUp(3, 4, 12, 22, 13, 14);
        m_Plugin->Notify(100, 200, 300);
    }

    CBlockModes m_Modes{&m_Fake.calls};
};

} // namespace

TEST_F(CPluginInput, EveryNumberLandsInTheModeOfTheGroup)
{
    Enter(7);
    SendAll();
    EXPECT_EQ(TakeCalls(),
              (Lines{"Block(10 20 -5 6)",
                     "Modes.OnLButtonDown(3, 1, 10 20)",
                     "Mode.OnLButtonDown(3, 0x14000a, 1)",
                     "Modes.OnMouseMove(3, 2, 11 21, 7 1, -8 9)",
                     "Mode.OnMouseMove(3, 2, 0x15000b,",
                     "7 1,",
                     "-8 9)",
                     "Block(12 22 13 14)",
                     "Modes.OnLButtonUp(3, 4, 12 22)",
                     "Mode.OnLButtonUp(3, 0x16000c, 4)",
                     "Modes.Notify(100, 200, 300)",
                     "Mode.Notify(100, 200, 300)"}));
}

TEST_F(CPluginInput, OtherGroupsGetNothing)
{
    SendAll();
    EXPECT_EQ(TakeCalls(), Lines{}) << "no mode at all";
    for (const int iGroup : {6, 8, 0, -1})
    {
        Enter(iGroup);
        SendAll();
        EXPECT_EQ(TakeCalls(), Lines{}) << iGroup;
    }
}
