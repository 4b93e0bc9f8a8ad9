// What the autosave has kept when the editor is killed, while the real plug-in sculpts.

#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Image.h"
#include "tests/editor/script/AutosaveFixture.h"
#include "tests/support/CLogCatcher.h"

#include <fstream>

TEST_F(CAutosaveTest, WhatIsKeptLiesUnderAnyNameAndFollowsNoLink)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strVictim = m_Folder.Path("victim");
    const std::string strFolder = m_Folder.Path(".tellur-autosave");
    const auto strokes = [this]
    {
        Stroke();
        Stroke();
    };
    WriteBytes(strVictim, "mine");
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            std::filesystem::create_directory(strFolder);
            for (const char* pszEnd :
                 {".level", ".1.tellur", ".2.tellur", ".3.tellur", ".2.height"})
            {
                std::filesystem::create_symlink(
                    strVictim, strFolder + "/l-" + std::to_string(::getpid()) + pszEnd);
            }
            strokes();
        }));
    ASSERT_NO_FATAL_FAILURE(ExpectBack());
    EXPECT_EQ(ReadBytes(strVictim), "mine");

    std::filesystem::remove_all(strFolder);
    std::filesystem::create_directory(m_Folder.Path("elsewhere"));
    std::filesystem::create_directory_symlink(m_Folder.Path("elsewhere"), strFolder);
    ASSERT_NO_FATAL_FAILURE(Crash(strokes));
    EXPECT_TRUE(std::filesystem::is_empty(m_Folder.Path("elsewhere")));
    ASSERT_NO_FATAL_FAILURE(ExpectBack());

    std::filesystem::remove(strFolder);
    std::string strName;
    for (int i = 0; i < 123; ++i)
    {
        strName += "\xC3\xA4"; // 246 bytes
    }
    m_Level = m_Folder.Path((strName + ".level").c_str());
    ASSERT_TRUE(m_Document.SaveAs(m_Level.c_str()));
    ASSERT_NO_FATAL_FAILURE(Crash(strokes));
    EXPECT_EQ(FindFiles(".tellur").size(), 1U);
    ASSERT_NO_FATAL_FAILURE(ExpectBack());
}

TEST_F(CAutosaveTest, ACrashAfterACrashLosesNothing)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            Stroke();
            Stroke();
        }));
    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            size_t nSteps = 0;
            Recover(FindRecoverable({m_Level}).at(0), nSteps);
            Stroke();
            m_Host.Undo();
            m_Host.Undo(); // a step of the run before
            Stroke();
        }));
    ExpectBack();

    // Heights that come otherwise than by steps.
    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            Stroke();
            ASSERT_TRUE(m_Document.Save());
            m_Autosave->Tick(m_Now);
            m_Host.Undo(); // to before the file
            CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
            const float row[] = {1.5F, 2.5F, 3.5F};
            pTerrain->SetRowHeights(7, 9, row, 3); // by nobody's event
            m_Autosave->Tick(m_Now);
        }));
    ExpectBack();

    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            ASSERT_TRUE(m_Document.New(48, {WIDTH, 200.0F, WIDTH}, 20.0F));
            Raise("100, 100");
            EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)) && m_Autosave->Wait());
            Raise("200, 100");
        }));
    ExpectBack();
    EXPECT_EQ(m_Document.GetTitle(), "Untitled") << "it was never saved";
}

TEST_F(CAutosaveTest, AFileThatWasWrittenOverInPlaceIsNoBase)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Crash([this] { Stroke(); }));
    const std::string strHeights = m_Folder.Path("l.height");
    Open();
    Raise("100, 100");
    const std::string strBytes = SaveHeights("other.height");
    std::fstream(strHeights, std::ios::in | std::ios::out | std::ios::binary)
        .write(strBytes.data(), static_cast<std::streamsize>(strBytes.size()));
    Open();
    const uint32_t uSum = GetSum();
    const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].strFault, strHeights + " is not what it was when they were made");
    CLogCatcher log;
    size_t nSteps = 0;
    EXPECT_FALSE(Recover(entries[0], nSteps));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_EQ(GetSum(), uSum);
}

TEST_F(CAutosaveTest, StepsStayWhenTheLevelIsSavedByAnotherHand)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    for (int iCase = 0; iCase < 4; ++iCase)
    {
        const bool bSaved = iCase % 2 == 1;
        ASSERT_NO_FATAL_FAILURE(Crash(
            [&]
            {
                Raise("100, 100");
                EXPECT_EQ(m_Autosave->Tick(m_Now + std::chrono::hours(iCase / 2)), iCase >= 2);
                EXPECT_TRUE(m_Autosave->Wait());
                Raise("150, 200");
            }));
        Open(); // another run, which leaves them for later
        if (bSaved)
        {
            Raise("200, 100");
            ASSERT_TRUE(m_Document.Save());
            m_Autosave->Tick(m_Now);
        }
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(entries[0].bSavedSince, bSaved);
        ASSERT_NO_FATAL_FAILURE(ExpectBack());
        EXPECT_EQ(m_Document.FindReplaced().size(), bSaved ? 2U : 0U) << "a save asks";
        EXPECT_TRUE(m_Document.IsModified());
    }
}

