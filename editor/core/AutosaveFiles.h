#pragma once

#include "editor/core/CAutosave.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>

// The files of autosaves: NAME.level, which says whose copy it is, and NAME.height beside it.

constexpr char AUTOSAVE_FOLDER[] = ".tellur-autosave";

// Where a copy of the level is kept, made if it is not there; beside the level if possible. Empty
// when no folder can be written.
std::string MakeAutosaveFolder(const std::string& strLevelPath);
std::string GetStateAutosaveFolder();

// The text of the level file of a copy, with the process that made it.
std::string MakeAutosaveText(const SLevelText& level, const std::string& strHeightFile);

// Appends the copies in the folder that no running process owns.
void FindAutosaves(const std::string& strFolder, std::vector<SRecoverable>& found);

// What the child process writes. The memory is that of the parent at the fork.
struct SAutosaveJob
{
    const char* pszFolder = nullptr;
    const char* pszHeightFile = nullptr;
    const char* pszHeightTemp = nullptr; // beside it
    const char* pszTextFile = nullptr;
    const char* pszTextTemp = nullptr;
    const char* pszText = nullptr;
    size_t nText = 0;
    const float* pHeights = nullptr;
    uint32_t uVerticesX = 0;
    uint32_t uVerticesZ = 0;
    SVec3 size = {};
};

// Heights, then text, each written beside its target, on the disk before it is renamed. Only calls
// that a child of fork may make. 0, or the number of the fault.
int WriteAutosave(const SAutosaveJob& job);
