// The editor as the program that users start: its command line, its exit codes, and what is left
// when it is killed.

#include "host/Image.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <functional>

namespace
{

constexpr int LIMIT_MS = 120000;

constexpr char SCRIPT[] = "!brush()\n!bitmap()\n!path( s )\n!function( s )\n!attrib( s, s )\n"
                          "!extent( f )\n!mode( s )\n!press( f, f )\n!move( f, f, i )\n"
                          "!release( f, f )\n!level( i, v3 )\n!open( s )\n!save( s )\n"
                          "!expect_undo( i )\n";
constexpr char STROKE[] =
    "brush()\n{\n bitmap() { path( \"data/brushes/round.png\" ) }\n"
    " function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"7\" ) }\n"
    " extent( 90 )\n}\nmode( \"terraforming\" )\n"
    "press( 100, 100 )\nmove( 130, 120, 0 )\nmove( 200, 150, 0 )\nrelease( 200, 150 )\n";

class CProgram : public testing::Test
{
protected:
    CProgram() { std::filesystem::create_directories(m_Folder.Path("root")); }

    QStringList GetRoot() { return {"--root", TELLUR_SOURCE_DIR}; }

    // unlike: what differs from the environment here, as "NAME" without and "NAME=VALUE" with it.
    void Start(QProcess& process, const QStringList& arguments, const QStringList& unlike = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const auto set = [&](const char* pszName, const char* pszFolder)
        {
            environment.insert(pszName, QString::fromStdString(m_Folder.Path(pszFolder)));
        };
        set("XDG_CONFIG_HOME", "config");
        set("XDG_STATE_HOME", "state");
        set("XDG_DATA_HOME", "data-home");
        for (const QString& strOther : unlike)
        {
            environment.remove(strOther);
            if (strOther.contains('='))
            {
                environment.insert(strOther.section('=', 0, 0), strOther.section('=', 1));
            }
        }
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(QString::fromStdString(m_Folder.GetFolder()));
        process.start(TELLUR_BIN_DIR "/tellur-editor", arguments);
        ASSERT_TRUE(process.waitForStarted(LIMIT_MS));
    }

