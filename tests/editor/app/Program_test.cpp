// The editor as the program that users start: its command line and its exit codes.

#include "tests/editor/app/ProgramFixture.h"

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
