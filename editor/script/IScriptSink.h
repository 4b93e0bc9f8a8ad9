#pragma once

#include <string>

// Where the text of a CScriptWriter goes, and what keeps things that no keyword can say. Each
// operation: false when the script cannot go on, after one logged line.
class IScriptSink
{
public:
    virtual ~IScriptSink() = default;

    virtual bool Append(const std::string& strText) = 0; // whole lines

    // What came since the last call is one step of the user: a stroke, an action, an undo.
    virtual void EndStep() {}

    // The terrain is another one than the script has led to: keeps it and appends the call that
    // brings it.
    virtual bool KeepTerrain() = 0;
    // The same for the bitmap that is painted. bKnown: the script has loaded or painted it before.
    virtual bool KeepBitmap(bool bKnown) = 0;
};
