// What replaces the whole terrain: each command is a step of the history, and the level's files are
// known for what they hold.

#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/LevelExchange.h"
#include "editor/core/SLevelText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/World.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CNumbers.h"
#include "tests/support/CTempFolder.h"

#include <sys/resource.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace
{

// Answers every report of progress with the wish to stop.
class CImpatientFace : public CHeadlessFace
{
public:
    bool OnProgress(const char*, float) override
    {
        bAsked = bAsked || IsProgressCancellable();
        return bPatient;
    }

    bool bPatient = true;
    bool bAsked = false; // whether it could be cancelled at any time
};

// No file can become larger than this while one lives.
class CSmallDisk
{
public:
    explicit CSmallDisk(rlim_t nBytes)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_Before);
        rlimit tight = m_Before;
        tight.rlim_cur = nBytes;
        ::setrlimit(RLIMIT_FSIZE, &tight);
    }

    ~CSmallDisk() { ::setrlimit(RLIMIT_FSIZE, &m_Before); }

private:
    rlimit m_Before = {};
};

class CLevelHeightsTest : public testing::Test
{
protected:
    CLevelHeightsTest() { m_Host.GetLevelHeights().SetScratchBase(m_Folder.Path("scratch")); }

    CTerrain& GetTerrain() { return *m_Host.GetEngine().GetCWorld().GetCTerrain(); }

    // Sizes and heights as the file would have them.
    std::string GetBytes()
    {
        const std::string strFile = m_Folder.Path("now.height");
        const CTerrain& terrain = GetTerrain();
        EXPECT_TRUE(WriteHeightFile(strFile.c_str(),
                                    terrain.GetHeightData(),
                                    terrain.GetVerticesX(),
                                    terrain.GetVerticesZ(),
                                    terrain.GetSizeVector()));
        return ReadBytes(strFile);
    }

    std::string WriteRandom(const char* pszName, uint32_t uX, uint32_t uZ, const SVec3& size)
    {
        std::vector<float> heights(size_t{uX} * uZ);
        for (float& fHeight : heights)
        {
            fHeight = m_Numbers.Float(0.0F, 50.0F);
        }
        const std::string strFile = m_Folder.Path(pszName);
        EXPECT_TRUE(WriteHeightFile(strFile.c_str(), heights.data(), uX, uZ, size));
        return strFile;
    }

    // The steps of a plug-in. False when the file could not be written.
    bool ChangeResolution(uint32_t uVertices)
    {
        World& world = *m_Host.GetEngine().GetWorld();
        const std::string strName = world.GetEnvironment()->GetHeightMapName();
        std::string strFile;
        m_Host.GetEnvironmentFile(
            ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, &strName, &strFile);
        if (fs::exists(strFile.c_str()))
        {
            fs::rename(strFile.c_str(), (strFile + ".bak").c_str());
        }
        const std::vector<float> heights(size_t{uVertices} * uVertices, 7.0F);
        if (!world.GetTerrain()->SaveHeightMap(
                strFile.c_str(), heights.data(), uVertices, uVertices))
        {
            return false;
        }
        m_Host.GetEnvironmentFile(ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_RELOAD, nullptr, nullptr);
        m_Host.RefreshAfterReload();
        world.ReloadTerrain();
        return true;
    }

    bool Import(const std::string& strFile, EImportAs eAs)
    {
        SImportOptions options;
        options.eFit = EFit::Keep;
        std::vector<std::string> lines;
        return ImportLevel(m_Host, m_Document, strFile.c_str(), options, eAs, lines);
    }

    CTempFolder m_Folder;
    CNumbers m_Numbers{5};
    CImpatientFace m_Face;
    CEditorHost m_Host{m_Face};
    CLevelDocument m_Document{m_Host};
};

constexpr SVec3 SIZE = {320.0F, 50.0F, 320.0F};

} // namespace

