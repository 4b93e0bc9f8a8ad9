#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"

#include <string>
#include <vector>

// What objects under test were asked, as lines such as "Host.RefreshView(3)", in the order it came.
using Calls = std::vector<std::string>;

// Numbers are written with %g. Null: nobody listens.
void AddCall(Calls* pCalls, const char* pszFormat, ...) TELLUR_PRINTF(2, 3);
std::string ToText(const SExtents& box); // "[min x y z, max x y z]"
