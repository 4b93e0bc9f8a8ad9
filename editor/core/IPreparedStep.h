#pragma once

// A record of the undo stack that may find itself unable to take its step.
class IPreparedStep
{
public:
    virtual ~IPreparedStep() = default;

    // Called before Undo and Redo. False after one logged line: the history stays where it is.
    virtual bool Prepare() = 0;
};