namespace
{

class CAutosavedPainting : public CAutosaveTest
{
protected:
    struct SPainted
    {
        const char* pszName;
        EImageFormat eFormat;
        std::function<void()> between; // two strokes
        std::function<void()> after;
        bool bSaved = false; // the bitmap, by another program, after the crash
    };

    std::vector<SPainted> GetCases();
};

std::vector<CAutosavedPainting::SPainted> CAutosavedPainting::GetCases()
{
    const std::function<void()> nothing = [] {
    };
    const auto copy = [this]
    {
        EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)) && m_Autosave->Wait());
    };
    return {
        {"steps alone", EImageFormat::Rgba32, nothing, nothing},
        {"a palette", EImageFormat::Indexed8, nothing, nothing},
        {"a copy and a step", EImageFormat::Rgba32, copy, nothing, true},
        {"a copy with a palette", EImageFormat::Indexed8, copy, nothing},
        {"a copy alone", EImageFormat::Rgb24, nothing, copy},
        {"heights, saved",
         EImageFormat::Rgba32,
         [this]
         {
             Raise("100, 100");
             EXPECT_TRUE(m_Document.Save());
         },
         [this]
         {
             Raise("200, 100");
         }},
        {"taken back", EImageFormat::Rgba32, [this] { PlayScript("paint_undo()\n"); }, nothing},
        {"a key, twice",
         EImageFormat::Rgba32,
         [this] { m_Host.StepPaint(false); },
         [this]
         {
             m_Host.StepPaint(false);
             m_Host.StepPaint(false); // nothing is left
             m_Host.StepPaint(true);
         }},
        {"the dialog's button",
         EImageFormat::Rgba32,
         nothing,
         [this]
         {
             m_Painting->StepPaint(false); // no event says so
             EXPECT_TRUE(m_Autosave->Tick(m_Now) && m_Autosave->Wait());
             EXPECT_FALSE(m_Autosave->Tick(m_Now));
         }},
        {"a save that nothing follows",
         EImageFormat::Rgba32,
         [this] { Raise("100, 100"); },
         [this]
         {
             EXPECT_TRUE(m_Document.Save());
         }},
    };
}

} // namespace

TEST_F(CAutosavedPainting, ComesBackTexelByTexel)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    std::vector<uint8_t> texels(size_t{32} * 32 * 4);
    for (uint8_t& uTexel : texels)
    {
        uTexel = static_cast<uint8_t>(m_Numbers.Int(0, 255));
    }
    for (const SPainted& painted : GetCases())
    {
        SCOPED_TRACE(painted.pszName);
        const std::string strName = std::string(painted.pszName) + ".png";
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(32, 32, painted.eFormat, texels.data()));
        ASSERT_TRUE(IL_SaveImage(m_Folder.Path(strName.c_str()).c_str(), pImage.get(), nullptr));
        const std::string strFile = ReadBytes(m_Folder.Path(strName.c_str()));
        ASSERT_NO_FATAL_FAILURE(Crash(
            [&]
            {
                PlayScript("paint_bitmap( \"" + strName + "\" )\npaint_brush( \"data/brushes/" +
                           "cone.png\", 40 )\n");
                PaintStroke("1, 0.5, 0.25, 1", "100, 100");
                painted.between();
                PaintStroke("0, 1, 0.5, 0.5", "200, 200");
                painted.after();
                WriteBytes(m_Folder.Path("crashed.texels"), GetTexels());
            }));
        if (painted.bSaved)
        {
            WriteBytes(m_Folder.Path(strName.c_str()), strFile);
        }
        Open();
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(entries[0].bBitmapSavedSince, painted.bSaved);
        size_t nSteps = 0;
        ASSERT_TRUE(Recover(entries[0], nSteps));
        EXPECT_EQ(std::filesystem::exists(m_Folder.Path((strName + ".bak").c_str())),
                  painted.bSaved);
        EXPECT_TRUE(SaveHeights("back.height") == ReadBytes(m_Folder.Path("crashed.height")));
        EXPECT_TRUE(GetTexels() == ReadBytes(m_Folder.Path("crashed.texels")));
        EXPECT_EQ(m_Painting->GetUnsavedBitmap(), m_Folder.Path(strName.c_str()));
        EXPECT_TRUE(ReadBytes(m_Folder.Path(strName.c_str())) == strFile) << "not saved by itself";
        ASSERT_TRUE(m_Painting->SaveBitmap(m_Folder.Path(strName.c_str()).c_str()));
        PlayScript("mode( \"none\" )\n");
        m_Autosave->Remove();
        End();
    }
}

