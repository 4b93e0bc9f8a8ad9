#pragma once

#include "host/HostTypes.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class IImage;

// What a copy is made of; all borrowed until Start returns, the memory is then that of the moment.
struct SAutosaveJob
{
    std::string strStem;
    uint32_t uNumber = 0;
    std::string strText; // of the level file
    const float* pHeights = nullptr;
    uint32_t uVerticesX = 0;
    uint32_t uVerticesZ = 0;
    SVec3 size = {};
    const IImage* pTexels = nullptr; // 32 bits each; null for none
};

enum class ECopyState
{
    None,
    Running,
    Done, // on the disk; the text beside its place
    Failed,
};

// Writes copies in a child process, which takes over the memory as it is (the system copies what
// changes later); nobody waits for it. Owned by the autosave. UI thread.
class CAutosaveCopy
{
public:
    ~CAutosaveCopy(); // gives it up, waits for its end

    // False after one logged line. A copy that still runs is given up.
    bool Start(const SAutosaveJob& job);
    // Asks how far the copy is, Wait after its end. Done and Failed are told once. iFault: the
    // system's number; nothing is left of a copy that failed.
    ECopyState Poll(int& iFault);
    ECopyState Wait(int& iFault);
    // Ends a copy that runs, and takes away what it has written. Waits for nothing.
    void Abandon();

    bool IsRunning() const { return m_Child > 0; }

private:
    struct SDying
    {
        int iProcess = -1;
        std::string strStem;
        uint32_t uNumber = 0;
    };

    ECopyState Ask(bool bWait, int& iFault);
    void Reap(bool bWait);

    int m_Child = -1;
    std::string m_Stem;
    uint32_t m_Number = 0;
    std::vector<SDying> m_Dying; // told to end; their files go once more when they have
};
