// The library's one object, which registers itself when the library is loaded.

#include "framework/core/IWindowSystem.h"
#include "framework/qt/CDrawingSystem.h"
#include "framework/qt/CWindowFactory.h"

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

class COffscreenApplication
{
public:
    // The application object takes the user's locale, and numbers with it.
    COffscreenApplication() { std::setlocale(LC_NUMERIC, "C"); }

    ~COffscreenApplication() { qInstallMessageHandler(m_pHandlerBefore); }

    COffscreenApplication(const COffscreenApplication&) = delete;
    COffscreenApplication& operator=(const COffscreenApplication&) = delete;

private:
    // Made in this order: the handler is there before the application says anything.
    QtMessageHandler m_pHandlerBefore = qInstallMessageHandler(&KeepFaults);
    // The application keeps references to these.
    char m_Name[8] = "windows";
    char m_Option[10] = "-platform";
    char m_Platform[10] = "offscreen";
    char* m_Arguments[4] = {m_Name, m_Option, m_Platform, nullptr};
    int m_ArgumentCount = 3;
    QApplication m_Application{m_ArgumentCount, m_Arguments};
};

class CWindowSystem final : public IWindowSystem
{
public:
    CWindowSystem() { RegisterWindowSystem(this); }

    IDrawingSystem& GetDrawing() override { return m_Drawing; }

    IWindowFactory& GetWindows() override { return m_Windows; }

    std::shared_ptr<void> MakeOffscreen() override
    {
        return QCoreApplication::instance() == nullptr ? std::make_shared<COffscreenApplication>()
                                                       : nullptr;
    }

private:
    CDrawingSystem m_Drawing;
    CWindowFactory m_Windows;
};

CWindowSystem g_System;

} // namespace
