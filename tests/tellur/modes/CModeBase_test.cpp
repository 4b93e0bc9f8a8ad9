#include "tellur/painting/CModeEditTerrainType.h"
#include "tests/tellur/modes/ModesFixture.h"

#include <tuple>

namespace
{

constexpr ViewId VIEW = 3;
const std::string QUERY = "Host.HandlesViewAction(3, 0x4100)";

class CModeBaseTest : public CModesFixture
{
protected:
    void Act(int iAction, uint32_t uCount = 1)
    {
        m_Camera.SetPosition({});
        m_Plain.OnAction(VIEW, iAction, uCount);
    }

    CCamera& m_Camera = *m_Host.GetWorld().GetCameraList().AddCamera(VIEW); // looks to smaller z
    CModeEditTerrainType m_Plain; // all it does with actions is the base's
};

} // namespace

TEST_F(CModeBaseTest, ViewActionsMoveTheCamera)
{
    // A null call is none; the brush-size steps are the terraforming mode's alone.
    const std::tuple<int, const char*, float> cases[] = {{108, "Host.LookFromDirection(1, 0)", 0},
                                                         {109, "Host.LookFromDirection(1, 1)", 0},
                                                         {110, "Host.LookFromDirection(0, 1)", 0},
                                                         {111, "Host.LookFromDirection(-1, 1)", 0},
                                                         {112, "Host.LookFromDirection(-1, 0)", 0},
                                                         {113, "Host.LookFromDirection(-1, -1)", 0},
                                                         {114, "Host.LookFromDirection(0, -1)", 0},
                                                         {115, "Host.LookFromDirection(1, -1)", 0},
                                                         {116, "Host.SetViewToggle(3, 0)", 0},
                                                         {117, "Host.SetViewToggle(3, 1)", 0},
                                                         {118, nullptr, 10},
                                                         {119, nullptr, -10},
                                                         {120, "Host.TurnCamera(3, -20)", 0},
                                                         {121, "Host.TurnCamera(3, 20)", 0},
                                                         {107, nullptr, 0},
                                                         {122, nullptr, 0},
                                                         {1, nullptr, 0},
                                                         {-1, nullptr, 0}};

    for (const auto& [iAction, pszCall, fUp] : cases)
    {
        SCOPED_TRACE(iAction);
        Lines expected = {QUERY};
        if (pszCall != nullptr)
        {
            expected.emplace_back(pszCall);
        }
        Act(iAction);
        EXPECT_EQ(TakeCalls(), expected);
        EXPECT_EQ(m_Camera.GetPosition().y, fUp);
    }
}

TEST_F(CModeBaseTest, HeldKeysMoveByTheCountBesideTheActionItself)
{
    const std::tuple<ECameraKey, float, float> cases[] = {{ECameraKey::Back, 0, 30},
                                                          {ECameraKey::Forward, 0, -30},
                                                          {ECameraKey::Left, -30, 0},
                                                          {ECameraKey::Right, 30, 0}};
    for (const auto& [eKey, fX, fZ] : cases)
    {
        SCOPED_TRACE(static_cast<int>(eKey));
        m_Face.cameraKeys = {eKey};
        for (const bool bNavigation : {false, true})
        {
            m_Face.bNavigation = bNavigation;
            Act(120, 3);
            EXPECT_EQ(TakeCalls(), (Lines{QUERY, "Host.TurnCamera(3, -20)"}));
            EXPECT_NEAR(m_Camera.GetPosition().x, bNavigation ? fX : 0.0F, 1.0e-4F);
            EXPECT_NEAR(m_Camera.GetPosition().z, bNavigation ? fZ : 0.0F, 1.0e-4F);
        }
    }
    // The count is unsigned: the largest one is far forward, not ten units back.
    m_Face.cameraKeys = {ECameraKey::Forward};
    Act(0, 4294967295U);
    EXPECT_LT(m_Camera.GetPosition().z, -4.0e10F);
}

TEST_F(CModeBaseTest, NothingMovesWithoutACameraOrWhenTheHostHasDealtWithTheAction)
{
    m_Plain.OnAction(4, 117, 1); // needs no camera itself, and still
    EXPECT_EQ(TakeCalls(), (Lines{"Host.HandlesViewAction(4, 0x4100)"}));

    m_Face.bHandlesViewAction = true;
    Act(118);
    EXPECT_EQ(TakeCalls(), (Lines{QUERY}));
    m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0);
    Act(118);
    m_Plain.Activate();
    EXPECT_EQ(TakeCalls(), Lines{}) << "the host has gone away";
    EXPECT_EQ(m_Camera.GetPosition().y, 0.0F);
}
