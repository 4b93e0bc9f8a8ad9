#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CEditorProgram.h"
#include "editor/app/CEditorWindow.h"
#include "editor/app/CEndSignals.h"
#include "editor/app/CScriptBar.h"
#include "editor/app/CTextTranslator.h"
#include "editor/app/CViewArea.h"
#include "editor/app/SEditorOptions.h"
#include "editor/core/UserFolders.h"
#include "host/FileSystem.h"
#include "host/Program.h"

#include <QBuffer>
#include <QDir>
#include <QLibraryInfo>
#include <QOpenGLContext>
#include <QPixmap>
#include <QSurfaceFormat>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace
{

enum EExitCode
{
    EXIT_DONE = 0,
    EXIT_FAILED = 1,
    EXIT_UNUSABLE = 2,
};

constexpr int GL_MAJOR = 3;
constexpr int GL_MINOR = 3;
constexpr int DEPTH_BITS = 24;

int Report(EExitCode eCode, const std::string& strFault)
{
    std::fprintf(stderr, "tellur-editor: %s\n", strFault.c_str());
    return eCode;
}

std::string GetEnvironment(const char* pszName)
{
    const char* pszValue = std::getenv(pszName);
    return pszValue != nullptr ? pszValue : "";
}

std::filesystem::path GetProgramFolder()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

std::string GetAbsolutePath(const std::string& strPath)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(strPath, error);
    return error ? strPath : path.string();
}

void SetRoots(const SEditorOptions& options)
{
    std::string strRoot = options.strRoot.empty() ? GetEnvironment("TELLUR_ROOT") : options.strRoot;
    strRoot = strRoot.empty() ? GetUserDataFolder() : strRoot;
    std::error_code error; // without the folder, writing there says what is wrong
    std::filesystem::create_directories(strRoot, error);
    fs::set_user_root(GetAbsolutePath(strRoot).c_str());
    const std::filesystem::path dataRoot = GetProgramFolder().parent_path() / "share" / "tellur";
    fs::set_data_root(dataRoot.c_str());
}

// The window system ends the process where it cannot start; this says why in one line.
void OnQtMessage(QtMsgType eType, const QMessageLogContext&, const QString& strText)
{
    if (eType == QtFatalMsg)
    {
        std::fprintf(stderr,
                     "tellur-editor: the window system cannot be reached: %s\n",
                     qPrintable(strText.section('\n', 0, 0)));
        std::_Exit(EXIT_UNUSABLE);
    }
    if (eType == QtCriticalMsg)
    {
        std::fprintf(stderr, "%s\n", qPrintable(strText));
    }
}

// Whether Qt finds what reaches a Wayland desktop, in any of the places where it looks.
bool HasWaylandPlugin()
{
    QStringList folders = {QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms",
                           QString::fromStdString(GetProgramFolder().string()) + "/platforms"};
    // They name several, as PATH does.
    for (const QString& strPath : QString::fromStdString(GetEnvironment("QT_PLUGIN_PATH"))
                                      .split(QDir::listSeparator(), Qt::SkipEmptyParts))
    {
        folders << strPath + "/platforms";
    }
    folders << QString::fromStdString(GetEnvironment("QT_QPA_PLATFORM_PLUGIN_PATH"))
                   .split(QDir::listSeparator(), Qt::SkipEmptyParts);
    return std::any_of(
        folders.begin(),
        folders.end(),
        [](const QString& strFolder)
        { return !QDir(strFolder).entryList({"libqwayland*"}, QDir::Files).isEmpty(); });
}

// Why no window can be shown; empty where one may be.
std::string FindDisplayFault()
{
    if (!GetEnvironment("DISPLAY").empty() || !GetEnvironment("QT_QPA_PLATFORM").empty())
    {
        return {};
    }
    if (GetEnvironment("WAYLAND_DISPLAY").empty())
    {
        return "there is no display: DISPLAY and WAYLAND_DISPLAY are not set";
    }
    // Without it Qt tries other window systems and says what they lack.
    return HasWaylandPlugin()
               ? ""
               : "this desktop is Wayland, and Qt cannot reach it: the package qt6-wayland is "
                 "missing";
}

// Without it the first frame of a window with views ends the process. Windows of "offscreen" never
// have it, also where a context can be made beside them.
bool HasOpenGl()
{
    QOpenGLContext context;
    return QGuiApplication::platformName() != "offscreen" && context.create();
}

