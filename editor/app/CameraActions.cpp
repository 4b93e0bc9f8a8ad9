#include "editor/app/CameraActions.h"

#include "editor/core/CEditorHost.h"
#include "engine/world/CEngineHost.h"
#include "host/ActionIds.h"

#include <iterator>
#include <utility>

namespace
{

// Directions of the presets, from CAMERA_FROM_EAST on.
constexpr std::pair<float, float> PRESETS[] = {{1.0F, 0.0F},
                                               {1.0F, 1.0F},
                                               {0.0F, 1.0F},
                                               {-1.0F, 1.0F},
                                               {-1.0F, 0.0F},
                                               {-1.0F, -1.0F},
                                               {0.0F, -1.0F},
                                               {1.0F, -1.0F}};
constexpr float TURN = 20.0F; // degrees
constexpr float STEP = 10.0F; // terrain units

} // namespace

void RunCameraAction(CEditorHost& host, ViewId view, int32_t iAction)
{
    CCamera* pCamera = host.GetEngine().GetCWorld().GetCameraList().GetCameraOfView(view);
    const int32_t iPreset = iAction - CAMERA_FROM_EAST;
    if (iPreset >= 0 && iPreset < static_cast<int32_t>(std::size(PRESETS)) && pCamera != nullptr)
    {
        host.LookFromDirection(pCamera, PRESETS[iPreset].first, PRESETS[iPreset].second);
        return;
    }
    switch (iAction)
    {
    case CAMERA_TOGGLE_OFF:
    case CAMERA_TOGGLE_ON:
        host.SetViewToggle(view, iAction == CAMERA_TOGGLE_ON);
        break;
    case CAMERA_UP:
    case CAMERA_DOWN:
        host.GetEngine().StepCameraVertical(view, iAction == CAMERA_UP ? STEP : -STEP);
        break;
    case CAMERA_TURN_LEFT:
    case CAMERA_TURN_RIGHT:
        host.TurnCamera(view, iAction == CAMERA_TURN_LEFT ? -TURN : TURN);
        break;
    default:
        break;
    }
}
