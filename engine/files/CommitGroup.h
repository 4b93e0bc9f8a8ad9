#pragma once

#include "engine/files/CNewFile.h"

#include <string>

namespace fs
{

// The synced file takes its target's place: at once, or with the others of the commit group that is
// open. strName: the path for messages. The system's error number, 0 for success.
int PlaceOrHold(CNewFile&& file, const std::string& strName);

} // namespace fs
