#pragma once

#include "host/Export.h"

#include <memory>

// A window system that nobody sees and that needs no display, for a program without windows of its
// own whose scripts work dialogs. One at a time in a process, and none beside a window system that
// is there already: then it does nothing. Outlives every window. UI thread.
class TELLUR_API COffscreenWindows
{
public:
    COffscreenWindows();
    ~COffscreenWindows();
    COffscreenWindows(const COffscreenWindows&) = delete;
    COffscreenWindows& operator=(const COffscreenWindows&) = delete;

private:
    struct SApplication;

    std::unique_ptr<SApplication> m_Application; // null when there was one
};
