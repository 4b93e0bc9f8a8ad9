#pragma once

#include "host/Export.h"

#include <cstdint>
#include <string>
#include <string_view>

// What a field's edit-flag string says.
struct SEditFlags
{
    uint32_t uFlags = 0;     // ERTTIFieldFlag
    uint32_t uEditFlags = 0; // ERTTIEditFlag
    std::string strCategory;
    std::string strDescription;
    double fMin = 0.0;
    double fMax = 0.0;
    double fStep = 0.0;
    int iPrecision = 3; // display digits
};

// Reads parts "x:TEXT;". Repeated f and e parts add up; of others the last one counts. False for a
// part that is unknown, not closed by ';' or without a proper value, and for a minimum above the
// maximum; flags is then not to be used.
TELLUR_API bool ParseEditFlags(std::string_view strText, SEditFlags& flags);