    // Runs it to its end. Its exit code; strErrors: what it wrote to the second channel.
    int Run(const QStringList& arguments, QString& strErrors, const QStringList& unlike = {})
    {
        QProcess process;
        Start(process, arguments, unlike);
        EXPECT_TRUE(process.waitForFinished(LIMIT_MS));
        strErrors = QString::fromUtf8(process.readAllStandardError());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    bool WaitFor(const std::function<bool()>& holds, const char* pszWhat)
    {
        QElapsedTimer clock;
        clock.start();
        while (!holds())
        {
            if (clock.elapsed() > LIMIT_MS)
            {
                ADD_FAILURE() << "never happened: " << pszWhat;
                return false;
            }
            QThread::msleep(30);
        }
        return true;
    }

    static QString Do(const QStringList& arguments)
    {
        QProcess process;
        process.start("xdotool", arguments);
        process.waitForFinished(LIMIT_MS);
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    // By the menu of the window that has the keyboard.
    void PlayScript(const char* pszName)
    {
        Do({"key", "--delay", "200", "alt+f", "p"});
        ASSERT_NO_FATAL_FAILURE(Enter("^Play script"));
        Do({"type", QString::fromStdString(m_Folder.Path(pszName))});
        Do({"key", "Return"});
    }

    // Waits for a window of that title and gives it the keyboard, as a window manager would.
    void Enter(const char* pszTitle)
    {
        QString strWindow;
        const QStringList search = {"search", "--onlyvisible", "--name", pszTitle};
        ASSERT_TRUE(WaitFor(
            [&]
            {
                strWindow = Do(search).section('\n', 0, 0).trimmed();
                return !strWindow.isEmpty();
            },
            pszTitle));
        Do({"windowfocus", "--sync", strWindow});
        QThread::msleep(200); // the program hears of it in its own time
    }

    void MakeLevel(const std::string& strLevel)
    {
        WriteBytes(m_Folder.Path("make.tellur"),
                   std::string(SCRIPT) +
                       "level( 32, [320, 100, 320] )\nsave( \"levels/valley.height\" )\n");
        std::filesystem::create_directories(m_Folder.Path("levels"));
        QProcess process;
        process.setWorkingDirectory(QString::fromStdString(m_Folder.GetFolder()));
        process.start(TELLUR_BIN_DIR "/tellur-replay", QStringList{"make.tellur"} + GetRoot());
        ASSERT_TRUE(process.waitForFinished(LIMIT_MS));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        WriteBytes(strLevel,
                   "!height_map( s )\n!terrain_size( v3 )\nheight_map( \"valley.height\" )\n");
    }

    CTempFolder m_Folder;
};

// Whether a journal in the folder has a whole step.
bool HasStep(const std::string& strFolder)
{
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(strFolder, error))
    {
        if (entry.path().extension() == ".tellur" &&
            ReadBytes(entry.path().string()).find("\n// step 1 ") != std::string::npos)
        {
            return true;
        }
    }
    return false;
}

} // namespace

TEST_F(CProgram, WhatCannotBeDoneEndsWithOneLineAndItsCode)
{
    WriteBytes(m_Folder.Path("fails.tellur"),
               std::string(SCRIPT) + "level( 32, [320, 100, 320] )\nexpect_undo( 3 )\n");
    WriteBytes(m_Folder.Path("unknown.tellur"), "!levle( i, v3 )\nlevle( 32, [1, 1, 1] )\n");

    struct SCase
    {
        QStringList arguments;
        int iCode;
        const char* pszSays;
        QStringList unlike;
    };

    const SCase cases[] = {
        {{"a.level", "b.level"}, 2, "more than one level: b.level", {}},
        {{"--language", "../de"}, 2, "no name of a language: ../de", {}},
        {{"--language", "xx"}, 2, "data/texts/xx.texts", {}},
        {{}, 2, "there is no display", {"DISPLAY", "QT_QPA_PLATFORM", "WAYLAND_DISPLAY"}},
        {{}, 2, "window system cannot be reached", {"DISPLAY", "WAYLAND_DISPLAY=nothing"}},
        {{}, 2, "there is no OpenGL", {"QT_QPA_PLATFORM=offscreen"}},
        {{}, 2, "there is no OpenGL", {"QT_XCB_GL_INTEGRATION=none"}},
        {{"--plugin", "nothing.so", "--screenshot", "a.png"}, 2, "nothing.so", {}},
        {{"nothing.level", "--screenshot", "a.png"}, 2, "nothing.level", {}},
        {{"--play", "nothing.tellur"}, 2, "nothing.tellur", {}},
        {{"--play", "unknown.tellur"}, 1, "levle", {}},
        {{"--play", "fails.tellur"}, 1, "expect_undo", {}},
        {{"--screenshot", "no/such/folder.png"}, 1, "no/such/folder.png", {}},
    };
    for (const SCase& check : cases)
    {
        QString strErrors;
        const QStringList arguments = check.arguments + GetRoot();
        EXPECT_EQ(Run(arguments, strErrors, check.unlike), check.iCode)
            << arguments.join(' ').toStdString() << "\n"
            << strErrors.toStdString();
        EXPECT_TRUE(strErrors.contains(check.pszSays)) << strErrors.toStdString();
        EXPECT_EQ(strErrors.count('\n'), 1) << strErrors.toStdString();
    }
    EXPECT_FALSE(std::filesystem::exists(m_Folder.Path("a.png")));
}

TEST_F(CProgram, TheLocaleChoosesTheTextsUnlessOthersAreAskedFor)
{
    // A fault in a file shows that it was read.
    std::filesystem::create_directories(m_Folder.Path("root/data/texts"));
    WriteBytes(m_Folder.Path("root/data/texts/de.texts"), "&Undo\n&Zur\\u00fcck\n");
    QStringList said;
    for (const QStringList& asked : {QStringList(), QStringList{"--language", "en"}})
    {
        QString strErrors;
        EXPECT_EQ(Run(asked + QStringList{"--root", "root", "--screenshot", "a.png"},
                      strErrors,
                      {"LC_ALL=de_AT.UTF-8"}),
                  0);
        said << strErrors;
    }
    EXPECT_TRUE(said[0].contains("data/texts/de.texts, line 2: ")) << said[0].toStdString();
    EXPECT_EQ(said[1].toStdString(), "");
}

TEST_F(CProgram, APlayedScriptEndsAsInTheReplayAndLeavesAPicture)
{
    const std::string strScript = std::string(SCRIPT) + "level( 32, [320, 100, 320] )\n" + STROKE +
                                  "expect_undo( 1 )\nsave( \"played.height\" )\n";
    WriteBytes(m_Folder.Path("play.tellur"), strScript);
    QString strErrors;
    EXPECT_EQ(Run(QStringList{"--play", "play.tellur", "--screenshot", "picture.png"} + GetRoot(),
                  strErrors),
              0);
    EXPECT_EQ(strErrors.toStdString(), "");
    const std::string strPlayed = ReadBytes(m_Folder.Path("played.height"));
    EXPECT_GT(std::filesystem::file_size(m_Folder.Path("picture.png")), 10000U);
    std::filesystem::remove(m_Folder.Path("played.height"));
    QProcess process;
    process.setWorkingDirectory(QString::fromStdString(m_Folder.GetFolder()));
    process.start(TELLUR_BIN_DIR "/tellur-replay", QStringList{"play.tellur"} + GetRoot());
    ASSERT_TRUE(process.waitForFinished(LIMIT_MS));
    EXPECT_TRUE(ReadBytes(m_Folder.Path("played.height")) == strPlayed);
    // The data beside the programs does where nobody names a folder.
    std::filesystem::remove(m_Folder.Path("played.height"));
    EXPECT_EQ(Run({"--play", "play.tellur"}, strErrors, {"TELLUR_ROOT"}), 0);
    EXPECT_EQ(strErrors.toStdString(), "");
    EXPECT_TRUE(ReadBytes(m_Folder.Path("played.height")) == strPlayed);
    // Another plug-in, which asks for views while it is loaded.
    EXPECT_EQ(Run({"--plugin", TELLUR_BIN_DIR "/minimal_plugin.so", "--screenshot", "other.png"},
                  strErrors),
              0);
    EXPECT_GT(std::filesystem::file_size(m_Folder.Path("other.png")), 10000U);
}

TEST_F(CProgram, AScriptThatAPersonStopsWasNotPlayed)
{
    std::string strScript = std::string(SCRIPT) + "level( 32, [320, 100, 320] )\n" + STROKE;
    for (int i = 0; i < 30000; ++i)
    {
        strScript += "press( 100, 100 )\nmove( 200, 150, 0 )\nrelease( 200, 150 )\n";
    }
    WriteBytes(m_Folder.Path("long.tellur"), strScript);
    QProcess editor;
    ASSERT_NO_FATAL_FAILURE(Start(editor, QStringList{"--play", "long.tellur"} + GetRoot()));
    ASSERT_NO_FATAL_FAILURE(Enter("Tellur$"));
    while (!editor.waitForFinished(1)) // pressed before the script begins it stops nothing
    {
        Do({"key", "Escape"});
    }
    EXPECT_EQ(editor.exitCode(), 1);
    const QString strErrors = QString::fromUtf8(editor.readAllStandardError());
    EXPECT_TRUE(strErrors.contains("long.tellur: stopped after ")) << strErrors.toStdString();
}

TEST_F(CProgram, WhatASignalEndsIsGivenBackByTheNextStart)
{
    const std::string strLevel = m_Folder.Path("levels/valley.level");
    const std::string strHeights = m_Folder.Path("levels/valley.height");
    ASSERT_NO_FATAL_FAILURE(MakeLevel(strLevel));
    const std::string strBefore = ReadBytes(strHeights);
    WriteBytes(m_Folder.Path("stroke.tellur"), std::string(SCRIPT) + STROKE);
    WriteBytes(m_Folder.Path("again.tellur"),
               std::string(SCRIPT) + "level( 32, [320, 100, 320] )\n" + STROKE +
                   "save( \"again.height\" )\n");
    const std::string strCopies = m_Folder.Path("levels/.tellur-autosave");
    const QStringList arguments = QStringList{"levels/valley.level"} + GetRoot();
    for (const int iSignal : {SIGKILL, SIGTERM, SIGHUP})
    {
        SCOPED_TRACE(iSignal);
        WriteBytes(strHeights, strBefore);
        QProcess editor;
        ASSERT_NO_FATAL_FAILURE(Start(editor, arguments));
        ASSERT_NO_FATAL_FAILURE(Enter("^valley.* - Tellur"));
        ASSERT_NO_FATAL_FAILURE(PlayScript("stroke.tellur"));
        ASSERT_TRUE(WaitFor([&] { return HasStep(strCopies); }, "a step"));
        ::kill(static_cast<pid_t>(editor.processId()), iSignal);
        ASSERT_TRUE(editor.waitForFinished(LIMIT_MS)); // nobody has answered a question
        EXPECT_EQ(editor.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(editor.exitCode(), iSignal);
        EXPECT_TRUE(ReadBytes(strHeights) == strBefore) << "the level's own file";

        ASSERT_NO_FATAL_FAILURE(Start(editor, arguments));
        ASSERT_NO_FATAL_FAILURE(Enter("^Recover"));
        Do({"key", "Return"});
        ASSERT_NO_FATAL_FAILURE(Enter("^valley.* - Tellur"));
        Do({"key", "ctrl+s"});
        ASSERT_TRUE(WaitFor([&] { return ReadBytes(strHeights) != strBefore; }, "it is saved"));
        Do({"key", "ctrl+q"});
        ASSERT_TRUE(editor.waitForFinished(LIMIT_MS));
        EXPECT_EQ(editor.exitCode(), 0);
        EXPECT_FALSE(std::filesystem::exists(strCopies));
        QProcess process;
        process.setWorkingDirectory(QString::fromStdString(m_Folder.GetFolder()));
        process.start(TELLUR_BIN_DIR "/tellur-replay", QStringList{"again.tellur"} + GetRoot());
        ASSERT_TRUE(process.waitForFinished(LIMIT_MS));
        EXPECT_TRUE(ReadBytes(m_Folder.Path("again.height")) == ReadBytes(strHeights));
    }
}

TEST_F(CProgram, ASignalSavesTheBrushesThatWereAdded)
{
    const std::string strLibrary = m_Folder.Path("root/PredefinedBrushes.ini");
    WriteBytes(strLibrary,
               "!brush()\n!bitmap()\n!path( s )\n!function( s )\nbrush() { bitmap() { path( \"" +
                   std::string(TELLUR_SOURCE_DIR) +
                   "/data/brushes/round.png\" ) } function( \"BlurFunction\" ) }\n");
    const std::string strBefore = ReadBytes(strLibrary);
    WriteBytes(m_Folder.Path("add.tellur"),
               "!duplicate_brush( i, s )\n!level( i, v3 )\n!save( s )\n"
               "duplicate_brush( 0, \"Added\" )\n"
               "level( 32, [320, 100, 320] )\nsave( \"played.height\" )\n");
    QProcess editor;
    ASSERT_NO_FATAL_FAILURE(Start(editor, {"--root", "root"}));
    ASSERT_NO_FATAL_FAILURE(Enter("^Untitled - Tellur"));
    ASSERT_NO_FATAL_FAILURE(PlayScript("add.tellur"));
    ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(m_Folder.Path("played.height")); },
                        "the script ends"));
    EXPECT_EQ(ReadBytes(strLibrary), strBefore);
    ::kill(static_cast<pid_t>(editor.processId()), SIGTERM);
    ASSERT_TRUE(editor.waitForFinished(LIMIT_MS)); // nobody has answered a question
    EXPECT_EQ(editor.exitCode(), SIGTERM);
    EXPECT_NE(ReadBytes(strLibrary).find("\"Added\""), std::string::npos);
}

