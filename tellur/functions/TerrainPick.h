#pragma once

#include "host/HostTypes.h"

// The terrain under the cursor. PICK_HIT with the hit in terrain units; anything else, and hit
// untouched, when there is none.
int PickTerrainUnder(ViewId view, ViewPoint point, SVec3& hit);

// Has the host redraw its views after a change.
void RedrawAllViews();
