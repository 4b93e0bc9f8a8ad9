#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The files of one level's autosave share a stem, "NAME-PID": NAME-PID.level says whose copy it is
// and what its base is; NAME-PID.K.height and NAME-PID.K.tga are the heights and the painted bitmap
// of base number K, and NAME-PID.K.tellur the steps since. Each is made anew and read by its owner
// alone; no link is followed.

constexpr char AUTOSAVE_FOLDER[] = ".tellur-autosave";

// Where a copy of the level is kept, made if it is not there; beside the level if possible. Empty
// when no folder can be written.
std::string MakeAutosaveFolder(const std::string& strLevelPath);
std::string GetStateAutosaveFolder();

// A stem, with its folder, that no file has; strTitle is cut where names would be too long. Takes
// away what dead processes have left in the folder without saying what it is.
std::string MakeAutosaveStem(const std::string& strFolder, const std::string& strTitle);

std::string GetAutosaveText(const std::string& strStem);
// Beside it, until it takes its place.
std::string GetAutosaveTextTemp(const std::string& strStem, uint32_t uNumber);
std::string GetAutosaveHeights(const std::string& strStem, uint32_t uNumber);
std::string GetAutosaveTexels(const std::string& strStem, uint32_t uNumber);
std::string GetAutosaveJournal(const std::string& strStem, uint32_t uNumber);

// Numbers of its journals, the smallest first.
std::vector<uint32_t> ListAutosaveJournals(const std::string& strStem);

// All files of the stem, and the folder when it is empty then.
void RemoveAutosave(const std::string& strStem);
// Those of numbers below.
void RemoveOlderAutosave(const std::string& strStem, uint32_t uNumber);
// All that a copy has written before its text took its place.
void RemoveAutosaveCopy(const std::string& strStem, uint32_t uNumber);

// Tells one content of a ".height" file from another: its length and the checksum that it ends
// with. Empty when there is no such file.
std::string GetHeightStamp(const std::string& strFile);
// A second name for a ".height" file of that stamp: its content stays there when another file takes
// the place of the first name. False where there can be none, as on another file system.
bool LinkHeights(const std::string& strFile,
                 const std::string& strStamp,
                 const std::string& strLink);
// The same of any file, by length and time.
std::string GetFileStamp(const std::string& strFile);
