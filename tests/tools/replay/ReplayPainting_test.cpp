// Painting from scripts: through the draw dialog, on a machine without a display.

#include "host/Image.h"
#include "tests/support/TestPaths.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <tuple>

namespace
{

using Texel = std::array<int, 4>;

class CReplayPainting : public testing::Test
{
protected:
    CReplayPainting()
    {
        const std::vector<uint8_t> grey(8 * 8 * 4, 100);
        Write("types.png", EImageFormat::Rgba32, grey);
        Write("types.tga", EImageFormat::Rgb24, grey);
    }

    void Write(const char* pszName, EImageFormat eFormat, const std::vector<uint8_t>& bytes)
    {
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(8, 8, eFormat, bytes.data()));
        ASSERT_TRUE(IL_SaveImage(m_Runner.Path(pszName).c_str(), pImage.get(), nullptr));
    }

    // Plays a body on a level of 80 x 80 units; the bitmap has 8 x 8 texels.
    void Play(const std::string& strBody)
    {
        const SRunResult result =
            m_Runner.Play("level( 8, [ 80, 100, 80 ] )\n" + strBody,
                          {"--root", TELLUR_SOURCE_DIR, "--stats", "stats.json"});
        ASSERT_EQ(result.iExitCode, 0) << result.strErr;
        EXPECT_EQ(result.strErr, "");
        EXPECT_EQ(result.strOut, "");
        EXPECT_EQ(ReadBytes(m_Runner.Path("log.txt")), "");
    }

    Texel At(const char* pszName, uint32_t uColumn, uint32_t uRow)
    {
        const std::unique_ptr<IImage> pImage(IL_LoadImage(m_Runner.Path(pszName).c_str()));
        if (pImage == nullptr)
        {
            ADD_FAILURE() << pszName;
            return {};
        }
        const uint32_t uBytes = pImage->GetBitsPerPixel() / 8;
        const uint8_t* pTexel =
            pImage->GetRawData() + (size_t{uRow} * pImage->GetWidth() + uColumn) * uBytes;
        Texel texel = {-1, -1, -1, -1};
        std::copy_n(pTexel, uBytes, texel.begin());
        return texel;
    }

    CReplayRunner m_Runner;
};

const std::string START = "paint_bitmap( \"types.png\" )\npaint_brush( \"white.png\", 10 )\n"
                          "mode( \"edit_terrain_type\" )\n";

} // namespace

TEST_F(CReplayPainting, EachKeywordDoesWhatItsControlDoes)
{
    struct SCase
    {
        const char* pszBody;
        Texel inside;  // 3, 3
        Texel outside; // 0, 0
    };

    const Texel grey = {100, 100, 100, 100};
    const std::string strStroke = "press( 40, 40 ) release( 40, 40 )\n";
    const SCase cases[] = {
        {"", {255, 0, 0, 100}, grey},
        {"paint_color( [ 0.2, 0.4, 0.6, 0 ] )", {51, 102, 153, 100}, grey},
        {"paint_color( [ 0.2, 0.4, 0.6, 0 ] ) paint_mask( 1025 )", {100, 100, 100, 51}, grey},
        {"paint_mask( 17 )", {255, 100, 100, 100}, grey},
        {"paint_function( \"Mul\" ) paint_color( [ 0.5, 0.5, 1, 0 ] )", {50, 50, 100, 100}, grey},
        {"paint_power( 0.5 )", {177, 50, 50, 100}, grey},
        {"paint_power( 0.25 ) paint_hardness( 1 )", {138, 75, 75, 100}, grey},
        {"paint_texel_mapping( 1 )", {255, 0, 0, 100}, grey},
        {"press( 0, 0 ) move( 20, 0, 0 ) move( 0, 0, 0 ) release( 0, 0 )",
         {255, 0, 0, 100},
         {255, 0, 0, 100}},
        {"press( 0, 0 ) release( 0, 0 ) paint_undo()", {255, 0, 0, 100}, grey},
        {"press( 0, 0 ) release( 0, 0 ) paint_undo() paint_undo() paint_redo()",
         {255, 0, 0, 100},
         {255, 0, 0, 100}},
        {"press_miss() move_miss( 0 ) release_miss()", {255, 0, 0, 100}, grey},
        {"mode( \"none\" ) mode( \"edit_terrain_type\" )", {255, 0, 0, 100}, grey},
    };
    for (const SCase& one : cases)
    {
        SCOPED_TRACE(one.pszBody);
        ASSERT_NO_FATAL_FAILURE(
            Play(START + one.pszBody + "\n" + strStroke + "save_bitmap( \"out.png\" )\n"));
        EXPECT_EQ(At("out.png", 3, 3), one.inside);
        EXPECT_EQ(At("out.png", 0, 0), one.outside);
    }
    EXPECT_EQ(At("types.png", 3, 3), grey) << "the file itself is left alone";
}

TEST_F(CReplayPainting, SavesTheFormatThatWasOpened)
{
    ASSERT_NO_FATAL_FAILURE(Play("paint_bitmap( \"types.tga\" )\n"
                                 "paint_brush( \"data/brushes/cone.png\", 25.5 )\n"
                                 "mode( \"edit_terrain_type\" )\n"
                                 "press( 40, 40 ) release( 40, 40 )\n"
                                 "save_bitmap( \"types.tga\" )\nsave_bitmap( \"copy.png\" )\n"));
    EXPECT_EQ(At("types.tga", 3, 3), At("copy.png", 3, 3));
    EXPECT_EQ(At("types.tga", 3, 3)[3], -1) << "three bytes";
    EXPECT_GT(At("types.tga", 3, 3)[0], At("types.tga", 1, 3)[0]);
    const std::string strStats = ReadBytes(m_Runner.Path("stats.json"));
    EXPECT_NE(strStats.find("\"function\": \"Set\""), std::string::npos) << strStats;
    EXPECT_NE(strStats.find("\"points\": 1"), std::string::npos) << strStats;
}

