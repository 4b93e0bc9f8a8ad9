#pragma once

#include "host/HostTypes.h"

// What the hand at the views holds, and where it was. One for all views of the window, owned by the
// front end, which answers the plug-in's question for keys.
struct SHandState
{
    bool bLine = false;  // keeps a stroke straight
    bool bJoin = false;  // a press draws from where the last stroke ended
    bool bRaise = false; // as Ctrl for the plug-in, which the desktop does not take
    bool bLower = false; // as Alt

    bool bScript = false; // a script is played, and the cursor is its own

    bool bEnd = false; // a stroke has ended on this level
    SVec3 end;         // where, terrain units
};
