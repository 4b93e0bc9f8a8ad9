// What is left of the program when a signal ends it, and when it is killed.

#include "tests/editor/app/ProgramFixture.h"

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
        ASSERT_NO_FATAL_FAILURE(PressAndEnter({"ctrl+q"}, "^Unsaved changes"));
        EXPECT_EQ(ReadBytes(strBitmap), strBefore);
        Do({"key", i == 0 ? "Escape" : "Return"});
    }
    ASSERT_TRUE(editor.waitForFinished(LIMIT_MS));
    EXPECT_EQ(editor.exitCode(), 0);
    EXPECT_TRUE(ReadBytes(strBitmap) != strBefore);
}