TEST_F(CLevelHeightsTest, TheDocumentKnowsWhatItsFilesHold)
{
    const std::string strLevel = m_Folder.Path("l.level");
    const std::string strHeights = m_Folder.Path("l.height");
    ASSERT_TRUE(m_Document.New(32, SIZE, 3.0F));
    ASSERT_TRUE(m_Document.SaveAs(strLevel.c_str()));
    const std::string strFlat = GetBytes();
    ASSERT_TRUE(ChangeResolution(17));
    EXPECT_TRUE(m_Document.IsModified()) << "the level file names other cells";
    EXPECT_EQ(m_Host.GetUndoStack().GetText(0), "1 Resolution 17 x 17");
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 1U);
    const std::string strCoarse = GetBytes();
    ASSERT_TRUE(m_Host.Undo());
    EXPECT_EQ(GetBytes(), strFlat);
    EXPECT_TRUE(m_Document.IsModified()) << "the height map is not that of then any longer";
    EXPECT_EQ(ReadBytes(strHeights), strCoarse);
    EXPECT_TRUE(m_Document.FindReplaced().empty());
    ASSERT_TRUE(m_Document.Save());
    EXPECT_EQ(ReadBytes(strHeights), strFlat);
    EXPECT_FALSE(m_Document.IsModified());
    ASSERT_TRUE(m_Host.Redo());
    EXPECT_TRUE(m_Document.IsModified());
    EXPECT_EQ(GetBytes(), strCoarse);
    ASSERT_TRUE(m_Host.Undo());
    EXPECT_FALSE(m_Document.IsModified());

    // Heights that were written, but did not take their place beside the text, are not saved.
    std::filesystem::permissions(strLevel, std::filesystem::perms::owner_read);
    {
        const CLogCatcher log;
        m_Host.Redo();
        EXPECT_FALSE(m_Document.Save());
    }
    std::filesystem::permissions(strLevel, std::filesystem::perms::owner_all);
    EXPECT_TRUE(m_Document.IsModified());
    m_Host.Undo();
    EXPECT_FALSE(m_Document.IsModified());
    EXPECT_TRUE(m_Document.FindReplaced().empty()) << "nobody else has written them";
}