TEST_F(CAutosaveTest, ABitmapThatWasSavedSinceIsNeverLost)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strName = std::string(248, 't') + ".png"; // ".bak" does not fit behind it
    const std::string strPath = m_Folder.Path(strName.c_str());
    const std::vector<uint8_t> grey(64, 100);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(8, 8, EImageFormat::Indexed8, grey.data()));
    ASSERT_TRUE(IL_SaveImage(strPath.c_str(), pImage.get(), nullptr));
    const auto paint = [&]
    {
        PlayScript("paint_bitmap( \"" + strName + "\" )\n");
        PaintStroke("1, 1, 1, 1", "100, 100");
    };
    ASSERT_NO_FATAL_FAILURE(Crash(paint));
    EXPECT_EQ(FindRecoverable({m_Level}).at(0).strLeftOut, "");
    WriteBytes(strPath, ReadBytes(strPath)); // by another program
    EXPECT_EQ(FindRecoverable({m_Level}).at(0).strLeftOut, strPath);
    ASSERT_NO_FATAL_FAILURE(ExpectBack());
    EXPECT_EQ(m_Painting->GetUnsavedBitmap(), "") << "it is left out";

    // With a copy of what was painted it is not, and could be saved over the newer file.
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            paint();
            EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)) && m_Autosave->Wait());
        }));
    WriteBytes(strPath, ReadBytes(strPath));
    Open();
    CLogCatcher log;
    size_t nSteps = 0;
    EXPECT_FALSE(Recover(FindRecoverable({m_Level}).at(0), nSteps));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_EQ(FindRecoverable({m_Level}).size(), 1U) << "for another try";
}

TEST_F(CAutosaveTest, AFullDiskLosesNoStepOnceThereIsRoom)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            CLogCatcher log;
            Raise("100, 100");
            const std::vector<std::string> files = FindFiles("");
            EXPECT_EQ(files.size(), 3U) << "a text, a journal and the heights";
            LimitFiles(9000); // less than the heights take
            EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)));
            EXPECT_FALSE(m_Autosave->Wait());
            EXPECT_EQ(log.TakeLines().size(), 1U);
            EXPECT_EQ(FindFiles(""), files) << "nothing is left of the copy";
            Raise("200, 100");
            const std::vector<std::string> journals = FindFiles(".tellur");
            EXPECT_EQ(journals.size(), 2U); // the second goes on from the first
            LimitFiles(std::filesystem::file_size(journals.back()) + 20);
            Raise("100, 200");
            Raise("200, 200");
            m_Autosave->Tick(m_Now + std::chrono::hours(3)); // no copy has room either
            Raise("150, 200");
            EXPECT_EQ(log.TakeLines().size(), 1U);
            EXPECT_EQ(FindFiles("").size(), 4U);
            LimitFiles(RLIM_INFINITY);
            Raise("150, 100");
        }));
    ExpectBack();
}

// The time that a copy takes to begin grows with the pages that it shares.
TEST_F(CAutosaveTest, ACopySharesTheHeightsInHugePagesAndNoOtherLargeArray)
{
    constexpr uint32_t CELLS = 4096;
    constexpr size_t KILOBYTES = size_t{CELLS} * CELLS * sizeof(float) / 1024;
    ASSERT_NO_FATAL_FAILURE(CWalkFixture::Start());
    ASSERT_TRUE(m_Host.NewLevel(CELLS, {WIDTH, 90.0F, WIDTH}));
    m_Host.GetEngine().GetCWorld().GetCTerrain()->GetNormals({0, 0, 1, 1});
    std::ifstream maps("/proc/self/smaps");
    int nShared = 0;
    int nKept = 0;
    size_t nSize = 0;
    for (std::string strLine; std::getline(maps, strLine);)
    {
        if (strLine.starts_with("Size:"))
        {
            nSize = std::stoul(strLine.substr(sizeof("Size:")));
        }
        if (strLine.starts_with("VmFlags:") && nSize >= KILOBYTES && nSize < 2 * KILOBYTES)
        {
            const bool bKept = strLine.find(" dc") != std::string::npos;
            const bool bHuge = strLine.find(" hg") != std::string::npos;
            EXPECT_NE(bKept, bHuge) << strLine;
            nKept += bKept ? 1 : 0;
            nShared += bHuge ? 1 : 0;
        }
    }
    EXPECT_EQ(nShared, 1) << "the heights";
    EXPECT_EQ(nKept, 1) << "the normals";
}
