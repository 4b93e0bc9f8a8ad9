// Each allocation of a stroke, an undo, a save, an opening and an import finds no memory in turn,
// in the real plug-in and the real host. Nothing ends, nothing is half done, and it works the next
// time.

#include "editor/core/CEditorHost.h"
#include "editor/core/CHeadlessFace.h"
#include "editor/core/CLevelDocument.h"
#include "editor/core/CPluginLoader.h"
#include "editor/core/LevelExchange.h"
#include "editor/core/SProtectAct.h"
#include "editor/script/CRecorder.h"
#include "editor/script/CScriptCursor.h"
#include "editor/script/ProtectionText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/BrushBlock.h"
#include "host/FileSystem.h"
#include "host/IPluginScript.h"
#include "parser/TCParseFile.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>

namespace
{

using Heights = std::vector<float>;

constexpr SVec3 SIZE = {320.0F, 100.0F, 320.0F};

class CFace : public CHeadlessFace
{
public:
    bool PickTerrain(ViewId, ViewPoint, SVec3& hit) override { return cursor.Pick(pWorld, hit); }

    CScriptCursor cursor;
    World* pWorld = nullptr;
};

class COutOfMemory : public testing::Test
{
protected:
    COutOfMemory()
    {
        fs::set_user_root(m_Folder.GetFolder().c_str());
        fs::set_data_root(TELLUR_SOURCE_DIR);
        m_Face.pWorld = m_Host.GetEngine().GetWorld();
        EXPECT_TRUE(m_Loader.Load(TELLUR_BIN_DIR "/libtellur.so"));
        m_Script = dynamic_cast<IPluginScript*>(m_Loader.GetPlugin());
    }

    ~COutOfMemory() override
    {
        m_Loader.Unload();
        fs::set_user_root(nullptr);
        fs::set_data_root(nullptr);
    }

    const CTerrain* GetTerrain() { return m_Host.GetEngine().GetCWorld().GetCTerrain(); }

    Heights GetHeights()
    {
        const CTerrain* pTerrain = GetTerrain();
        return {pTerrain->GetHeightData(),
                pTerrain->GetHeightData() +
                    size_t{pTerrain->GetVerticesX()} * pTerrain->GetVerticesZ()};
    }

    size_t GetSteps() { return m_Host.GetUndoStack().GetCount(); }

    // A level that is saved.
    void Save() { ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str())); }

    // A level that is not flat, and a brush that has not worked yet.
    void Prepare(const std::string& strFunction)
    {
        WriteBytes(
            m_Folder.Path("state.txt"),
            "!brush()\n!mode( s )\n" + GetBrushDeclarations(EBrushBlock::Script) +
                "mode( \"none\" )\nbrush()\n{\n bitmap() { path( \"data/brushes/cone.png\" ) }\n"
                " function( \"" +
                strFunction +
                "\" ) { attrib( \"m_Height\", \"9\" ) }\n extent( 150.0 )\n}\n"
                "mode( \"terraforming\" )\n");
        ASSERT_TRUE(m_Document.New(32, SIZE, 40.0F));
        const SBlockEntry entry = {16.0F, 77.0F, 16.0F};
        m_Host.GetEngine().GetWorld()->GetTerrain()->SetBlockHeights(0, 0, &entry, 1);
        const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile("state.txt"));
        std::string strWhy;
        for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
        {
            ASSERT_EQ(m_Script->Play(pKey, strWhy), EScriptResult::Done) << strWhy;
        }
    }

    void Stroke()
    {
        m_Face.cursor.PointAtPosition(100.0F, 100.0F);
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        for (const float fX : {120.0F, 140.0F, 200.0F})
        {
            m_Face.cursor.PointAtPosition(fX, 150.0F);
            m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {}, {0, -3});
            m_Host.RenderFrame();
        }
        m_Host.GetInput().SendButtonUp(1, 0, {});
    }

    // Calls work, each time after prepare, with its first allocation failing, then its second one,
    // until none of them is left. check sees each of these runs.
    void FailEach(const std::function<void()>& prepare,
                  const std::function<void()>& work,
                  const std::function<void()>& check)
    {
        size_t nFailed = 0;
        for (bool bFailed = true; bFailed && !HasFailure(); nFailed += bFailed ? 1 : 0)
        {
            SCOPED_TRACE(testing::Message() << "allocation " << nFailed + 1);
            prepare();
            CLogCatcher log;
            FailAllocation(nFailed + 1);
            work();
            bFailed = HasAllocationFailed();
            FailAllocation(0);
            m_Lines = log.TakeLines();
            check();
        }
        EXPECT_GT(nFailed, 2U) << "the work needs memory";
    }

    CTempFolder m_Folder;
    CFace m_Face;
    CEditorHost m_Host{m_Face};
    CPluginLoader m_Loader{m_Host};
    CLevelDocument m_Document{m_Host};
    IPluginScript* m_Script = nullptr;
    std::vector<std::string> m_Lines; // of the log in the last run
};

} // namespace