TEST_F(CLevelHeightsTest, WithoutALevelFileWhatThePluginWroteIsAllThatThereIsToWrite)
{
    const std::string strHeights = m_Folder.Path("l.height");
    ASSERT_TRUE(m_Document.New(32, SIZE, 3.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    const std::string strFlat = GetBytes();
    WriteBytes(strHeights + ".bak", "older");
    ASSERT_TRUE(m_Document.Open(strHeights.c_str()));
    ASSERT_TRUE(ChangeResolution(17));
    const std::string strCoarse = GetBytes();
    EXPECT_FALSE(m_Document.IsModified());
    EXPECT_EQ(ReadBytes(strHeights + ".bak2"), strFlat) << "saved, and an older backup is there";
    ASSERT_TRUE(m_Host.Undo());
    EXPECT_TRUE(m_Document.IsModified());
    ASSERT_TRUE(m_Host.Redo());
    EXPECT_FALSE(m_Document.IsModified());

    // The file is written, but cannot be read again: the terrain stays, and is not what is saved.
    Terrain* pTerrain = &GetTerrain();
    std::string strFile;
    m_Host.GetEnvironmentFile(
        ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_FULL_PATH, &strHeights, &strFile);
    const std::vector<float> heights(size_t{33} * 33);
    ASSERT_TRUE(pTerrain->SaveHeightMap(strFile.c_str(), heights.data(), 33, 33));
    std::filesystem::resize_file(strHeights, 100);
    CLogCatcher log;
    m_Host.GetEnvironmentFile(ENVIRONMENT_CLASS, 0x4000, ENVIRONMENT_RELOAD, nullptr, nullptr);
    m_Host.RefreshAfterReload();
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_EQ(m_Host.GetEngine().GetWorld()->GetTerrain(), pTerrain);
    EXPECT_EQ(GetBytes(), strCoarse);
    EXPECT_TRUE(m_Document.IsModified());
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 1U);
}

TEST_F(CLevelHeightsTest, ALevelWithoutAFileHasItsHeightsWhereNobodyTakesThemForALevel)
{
    const std::string strScratch = m_Folder.Path("scratch");
    ASSERT_TRUE(m_Document.New(32, SIZE));
    for (const uint32_t uVertices : {17U, 65U, 33U})
    {
        ASSERT_TRUE(ChangeResolution(uVertices));
        EXPECT_EQ(GetTerrain().GetVerticesX(), uVertices);
        EXPECT_TRUE(m_Document.IsModified());
    }
    EXPECT_EQ(m_Document.GetTitle(), "Untitled");
    EXPECT_EQ(m_Document.GetPath() + m_Document.GetHeightPath(), "");
    EXPECT_EQ(m_Document.GetText().strHeightMap, "");
    EXPECT_FALSE(m_Document.Save());
    ASSERT_TRUE(m_Host.GetUndoStack().GoTo(0));
    EXPECT_FALSE(m_Document.IsModified()) << "a new level as it was made";
    const auto countFiles = [&]
    {
        const auto files = std::filesystem::recursive_directory_iterator(strScratch);
        return std::count_if(begin(files),
                             end(files),
                             [](const auto& entry) { return entry.path().extension() != ""; });
    };
    EXPECT_GT(countFiles(), 0);
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    EXPECT_EQ(countFiles(), 0) << "it has a file of its own";
    ASSERT_TRUE(ChangeResolution(17));
    EXPECT_EQ(std::filesystem::file_size(m_Folder.Path("l.height")), 36U + 4 * 17 * 17);
}

TEST_F(CLevelHeightsTest, AWriteThatFailsLeavesTheLevelAsItWas)
{
    ASSERT_TRUE(m_Document.New(32, SIZE, 3.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    const std::string strHeights = m_Folder.Path("l.height");
    const std::string strBefore = ReadBytes(strHeights);
    {
        const CSmallDisk disk(1000);
        const CLogCatcher log;
        EXPECT_FALSE(ChangeResolution(65));
    }
    EXPECT_EQ(ReadBytes(strHeights), strBefore);
    EXPECT_EQ(ReadBytes(strHeights + ".bak"), strBefore);
    EXPECT_TRUE(m_Document.IsModified()) << "a disk that failed is not trusted";
    EXPECT_TRUE(m_Document.FindReplaced().empty());
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 0U);

    // Nobody is asked whether to stop between the two halves of it.
    m_Face.bPatient = false;
    m_Face.bAsked = false;
    EXPECT_TRUE(ChangeResolution(65));
    EXPECT_FALSE(m_Face.bAsked);
    EXPECT_EQ(GetTerrain().GetVerticesX(), 65U);
    const CLogCatcher log;
    EXPECT_FALSE(m_Document.New(32, SIZE, 3.0F)) << "other work can be stopped";
    EXPECT_TRUE(m_Face.bAsked);
}

TEST_F(CLevelHeightsTest, WhatWasSavedAndCannotBeKeptIsNotReplaced)
{
    const std::string strName(244, 'n'); // ".height.bak" fits behind it, ".height.bak2" does not
    const std::string strHeights = m_Folder.Path((strName + ".height").c_str());
    ASSERT_TRUE(m_Document.New(32, SIZE, 3.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path((strName + ".level").c_str()).c_str()));
    WriteBytes(strHeights + ".bak", "of an older change");
    const std::string strBefore = ReadBytes(strHeights);
    CLogCatcher log;
    EXPECT_FALSE(ChangeResolution(65));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_EQ(ReadBytes(strHeights), strBefore);
    EXPECT_EQ(ReadBytes(strHeights + ".bak"), "of an older change");
}

TEST_F(CLevelHeightsTest, AReadOnlyHeightMapBecomesTheBackupOfTheNewOne)
{
    const std::string strHeights = m_Folder.Path("l.height");
    ASSERT_TRUE(m_Document.New(32, SIZE, 3.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    const std::string strBefore = ReadBytes(strHeights);
    std::filesystem::permissions(strHeights, std::filesystem::perms::owner_read);
    EXPECT_TRUE(ChangeResolution(17));
    EXPECT_EQ(ReadBytes(strHeights + ".bak"), strBefore);
}

TEST_F(CLevelHeightsTest, AnImportIsAStepOfTheLevelAlsoWhenItIsNotSquare)
{
    const std::string strWide = WriteRandom("wide.height", 21, 9, {210.0F, 80.0F, 90.0F});
    const std::string strTall = WriteRandom("tall.height", 5, 70, {50.0F, 60.0F, 700.0F});
    for (const rlim_t nDisk : {RLIM_INFINITY, rlim_t{0}}) // heights of before in a file, in memory
    {
        SCOPED_TRACE(nDisk);
        ASSERT_TRUE(m_Document.Open(WriteRandom("own.height", 33, 33, SIZE).c_str()));
        const std::string states[] = {GetBytes(), ReadBytes(strWide), ReadBytes(strTall)};
        for (const std::string& strFile : {strWide, strTall})
        {
            const CSmallDisk disk(nDisk);
            ASSERT_TRUE(Import(strFile, EImportAs::ThisLevel));
        }
        EXPECT_EQ(m_Document.GetTitle(), "own.height");
        EXPECT_EQ(m_Host.GetUndoStack().GetText(1), "2 Import tall.height");
        EXPECT_EQ(GetBytes(), states[2]);
        for (const size_t nPosition : {1U, 0U, 1U, 2U, 0U})
        {
            {
                const CSmallDisk disk(nDisk);
                ASSERT_TRUE(m_Host.GetUndoStack().GoTo(nPosition));
            }
            EXPECT_EQ(GetBytes(), states[nPosition]);
            EXPECT_EQ(m_Document.IsModified(), nPosition != 0);
        }
    }
    // A step while a button is held would change the ground under the stroke.
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    const CLogCatcher log;
    EXPECT_FALSE(m_Host.Redo());
    m_Host.GetInput().SendButtonUp(1, 0, {});
    EXPECT_TRUE(m_Host.Redo());

    ASSERT_TRUE(Import(strTall, EImportAs::NewLevel));
    EXPECT_EQ(m_Document.GetTitle(), "Untitled");
    EXPECT_TRUE(m_Document.IsModified());
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 0U);
}

TEST_F(CLevelHeightsTest, ThePlaceOnTheMapGoesWithTheGround)
{
    // A GeoTIFF whose words need care in a text: 3 x 3 samples, 10 apart.
    SExportOptions options;
    options.geo.bKnown = true;
    options.geo.first = {376328.655454264, 3807902.827628376};
    options.geo.lastX = {options.geo.first.dX + 20, options.geo.first.dY};
    options.geo.lastZ = {options.geo.first.dX, options.geo.first.dY - 20};
    options.geo.keys = {1, 1, 0, 2, 1025, 0, 1, 2, 3072, 0, 1, 32611};
    options.geo.numbers = {6378137.0, 298.257223563};
    options.geo.strNames = "Zone \"11\" \\ north|";
    options.geo.noData = -1.5;
    const std::vector<float> heights(9, 4.0F);
    const std::string strTiff = m_Folder.Path("a.tif");
    SExportPlan plan;
    ASSERT_TRUE(PlanExport(strTiff.c_str(), {heights.data(), 3, 3}, SIZE, options, plan));
    ASSERT_TRUE(ExportHeights(strTiff.c_str(), {heights.data(), 3, 3}, SIZE, plan));
    const auto expectPlace = [&](const char* pszWhen)
    {
        SCOPED_TRACE(pszWhen);
        const SGeoTags geo = GetTerrain().GetGeoTags();
        ASSERT_TRUE(geo.bKnown);
        EXPECT_EQ(geo.first.dX, options.geo.first.dX);
        EXPECT_EQ(geo.first.dY, options.geo.first.dY);
        EXPECT_NEAR(geo.GetLast().dX, options.geo.first.dX + 20, 1e-6);
        EXPECT_EQ(geo.keys, options.geo.keys);
        EXPECT_EQ(geo.numbers, options.geo.numbers);
        EXPECT_EQ(geo.strNames, options.geo.strNames);
        EXPECT_EQ(geo.noData, options.geo.noData);
    };
    ASSERT_TRUE(Import(strTiff, EImportAs::NewLevel));
    expectPlace("imported");
    const std::string strLevel = m_Folder.Path("l.level");
    ASSERT_TRUE(m_Document.SaveAs(strLevel.c_str()));
    ASSERT_TRUE(m_Document.New(32, SIZE));
    EXPECT_FALSE(GetTerrain().GetGeoTags().bKnown);
    ASSERT_TRUE(m_Document.Open(strLevel.c_str()));
    expectPlace("opened");
    ASSERT_TRUE(ChangeResolution(5));
    expectPlace("refined");

    // Other ground lies nowhere, and a save says so.
    ASSERT_TRUE(Import(WriteRandom("other.height", 5, 9, SIZE), EImportAs::ThisLevel));
    EXPECT_FALSE(GetTerrain().GetGeoTags().bKnown);
    ASSERT_TRUE(m_Document.Save());
    EXPECT_NE(ReadBytes(strLevel).find("map_place( \"\", \"\", \"\" )"), std::string::npos);
    ASSERT_TRUE(m_Host.GetUndoStack().GoTo(0));
    expectPlace("undone");
    ASSERT_TRUE(m_Document.Open(strLevel.c_str()));
    EXPECT_FALSE(GetTerrain().GetGeoTags().bKnown);
}
