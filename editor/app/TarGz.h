#pragma once

#include <string>
#include <vector>

// A file of an archive.
struct SPackedFile
{
    std::string strName; // with its folders, separated by '/', at most 99 bytes
    std::string strContent;
};

// The bytes of a ".tar.gz" (POSIX ustar) with these files, each readable by everybody and of this
// moment. Empty, after a logged line, for a name that is too long and without memory.
std::string MakeTarGz(const std::vector<SPackedFile>& files);
