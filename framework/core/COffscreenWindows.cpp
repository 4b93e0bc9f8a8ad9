#include "framework/core/COffscreenWindows.h"

#include "framework/core/IWindowSystem.h"

bool COffscreenWindows::Open()
{
    IWindowSystem* pSystem = OpenWindowSystem();
    if (pSystem != nullptr && m_Application == nullptr)
    {
        m_Application = pSystem->MakeOffscreen();
    }
    return pSystem != nullptr;
}
