// The plug-in's own state by script keyword.

#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/modification/CTerrainModification.h"
#include "tests/tellur/plugin/PluginFixture.h"

namespace
{

class CPluginScriptTest : public CPluginFixture
{
protected:
    CPluginScriptTest() { Initialize(); }

    // Plays the first keyword of the text.
    EScriptResult Play(const std::string& strText)
    {
        m_Why.clear();
        return m_Plugin->Play(Parse(strText).get(), m_Why);
    }

    // Makes a brush that raises by this height current, and enters the terraforming mode.
    void Start(const char* pszHeight)
    {
        Play("brush()\n{\n bitmap() { path( \"tests/scripts/images/white.png\" ) }\n"
             " function( \"RelativeHeightFunction\" ) { attrib( \"m_Height\", \"" +
             std::string(pszHeight) + "\" ) }\n extent( 20.0 )\n}\n");
        Play("mode( \"terraforming\" )");
    }

    std::string WriteState()
    {
        return Write([this](fs::ifile& file) { EXPECT_TRUE(m_Plugin->WriteState(file)); });
    }

    std::string m_Why;
};

} // namespace

TEST_F(CPluginScriptTest, AFaultyKeywordLeavesBrushAndModeAsTheyAre)
{
    Start("1");
    const CTellurBrush* pBrush = m_Plugin->GetCurrentBrush();
    TakeCalls();
    m_Log.Clear();
    EXPECT_EQ(Play("brush()\n{\n function( \"NoSuchFunction\" )\n}"), EScriptResult::Failed);
    EXPECT_EQ(m_Why, "the brush block cannot be used, the log says why");
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    for (const char* pszPath : {"mask( \"a\\\"b.png\" )", "bitmap() { path( \"a\\\"b.png\" ) }"})
    {
        EXPECT_EQ(Play(std::string("brush() { ") + pszPath + " }"), EScriptResult::Failed);
        EXPECT_EQ(m_Why, "a path of a brush cannot have a quotation mark");
    }
    EXPECT_EQ(Play("mode( \"painting\" )"), EScriptResult::Failed);
    EXPECT_EQ(m_Why, "there is no mode \"painting\"");
    EXPECT_EQ(Play("!press( f, f )\npress( 1.0, 2.0 )"), EScriptResult::Unknown);
    EXPECT_EQ(Play("mode( \"terraforming\" )"), EScriptResult::Done);
    EXPECT_EQ(TakeCalls(), Lines{}) << "a current mode is left as it is";
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), pBrush);
}

TEST_F(CPluginScriptTest, TheWrittenStatePlaysBackToTheSameState)
{
    EXPECT_EQ(WriteState(), "mode( \"none\" )\nauto_normals( 0 )\n");
    WriteGrey("grey.png", 1, 1, {128});
    Play("brush()\n{\n bitmap() { path( \"tests/scripts/images/white.png\" ) }\n"
         " function( \"SetHeightFunction\" )\n { attrib( \"m_Height\", \"12.5\" ) }\n"
         " brush_name( \"Dune\" )\n fade_factor( 0.5 )\n mask( \"grey.png\" )\n"
         " mask_enabled( 1 )\n}");
    Play("mode( \"terraforming\" )");
    Play("auto_normals( 1 )");
    const std::string strState = WriteState();
    EXPECT_EQ(strState,
              "brush()\n{\n  brush_name( \"Dune\")\n  bitmap()\n  {\n"
              "    path( \"tests/scripts/images/white.png\" )\n  }\n"
              "  function( \"SetHeightFunction\" )\n  {\n"
              "    attrib( \"m_Mode\", \"mode_default\" )\n    attrib( \"m_Height\", \"12.5\" )\n"
              "    attrib( \"m_PickHeight\", \"0\" )\n  }\n"
              "  power_modifier( 1.00000 )\n  usage_density( 1.00000 )\n"
              "  fade_factor( 0.50000 )\n  hardness( 0.00000 )\n  extent( 3200.00000 )\n"
              "  vertical_distance( 0.00000 )\n  mask( \"grey.png\" )\n  mask_enabled( 1 )\n}\n\n"
              "mode( \"terraforming\" )\nauto_normals( 1 )\n");

    Play("mode( \"none\" )");
    Play("auto_normals( 0 )");
    ASSERT_EQ(m_Plugin->GetCurrentBrush(), nullptr);
    const auto pTree = Parse(strState);
    for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
    {
        if (pKey->block != nullptr || pKey->params != nullptr)
        {
            m_Plugin->Play(pKey, m_Why);
        }
    }
    EXPECT_EQ(WriteState(), strState);
}

TEST_F(CPluginScriptTest, AForeignModeAndABrushThatCannotBeSavedAreNotWritten)
{
    EnterSilentMode(9);
    EXPECT_EQ(WriteState(), "auto_normals( 0 )\n");
    Play("brush()\n{\n function( \"SetHeightFunction\" )\n}");
    fs::ifile file;
    ASSERT_TRUE(file.open("state.txt", fs::mode_write));
    EXPECT_FALSE(m_Plugin->WriteState(file));
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[CTellurBrush::Save] no bitmap"}));
}

TEST_F(CPluginScriptTest, ABrushSetDuringADragDoesNotTakeTheOldOneAway)
{
    m_Face.lastPick = {40.0F, 0.0F, 40.0F};
    Start("50");
    const auto move = [this]
    {
        m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    };
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    Start("70");
    Start("90");
    move();
    EXPECT_EQ(m_Host.At(4, 4), 50.0F) << "the brush the drag began with";
    m_Host.RenderFrame();
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 1U);

    Start("70"); // outside a drag the older ones go
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    move();
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_EQ(m_Host.At(4, 4), 120.0F);
}

TEST_F(CPluginScriptTest, ADragThatIsNeverReleasedEndsWithThePlugin)
{
    m_Face.lastPick = {40.0F, 0.0F, 40.0F};
    Start("50");
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    ASSERT_TRUE(GetTerraformingState().IsDragging());
    m_Host.DestroyPluginObjects();
    m_Plugin->OnHostNotify(NOTIFY_HOST_GOES, 0);
    TakeCalls();
    m_Plugin.reset();
    EXPECT_EQ(GetPluginContext(), nullptr);
    EXPECT_EQ(TakeCalls(), Lines{}) << "nobody of the host is asked any more";
}