TEST_F(CProgram, AKillCostsNeitherASettingNorATool)
{
    const std::string strTools = m_Folder.Path("config/tellur/tools.brushes");
    const std::string strSettings = m_Folder.Path("config/tellur/editor.ini");
    const std::string strPanel = m_Folder.Path("config/tellur/settings.txt");
    const auto isIn = [](const std::string& strFile, const char* pszText)
    {
        return std::filesystem::exists(strFile) &&
               ReadBytes(strFile).find(pszText) != std::string::npos;
    };
    ASSERT_NO_FATAL_FAILURE(MakeLevel(m_Folder.Path("levels/valley.level")));
    QProcess editor;
    for (const char* pszExtent : {"extent( 21.12", "extent( 23.23"}) // a tenth more each time
    {
        ASSERT_NO_FATAL_FAILURE(Start(editor, QStringList{"levels/valley.level"} + GetRoot()));
        ASSERT_NO_FATAL_FAILURE(Enter("^valley.* - Tellur"));
        Do({"key", "--delay", "200", "4", "bracketright", "j", "F6"});
        EXPECT_TRUE(WaitFor([&] { return isIn(strTools, pszExtent); }, "the tool is kept"));
        EXPECT_TRUE(
            WaitFor([&] { return isIn(strPanel, "panel_open( 1 )"); }, "the panel is kept"));
        ::kill(static_cast<pid_t>(editor.processId()), SIGKILL);
        ASSERT_TRUE(editor.waitForFinished(LIMIT_MS));
        EXPECT_TRUE(isIn(strTools, "end_of_tools()"));
        const bool bFirst = std::string(pszExtent) == "extent( 21.12";
        EXPECT_TRUE(
            isIn(strSettings, bFirst ? "\nbuilds_up=RelativeHeightFunction\n" : "\nbuilds_up=\n"));
        EXPECT_TRUE(isIn(strSettings, "\ngeometry="));
    }
}

