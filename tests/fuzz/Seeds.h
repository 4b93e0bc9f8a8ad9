#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>

// Whole files that a fuzzer starts from. A fuzzer of a table of formats makes its own with the
// formats' writers, so that no format is without one.

// The folder of "--seeds FOLDER"; null when the fuzzer is started to do its work.
inline const char* FindSeedFolder(int nArguments, char** ppszArguments)
{
    return nArguments == 3 && std::strcmp(ppszArguments[1], "--seeds") == 0 ? ppszArguments[2]
                                                                            : nullptr;
}

// Writes nothing for an empty file. first: the bytes by which the fuzzer chooses the reader.
inline void WriteSeed(const std::string& strFolder,
                      const char* pszName,
                      std::initializer_list<uint8_t> first,
                      std::span<const uint8_t> file)
{
    FILE* pFile = file.empty() ? nullptr : std::fopen((strFolder + "/" + pszName).c_str(), "wb");
    if (pFile == nullptr && !file.empty())
    {
        std::abort();
    }
    if (pFile != nullptr)
    {
        std::fwrite(std::data(first), 1, first.size(), pFile);
        std::fwrite(file.data(), 1, file.size(), pFile);
        std::fclose(pFile);
    }
}
