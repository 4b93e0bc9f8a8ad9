#pragma once

#include <string>

// Gives a file a second name (a hard link), which takes no room and no time; symbolic links to the
// file are followed. False where there can be none, as on another file system, or the name is
// taken; nothing is logged.
bool LinkFile(const std::string& strFile, const std::string& strLink);

// The backup's content gets the name back that it had, beside the backup, which stays. The file of
// that name must not be there. False, with one logged line, when it is not possible.
bool PutBackFile(const std::string& strBackup, const std::string& strPath);

// Keeps what a file holds, for when another one takes its place: under "FILE.bak", "FILE.bak2" and
// so on, the first name that is free, unless one of them is this file. Returns that path; empty,
// with one logged line, when it is not possible.
std::string KeepBeside(const std::string& strFile);
