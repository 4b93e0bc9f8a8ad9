#pragma once

#include <cstddef>
#include <functional>
#include <string>

class CRegText;

// The file that holds the user's registry, found through the environment when the object is made.
// Readers need no lock, since a new file replaces the old one in one step. Writers take turns
// through a lock file beside it (the file itself is another one after each write, so a lock on it
// would hold nobody back) and read it again under the lock, so none undoes what another wrote.
class CRegFile
{
public:
    // Changes the text and answers whether it is another one now.
    using FChange = std::function<bool(CRegText&)>;

    CRegFile();

    // Reads the file; one that is not there is an empty text. Answers false when it cannot be read,
    // or when no folder is known for it. The first unreadable line of a file is logged once in a
    // process.
    bool Read(CRegText& text) const;

    // Reads the file, lets change work on the text, and writes it back when it is another one then.
    // Makes folders and file when they are not there, and waits for other writers. Answers false
    // when the file cannot be read or written; it then stays as it was.
    bool Update(const FChange& change) const;

private:
    void FollowLinks();
    void MakeFolders() const;
    int OpenLock() const;
    bool Replace(const std::string& strText) const;

    std::string m_Path;   // as the environment says; empty when it says nothing
    std::string m_Target; // with links followed, so that a link stays one
};
