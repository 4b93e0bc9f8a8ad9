#pragma once

#include "host/Export.h"

#include <memory>

// A window system that nobody sees and that needs no display, for a program without windows of its
// own whose scripts work dialogs. Outlives every window. UI thread.
class TELLUR_API COffscreenWindows
{
public:
    COffscreenWindows() = default;
    ~COffscreenWindows() = default;
    COffscreenWindows(const COffscreenWindows&) = delete;
    COffscreenWindows& operator=(const COffscreenWindows&) = delete;

    // Does nothing beside a window system that is there already. False, with one logged line the
    // first time, when its library cannot be opened.
    bool Open();

private:
    std::shared_ptr<void> m_Application; // null until it is open
};
