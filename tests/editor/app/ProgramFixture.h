#pragma once

#include "host/Image.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <functional>

inline constexpr int LIMIT_MS = 120000;

inline constexpr char SCRIPT[] =
    "!brush()\n!bitmap()\n!path( s )\n!function( s )\n!attrib( s, s )\n"
    "!extent( f )\n!mode( s )\n!press( f, f )\n!move( f, f, i )\n"
    "!release( f, f )\n!level( i, v3 )\n!open( s )\n!save( s )\n"
    "!expect_undo( i )\n";
inline constexpr char STROKE[] =
    "brush()\n{\n bitmap() { path( \"data/brushes/round.png\" ) }\n"
    " function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"7\" ) }\n"
    " extent( 90 )\n}\nmode( \"terraforming\" )\n"
    "press( 100, 100 )\nmove( 130, 120, 0 )\nmove( 200, 150, 0 )\nrelease( 200, 150 )\n";

// The editor as a process with a folder of its own for its user.
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

    // Presses the keys until a window of that title is there, and gives it the keyboard: what is
    // pressed while a script has not quite ended is left out.
    void PressAndEnter(const QStringList& keys, const char* pszTitle)
    {
        const QStringList search = {"search", "--onlyvisible", "--name", pszTitle};
        ASSERT_TRUE(WaitFor(
            [&]
            {
                Do(QStringList{"key", "--delay", "200"} + keys);
                for (int i = 0; i < 50; ++i)
                {
                    if (!Do(search).isEmpty())
                    {
                        return true;
                    }
                    QThread::msleep(50);
                }
                return false;
            },
            pszTitle));
        Enter(pszTitle);
    }

    // By the menu of the window that has the keyboard.
    void PlayScript(const char* pszName)
    {
        ASSERT_NO_FATAL_FAILURE(PressAndEnter({"alt+f", "p"}, "^Play script"));
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
inline bool HasStep(const std::string& strFolder)
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
