#pragma once

#include "host/HostTypes.h"

#include <cstdint>

class CEditorHost;

// What the modes of a plug-in make of the camera actions (host/ActionIds.h), for views that no mode
// turns: while none is current, and in a view from above. Other actions do nothing.
void RunCameraAction(CEditorHost& host, ViewId view, int32_t iAction);
