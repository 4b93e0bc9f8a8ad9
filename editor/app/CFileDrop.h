#pragma once

#include <QObject>
#include <QTimer>

#include <functional>
#include <string>

class CProgressWindow;

// Opens files that are dropped on the window. Watches its events; owned by the window. UI thread.
class CFileDrop : public QObject
{
public:
    CFileDrop(QWidget& window,
              const CProgressWindow& progress,
              std::function<void(const std::string& strPath)> open);

    bool eventFilter(QObject* pWindow, QEvent* pEvent) override;

private:
    void Open();

    const CProgressWindow& m_Progress;
    std::function<void(const std::string& strPath)> m_Open;
    QTimer m_Timer;
    std::string m_Path; // to be opened
};
