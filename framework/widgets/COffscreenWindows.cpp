#include "framework/widgets/COffscreenWindows.h"

#include <QApplication>

#include <clocale>
#include <cstdio>

namespace
{

// What the platform cannot do, raising a window for one, is of no interest where nobody looks.
void KeepFaults(QtMsgType eType, const QMessageLogContext& /*context*/, const QString& strText)
{
    if (eType == QtCriticalMsg || eType == QtFatalMsg)
    {
        std::fprintf(stderr, "%s\n", qPrintable(strText));
    }
}

} // namespace

struct COffscreenWindows::SApplication
{
    // The application object takes the user's locale, and numbers with it.
    SApplication() { std::setlocale(LC_NUMERIC, "C"); }

    ~SApplication() { qInstallMessageHandler(pHandlerBefore); }

    SApplication(const SApplication&) = delete;
    SApplication& operator=(const SApplication&) = delete;

    QtMessageHandler pHandlerBefore = qInstallMessageHandler(&KeepFaults);
    // The application keeps references to these.
    char szName[8] = "windows";
    char szOption[10] = "-platform";
    char szPlatform[10] = "offscreen";
    char* arguments[4] = {szName, szOption, szPlatform, nullptr};
    int nArguments = 3;
    QApplication application{nArguments, arguments};
};

COffscreenWindows::COffscreenWindows()
{
    if (QCoreApplication::instance() == nullptr)
    {
        m_Application = std::make_unique<SApplication>();
    }
}

COffscreenWindows::~COffscreenWindows() = default;
