#pragma once

#include <string>
#include <vector>

// The level files that were used last, newest first, each once, kept in a file of the user. Owned
// by the program. UI thread.
class CRecentFiles
{
public:
    static constexpr size_t MOST = 10;

    // strFile: where the list is kept, "recent.txt" of the user's settings (GetConfigFile); empty
    // for nowhere. Reads what is there; a file that cannot be read is an empty list.
    explicit CRecentFiles(std::string strFile);

    // Puts a full path first and writes the list. False after one logged line when it cannot be
    // written; the list has it all the same.
    bool Add(const std::string& strPath);
    bool Remove(const std::string& strPath); // the file is gone; as Add
    bool Clear();

    const std::vector<std::string>& GetPaths() const { return m_Paths; }

private:
    bool Write();

    std::string m_File;
    std::vector<std::string> m_Paths; // newest first
};
