#pragma once

#include "host/Export.h"

#include <memory>

class IDrawingSystem; // framework/drawing
class IWindowFactory; // framework/widgets

// What stands behind windows, text and the colours of the desktop. It is a library of its own
// beside the framework's, so that a program which shows nothing loads nothing of it. UI thread.
class TELLUR_API IWindowSystem
{
public:
    // Both live as long as the process.
    virtual IDrawingSystem& GetDrawing() = 0;
    virtual IWindowFactory& GetWindows() = 0;
    // Makes an application object that needs no display and shows nothing; it ends with the
    // pointer. Answers null when the process has an application object already.
    virtual std::shared_ptr<void> MakeOffscreen() = 0;

protected:
    ~IWindowSystem() = default;
};

// Opens the library at the first call, unless the program is linked with it; it stays in memory.
// Answers null, with one logged line the first time, when it cannot be opened.
TELLUR_API IWindowSystem* OpenWindowSystem();

// Called by the library when it is loaded. pSystem: borrowed for the life of the process.
TELLUR_API void RegisterWindowSystem(IWindowSystem* pSystem);
