#pragma once

#include "framework/core/Resources.h"

// The dialogs, one source file each; what they point to is constant and lives as long as the
// library.
SDialogResource GetPanelDialog(); // 2101, the docked tool panel, one narrow column
SDialogResource GetDrawDialog();  // 2111, painting the bitmap on the terrain
SDialogResource GetColorDialog(); // 2114, a color of a palette
