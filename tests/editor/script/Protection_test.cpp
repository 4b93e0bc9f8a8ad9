// What is protected stays as it is under every stroke of the real plug-in, and the history brings
// heights and protection back bit by bit, in whatever order.

#include "editor/core/CLevelDocument.h"
#include "editor/core/LevelRecovery.h"
#include "editor/core/SLevelText.h"
#include "editor/script/CScriptKeywords.h"
#include "editor/script/CScriptPlayer.h"
#include "engine/terrain/CTerrain.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"
#include "host/Image.h"
#include "tests/editor/script/WalkFixture.h"
#include "tests/engine/imaging/ImageSamples.h"
#include "tests/support/CLogCatcher.h"

#include <map>

namespace
{

constexpr uint32_t COLUMNS = 150; // over three squares, and fewer rows
constexpr uint32_t ROWS = 71;

struct SGround
{
    std::vector<float> heights;
    std::vector<bool> isProtected;

    bool operator==(const SGround&) const = default;
};

class CProtectionTest : public CWalkFixture
{
protected:
    CTerrain& GetTerrain() { return *m_Host.GetEngine().GetCWorld().GetCTerrain(); }

    // Rough ground that is not square, as the open level.
    void StartRough()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        SHeightField field;
        ASSERT_TRUE(field.Allocate(COLUMNS, ROWS));
        field.size = {WIDTH, 90.0F, WIDTH};
        for (size_t i = 0; i < field.GetCount(); ++i)
        {
            field.pHeights[i] = m_Numbers.Float(0.0F, 60.0F);
        }
        m_Host.TakeLevel(std::move(field));
    }

    SGround GetGround()
    {
        const CTerrain& terrain = GetTerrain();
        SGround ground;
        for (uint32_t z = 0; z < terrain.GetVerticesZ(); ++z)
        {
            for (uint32_t x = 0; x < terrain.GetVerticesX(); ++x)
            {
                ground.heights.push_back(
                    terrain.GetHeightData()[size_t{z} * terrain.GetVerticesX() + x]);
                ground.isProtected.push_back(terrain.GetProtection().IsProtected(x, z));
            }
        }
        return ground;
    }

    void WriteWhite() // a picture of one pixel
    {
        const uint8_t white = 255;
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(1, 1, EImageFormat::Indexed8, &white));
        ASSERT_TRUE(IL_SaveImage(m_Folder.Path("white.png").c_str(), pImage.get(), nullptr));
    }

    // A brush whose function looks at the vertex alone.
    void TakeVertexBrush(bool bRelative, bool bMask)
    {
        Play(std::string("brush()\n{\n bitmap() { path( \"data/brushes/cone.png\" ) }\n") +
             (bRelative ? "function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"7\" ) }"
                        : "function( \"SetHeightFunction\" ) { attrib( \"m_Height\", \"31\" ) }") +
             "extent( 90 )\n" + (bMask ? "mask( \"white.png\" )\n" : "") +
             "}\nmode( \"terraforming\" )\n");
        dynamic_cast<IPluginTools*>(m_Loader.GetPlugin())->EnableMask(bMask);
    }

    // A stroke that ends, under whatever keys.
    void Stroke()
    {
        Drag();
        m_Host.GetInput().EndDrag();
    }
};

} // namespace

TEST_F(CProtectionTest, StrokesLeaveItAloneAndTheHistoryBringsEveryBitBack)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    CUndoStack& stack = m_Host.GetUndoStack();
    std::map<size_t, SGround> states = {{0, GetGround()}};
    size_t nKept = 0; // protected vertices under strokes that changed something
    for (int i = 0; i < 160; ++i)
    {
        SCOPED_TRACE(i);
        const SGround before = GetGround();
        const size_t nBefore = stack.GetCount();
        switch (m_Numbers.Int(0, 4))
        {
        case 0:
            Protect();
            EXPECT_EQ(GetGround().heights, before.heights);
            break;
        case 1:
            stack.GoTo(static_cast<size_t>(
                m_Numbers.Int(0, static_cast<int>(nBefore + stack.GetRedoCount()))));
            ASSERT_TRUE(GetGround() == states[stack.GetCount()]);
            continue;
        default:
            TakeBrush(i % 6, m_Numbers.Float(0.1F, 0.5F));
            Stroke();
            const SGround after = GetGround();
            EXPECT_EQ(after.isProtected, before.isProtected);
            for (size_t n = 0; n < after.heights.size(); ++n)
            {
                ASSERT_TRUE(!before.isProtected[n] || after.heights[n] == before.heights[n]);
                nKept += before.isProtected[n] && stack.GetCount() > nBefore ? 1U : 0U;
            }
        }
        states[stack.GetCount()] = GetGround();
    }
    EXPECT_GT(nKept, size_t{COLUMNS} * ROWS);
    for (size_t n = stack.GetCount() + 1; n-- > 0;)
    {
        ASSERT_TRUE(stack.GoTo(n));
        ASSERT_TRUE(GetGround() == states[n]) << n;
    }
}

