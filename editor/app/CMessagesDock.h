#pragma once

#include "host/Log.h"

#include <QDockWidget>
#include <QTimer>

class QPlainTextEdit;

// The window with what was logged. Takes the process's log while it lives and hands every piece on
// to the sink before as it is, so a log file goes on. What is shown has no class and method before
// the text: they are for whoever reads the log.
class CMessagesDock : public QDockWidget, public ILogSink
{
public:
    explicit CMessagesDock(QWidget* pParent);
    ~CMessagesDock() override;

    void Write(const char* pszText) override;

    // Lines so far, those that are thrown away counted too.
    int GetLineCount() const { return m_nLines; }

    const QString& GetLastLine() const { return m_strLast; }

    // The last failure that was logged since the event loop turned, so the one of the call that is
    // running; empty without one.
    QString GetFaultOfCall() const { return m_CallTimer.isActive() ? m_strFault : QString(); }

    QString GetText() const;

private:
    void TakeFault();

    QPlainTextEdit* m_pText; // the dock's
    ILogSink* m_pBefore;     // null: stderr
    QString m_strLine;       // the part of a line that has come
    QString m_strLast;
    QString m_strFault;                         // the last line that came through CrashLog
    QTimer m_CallTimer;                         // runs from there to the end of the call
    uint64_t m_nCrashLogs = GetCrashLogCount(); // so far
    int m_nLines = 0;
};
