#pragma once

#include <sys/types.h>

#include <string>

// Files that are being written have names of their own beside their targets:
// ".NAME.tmp-PID-START-N", where START is the start of the process in the system's clock ticks,
// because process ids are used again. Whoever has such a file open holds a lock (flock) on it.
namespace fs
{

// A name in the target's folder that this process has not used before.
std::string MakeTemporaryName(const std::string& strTarget);

// Marks the open file as in use. False when somebody is about to remove it.
bool LockTemporary(int iDescriptor);

// Notes a temporary name that this process is about to make, so that a signal handler can remove
// it; ForgetTemporary is called when the file has been renamed or removed. Names for which there is
// no room are not noted.
void NoteTemporary(const std::string& strPath);
void ForgetTemporary(const std::string& strPath);
void RemoveNotedTemporaries(); // safe in a signal handler

// Removes what processes that are gone left in the folder, as far as it is a file of this user or,
// for the super-user, of uOwner. Failures are nobody's concern: what stays is in nobody's way.
void RemoveDeadTemporaries(const std::string& strFolder, uid_t uOwner);

// The folder part of a path, with the '/' at its end; empty for a name alone.
std::string GetFolderOf(const std::string& strPath);

} // namespace fs
