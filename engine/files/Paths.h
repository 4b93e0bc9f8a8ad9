#pragma once

#include <string>

struct stat;

// How a path of the project becomes one of the operating system. Paths here are results of
// ToNative, with '/' only.
namespace fs
{

// Turns '\' into '/'. Null gives an empty path.
std::string ToNative(const char* pszPath);

// The existing file or folder that the path means: the user root before the data root; inside a
// root the name as it is written before one that differs in case. Empty when there is none.
std::string FindExisting(const std::string& strPath);

// Looks for the path as FindExisting does, but not in the data root: what it finds may be written,
// renamed and removed.
std::string FindWritable(const std::string& strPath);

// Where a file of that path is written: what FindWritable finds, else the name as written in the
// folder below the user root that it means.
std::string GetWriteTarget(const std::string& strPath);

// Makes the folders that a write target below the user root needs, when the data root has them: a
// file of the data root may be overlaid without more ado. Others are not made.
void MakeOverlayFolders(const std::string& strPath);

// Whether nobody may write the file or folder of that path, whose stat is info. The bits count for
// the super-user too, who may write everything.
bool IsWriteProtected(const std::string& strPath, const struct stat& info);

} // namespace fs
