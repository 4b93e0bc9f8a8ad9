#pragma once

#include <cstdint>
#include <ctime>
#include <string>

// What a file was like when this program last read or wrote it, so that a change by another hand
// shows. Times tell nothing where a file was written just before it was looked at, and on file
// systems that know only whole seconds; there, and for small files, the content is compared.
class CFileStamp
{
public:
    CFileStamp() = default; // of no file

    // Looks at the file now, through links. strPath: full.
    explicit CFileStamp(std::string strPath);

    const std::string& GetPath() const { return m_Path; }

    // Whether there is another content now, or a file where there was none. One that has gone has
    // not changed.
    bool IsChanged() const;

    // Whatever is there from now on counts as changed.
    void Forget() { m_State = {}; }

private:
    struct SState
    {
        uint64_t uDevice = 0;
        uint64_t uNode = 0;
        uint64_t uBytes = 0;
        timespec written = {};
        bool bThere = false;
    };

    static SState Look(const std::string& strPath);
    static uint64_t ReadChecksum(const std::string& strPath);

    std::string m_Path;
    SState m_State;
    bool m_bYoung = false;    // a later change may have the same time
    bool m_bChecksum = false; // the content was read
    uint64_t m_Checksum = 0;
};
