#pragma once

#include <string>

// What is no plain file is written through: devices, pipes, and the descriptors that this process
// was started with (/dev/stdout, /dev/fd/3), whatever stands behind those.
namespace fs
{

// Replaces a path of the system by what its links lead to, which need not be there; stops at a
// descriptor of this process. ELOOP, or 0 for success.
int FollowLinks(std::string& strPath);

// The number that the path stands for, -1 for any other path. For results of FollowLinks.
int GetOwnDescriptor(const std::string& strPath);

// Opens it for writing in iDescriptor, which the caller closes. Waits for no reader (ENXIO without
// one). The system's error number, 0 for success. For results of FollowLinks that are no plain
// files.
int OpenStream(const std::string& strPath, int& iDescriptor);

} // namespace fs
