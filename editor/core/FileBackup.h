#pragma once

#include <string>

// The backup's content gets the name back that it had, beside the backup, which stays. The file of
// that name must not be there. False when it is not possible; nothing is logged.
bool PutBackFile(const std::string& strBackup, const std::string& strPath);
