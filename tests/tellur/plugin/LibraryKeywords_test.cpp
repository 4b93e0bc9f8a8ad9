// The library of brushes, changed by keywords: exact places, exact ways back.

#include "tellur/modes/CTerraformingState.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <cmath>

namespace
{

class CLibraryKeywords : public CPluginFixture
{
protected:
    CLibraryKeywords()
    {
        WriteBytes(m_Folder.Path("PredefinedBrushes.ini"), Library({"Hill", "Dune", "Hill"}));
        Initialize();
        OpenPanel();
    }

    static std::string Library(const std::vector<std::string>& names)
    {
        std::string strText = "!brush()\n" + GetBrushDeclarations(EBrushBlock::Library);
        for (size_t i = 0; i < names.size(); ++i)
        {
            strText += "brush() { brush_name( \"" + names[i] +
                       "\" ) bitmap() { path( \"data/brushes/round.png\" ) } function( "
                       "\"SetHeightFunction\" ) extent( " +
                       std::to_string(i + 1) + "0.00001 ) }\n";
        }
        return strText;
    }

    // Plays each call of the text; the first refusal ends it, empty without one.
    std::string Play(const std::string& strText)
    {
        const auto pTree = Parse(m_Declarations + strText);
        std::string strWhy;
        for (const CTCPARSE_KEYWORD* pKey = pTree.get(); pKey != nullptr; pKey = pKey->next)
        {
            if (m_Plugin->Play(pKey, strWhy) == EScriptResult::Failed)
            {
                return strWhy;
            }
        }
        return "";
    }

    // "name extent" of each, by place.
    std::string List()
    {
        std::string strList;
        for (const SDefinedBrush& brush : m_Plugin->GetDefinedBrushes())
        {
            strList += brush.strName + ' ' + std::to_string(std::lround(brush.fExtent)) + ' ';
        }
        return strList;
    }

    std::string m_Declarations =
        "!brush_file( s )\n!take_brush( i )\n!rename_brush( i, s )\n!duplicate_brush( i, s )\n"
        "!remove_brush( i )\n!move_brush( i, i )\n!undo_brushes()\n!redo_brushes()\n";
};

} // namespace

TEST_F(CLibraryKeywords, ChangesGoByPlaceAndAllOfThemComeBack)
{
    const std::string strFirst = "Hill 10 Dune 20 Hill 30 ";
    const uint64_t uFirst = m_Plugin->GetBrushRevision();
    ASSERT_EQ(List(), strFirst);
    EXPECT_EQ(m_Plugin->GetDefinedBrushes()[1].strFunction, "Set height");
    EXPECT_EQ(m_Plugin->GetDefinedBrushes()[1].uSide, 128U);

    const char* const steps[][2] = {
        {"rename_brush( 2, \"A \\\"b\\\" \\\\\" )", "Hill 10 Dune 20 A \"b\" \\ 30 "},
        {"duplicate_brush( 0, \"\" )", "Hill 10 Hill000 10 Dune 20 A \"b\" \\ 30 "},
        {"duplicate_brush( 3, \"Last\" )", "Hill 10 Hill000 10 Dune 20 A \"b\" \\ 30 Last 30 "},
        {"remove_brush( 2 )", "Hill 10 Hill000 10 A \"b\" \\ 30 Last 30 "},
        {"move_brush( 3, 0 )", "Last 30 Hill 10 Hill000 10 A \"b\" \\ 30 "},
        {"move_brush( 0, 2 )", "Hill 10 Hill000 10 Last 30 A \"b\" \\ 30 "},
    };
    for (const auto& [pszCall, pszList] : steps)
    {
        const uint64_t uBefore = m_Plugin->GetBrushRevision();
        TakeCalls();
        EXPECT_EQ(Play(pszCall), "") << pszCall;
        EXPECT_EQ(List(), pszList) << pszCall;
        EXPECT_NE(m_Plugin->GetBrushRevision(), uBefore);
        EXPECT_EQ(TakeCalls(), Lines{"Panel.FillBrushList()"});
        EXPECT_TRUE(m_Plugin->HasUnsavedBrushes());
    }
    ASSERT_TRUE(m_Plugin->SaveBrushes());
    const std::string strSaved = ReadBytes(m_Folder.Path("PredefinedBrushes.ini"));
    EXPECT_NE(strSaved.find("brush_name( \"A \\\"b\\\" \\\\\")"), std::string::npos);

    for (size_t i = std::size(steps); i-- > 0;)
    {
        EXPECT_EQ(Play("undo_brushes()"), "");
        EXPECT_EQ(List(), i > 0 ? steps[i - 1][1] : strFirst);
        EXPECT_TRUE(m_Plugin->HasUnsavedBrushes()) << "the file has it otherwise";
    }
    EXPECT_EQ(m_Plugin->GetBrushRevision(), uFirst) << "the very list that was read";
    EXPECT_EQ(m_Plugin->GetDefinedBrushes()[1].fExtent, 20.00001F) << "no digit was lost";
    EXPECT_EQ(Play("undo_brushes()"),
              "there is no change of the brushes to take back or to do again");
    for (const auto& step : steps)
    {
        EXPECT_EQ(Play("redo_brushes()"), "");
        EXPECT_EQ(List(), step[1]);
    }
    EXPECT_FALSE(m_Plugin->HasUnsavedBrushes()) << "as it was saved";
    EXPECT_EQ(Play("undo_brushes() rename_brush( 0, \"New\" ) redo_brushes()"),
              "there is no change of the brushes to take back or to do again");
}