TEST_F(CProgram, AKillCostsNeitherTheSizeOfTheWindowNorTheViews)
{
    const std::string strSettings = m_Folder.Path("config/tellur/editor.ini");
    const auto isKept = [&](const std::string& strBefore)
    {
        return std::filesystem::exists(strSettings) && ReadBytes(strSettings) != strBefore &&
               ReadBytes(strSettings).find("Perspective, Top, Front, Side") != std::string::npos;
    };
    QProcess editor;
    for (const bool bAgain : {false, true})
    {
        ASSERT_NO_FATAL_FAILURE(Start(editor, GetRoot()));
        ASSERT_NO_FATAL_FAILURE(Enter("^Untitled - Tellur"));
        const QString strWindow = Do({"getwindowfocus"}).trimmed();
        if (bAgain)
        {
            EXPECT_TRUE(Do({"getwindowgeometry", strWindow}).contains("1010x660"));
        }
        else
        {
            Do({"key", "--delay", "200", "alt+v", "f"});
            ASSERT_TRUE(WaitFor([&] { return isKept(""); }, "the views are kept"));
            const std::string strBefore = ReadBytes(strSettings);
            Do({"windowsize", "--sync", strWindow, "1010", "660"}); // no hand in the window itself
            EXPECT_TRUE(WaitFor([&] { return isKept(strBefore); }, "the size is kept"));
        }
        ::kill(static_cast<pid_t>(editor.processId()), SIGKILL);
        ASSERT_TRUE(editor.waitForFinished(LIMIT_MS));
    }
}

