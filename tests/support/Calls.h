#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"

#include <string>
#include <vector>

// What objects under test were asked, as lines such as "Host.RefreshView(3)", in the order it came.
using Calls = std::vector<std::string>;

// Adds a line in the format of printf, with the decimal point of the "C" locale whatever the test
// runs in. Null does nothing, since nobody listens.
void AddCall(Calls* pCalls, const char* pszFormat, ...) TELLUR_PRINTF(2, 3);
std::string ToText(const SExtents& box); // "[min x y z, max x y z]"
