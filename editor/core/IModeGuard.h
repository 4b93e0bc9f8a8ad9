#pragma once

#include <cstdint>

// Asked before a mode is made current, whatever asks for it, so that a person can keep what the
// mode would throw away. Implemented by the program, borrowed by the mode manager. UI thread.
class IModeGuard
{
public:
    virtual ~IModeGuard() = default;

    // Before the current mode is left. False: the mode is refused, the current one stays.
    virtual bool MayActivate(int32_t iModeId) = 0;
    virtual void OnActivated(int32_t iModeId) = 0;
};
