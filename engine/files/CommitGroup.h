#pragma once

#include "engine/files/CNewFile.h"

#include <string>

namespace fs
{

// Lets the synced file take its target's place: at once, or with the others of the commit group
// that is open. strName: the path for messages. Gives the system's error number, 0 for success.
int PlaceOrHold(CNewFile&& file, const std::string& strName);

} // namespace fs
