#pragma once

#include "editor/core/SLevelText.h"
#include "engine/terrain/CVertexProtection.h"

#include <cstdint>
#include <string>

// What a NAME-PID.level says: the level, what lies under the steps that were kept of it, and whose
// it is.
struct SAutosaveText
{
    SLevelText level;             // strPath: the level's own file, empty when it had none
    uint32_t uNumber = 1;         // of the base: the first steps are in the journal of this number
    std::string strHeights;       // full path: a copy, or the level's own as read; empty: flat
    std::string strStamp;         // of GetHeightStamp when these are the level's own
    float fFlat = 0.0F;           // height of all vertices, without heights
    CVertexProtection protection; // of the base
    std::string strBitmap;        // painted and not saved, as the plug-in names it; empty for none
    std::string strTexels;        // full path of its copy
    int32_t iProcess = 0;         // that keeps it
    std::string strStart;         // as GetProcessStart

    bool IsCopy() const { return strStamp.empty() && !strHeights.empty(); }

    // The text of the whole file; process and start in it are those of this process.
    std::string Write() const;
    // Fills this from a file. False when it says nothing of the kind.
    bool Read(const std::string& strFile);
};