// A tool that looks at nothing but the vertex itself makes the same of those that are not protected
// as it would without any protection; in the pass, and in steps with a mask.
TEST_F(CProtectionTest, WhatIsNotProtectedBecomesWhatItWouldWithoutProtection)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    WriteWhite();
    for (int i = 0; i < 24; ++i)
    {
        SCOPED_TRACE(i);
        TakeVertexBrush(i % 2 == 0, i % 4 >= 2);
        Protect();
        const SGround before = GetGround();
        const CNumbers numbers = m_Numbers;
        const size_t nSteps = m_Host.GetUndoStack().GetCount();
        Stroke();
        const SGround guarded = GetGround();
        m_Host.GetUndoStack().GoTo(nSteps);
        m_Host.GetProtection().Do({EProtect::Clear});
        m_Numbers = numbers;
        TakeVertexBrush(i % 2 == 0, i % 4 >= 2); // the first stroke may have let it grow
        Stroke();
        const SGround free = GetGround();
        for (size_t n = 0; n < before.heights.size(); ++n)
        {
            ASSERT_EQ(guarded.heights[n],
                      before.isProtected[n] ? before.heights[n] : free.heights[n]);
        }
    }
}

TEST_F(CProtectionTest, AreasAreWhatTheirWordsSay)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    // 48 cells over 333 units: a step of 6.9375.
    PlayScript("level( 48, [48, 100, 48] )\n"
               "protect_disc( 10, 20, 2, 1 )\n"
               "expect_protected( 10, 20, 1 )\nexpect_protected( 12, 20, 1 )\n"
               "expect_protected( 13, 20, 0 )\nexpect_protected( 11, 21, 1 )\n"
               "expect_protected( 12, 21, 0 )\n"
               "protect_grow( 3 )\n"
               "expect_protected( 15, 20, 1 )\nexpect_protected( 16, 20, 0 )\n"
               "expect_protected( 14, 24, 0 )\nexpect_undo( 2 )\n"
               "protect_stroke()\nprotect_disc( 10, 20, 1, 0 )\nprotect_disc( 0, 0, 0, 1 )\n"
               "protect_end()\nexpect_undo( 3 )\n"
               "expect_protected( 10, 20, 0 )\nexpect_protected( 12, 20, 1 )\n"
               "expect_protected( 0, 0, 1 )\n"
               "protect_invert()\nexpect_protected( 0, 0, 0 )\nexpect_protected( 48, 48, 1 )\n"
               "protect_invert()\nundo()\nundo()\nundo()\n"
               "expect_protected( 10, 20, 1 )\nexpect_protected( 0, 0, 0 )\n"
               "protect_clear()\nexpect_protected( 10, 20, 0 )\n"
               // A step of 10 units on one of 1: 84 degrees, a hill whose sides alone are steep.
               "heights( 20, 20, \"412000004120000041200000\" )\n"
               "protect_slope( 70 )\n"
               "expect_protected( 21, 19, 1 )\nexpect_protected( 19, 20, 1 )\n"
               "expect_protected( 21, 20, 0 )\nexpect_protected( 30, 30, 0 )\n"
               "protect_slope( 90 )\nexpect_undo( 1 )\n"
               "protect_clear()\nprotect_height( 5, 20 )\n"
               "expect_protected( 21, 20, 1 )\nexpect_protected( 21, 19, 0 )\n"
               "protected( 0, 0, \"all\" )\nexpect_undo( 0 )\nexpect_protected( 48, 48, 1 )\n"
               "protect_clear()\nprotected( 0, 0, \"none\" )\n");
    // A stroke under the hand ends before the ground is protected that it has changed.
    TakeBrush(0, 0.2F);
    m_Face.cursor.PointAtPosition(20.0F, 20.0F);
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {0, 1}, {0, 0});
    PlayScript("protected( 0, 0, \"all\" )\nexpect_undo( 0 )\n");
    EXPECT_FALSE(m_Host.GetInput().IsDragging());
    // A tool says why nothing changes.
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {0, 1}, {0, 0});
    auto* pStrokes = dynamic_cast<IPluginStrokes*>(m_Loader.GetPlugin());
    EXPECT_EQ(pStrokes->TakePointOutcome().eKind, EPointOutcome::Protected);
    m_Host.GetInput().EndDrag();
}

