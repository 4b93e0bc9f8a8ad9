#pragma once

#include <functional>

class QSocketNotifier;

// Turns SIGTERM, SIGHUP (the end of a session) and SIGINT into a call in the event loop, from the
// first one on; a second one of a kind ends the process as it would without this. One at a time.
class CEndSignals
{
public:
    explicit CEndSignals(std::function<void()> onSignal);
    ~CEndSignals();
    CEndSignals(const CEndSignals&) = delete;
    CEndSignals& operator=(const CEndSignals&) = delete;

    int GetSignal() const { return m_Signal; } // 0: none came

private:
    void Take();

    std::function<void()> m_OnSignal;
    QSocketNotifier* m_pNotifier = nullptr;
    int m_Pipe[2] = {-1, -1};
    int m_Signal = 0;
};

// Ends the process as the signal does where nobody listens, so that whoever waits for it sees why.
[[noreturn]] void EndBySignal(int iSignal);
