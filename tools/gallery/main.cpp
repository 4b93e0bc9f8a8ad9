// framework-gallery: every control of the window framework in one window.

#include "framework/core/ResourceModule.h"
#include "framework/qt/CWidgetFrontEnd.h"
#include "framework/qt/WidgetAccess.h"
#include "host/CommandLine.h"
#include "host/Program.h"
#include "tools/gallery/CGalleryView.h"
#include "tools/gallery/GalleryIds.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QWidget>

#include <clocale>
#include <cstdio>
#include <string>

namespace
{

constexpr char USAGE[] = "usage: framework-gallery [--dark] [--screenshot FILE]\n"
                         "Shows every control of the window framework.\n"
                         "\n"
                         "  --dark             colours of a dark desktop\n"
                         "  --screenshot FILE  saves a picture and quits\n"
                         "  -h, --help         shows this text\n"
                         "  --version          shows the version\n";

QPalette MakeDarkPalette()
{
    QPalette palette(QColor(0x45, 0x45, 0x45), QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x2A, 0x2A, 0x2A));
    palette.setColor(QPalette::AlternateBase, QColor(0x30, 0x30, 0x30));
    return palette;
}

int Run(const std::string& strScreenshot)
{
    CWidgetFrontEnd frontEnd;
    SetFrontEnd(&frontEnd);
    RegisterResourceModule(&GetGalleryResources());
    int iResult = 1;
    {
        // The view ends before the module goes that its template and texts are from.
        CGalleryView view;
        if (view.Create(nullptr))
        {
            QWidget* pWidget = GetWidget(view);
            pWidget->resize(pWidget->sizeHint().expandedTo(QSize(860, 520)));
            view.ShowWindow(true);
            // A picture needs the controls in their places.
            QApplication::processEvents();
            const bool bSaved = !strScreenshot.empty() &&
                                pWidget->grab().save(QString::fromStdString(strScreenshot));
            if (!strScreenshot.empty() && !bSaved)
            {
                std::fprintf(stderr, "%s: cannot be written\n", strScreenshot.c_str());
            }
            iResult = strScreenshot.empty() ? QApplication::exec() : (bSaved ? 0 : 1);
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
    std::string strScreenshot;
    bool bDark = false;
    const SProgramOption known[] = {{"--dark", nullptr, &bDark}, {"--screenshot", &strScreenshot}};
    SCommandLine line;
    std::string strFault;
    if (!line.Read(nArguments, ppszArguments, known, strFault))
    {
        return ReportWrongLine("framework-gallery", strFault);
    }
    if (line.eAnswer != EProgramAnswer::None)
    {
        return PrintAnswer(line.eAnswer, "framework-gallery", USAGE);
    }
    if (!line.operands.empty())
    {
        return ReportWrongLine("framework-gallery", "takes no file: " + line.operands.front());
    }
    const QApplication application(nArguments, ppszArguments);
    std::setlocale(LC_NUMERIC, "C"); // the application object has taken the user's
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (bDark)
    {
        QApplication::setPalette(MakeDarkPalette());
    }
    return Run(strScreenshot);
}
