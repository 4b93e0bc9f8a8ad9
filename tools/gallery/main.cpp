// framework-gallery: every control of the window framework in one window.

#include "framework/core/ResourceModule.h"
#include "framework/widgets/CWidgetFrontEnd.h"
#include "framework/widgets/qt/WidgetAccess.h"
#include "host/Program.h"
#include "tools/gallery/CGalleryView.h"
#include "tools/gallery/GalleryIds.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QWidget>

#include <clocale>
#include <cstdio>
#include <cstring>

namespace
{

constexpr char USAGE[] = "usage: framework-gallery [--dark] [--screenshot FILE]\n"
                         "Shows every control of the window framework.\n"
                         "\n"
                         "  --dark             colours of a dark desktop\n"
                         "  --screenshot FILE  saves a picture and quits\n";

QPalette MakeDarkPalette()
{
    QPalette palette(QColor(0x45, 0x45, 0x45), QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x2A, 0x2A, 0x2A));
    palette.setColor(QPalette::AlternateBase, QColor(0x30, 0x30, 0x30));
    return palette;
}

int Run(const char* pszScreenshot)
{
    CWidgetFrontEnd frontEnd;
    SetFrontEnd(&frontEnd);
    RegisterResourceModule(&GetGalleryResources());
    int iResult = 1;
    {
        CGalleryView view;
        if (view.Create(nullptr))
        {
            QWidget* pWidget = GetWidget(view);
            pWidget->resize(pWidget->sizeHint().expandedTo(QSize(860, 520)));
            view.ShowWindow(true);
            QApplication::processEvents();
            const bool bSaved =
                pszScreenshot != nullptr && pWidget->grab().save(QString::fromUtf8(pszScreenshot));
            if (pszScreenshot != nullptr && !bSaved)
            {
                std::fprintf(stderr, "%s: cannot be written\n", pszScreenshot);
            }
            iResult = pszScreenshot == nullptr ? QApplication::exec() : (bSaved ? 0 : 1);
        }
    }
    UnregisterResourceModule(&GetGalleryResources());
    SetFrontEnd(nullptr);
    return iResult;
}

} // namespace

int main(int nArguments, char** ppszArguments)
{
    GuardStandardStreams();
    const char* pszScreenshot = nullptr;
    bool bDark = false;
    for (int i = 1; i < nArguments; ++i)
    {
        if (std::strcmp(ppszArguments[i], "--dark") == 0)
        {
            bDark = true;
        }
        else if (std::strcmp(ppszArguments[i], "--screenshot") == 0 && i + 1 < nArguments)
        {
            pszScreenshot = ppszArguments[++i];
        }
        else
        {
            const bool bHelp = std::strcmp(ppszArguments[i], "--help") == 0;
            std::fputs(USAGE, bHelp ? stdout : stderr);
            return !bHelp ? 2 : FlushStandardOutput("framework-gallery") ? 0 : 1;
        }
    }
    const QApplication application(nArguments, ppszArguments);
    std::setlocale(LC_NUMERIC, "C"); // the application object has taken the user's
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (bDark)
    {
        QApplication::setPalette(MakeDarkPalette());
    }
    return Run(pszScreenshot);
}
