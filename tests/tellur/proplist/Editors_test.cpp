// The in-place editors without a window: which ones a row has, how they take texts and count.

#include "tellur/proplist/CPropCtrlEdit.h"
#include "tellur/proplist/CPropCtrlSpinner.h"
#include "tellur/proplist/PropEditorKinds.h"
#include "tests/tellur/proplist/PropModelFixture.h"

#include <typeinfo>

namespace
{

class CTestSpinner : public CPropCtrlSpinner
{
public:
    using CPropCtrlSpinner::CPropCtrlSpinner;

    // Presses it, moves beside it to the heights of the screen in turn, lets go.
    void Drag(const std::vector<int>& heights)
    {
        OnLButtonDown({{3, 2}, {0, heights.front()}});
        for (size_t i = 1; i < heights.size(); ++i)
        {
            OnMouseMove({{-50, 0}, {0, heights[i]}});
        }
        OnLButtonUp({{-50, 0}, {0, heights.back()}});
    }
};

class CTestEdit : public CPropCtrlEdit
{
public:
    using CPropCtrlEdit::CPropCtrlEdit;
    using CPropCtrlEdit::TakesShortcut;
};

class CRootMacro : public ITextMacroTable
{
    const char* Find(const char* pszName) const override
    {
        return std::string(pszName) == "root" ? "/levels" : nullptr;
    }
};

class CEditors : public CPropModelTest
{
protected:
    void Drag(const std::string& strName, const std::vector<int>& heights)
    {
        CTestSpinner spinner(m_Context, Row(strName), 1);
        spinner.SetValueText(Row(strName).strText);
        spinner.Drag(heights);
    }
};

} // namespace

TEST_F(CEditors, AreThoseThatTheFieldAsksFor)
{
    m_Thing.m_Shapes = {&m_Ball};
    m_Model.SetObjects({&m_Thing});
    std::string strAll;
    for (int i = 0; SPropRow* pRow = m_Model.GetShown(i); ++i)
    {
        strAll += pRow->IsEditable() ? pRow->strName + ":" : "";
        for (const SPropEditorKind& kind : GetPropEditorKinds())
        {
            const bool bFits = pRow->IsEditable() && kind.pFits(*pRow);
            const auto pEditor = bFits ? kind.pMake(m_Context, *pRow, 1) : nullptr;
            const std::string strType = bFits ? typeid(*pEditor).name() : "";
            strAll += bFits ? strType.substr(strType.find("Ctrl") + 4) + "," : "";
        }
    }
    EXPECT_EQ(strAll,
              "m_Share:Edit,Spinner,m_Free:Edit,Spinner,m_Count:Edit,Spinner,m_On:Checkbox,"
              "m_Kind:Combobox,m_Bits:wet:Checkbox,steep:Checkbox,high:Checkbox,"
              "m_Place:Edit,Spinner,x:Edit,Spinner,y:Edit,Spinner,z:Edit,Spinner,"
              "m_Color:Edit,BrowseColorButton,r:Edit,Spinner,g:Edit,Spinner,b:Edit,Spinner,"
              "m_Frame:Edit,m_File:Edit,BrowseButton,m_Folder:Edit,BrowseButton,"
              "m_Shape<CTestShape>:ClassCombobox,BrowseButton,m_Shapes<CTestShape[]>:"
              "name12:ClassCombobox,BrowseButton,");
}

TEST_F(CEditors, TheSpinnerCountsByItsStepAndStopsAtTheLimits)
{
    m_Model.SetObjects({&m_Thing});
    Drag("m_Free", {300, 290, 280}); // every pixel is a step
    EXPECT_EQ(m_Thing.m_Free, 2.0F + 20 * 0.125F);
    EXPECT_EQ(TakeWrites().size(), 2U) << "each move writes at once";
    Drag("m_Share", {300, 350, 349});
    EXPECT_EQ(m_Thing.m_Share, 0.12F) << "from the limit 0, with two digits";
    Drag("m_Count", {300, 297});
    EXPECT_EQ(m_Thing.m_Count, 7 + 6);
    Drag("m_Place", {300, 292}); // all components together
    EXPECT_EQ(Value("m_Place"), "2 3 4");
}

TEST_F(CEditors, ADragGoesOnBeyondTheScreenWithoutAJump)
{
    m_Model.SetObjects({&m_Thing});
    // The screen is 800 high: at the top the cursor goes to 795, at the bottom to 1.
    Drag("m_Free", {8, 0});
    EXPECT_EQ(m_FrontEnd.cursorPos.y, 795);
    Drag("m_Free", {8, 0, 795, 785});
    EXPECT_EQ(m_Thing.m_Free, 2.0F + 0.125F * (8 + 8 + 10));
    Drag("m_Free", {790, 799});
    EXPECT_EQ(m_FrontEnd.cursorPos.y, 1);
    m_FrontEnd.calls.clear();
    Drag("m_Free", {300, 301});
    EXPECT_EQ(m_FrontEnd.calls.size(), 2U) << "captured and let go";
    m_Other.m_Free = 70.0F;
    m_Model.SetObjects({&m_Thing, &m_Other});
    TakeWrites();
    Drag("m_Free", {300, 250});
    EXPECT_EQ(TakeWrites(), Texts{}) << "different values do not move";
}

TEST_F(CEditors, OfTextsTakeCommasExpandMacrosAndKeepTheProgramsKeysWaiting)
{
    m_Model.SetObjects({&m_Thing});
    EXPECT_EQ(m_Hooks.ParseText(Row("m_Place"), "1,5 +2,25 3"), "1.5 2.25 3");
    EXPECT_EQ(m_Hooks.ParseText(Row("m_Place"), "1,5 2,2,5 3"), "1,5 2,2,5 3");
    EXPECT_EQ(m_Hooks.ParseText(Row("m_Count"), "1,5"), "1,5");

    const CRootMacro macros;
    EXPECT_EQ(ExpandTextMacros("&root&&root& &other&/x a && b & c & d &", &macros),
              "/levels/levels &other&/x a & b & c & d &");
    EXPECT_EQ(ExpandTextMacros("&root&", nullptr), "&root&");
    EXPECT_EQ(ExpandTextMacros(std::string(5000, 'x'), &macros).size(), 4096U);
    CTestEdit edit(m_Context, Row("m_Free"), 1);
    EXPECT_TRUE(edit.TakesShortcut({.uKey = 'T', .bControl = true}));
    for (const uint32_t uKey : {KEY_DELETE, KEY_ESCAPE, KEY_ENTER})
    {
        EXPECT_TRUE(edit.TakesShortcut({uKey})) << uKey;
    }
    EXPECT_FALSE(edit.TakesShortcut({KEY_F2}));
}
