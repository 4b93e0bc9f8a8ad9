#pragma once

#include <string>

// A folder for what a running program keeps on the disk for itself, one for each process. It is
// made when it is first needed and goes with its object; what killed processes have left beside it
// goes when the next one is made. Who is alive is told by a lock that the system lets go of with
// the process.
class CScratchFolder
{
public:
    explicit CScratchFolder(const std::string& strBase); // where it is made, made if it is missing
    ~CScratchFolder();
    CScratchFolder(const CScratchFolder&) = delete;
    CScratchFolder& operator=(const CScratchFolder&) = delete;

    // False, with one logged line, when there can be none.
    bool Make();

    // Known before it is made; without a separator at the end.
    const std::string& GetPath() const { return m_Path; }

    // Opens a new file for reading and writing that has no name and goes when it is closed; -1, and
    // nothing is logged, when there can be none.
    int OpenUnnamed();

private:
    bool Lock();
    void RemoveDead() const;

    std::string m_Base;
    std::string m_Path;
    int m_Lock = -1; // held while the folder is there
};