TEST_F(CReplayPainting, AKeywordThatFailsEndsTheRunWithOneLine)
{
    // clang-format off
    const std::tuple<const char*, const char*> cases[] = {
        {"paint_bitmap( \"none.png\" ) mode( \"edit_terrain_type\" )", "mode( \"edit_terrain_type\" ): the bitmap cannot be painted on, the log says why (keyword 2)"},
        {"paint_undo() mode( \"edit_terrain_type\" )", "mode( \"edit_terrain_type\" ): there is no bitmap file, name it with paint_bitmap (keyword 2)"},
        {"paint_brush( \"none.png\", 10 )", "paint_brush( \"none.png\", 10 ): the brush shape cannot be used, the log says why (keyword 1)"},
        {"paint_brush( \"white.png\", -1 )", "paint_brush( \"white.png\", -1 ): the half-size must be 0 to 1000000 (keyword 1)"},
        {"paint_function( \"Add\" )", "paint_function( \"Add\" ): must be \"Set\" or \"Mul\" (keyword 1)"},
        {"paint_color( [ 0, 2, 0, 1 ] )", "paint_color( [ 0, 2, 0, 1 ] ): each component must be 0 to 1 (keyword 1)"},
        {"save_bitmap( \"out.png\" )", "save_bitmap( \"out.png\" ): there is no bitmap (keyword 1)"},
        {"paint_bitmap( \"types.png\" ) mode( \"edit_terrain_type\" ) paint_bitmap( \"types.tga\" )", "paint_bitmap( \"types.tga\" ): not while the bitmap is painted on, leave with mode( \"none\" ) (keyword 3)"},
        {"paint_bitmap( \"types.png\" ) mode( \"edit_terrain_type\" ) save_bitmap( \"none/out.png\" )", "save_bitmap( \"none/out.png\" ): the bitmap cannot be saved, the log says why (keyword 3)"},
        {"!paint_mask( s ) paint_mask( \"all\" )", "paint_mask( \"all\" ): wrong arguments (keyword 1)"},
    };
    // clang-format on
    for (const auto& [pszBody, pszLine] : cases)
    {
        SCOPED_TRACE(pszBody);
        const SRunResult result = m_Runner.Play(pszBody, {"--root", TELLUR_SOURCE_DIR});
        EXPECT_EQ(result.iExitCode, 1);
        EXPECT_EQ(result.strErr, std::string("script.tellur: ") + pszLine + "\n");
    }
}

TEST_F(CReplayPainting, AFailedSaveLeavesTheOldBitmap)
{
    const std::string strPath = m_Runner.Path("types.png");
    const std::string strOld = ReadBytes(strPath);
    ASSERT_NO_FATAL_FAILURE(
        Play(START + "press( 40, 40 ) release( 40, 40 )\nsave_bitmap( \"new.png\" )\n"));
    const std::string strNew = ReadBytes(m_Runner.Path("new.png"));
    ASSERT_NE(strOld, strNew);
    WriteBytes(m_Runner.Path("script.tellur"),
               CReplayRunner::GetDeclarations() + "level( 8, [ 80, 100, 80 ] )\n" + START +
                   "press( 40, 40 ) release( 40, 40 )\nsave_bitmap( \"types.png\" )\n");
    for (const char* pszKind : {"full ", "readonly ", "kill "})
    {
        int iFaults = 0;
        SRunResult result;
        do
        {
            SCOPED_TRACE(pszKind + std::to_string(++iFaults));
            WriteBytes(strPath, strOld);
            result = m_Runner.RunWithFault(pszKind + std::to_string(iFaults));
            const std::string strNow = ReadBytes(strPath);
            EXPECT_TRUE(strNow == strOld || strNow == strNew);
            EXPECT_TRUE(result.iExitCode != 0 || strNow == strNew);
            EXPECT_TRUE(result.iExitCode != 1 || strNow == strOld) << "it said that it failed";
        } while (result.iExitCode != 0 && iFaults < 60);
        EXPECT_EQ(result.iExitCode, 0);
        EXPECT_GT(iFaults, 3) << "the disk did fail";
    }
}

TEST_F(CReplayPainting, OpensTheWindowSystemAndStrokesDoNot)
{
    m_Runner.LeaveOutWindowSystem();
    Play(CReplayRunner::GetStrokeStart("RelativeHeightFunction") +
         "press( 40, 40 )\nmove( 44, 44, 0 )\nrelease( 44, 44 )\n");
    const SRunResult result =
        m_Runner.Play("level( 8, [ 80, 100, 80 ] )\n" + START, {"--root", TELLUR_SOURCE_DIR});
    EXPECT_EQ(result.iExitCode, 1);
    EXPECT_EQ(result.strErr,
              "script.tellur: paint_bitmap( \"types.png\" ): there are no windows to paint with "
              "(keyword 2)\n");
    const std::string strLibrary = m_Runner.Path("bin/libtellur_widgets_qt.so");
    EXPECT_EQ(ReadBytes(m_Runner.Path("log.txt")),
              "[OpenWindowSystem] " + strLibrary +
                  ": cannot open shared object file: No such file or directory\n");
}