TEST_F(CProtectionTest, APictureIsTakenByItsColoursAndARecoveryKeepsTheNameOfOneThatIsMissing)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    const std::string strPicture = m_Folder.Path("colours.png");
    const std::vector<uint8_t> ones(size_t{COLUMNS} * ROWS, 1);
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(COLUMNS, ROWS, EImageFormat::Indexed8, ones.data()));
    const CTestPalette palette({{0, 0, 0}, {255, 255, 255}});
    ASSERT_TRUE(IL_SaveImage(strPicture.c_str(), pImage.get(), &palette));
    PlayScript("protect( \"colours.png\" )\nexpect_protected( 70, 70, 1 )\n");

    CLevelDocument document(m_Host);
    const std::string strLevel = m_Folder.Path("l.level");
    ASSERT_TRUE(document.SaveAs(strLevel.c_str()));
    const SGround ground = GetGround();
    const std::string strProtection = m_Folder.Path("l.protection.png");
    std::filesystem::rename(strProtection, m_Folder.Path("away.png"));
    CLogCatcher log;
    ASSERT_TRUE(document.Open(strLevel.c_str()));
    const SLevelText text = document.GetText();
    ASSERT_TRUE(
        OpenRecoveredLevel(m_Host, document, text, document.GetHeightPath().c_str(), false));
    ASSERT_TRUE(document.Save());
    std::filesystem::rename(m_Folder.Path("away.png"), strProtection);
    ASSERT_TRUE(document.Open(strLevel.c_str()));
    EXPECT_TRUE(GetGround() == ground);
}

TEST_F(CProtectionTest, ALevelKeepsItInAPictureThatItNames)
{
    ASSERT_NO_FATAL_FAILURE(StartRough());
    WriteWhite();
    CLevelDocument document(m_Host);
    const std::string strLevel = m_Folder.Path("l.level");
    const std::string strPicture = m_Folder.Path("l.protection.png");
    ASSERT_TRUE(document.SaveAs(strLevel.c_str()));
    EXPECT_FALSE(fs::exists(strPicture.c_str()));
    PlayScript("protect_disc( 200, 200, 60, 1 )\n");
    const SGround ground = GetGround();
    EXPECT_TRUE(document.IsModified());
    m_Host.Undo();
    EXPECT_FALSE(document.IsModified());
    m_Host.Redo();
    ASSERT_TRUE(document.Save());
    ASSERT_TRUE(document.Open(strLevel.c_str()));
    EXPECT_TRUE(GetGround() == ground);
    EXPECT_FALSE(document.IsModified());
    const std::unique_ptr<IImage> pPicture(IL_LoadImage(strPicture.c_str()));
    ASSERT_NE(pPicture, nullptr);
    EXPECT_EQ(pPicture->GetWidth(), COLUMNS);
    EXPECT_EQ(pPicture->GetBitsPerPixel(), 8U);

    // Another size of the same ground, and the way back.
    SHeightField field;
    ASSERT_TRUE(field.Allocate(33, 33));
    field.size = {WIDTH, 90.0F, WIDTH};
    {
        CLogCatcher log;
        m_Host.GetLevelHeights().Replace(std::move(field), "Import");
        EXPECT_EQ(log.TakeLines().size(), 1U) << "other ground protects nothing, and that is said";
    }
    EXPECT_FALSE(m_Host.GetProtection().IsAny());
    m_Host.Undo();
    EXPECT_TRUE(GetGround() == ground);

    // Nothing protected: not named, and the picture goes. One that cannot be used costs a line.
    PlayScript("protect_clear()\n");
    const std::string strBytes = ReadBytes(strPicture);
    const std::string strNamed = ReadBytes(strLevel);
    ASSERT_TRUE(document.Save());
    EXPECT_FALSE(fs::exists(strPicture.c_str()));
    const std::string strSmall = ReadBytes(m_Folder.Path("white.png"));
    for (const std::string& strDamaged : {strBytes.substr(0, 60), strSmall})
    {
        WriteBytes(strLevel, strNamed);
        WriteBytes(strPicture, strDamaged);
        CLogCatcher log;
        ASSERT_TRUE(document.Open(strLevel.c_str()));
        const std::vector<std::string> lines = log.TakeLines();
        ASSERT_EQ(lines.size(), 2U); // why, and what it means
        EXPECT_TRUE(lines[1].ends_with(strPicture + " cannot be used: nothing is protected"));
        EXPECT_FALSE(m_Host.GetProtection().IsAny());
        ASSERT_TRUE(document.Save());
        EXPECT_EQ(ReadBytes(strPicture), strDamaged) << "it is not ours";
    }
}
