#pragma once

#include <cstdint>

// The level's height-map file: saving it, warning about it, and changing its resolution. The level
// and its file are the host's, so nothing of them is kept here; without a host nothing happens.

// Writes the terrain's heights to a file, which is asked for when the path is null or empty. False
// when cancelled, without a terrain and when the terrain cannot write.
bool SaveHeightMap(const char* pszPath);

// Warns with a message box when the level's file is there and read-only, since what is sculpted
// then will not be saved.
void CheckHeightMapWritable();

// Resamples the heights to that many vertices per side (33, 65, ... from such a size), keeps the
// level's height-map file as ".bak" unless there is one, writes a new one and has it loaded.
// Nothing happens without a level, a file name or a change; a failed write is logged.
void ChangeHeightMapResolution(int32_t iVertices);
