#pragma once

#include <regex>
#include <string>
#include <vector>

// The files of the project as the tests of this folder read them. Paths are relative to the root,
// with '/'.

// Folders whose code ships, and of them those that the plug-in's library is made of, as the build
// names them.
const std::vector<std::string>& GetProductFolders();
const std::vector<std::string>& GetPluginFolders();

// Folders at the root, but for hidden ones and what a build makes.
std::vector<std::string> ListFolders();

// Files below the folders (or the file itself) with one of the extensions (none: all), sorted.
// Fails the test for a folder that is not there.
std::vector<std::string> ListFiles(const std::vector<std::string>& folders,
                                   const std::vector<std::string>& extensions = {});

// The documents: those at the root, and docs/.
std::vector<std::string> ListDocuments();

bool ExistsInTree(const std::string& strPath);

// Fail the test when the file cannot be read.
std::string ReadFile(const std::string& strPath);
std::vector<std::string> ReadLines(const std::string& strPath);

std::vector<std::string> SplitLines(const std::string& strText);
std::vector<std::string> SplitWords(const std::string& strText);
std::vector<std::string> FindAll(const std::string& strText, const std::regex& pattern);
std::string Trim(const std::string& strText);

// C++ code with comments, and with what stands in quotes, replaced by blanks; lines stay lines.
std::string StripCode(const std::string& strCode);

// What a shell command prints on both streams, and how it ends.
struct SRun
{
    int nExitCode = -1;
    std::string strOutput;
};

// Runs the command in a folder (empty: the project's root) with the programs of the build first in
// the path.
SRun RunCommand(const std::string& strCommand, const std::string& strFolder = {});

// Programs of the build that a user calls.
std::vector<std::string> ListPrograms();
