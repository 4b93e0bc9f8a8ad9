#include "tellur/modes/CModeBase.h"

#include "framework/core/CursorPos.h"
#include "host/ActionIds.h"
#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/World.h"
#include "tellur/context/PluginContext.h"

namespace
{

constexpr float KEY_STEP = 10.0F;      // terrain units a repeat
constexpr float VERTICAL_STEP = 10.0F; // terrain units
constexpr float TURN_STEP = 20.0F;     // degrees

void MoveByKeys(EditorHost& host, EngineHost& engine, ViewId view, uint32_t uCount)
{
    const float fStep = static_cast<float>(uCount) * KEY_STEP;
    if (host.IsCameraBackKeyDown())
    {
        engine.DollyCamera(view, -fStep);
    }
    if (host.IsCameraForwardKeyDown())
    {
        engine.DollyCamera(view, fStep);
    }
    if (host.IsCameraLeftKeyDown())
    {
        engine.StrafeCamera(view, {-fStep, 0.0F, 0.0F});
    }
    if (host.IsCameraRightKeyDown())
    {
        engine.StrafeCamera(view, {fStep, 0.0F, 0.0F});
    }
}

// The eight directions, counter-clockwise from +x.
bool LookByAction(EditorHost& host, ICamera* pCamera, int iAction)
{
    static constexpr float DIRECTIONS[8][2] = {
        {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
    if (iAction < CAMERA_FROM_EAST || iAction > CAMERA_FROM_NORTH_EAST)
    {
        return false;
    }
    const float* pDirection = DIRECTIONS[iAction - CAMERA_FROM_EAST];
    host.LookFromDirection(pCamera, pDirection[0], pDirection[1]);
    return true;
}

} // namespace

void TakeInput(const char* pszCaption)
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    if (pHost == nullptr)
    {
        return;
    }
    pHost->SetModeCaption(pszCaption);
    SetCursorPos(GetCursorPos());
    pHost->RefreshView(pHost->GetActiveView());
}

void CModeBase::OnAction(ViewId view, int iAction, uint32_t uCount)
{
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext->GetEditorHost();
    EngineHost* pEngine = pContext->GetEngineHost();
    World* pWorld = pContext->GetWorld();
    if (pHost == nullptr || pEngine == nullptr || pWorld == nullptr ||
        pHost->HandlesViewAction(view, pContext->GetPluginActionHandle()))
    {
        return;
    }
    ICamera* pCamera = pWorld->GetCameras()->GetCameraOfView(view);
    if (pCamera == nullptr)
    {
        return;
    }
    // Keys that are held move the camera whatever the action is.
    if (pHost->IsKeyboardNavigationOn())
    {
        MoveByKeys(*pHost, *pEngine, view, uCount);
    }
    if (LookByAction(*pHost, pCamera, iAction))
    {
        return;
    }
    switch (iAction)
    {
    case CAMERA_TOGGLE_OFF:
        pHost->SetViewToggle(view, false);
        break;
    case CAMERA_TOGGLE_ON:
        pHost->SetViewToggle(view, true);
        break;
    case CAMERA_UP:
        pEngine->StepCameraVertical(view, VERTICAL_STEP);
        break;
    case CAMERA_DOWN:
        pEngine->StepCameraVertical(view, -VERTICAL_STEP);
        break;
    case CAMERA_TURN_LEFT:
        pHost->TurnCamera(view, -TURN_STEP);
        break;
    case CAMERA_TURN_RIGHT:
        pHost->TurnCamera(view, TURN_STEP);
        break;
    default:
        break;
    }
}
