#include "tests/project/ProjectTree.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

namespace files = std::filesystem;

// The script in a folder of its own, where building does nothing and programs say how they were
// called.
class RunScript : public testing::Test
{
protected:
    RunScript()
    {
        files::copy_file(TELLUR_SOURCE_DIR "/run", m_Folder.Path("run"));
        AddProgram("cmake/install-packages", "[ $1 = run ]");
        AddProgram("cmake/build", "[ $1 = release ]");
        AddProgram("cmake/fetch-sample", "echo grid >$1");
        AddProgram("build/release/bin/tellur-editor", "echo \"editor $*\"");
        AddProgram("build/release/bin/tellur-replay", "echo \"replay $*\"");
        AddProgram("build/release/bin/tellur-height", "echo \"height $*\"");
        files::create_directory(m_Folder.Path("out"));
    }

    void AddProgram(const char* pszName, const std::string& strText)
    {
        WriteBytes(m_Folder.Path(pszName), "#!/bin/sh\n" + strText + "\n");
        files::permissions(m_Folder.Path(pszName), files::perms::owner_all);
    }

    SRun Run(const char* pszEnvironment)
    {
        return RunCommand(std::string("env -u DISPLAY -u WAYLAND_DISPLAY ") + pszEnvironment +
                              " ./run",
                          m_Folder.GetFolder());
    }

    CTempFolder m_Folder;
};

TEST_F(RunScript, OpensTheEditorWhereADisplayIsAndPlaysTheSampleElsewhere)
{
    const std::string strEditor = "editor out/jacksboro.height";
    const std::string strReplay = "replay data/samples/first-strokes.tellur";
    for (const char* pszDisplay : {"DISPLAY=:7", "WAYLAND_DISPLAY=wayland-0"})
    {
        const SRun run = Run(pszDisplay);
        EXPECT_EQ(run.nExitCode, 0) << run.strOutput;
        EXPECT_NE(run.strOutput.find(strEditor), std::string::npos) << run.strOutput;
        EXPECT_EQ(run.strOutput.find(strReplay), std::string::npos) << run.strOutput;
    }
    const SRun run = Run("");
    EXPECT_EQ(run.nExitCode, 0) << run.strOutput;
    EXPECT_EQ(run.strOutput.find(strEditor), std::string::npos) << run.strOutput;
    EXPECT_NE(run.strOutput.find(strReplay), std::string::npos) << run.strOutput;
    EXPECT_NE(run.strOutput.find("side by side: out/first-strokes.png"), std::string::npos);
}

TEST_F(RunScript, MakesTheLevelOnceAndStopsWhereAStepFails)
{
    const std::string strConvert = "height convert out/elevation.npy out/jacksboro.height";
    EXPECT_NE(Run("DISPLAY=:7").strOutput.find(strConvert), std::string::npos);
    WriteBytes(m_Folder.Path("out/jacksboro.height"), "a level");
    EXPECT_EQ(Run("DISPLAY=:7").strOutput.find(strConvert), std::string::npos);

    AddProgram("cmake/build", "echo broken; exit 3");
    const SRun run = Run("DISPLAY=:7");
    EXPECT_EQ(run.nExitCode, 3);
    EXPECT_EQ(run.strOutput.find("editor"), std::string::npos) << run.strOutput;
}

} // namespace