// Lets everything that is waiting be drawn.
void DrawAll(CEditorWindow& window)
{
    window.GetViews().RequestFrames();
    // Layout, then frames, then what the frames asked for.
    for (int i = 0; i < 3 || !window.GetViews().IsComplete(); ++i)
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

// The extension names the format.
bool SavePicture(const QPixmap& picture, const std::string& strPath)
{
    const std::string strFormat = std::filesystem::path(strPath).extension().string();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    fs::file file;
    return picture.save(&buffer, strFormat.empty() ? "PNG" : strFormat.c_str() + 1) &&
           file.open(GetAbsolutePath(strPath).c_str(), fs::mode_write) &&
           file.write(bytes.constData(), static_cast<size_t>(bytes.size())) ==
               static_cast<size_t>(bytes.size()) &&
           file.close();
}

int RunOnce(CEditorWindow& window, const SEditorOptions& options)
{
    // The first frame shows whether the card can draw at all.
    DrawAll(window);
    if (!window.GetViewFault().isEmpty())
    {
        return Report(EXIT_UNUSABLE, window.GetViewFault().toStdString());
    }
    std::string strFault;
    if (!options.strPlay.empty())
    {
        window.GetSettings().iScriptSpeed = static_cast<int>(EScriptSpeed::Fast); // nobody watches
        const EScriptEnd eEnd = window.GetScripts().Play(options.strPlay, strFault);
        if (eEnd != EScriptEnd::Played)
        {
            return Report(eEnd == EScriptEnd::Unusable ? EXIT_UNUSABLE : EXIT_FAILED, strFault);
        }
    }
    DrawAll(window);
    if (!options.strScreenshot.empty() && !SavePicture(window.grab(), options.strScreenshot))
    {
        return Report(EXIT_FAILED, options.strScreenshot + ": the picture cannot be written");
    }
    return EXIT_DONE;
}

// A person works with it. iSignal: the one that ended it, 0 for none.
int RunWindow(CEditorProgram& program, CEditorWindow& window, int& iSignal)
{
    // Not quit(), which would ask about changes: nobody may be there to answer.
    const CEndSignals ends(
        [&window]
        {
            window.LeaveChanges();
            QCoreApplication::exit(EXIT_DONE);
        });
    QMetaObject::invokeMethod(
        &window,
        [&window] { window.GetDocuments().GetRecovery().OfferAll(); },
        Qt::QueuedConnection);
    program.setQuitOnLastWindowClosed(false); // a dialog of the plug-in may still be open
    window.SetOnClosed([] { QCoreApplication::quit(); });
    const int iResult = program.exec();
    iSignal = ends.GetSignal();
    return iResult;
}

int Work(CEditorProgram& program,
         CEditor& editor,
         CEditorFace& face,
         const SEditorOptions& options,
         int& iSignal)
{
    // The window comes first: what the plug-in logs while it is loaded is shown there.
    CEditorWindow window(editor, face);
    const std::string strPlugin = options.strPlugin.empty()
                                      ? (GetProgramFolder() / "libtellur.so").string()
                                      : options.strPlugin;
    if (!editor.LoadPlugin(strPlugin))
    {
        return EXIT_UNUSABLE; // the log has said why
    }
    window.ShowPlugin();
    window.show();
    const bool bOnce = !options.strScreenshot.empty() || !options.strPlay.empty();
    if (bOnce)
    {
        editor.GetAutosave().SetInterval(std::chrono::seconds(0)); // nobody works on it
    }
    else
    {
        editor.BeginTools([&face] { return face.IsScriptPlayed(); });
        window.WelcomePerson();
    }
    if (!options.strLevel.empty())
    {
        const std::string strLevel = GetAbsolutePath(options.strLevel);
        const bool bOpen = bOnce ? editor.GetDocument().Open(strLevel.c_str())
                                 : window.GetDocuments().OpenFile(strLevel);
        if (!bOpen && bOnce)
        {
            return EXIT_UNUSABLE; // the log has said why
        }
        if (bOnce)
        {
            window.GetViews().FrameAll();
        }
    }
    return bOnce ? RunOnce(window, options) : RunWindow(program, window, iSignal);
}

int Run(CEditorProgram& program, const SEditorOptions& options)
{
    CEditorFace face;
    CEditor editor(face, GetUserConfigFolder());
    int iSignal = 0;
    program.SetHost(&editor.GetHost());
    const int iResult = Work(program, editor, face, options, iSignal);
    program.SetHost(nullptr);
    // The window has gone with Work, and with it all that is code of the plug-in.
    editor.UnloadPlugin();
    if (iSignal != 0)
    {
        EndBySignal(iSignal);
    }
    return iResult;
}

} // namespace

int main(int nArguments, char** ppszArguments)
{
    GuardStandardStreams();
    SEditorOptions options;
    std::string strFault;
    if (!options.Read(nArguments, ppszArguments, strFault))
    {
        return ReportWrongLine("tellur-editor", strFault);
    }
    if (options.eAnswer != EProgramAnswer::None)
    {
        return PrintAnswer(options.eAnswer, "tellur-editor", SEditorOptions::GetUsage());
    }
    strFault = FindDisplayFault();
    if (!strFault.empty())
    {
        return Report(EXIT_UNUSABLE, strFault);
    }
    qInstallMessageHandler(OnQtMessage);
    QSurfaceFormat format;
    format.setVersion(GL_MAJOR, GL_MINOR);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(DEPTH_BITS);
    QSurfaceFormat::setDefaultFormat(format);
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    CEditorProgram program(nArguments, ppszArguments);
    std::setlocale(LC_NUMERIC, "C"); // the application object has taken the user's
    // After the application object, which sets it: every move counts, none may be merged.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setApplicationName("tellur-editor");
    QApplication::setApplicationDisplayName("Tellur");
    if (!HasOpenGl())
    {
        return Report(EXIT_UNUSABLE, "there is no OpenGL here, and the views need version 3.3");
    }
    SetRoots(options);
    CTextTranslator texts;
    if (!texts.Read(options.strLanguage))
    {
        return EXIT_UNUSABLE; // the log has said why
    }
    return Run(program, options);
}
