#pragma once

#include "editor/view/CGroundRuler.h"
#include "editor/view/CStrokePath.h"
#include "host/HostTypes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Where a stroke has ended.
struct SStrokeEnd
{
    uint64_t uState = 0; // of the history, after it
    SVec3 at;            // terrain units
};

// The keys that count while a drag is played again elsewhere.
struct SPlayedKeys
{
    bool bOn = false;
    bool bRaise = false;
    bool bLower = false;
};

// What the hand at the views holds, and where it was. One for all views of the window, owned by the
// front end, which answers the plug-in's question for keys.
struct SHandState
{
    bool bLine = false;  // keeps a stroke straight
    bool bJoin = false;  // a press draws from where the last stroke ended
    bool bRaise = false; // as Ctrl for the plug-in, which the desktop does not take
    bool bLower = false; // as Alt

    bool bProtect = false; // the left button paints what strokes leave alone

    bool bScript = false; // a script is played, and the cursor is its own

    bool bElsewhere = false; // what a stroke sends now is not under the cursor: images, a path

    SPlayedKeys played; // in place of those that are held

    std::vector<SStrokeEnd> ends; // of strokes on this level
    CGroundRuler ruler;
    CStrokePath path; // that a stroke is to follow; on while clicks set its knots

    // Where the stroke ended that has led to a state of the history. False when none is known.
    bool FindEnd(uint64_t uState, SVec3& at) const
    {
        for (const SStrokeEnd& end : ends)
        {
            if (end.uState == uState)
            {
                at = end.at;
                return true;
            }
        }
        return false;
    }

    void SetEnd(uint64_t uState, const SVec3& at)
    {
        constexpr size_t MOST = 1000;
        std::erase_if(ends, [uState](const SStrokeEnd& end) { return end.uState == uState; });
        if (ends.size() >= MOST)
        {
            ends.erase(ends.begin());
        }
        ends.push_back({uState, at});
    }
};
