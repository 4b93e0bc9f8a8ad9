#pragma once

#include "editor/app/SMouseBindings.h"
#include "editor/view/CPointForms.h"
#include "editor/view/SSymmetry.h"

#include <cstdint>
#include <set>
#include <string>

// What the user of the views has chosen; shared by all views.
struct SInputSettings
{
    bool bSampleStrokes = true;  // strokes do not depend on how often the mouse reports
    bool bAimAtPress = true;     // and not on the hill that they raise under the cursor
    int32_t iSpacingPercent = 0; // of the brush, between two points; 0: as its shape asks for
    SMouseBindings mouse;
    SFormSettings form;
    SSymmetry symmetry;           // images of each stroke
    std::set<std::string> builds; // class names of the functions that build up while held
    int32_t iBuildsASecond = 10;  // how often they do

    static constexpr int32_t MOST_SPACING = 100;
    static constexpr int32_t MOST_BUILDS = 50;
};
