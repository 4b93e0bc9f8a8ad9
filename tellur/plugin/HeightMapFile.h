#pragma once

#include <cstdint>

// The level's height-map file: saving it, warning about it, and changing its resolution. The level
// and its file are the host's, so nothing of them is kept here; without a host nothing happens.

// Asks for a file when the path is null or empty. False when cancelled, without a terrain and when
// the terrain cannot write.
bool SaveHeightMap(const char* pszPath);

// A message box when the file is there and read-only.
void CheckHeightMapWritable();

// Resamples the heights to that many vertices per side (33, 65, ... from such a size), keeps the
// level's height-map file as ".bak" unless there is one, writes a new one and has it loaded.
// Nothing happens without a level, a file name or a change; a failed write is logged.
void ChangeHeightMapResolution(int32_t iVertices);