TEST_F(COutOfMemory, AStrokeIsWholeOrNotThereAndCanBeRepeatedAndSaved)
{
    for (const char* pszFunction : {"RelativeHeightFunction",
                                    "BlurFunction",
                                    "PosterizeFunction",
                                    "PointHeightFunction",
                                    "RampFunction"})
    {
        SCOPED_TRACE(pszFunction);
        Prepare(pszFunction);
        const Heights before = GetHeights();
        Stroke();
        const Heights after = GetHeights();
        ASSERT_NE(after, before);
        int nLost = 0;
        FailEach([&] { Prepare(pszFunction); },
                 [&] { Stroke(); },
                 [&]
                 {
                     const bool bThere = GetSteps() == 1;
                     nLost += bThere ? 0 : 1;
                     ASSERT_EQ(GetHeights(), bThere ? after : before);
                     ASSERT_TRUE(m_Document.IsModified() || !bThere);
                     ASSERT_FALSE(m_Host.GetInput().IsDragging());
                     ASSERT_TRUE(bThere || !m_Lines.empty());
                     if (nLost == 1)
                     {
                         Save();
                     }
                     m_Host.GetInput().SendMouseMove(1, 0, {}, {}, {}); // without the button
                     Stroke();
                     ASSERT_TRUE(bThere || GetSteps() == 1);
                     m_Host.GoToStep(0);
                     ASSERT_EQ(GetHeights(), before);
                 });
        EXPECT_GT(nLost, 2);
    }
}

TEST_F(COutOfMemory, AStepOfSeveralDragsCanAlwaysBeTakenBack)
{
    constexpr char FUNCTION[] = "RelativeHeightFunction";
    Prepare(FUNCTION);
    const Heights before = GetHeights();
    FailEach([&] { Prepare(FUNCTION); },
             [&]
             {
                 m_Host.GetHistory().BeginStep(1);
                 Stroke();
                 Stroke();
                 m_Host.GetHistory().EndStep();
             },
             [&]
             {
                 ASSERT_FALSE(m_Host.GetHistory().IsStepOpen());
                 ASSERT_LE(GetSteps(), 1U);
                 m_Host.Undo();
                 ASSERT_EQ(GetHeights(), before);
             });
}

// With another id for all else, or an undo would meet a protection that its stroke has not seen.
TEST_F(COutOfMemory, AStepOfTheProtectionIsWholeOrNotThere)
{
    CHostProtection& protection = m_Host.GetProtection();
    const auto getSquares = [this]
    {
        return GetSquareCalls({}, GetTerrain()->GetProtection(), "s");
    };
    const std::pair<SProtectAct, SProtectAct> cases[] = {
        {{EProtect::Disc, 90.0F, 90.0F, 60.0F}, {EProtect::Disc, 200.0F, 90.0F, 60.0F}},
        {{EProtect::Disc, 90.0F, 90.0F, 60.0F}, {EProtect::Clear}},
        {{EProtect::Clear}, {EProtect::Invert}}};
    for (const auto& [first, second] : cases)
    {
        std::string strBefore;
        uint64_t uBefore = 0;
        size_t nSteps = 0;
        bool bDone = false;
        FailEach(
            [&]
            {
                Prepare("BlurFunction");
                protection.Do(first);
                strBefore = getSquares();
                uBefore = GetTerrain()->GetProtection().GetId();
                nSteps = GetSteps();
            },
            [&] { bDone = protection.Do(second); },
            [&]
            {
                ASSERT_FALSE(protection.IsOpen());
                ASSERT_EQ(getSquares() != strBefore, bDone);
                ASSERT_EQ(GetTerrain()->GetProtection().GetId() != uBefore, bDone);
                ASSERT_EQ(GetSteps(), nSteps + (bDone ? 1U : 0U));
                ASSERT_EQ(m_Lines.size(), bDone ? 0U : 1U);
                m_Host.GoToStep(nSteps);
                ASSERT_EQ(getSquares(), strBefore);
            });
    }
}

TEST_F(COutOfMemory, GroundIsReshapedAsAWholeOrNotAtAll)
{
    Prepare("BlurFunction");
    const Heights before = GetHeights();
    bool bDone = false;
    FailEach([&] { Prepare("BlurFunction"); },
             [&] { bDone = m_Host.GetGround().Do({.eKind = EGround::Extend, .iEast = 3}); },
             [&]
             {
                 ASSERT_EQ(GetTerrain()->GetVerticesX(), bDone ? 36U : 33U);
                 ASSERT_EQ(GetSteps(), bDone ? 1U : 0U);
                 ASSERT_TRUE(bDone || !m_Lines.empty());
                 m_Host.Undo();
                 ASSERT_EQ(GetHeights(), before);
             });
}