TEST_F(CLibraryKeywords, WhatOthersAppendStaysAndWhatIsRefusedChangesNothing)
{
    WriteBytes(m_Folder.Path("more.ini"), Library({"More"}));
    EXPECT_EQ(Play("remove_brush( 0 ) brush_file( \"more.ini\" ) undo_brushes()"), "");
    EXPECT_EQ(List(), "Hill 10 Dune 20 Hill 30 More 10 ");
    EXPECT_TRUE(m_Plugin->HasUnsavedBrushes());
    ASSERT_TRUE(m_Plugin->SaveBrushes());

    const std::string strList = List();
    const uint64_t uRevision = m_Plugin->GetBrushRevision();
    const char* const refused[][2] = {
        {"rename_brush( 4, \"a\" )", "there is no predefined brush 4, there are 4"},
        {"remove_brush( -1 )", "there is no predefined brush -1, there are 4"},
        {"duplicate_brush( 4, \"a\" )", "there is no predefined brush 4, there are 4"},
        {"move_brush( 0, 4 )", "there is no predefined brush 4, there are 4"},
        {"take_brush( 4 )", "there is no predefined brush 4, there are 4"},
        {"rename_brush( 0, \" \" )", "a brush has to have a name"},
        {"rename_brush( 0, \"a\\nb\" )", "the name of a brush is one line"},
        {"move_brush( 2, 2 )", ""}, // it is there already
    };
    for (const auto& [pszCall, pszWhy] : refused)
    {
        EXPECT_EQ(Play(pszCall), pszWhy) << pszCall;
        EXPECT_EQ(List(), strList);
    }
    EXPECT_EQ(m_Plugin->GetBrushRevision(), uRevision);
    EXPECT_FALSE(m_Plugin->HasUnsavedBrushes());

    WriteBytes(m_Folder.Path("bare.ini"), "!brush()\n!extent( f )\nbrush() { extent( 3.0 ) }\n");
    EXPECT_EQ(Play("brush_file( \"bare.ini\" ) take_brush( 4 )"), "the brush has no function");
}

TEST_F(CLibraryKeywords, TakingIsTheListsClickAndAStrokeIsLeftAlone)
{
    m_Face.lastPick = {40.0F, 0.0F, 40.0F};
    EXPECT_EQ(Play("take_brush( 2 )"), "");
    ASSERT_NE(m_Plugin->GetCurrentBrush(), nullptr);
    EXPECT_EQ(m_Plugin->GetCurrentBrush()->GetExtent(), 30.00001F) << "not the first of that name";
    EXPECT_TRUE(m_Plugin->IsTerraforming()) << "also where there was no brush before";

    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    ASSERT_TRUE(GetTerraformingState().IsDragging());
    const std::string strList = List();
    for (const char* pszCall : {"take_brush( 0 )",
                                "rename_brush( 0, \"a\" )",
                                "duplicate_brush( 0, \"a\" )",
                                "remove_brush( 2 )",
                                "move_brush( 0, 1 )",
                                "undo_brushes()",
                                "redo_brushes()"})
    {
        EXPECT_EQ(Play(pszCall), "not during a stroke") << pszCall;
    }
    EXPECT_EQ(List(), strList);
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    // The tool is a copy, so the brush that it came from may go.
    EXPECT_EQ(Play("remove_brush( 2 )"), "");
    m_Plugin->OnLButtonDown(1, 1, 0, 0, 0, 0);
    m_Plugin->OnMouseMove(1, 1, 0, 0, 0, 1, 0, 0);
    m_Plugin->OnLButtonUp(1, 0, 0, 0, 0, 0);
    EXPECT_EQ(m_Host.At(4, 4), 500.0F);
}
