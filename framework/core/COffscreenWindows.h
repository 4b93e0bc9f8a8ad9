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

    // Opens it and keeps it until this object ends. Where the program has a window system that
    // works already, that one is used. Answers false, with one logged line the first time, when the
    // library of the window system cannot be opened.
    bool Open();

private:
    std::shared_ptr<void> m_Application; // null until it is open
};
