#pragma once

#include "engine/world/CCamera.h"
#include "host/World.h"

#include <map>
#include <memory>

// One camera for each view that has one. Owned by the world.
class CCameraList final : public ICameraList
{
public:
    CCamera* GetCameraOfView(ViewId view) override
    {
        const auto found = m_Cameras.find(view);
        return found != m_Cameras.end() ? found->second.get() : nullptr;
    }

    // The view's camera, made if there is none yet. Null for NO_VIEW.
    CCamera* AddCamera(ViewId view)
    {
        if (view == NO_VIEW)
        {
            return nullptr;
        }
        std::unique_ptr<CCamera>& pCamera = m_Cameras[view];
        if (pCamera == nullptr)
        {
            pCamera = std::make_unique<CCamera>();
        }
        return pCamera.get();
    }

    void RemoveCamera(ViewId view) { m_Cameras.erase(view); }

private:
    std::map<ViewId, std::unique_ptr<CCamera>> m_Cameras;
};
