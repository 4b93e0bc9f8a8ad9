#pragma once

#include "host/Log.h"

#include <QDockWidget>
#include <QTimer>

#include <functional>

class QComboBox;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

// The window with what was logged, each line with its kind and time. Takes the process's log while
// it lives and hands every piece on to the sink before as it is, so a log file goes on. What is
// shown has no class and method before the text: they are for whoever reads the log.
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
    // running; empty without one. Who asks shows it.
    QString TakeFaultOfCall();

    QString GetText() const; // all lines, whatever is shown

    // onFault: is told of a failure that nobody has shown by the time that the event loop turns.
    void SetOnFault(std::function<void(const QString&)> onFault) { m_OnFault = std::move(onFault); }

private:
    void Add(const QString& strLine, ELogKind eKind);
    void NoteFault();
    void Filter();
    bool IsShown(const QTreeWidgetItem& item) const;
    void Copy() const;

    QComboBox* m_pKinds; // all the dock's
    QLineEdit* m_pFilter;
    QTreeWidget* m_pList;
    ILogSink* m_pBefore; // null: stderr
    QString m_strLine;   // the part of a line that has come
    QString m_strLast;
    QString m_strFault; // the last line that came through CrashLog
    std::function<void(const QString&)> m_OnFault;
    QTimer m_EndTimer;                          // the last line is to be seen
    QTimer m_CallTimer;                         // runs from there to the end of the call
    uint64_t m_nCrashLogs = GetCrashLogCount(); // so far
    int m_nLines = 0;
};
