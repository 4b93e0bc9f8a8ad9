#pragma once

class IPaintLayer;

IPaintLayer* GetPaintLayer(); // the host's, null without one

// Whether the mode that paints the terrain-type bitmap is the host's current one.
bool IsPaintingModeOn();
