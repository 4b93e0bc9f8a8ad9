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
// A new text is written under this name, and then takes the place of the one before it.
std::string GetAutosaveTextTemp(const std::string& strStem, uint32_t uNumber);
std::string GetAutosaveHeights(const std::string& strStem, uint32_t uNumber);
std::string GetAutosaveTexels(const std::string& strStem, uint32_t uNumber);
std::string GetAutosaveJournal(const std::string& strStem, uint32_t uNumber);

// The numbers of all journals of a stem, the smallest first.
std::vector<uint32_t> ListAutosaveJournals(const std::string& strStem);

// Removes all files of a stem, and their folder if nothing is left in it.
void RemoveAutosave(const std::string& strStem);
// Removes the files whose number is below uNumber: what a newer base has made worthless.
void RemoveOlderAutosave(const std::string& strStem, uint32_t uNumber);
// Removes what a copy of that number has written, if its text has not taken its place.
void RemoveAutosaveCopy(const std::string& strStem, uint32_t uNumber);

// Tells one content of a ".height" file from another: its length and the checksum that it ends
// with. Empty when there is no such file.
std::string GetHeightStamp(const std::string& strFile);
// A second name for a ".height" file of that stamp: its content stays there when another file takes
// the place of the first name. False where there can be none, as on another file system.
bool LinkHeights(const std::string& strFile,
                 const std::string& strStamp,
                 const std::string& strLink);
// Tells one content of any other file from another, by length and time. Empty when there is none.
std::string GetFileStamp(const std::string& strFile);
