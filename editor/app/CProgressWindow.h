#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <string>
#include <utility>

class QProgressDialog;
class QWidget;

// Shows how far long work is once it has taken some time, and lets it be cancelled. Work that
// is short shows nothing, but the window goes on drawing itself; what a person does meanwhile
// waits.
class CProgressWindow
{
public:
    // iShownAfter: milliseconds that the work takes without a window. iTurns: milliseconds of work
    // between turns of the event loop until then, more after a turn that took long.
    explicit CProgressWindow(int iShownAfter = 500, int iTurns = 16);
    ~CProgressWindow();
    CProgressWindow(const CProgressWindow&) = delete;
    CProgressWindow& operator=(const CProgressWindow&) = delete;

    // fDone: 0 to 1; at 1 the window goes. False once it was cancelled.
    bool Report(QWidget* pParent, const char* pszWhat, float fDone);

    // Whether the user cancelled the work that has just ended, asked once. Forgotten when the event
    // loop turns: what fails later is another thing.
    bool TakeCancelled() { return std::exchange(m_bCancelled, false); }

private:
    int m_ShownAfter;
    qint64 m_Turns;
    qint64 m_NextTurn = 0; // milliseconds after the last one
    QElapsedTimer m_Since;
    QElapsedTimer m_Turned;
    std::unique_ptr<QProgressDialog> m_pDialog; // null while nothing is shown
    std::string m_What;
    bool m_bCancelled = false;
    QTimer m_Forget;
};
