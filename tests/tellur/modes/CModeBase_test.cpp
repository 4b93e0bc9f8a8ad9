#include "tellur/painting/CModeEditTerrainType.h"
#include "tests/tellur/modes/ModesFixture.h"

#include <tuple>

namespace
{

constexpr ViewId VIEW = 3;
constexpr ViewId VIEW_WITHOUT_CAMERA = 4;
const std::string QUERY = "Host.HandlesViewAction(3, 0x4300)";

class CModeBaseTest : public CModesFixture
{
protected:
    CModeBaseTest() { m_Context.world.cameras.viewsWithout.push_back(VIEW_WITHOUT_CAMERA); }

    CModeEditTerrainType m_Plain; // all it does with actions is the base's
};

} // namespace

TEST_F(CModeBaseTest, ViewActionsMoveTheCamera)
{
    // A null call is none; the brush-size steps are the terraforming mode's alone.
    const std::tuple<int, const char*> cases[] = {{108, "Host.LookFromDirection(camera, 1, 0)"},
                                                  {109, "Host.LookFromDirection(camera, 1, 1)"},
                                                  {110, "Host.LookFromDirection(camera, 0, 1)"},
                                                  {111, "Host.LookFromDirection(camera, -1, 1)"},
                                                  {112, "Host.LookFromDirection(camera, -1, 0)"},
                                                  {113, "Host.LookFromDirection(camera, -1, -1)"},
                                                  {114, "Host.LookFromDirection(camera, 0, -1)"},
                                                  {115, "Host.LookFromDirection(camera, 1, -1)"},
                                                  {116, "Host.SetViewToggle(3, 0)"},
                                                  {117, "Host.SetViewToggle(3, 1)"},
                                                  {118, "Engine.StepCameraVertical(3, 10)"},
                                                  {119, "Engine.StepCameraVertical(3, -10)"},
                                                  {120, "Host.TurnCamera(3, -20)"},
                                                  {121, "Host.TurnCamera(3, 20)"},
                                                  {107, nullptr},
                                                  {122, nullptr},
                                                  {1, nullptr},
                                                  {-1, nullptr}};

    for (const auto& [iAction, pszCall] : cases)
    {
        SCOPED_TRACE(iAction);
        Lines expected = {QUERY};
        if (pszCall != nullptr)
        {
            expected.emplace_back(pszCall);
        }
        m_Plain.OnAction(VIEW, iAction, 1);
        EXPECT_EQ(TakeCalls(), expected);
    }
}

TEST_F(CModeBaseTest, HeldKeysMoveByTheCountBeforeTheActionItself)
{
    m_Context.host.bBack = true;
    m_Plain.OnAction(VIEW, 120, 3);
    EXPECT_EQ(TakeCalls(), (Lines{QUERY, "Host.TurnCamera(3, -20)"})) << "navigation is off";

    m_Context.host.bNavigation = true;
    m_Context.host.bForward = true;
    m_Context.host.bLeft = true;
    m_Context.host.bRight = true;
    m_Plain.OnAction(VIEW, 120, 3);
    EXPECT_EQ(TakeCalls(),
              (Lines{QUERY,
                     "Engine.DollyCamera(3, -30)",
                     "Engine.DollyCamera(3, 30)",
                     "Engine.StrafeCamera(3, -30 0 0)",
                     "Engine.StrafeCamera(3, 30 0 0)",
                     "Host.TurnCamera(3, -20)"}));

    // The count is unsigned: the largest one is far forward, not ten units back.
    m_Context.host.bBack = false;
    m_Context.host.bLeft = false;
    m_Context.host.bRight = false;
    m_Plain.OnAction(VIEW, 0, 4294967295U);
    EXPECT_EQ(TakeCalls(), (Lines{QUERY, "Engine.DollyCamera(3, 4.29497e+10)"}));
}

TEST_F(CModeBaseTest, NothingMovesWithoutACameraOrWhenTheHostHasDealtWithTheAction)
{
    m_Context.host.bNavigation = true;
    m_Context.host.bForward = true;
    m_Plain.OnAction(VIEW_WITHOUT_CAMERA, 118, 1); // needs no camera itself, and still
    EXPECT_EQ(TakeCalls(), (Lines{"Host.HandlesViewAction(4, 0x4300)"}));

    m_Context.host.bHandlesViewAction = true;
    m_Plain.OnAction(VIEW, 118, 1);
    EXPECT_EQ(TakeCalls(), (Lines{QUERY}));

    m_Context.pEditorHost = nullptr;
    m_Context.pEngineHost = nullptr;
    m_Context.pWorld = nullptr;
    m_Plain.OnAction(VIEW, 118, 1);
    m_Plain.Activate();
    EXPECT_EQ(TakeCalls(), Lines{}) << "the host has gone away";
}
