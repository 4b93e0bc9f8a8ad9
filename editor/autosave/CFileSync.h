#pragma once

#include <atomic>
#include <thread>

// Brings files to the disk while the user goes on: a thread that knows nothing but descriptors,
// which come through a pipe. Nobody waits for it but the end. UI thread.
class CFileSync
{
public:
    CFileSync();
    ~CFileSync(); // what was asked for is on the disk then
    CFileSync(const CFileSync&) = delete;
    CFileSync& operator=(const CFileSync&) = delete;

    void Sync(int iFile);
    void SyncAndClose(int iFile); // the descriptor is the thread's from here on

    // Whether a sync has failed since the last call.
    bool TakeFault() { return m_bFault.exchange(false); }

private:
    void Run();
    bool Send(int iFile, bool bClose);

    int m_Pipe[2] = {-1, -1};
    std::atomic<bool> m_bFault = false;
    std::thread m_Thread;
};
