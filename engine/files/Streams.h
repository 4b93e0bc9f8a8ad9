#pragma once

#include <string>

// What is no plain file is written through: devices, pipes, and the descriptors that this process
// was started with (/dev/stdout, /dev/fd/3), whatever stands behind those.
namespace fs
{

// Replaces a path of the system by what its links lead to, which need not be there; stops at a
// descriptor of this process. ELOOP, or 0 for success.
int FollowLinks(std::string& strPath);

// The number of the descriptor of this process that the path stands for, -1 for any other path.
// strPath: a result of FollowLinks.
int GetOwnDescriptor(const std::string& strPath);

// Opens the path for writing in iDescriptor, which the caller closes. Waits for no reader of a pipe
// (ENXIO without one). Gives the system's error number, 0 for success. strPath: a result of
// FollowLinks that is no plain file.
int OpenStream(const std::string& strPath, int& iDescriptor);

} // namespace fs
