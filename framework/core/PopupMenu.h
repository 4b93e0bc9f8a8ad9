#pragma once

#include "framework/core/IFrontEnd.h"
#include "host/Export.h"

// Shows the menu with its corner at the point until an item is chosen or it is closed. Returns the
// id of that item, 0 for none.
TELLUR_API uint32_t TrackPopupMenu(const CMenu& menu, SScreenPoint point);
