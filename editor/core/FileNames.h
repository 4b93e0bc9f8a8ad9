#pragma once

#include <cstddef>
#include <string>

// A name of at most nMost bytes, cut between characters of UTF-8; the system takes 255.
std::string ShortenName(const std::string& strName, size_t nMost);

// The first of "PREFIX1SUFFIX", "PREFIX2SUFFIX" ... that is not there, not even as a link to
// nothing. uNumber: the last one that was given, raised to this one.
std::string FindFreeName(const std::string& strPrefix, const char* pszSuffix, size_t& uNumber);

// Whether this is a folder of this user, and no link to one.
bool IsOwnFolder(const std::string& strFolder);

// Makes a new file for its owner alone: nothing is replaced, no link is followed. Returns its
// descriptor; negative, and errno is set, when it cannot be made.
int MakeNewFile(const char* pszPath);

// Writes all of the bytes. False, and errno is set, when the file takes no more. A child of fork
// may call it.
bool WriteAll(int iFile, const void* pData, size_t nBytes);