TEST_F(CProgram, LeavingAsksForThePaintingAndEndsBesideTheDrawDialog)
{
    const std::string strBitmap = m_Folder.Path("types.png");
    const std::vector<uint8_t> grey(64, 100);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(8, 8, EImageFormat::Indexed8, grey.data()));
    ASSERT_TRUE(IL_SaveImage(strBitmap.c_str(), pImage.get(), nullptr));
    const std::string strBefore = ReadBytes(strBitmap);
    WriteBytes(m_Folder.Path("paint.tellur"),
               "!level( i, v3 )\n!paint_bitmap( s )\n!paint_color( v4 )\n!mode( s )\n"
               "!press( f, f )\n!release( f, f )\n!save( s )\n"
               "level( 32, [320, 100, 320] )\npaint_bitmap( \"types.png\" )\n"
               "mode( \"edit_terrain_type\" )\npaint_color( [1, 1, 1, 1] )\n"
               "press( 160, 160 )\nrelease( 160, 160 )\nsave( \"played.height\" )\n");
    QProcess editor;
    ASSERT_NO_FATAL_FAILURE(Start(editor, GetRoot()));
    ASSERT_NO_FATAL_FAILURE(Enter("^Untitled - Tellur"));
    ASSERT_NO_FATAL_FAILURE(PlayScript("paint.tellur"));
    ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(m_Folder.Path("played.height")); },
                        "the script ends"));
    ASSERT_NO_FATAL_FAILURE(Enter("^Edit bitmap on terrain"));
    for (int i = 0; i < 2; ++i) // kept, then saved
    {
        ASSERT_NO_FATAL_FAILURE(Enter("^Untitled. - Tellur"));
        Do({"key", "ctrl+q"});
        ASSERT_NO_FATAL_FAILURE(Enter("^Unsaved changes"));
        EXPECT_EQ(ReadBytes(strBitmap), strBefore);
        Do({"key", i == 0 ? "Escape" : "Return"});
    }
    ASSERT_TRUE(editor.waitForFinished(LIMIT_MS));
    EXPECT_EQ(editor.exitCode(), 0);
    EXPECT_TRUE(ReadBytes(strBitmap) != strBefore);
}
