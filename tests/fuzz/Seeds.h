#pragma once

#include <cstdint>
#include <cstring>
#include <fstream>
#include <span>
#include <string>

// Whole files that a fuzzer starts from. A fuzzer of a table of formats makes its own with the
// formats' writers, so that no format is without one.

// The folder of "--seeds FOLDER"; null when the fuzzer is started to do its work.
inline const char* FindSeedFolder(int nArguments, char** ppszArguments)
{
    const bool bSeeds = nArguments == 3 && std::strcmp(ppszArguments[1], "--seeds") == 0;
    return bSeeds ? ppszArguments[2] : nullptr;
}

// strFirst: the bytes by which the fuzzer chooses the reader.
inline void
WriteSeed(const std::string& strPath, const std::string& strFirst, std::span<const uint8_t> file)
{
    std::ofstream out(strPath, std::ios::binary);
    out << strFirst;
    out.write(reinterpret_cast<const char*>(file.data()),
              static_cast<std::streamsize>(file.size()));
}
