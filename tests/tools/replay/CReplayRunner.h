#pragma once

#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <string>
#include <vector>

// How one run of a program ended.
struct SRunResult
{
    int iExitCode = -1; // minus the signal for a program that a signal ended
    std::string strOut;
    std::string strErr;

    size_t CountErrorLines() const;
};

// Runs the built tellur-replay in a folder of its own, where scripts and results lie.
class CReplayRunner
{
public:
    // Writes a white brush image, "white.png", into the folder.
    CReplayRunner();

    // From now on a copy of the program runs, beside which the window system's library is missing.
    void LeaveOutWindowSystem();

    // The program with these arguments, in the folder.
    SRunResult Run(const std::vector<std::string>& arguments) const;

    // Plays "script.tellur" on a disk that fails as disk_faults.cpp says.
    SRunResult RunWithFault(const std::string& strFault) const;

    // Writes the declarations and the body as "script.tellur" and plays it with the log going to
    // "log.txt", so that stderr has only the program's own lines.
    SRunResult Play(const std::string& strBody, std::vector<std::string> arguments = {}) const;

    // The declarations as the program prints them.
    static const std::string& GetDeclarations();

    // A level of 8 x 8 cells of 10 units, maximum height 100, with a white brush of 40 x 40 units
    // of that function in terraforming mode.
    static std::string GetStrokeStart(const std::string& strFunction);

    std::string Path(const char* pszName) const { return m_Folder.Path(pszName); }

    const std::string& GetFolder() const { return m_Folder.GetFolder(); }

    // Names of everything in the folder, sorted.
    std::vector<std::string> GetNames() const;

private:
    CTempFolder m_Folder;
    std::string m_Program = TELLUR_BIN_DIR "/tellur-replay";
};