TEST_F(COutOfMemory, ARecordingThatMissesSomethingEndsAndTheStrokeGoesOn)
{
    CRecorder recorder(m_Host, m_Loader.GetPlugin());
    int nEnded = 0;
    FailEach(
        [&]
        {
            Prepare("RelativeHeightFunction");
            ASSERT_TRUE(recorder.Start(m_Folder.Path("r.tellur")));
        },
        [&] { Stroke(); },
        [&]
        {
            const bool bEnded = !recorder.IsRecording();
            nEnded += bEnded ? 1 : 0;
            ASSERT_TRUE(!bEnded || GetSteps() == 1) << "the plug-in lacked nothing";
            ASSERT_EQ(recorder.Stop(), !bEnded);
        });
    EXPECT_GT(nEnded, 2);
}

TEST_F(COutOfMemory, UndoAndRedoAreWholeOrNotThere)
{
    Prepare("RelativeHeightFunction");
    const Heights before = GetHeights();
    Stroke();
    const Heights after = GetHeights();
    for (size_t n = 1; n <= 3; ++n)
    {
        FailAllocation(n);
        m_Host.Undo();
        FailAllocation(0);
        ASSERT_EQ(GetHeights(), GetSteps() == 0 ? before : after);
        FailAllocation(n);
        m_Host.Redo();
        FailAllocation(0);
        ASSERT_EQ(GetHeights(), GetSteps() == 0 ? before : after);
    }
}

TEST_F(COutOfMemory, ASaveKeepsTheOldFilesOrWritesTheNewOnes)
{
    Prepare("RelativeHeightFunction");
    Save();
    const std::string strHeights = m_Folder.Path("l.height");
    std::string strBefore;
    std::string strAfter;
    Heights heights;
    FailEach(
        [&]
        {
            strBefore = ReadBytes(strHeights);
            Stroke();
            heights = GetHeights();
        },
        [&] { m_Host.GetInput().Guard("Test", [&] { m_Document.Save(); }); },
        [&]
        {
            ASSERT_EQ(GetHeights(), heights);
            const std::string strNow = ReadBytes(strHeights);
            ASSERT_TRUE(!m_Document.IsModified() || !m_Lines.empty());
            if (m_Document.IsModified())
            {
                ASSERT_TRUE(m_Document.Save());
            }
            strAfter = ReadBytes(strHeights);
            ASSERT_TRUE(strNow == strAfter || strNow == strBefore);
            ASSERT_NE(strAfter, strBefore);
            std::string strStray;
            for (const auto& entry : std::filesystem::directory_iterator(m_Folder.GetFolder()))
            {
                const std::string strName = entry.path().filename().string();
                strStray +=
                    strName == "state.txt" || strName.starts_with("l.") ? "" : strName + " ";
            }
            ASSERT_EQ(strStray, "");
        });
    ASSERT_TRUE(m_Document.Open(m_Folder.Path("l.level").c_str()));
    EXPECT_EQ(GetHeights(), heights);
}

TEST_F(COutOfMemory, WhatReplacesTheTerrainReplacesItWholeOrNot)
{
    Prepare("RelativeHeightFunction");
    Save();
    SExportPlan plan;
    const std::string strPng = m_Folder.Path("in.png");
    ASSERT_TRUE(PlanLevelExport(m_Host, strPng.c_str(), {}, plan));
    ASSERT_TRUE(ExportLevel(m_Host, strPng.c_str(), plan));
    SImportOptions options;
    options.fMaxHeight = 100.0F;
    options.fWidth = 320.0F;
    options.fDepth = 320.0F;
    std::vector<std::string> lines;
    const std::function<void()> works[] = {
        [&]
        { ImportLevel(m_Host, m_Document, strPng.c_str(), options, EImportAs::NewLevel, lines); },
        [&]
        { ImportLevel(m_Host, m_Document, strPng.c_str(), options, EImportAs::ThisLevel, lines); },
        [&] { m_Document.Open(m_Folder.Path("l.level").c_str()); },
    };
    for (const auto& work : works)
    {
        Heights before;
        work();
        const Heights result = GetHeights();
        FailEach(
            [&]
            {
                Prepare("RelativeHeightFunction");
                Stroke();
                before = GetHeights();
            },
            [&] { m_Host.GetInput().Guard("Test", [&] { work(); }); },
            [&]
            {
                const Heights now = GetHeights();
                ASSERT_TRUE(now == result || (now == before && !m_Lines.empty()));
                ASSERT_TRUE(now != before || GetSteps() == 1);
                work();
                ASSERT_EQ(GetHeights(), result);
                Stroke();
                ASSERT_NE(GetHeights(), result);
            });
    }
}
