#pragma once

#include <QApplication>

class CEditorHost;

// The application object. Whatever an event has no memory for ends with that event, not with the
// program: the host puts the stroke back, one line says so, and the level can be saved.
class CEditorProgram : public QApplication
{
public:
    CEditorProgram(int& nArguments, char** ppszArguments); // as QApplication

    void SetHost(CEditorHost* pHost) { m_Host = pHost; } // borrowed; null for none

    bool notify(QObject* pReceiver, QEvent* pEvent) override;

private:
    CEditorHost* m_Host = nullptr;
};
