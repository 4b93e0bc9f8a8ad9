#include "editor/app/CEditorProgram.h"

#include "editor/core/CEditorHost.h"

CEditorProgram::CEditorProgram(int& nArguments, char** ppszArguments)
    : QApplication(nArguments, ppszArguments)
{
}

bool CEditorProgram::notify(QObject* pReceiver, QEvent* pEvent)
{
    if (m_Host == nullptr)
    {
        return QApplication::notify(pReceiver, pEvent);
    }
    bool bTaken = false;
    // Any event may come to code of the plug-in that runs out of memory; what is thrown there must
    // not get as far as the event loop.
    m_Host->GetInput().Guard("CEditorProgram::notify",
                             [&] { bTaken = QApplication::notify(pReceiver, pEvent); });
    return bTaken;
}
