#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <string>
#include <utility>

class QProgressDialog;
class QWidget;

// Shows how far long work is once it has taken some time, and lets it be cancelled. Work that
// is short shows nothing, and no event is taken in it.
class CProgressWindow
{
public:
    // iShownAfter: milliseconds that the work takes without a window; sooner where it will
    // plainly take longer.
    explicit CProgressWindow(int iShownAfter = 500);
    ~CProgressWindow();
    CProgressWindow(const CProgressWindow&) = delete;
    CProgressWindow& operator=(const CProgressWindow&) = delete;

    // To be called again and again while the work goes on. fDone: 0 to 1; at 1 the window goes.
    // False once it was cancelled.
    bool Report(QWidget* pParent, const char* pszWhat, float fDone);

    // Whether work is under way: between its first report and its last one.
    bool IsWorking() const { return m_Since.isValid(); }

    // Whether the user cancelled the work that has just ended, asked once. Forgotten when the event
    // loop turns: what fails later is another thing.
    bool TakeCancelled() { return std::exchange(m_bCancelled, false); }

private:
    bool IsLong(float fDone) const;

    int m_ShownAfter;
    QElapsedTimer m_Since;
    std::unique_ptr<QProgressDialog> m_pDialog; // null while nothing is shown
    std::string m_What;
    bool m_bCancelled = false;
    QTimer m_Forget;
};
