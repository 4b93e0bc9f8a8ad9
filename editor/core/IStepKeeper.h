#pragma once

#include "host/HostTypes.h"

// Who keeps a step of the history open across several drags. Borrowed by CHostInput.
class IStepKeeper
{
public:
    virtual ~IStepKeeper() = default;

    virtual void OnPress(ViewId view) = 0; // a button is about to go down there
    // A drag was dropped for want of memory; observers hear of that next. Needs no memory.
    virtual void OnDropped() = 0;
};
