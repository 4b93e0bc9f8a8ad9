// The brushes that a person finds at the first start, and those that are there again at the second.

#include "editor/app/CMessagesDock.h"
#include "engine/terrain/SHeightField.h"
#include "host/FileSystem.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/PanelFixture.h"

#include <QListWidget>
#include <QMenu>

#include <cmath>
#include <map>

namespace
{

struct SGround
{
    float fSide;
    float fRange;
    float fLowest;
};

constexpr SGround HILLS = {1000.0F, 400.0F, 100.0F};
constexpr SGround FLAT = {800.0F, 300.0F, 20.0F}; // its limit is the range

class CReadyBrushes : public CPanel
{
protected:
    CReadyBrushes() { m_bTools = true; }

    void Open(uint32_t uX,
              uint32_t uZ,
              const SVec3& size,
              const std::function<float(uint32_t)>& at,
              bool bStep = false)
    {
        SHeightField field;
        ASSERT_TRUE(field.Allocate(uX, uZ));
        field.size = size;
        for (size_t i = 0; i < field.GetCount(); ++i)
        {
            field.pHeights[i] = at(static_cast<uint32_t>(i));
        }
        bStep ? GetHost().GetLevelHeights().Replace(std::move(field), "Import")
              : GetHost().TakeLevel(std::move(field));
        m_Window->GetViews().FrameAll();
        Settle();
    }

    // Square, 100 to 500 high of 2000; a vertex that nobody edits counts for nothing.
    void OpenHills()
    {
        Open(65,
             65,
             {1000.0F, 2000.0F, 1000.0F},
             [](uint32_t i) {
                 return i == 0 ? -1.0F : 300.0F + 200.0F * std::sin(static_cast<float>(i % 65) / 4);
             });
        ASSERT_NO_FATAL_FAILURE(Raise(1, 500.0F));
        ASSERT_NO_FATAL_FAILURE(Raise(2, 100.0F));
    }

    // Longer than wide, and without relief. bStep: as an import into the level that is open.
    void OpenFlat(bool bStep = false)
    {
        Open(
            33, 129, {800.0F, 300.0F, 4000.0F}, [](uint32_t) { return 20.0F; }, bStep);
    }

    void Raise(uint32_t uColumn, float fHeight)
    {
        const SBlockEntry entry = {static_cast<float>(uColumn), fHeight, 0.0F};
        GetHost().GetEngine().GetWorld()->GetTerrain()->SetBlockHeights(0, 0, &entry, 1);
    }

    IPluginTools& Tools() { return *m_Editor->FindInterface<IPluginTools>(); }

    float Extent() { return Tools().GetBrushExtent(); }

    float Amount() { return Tools().GetBrushValue(EBrushValue::Amount); }

    bool Picks()
    {
        SToolSizes sizes;
        return Tools().GetToolSizes(Tools().GetFunctionName().c_str(), sizes) && sizes.bPicksHeight;
    }

    void Choose(const char* pszName)
    {
        auto& list = Item<QListWidget>(2113);
        const auto found = list.findItems(pszName, Qt::MatchExactly);
        ASSERT_FALSE(found.isEmpty()) << pszName;
        list.scrollToItem(found.back());
        Settle();
        const QPoint at = list.visualItemRect(found.back()).center();
        MoveTo(list.viewport()->mapToGlobal(at) * list.devicePixelRatioF());
        Do({"click", "1"});
    }

    // A click in the top view; how far heights move at most.
    float Dab()
    {
        const std::vector<float> before = GetHeights();
        Click(GetView(1));
        const std::vector<float> after = GetHeights();
        float fMost = 0.0F;
        for (size_t i = 0; i < before.size(); ++i)
        {
            fMost = std::max(fMost, std::fabs(after[i] - before[i]));
        }
        Key("ctrl+z");
        return fMost;
    }

    void ExpectFit(const char* pszName, const SGround& ground);
    void WorkWithButtons();
    void GiveAHeight();
};

// The stated rule.
void CReadyBrushes::ExpectFit(const char* pszName, const SGround& ground)
{
    SCOPED_TRACE(pszName);
    const std::string strTool = Tools().GetFunctionName();
    EXPECT_GE(Extent(), 0.0199F * ground.fSide);
    EXPECT_LE(Extent(), 0.0801F * ground.fSide);
    const float fStep = std::fabs(Amount()) / ground.fRange;
    if (strTool == "RelativeHeightFunction")
    {
        EXPECT_GE(fStep, 0.0099F);
        EXPECT_LE(fStep, 0.0501F);
    }
    else if (strTool == "SetHeightFunction")
    {
        EXPECT_TRUE(Picks());
        EXPECT_NEAR(Amount(), ground.fLowest + 0.05F * ground.fRange, 0.01F * ground.fRange);
    }
    else if (strTool == "PosterizeFunction")
    {
        const float fApart = GetTerrain()->GetSize().y / Amount();
        EXPECT_GE(fApart, 0.035F * ground.fRange);
        EXPECT_LE(fApart, 0.09F * ground.fRange);
    }
}

} // namespace

TEST_F(CReadyBrushes, AreListedAtTheFirstStartAndFitTheLevelWhenOneIsTaken)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    EXPECT_TRUE(Tools().GetFunctionName().empty()) << "nothing is at hand";
    std::vector<std::string> names;
    for (int i = 0; i < Item<QListWidget>(2113).count(); ++i)
    {
        names.push_back(Item<QListWidget>(2113).item(i)->text().toStdString());
    }
    EXPECT_GE(names.size(), 12U);
    const std::string strScript = m_Folder.Path("ready.tellur");
    for (const SGround& ground : {HILLS, FLAT})
    {
        const bool bFlat = ground.fSide == FLAT.fSide;
        ASSERT_NO_FATAL_FAILURE(bFlat ? OpenFlat() : OpenHills());
        for (const std::string& strName : names)
        {
            ASSERT_NO_FATAL_FAILURE(Choose(strName.c_str()));
            ExpectFit(strName.c_str(), ground);
        }
        for (const char* pszName : {"Soft hill", "Gullies", "Terraces", "Boulders"})
        {
            ASSERT_NO_FATAL_FAILURE(Choose(pszName));
            const float fMost = Dab();
            EXPECT_LE(fMost, 0.05F * ground.fRange) << pszName;
            EXPECT_TRUE(fMost > 0.0F || bFlat || std::string(pszName) == "Terraces") << pszName;
        }
    }
    SavePicture("ready-brushes");

    // The state before the press has the sizes, so a replay needs no rule.
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    ASSERT_NO_FATAL_FAILURE(Choose("Crags"));
    Click(GetView(1));
    const std::string strAfter = SaveHeights("after.height");
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), strAfter);
}

// Leaves relative height changed, posterize as a ready brush and set height with a height of its
// own.
void CReadyBrushes::WorkWithButtons()
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_NO_FATAL_FAILURE(OpenHills());
    for (const char* pszKey : {"1", "2", "3", "4", "5", "6"})
    {
        Key(pszKey);
        ExpectFit(pszKey, HILLS);
    }
    Key("4");
    EXPECT_EQ(Extent(), 60.0F);
    EXPECT_EQ(Amount(), 12.0F);
    const float fMost = Dab();
    EXPECT_GT(fMost, 5.0F);
    EXPECT_LE(fMost, 12.0F);
    ASSERT_NO_FATAL_FAILURE(OpenFlat(true));
    EXPECT_EQ(Extent(), 48.0F);
    Key("ctrl+z");
    EXPECT_EQ(Extent(), 60.0F) << "the other ground is back";
    Key("3");
    Click(GetView(1));
    EXPECT_NE(Amount(), 120.0F) << "what a stroke picks is no change of the tool";
    ASSERT_NO_FATAL_FAILURE(OpenFlat());
    EXPECT_FALSE(Picks());
    EXPECT_EQ(Amount(), 35.0F);
    Key("4");
    EXPECT_EQ(Extent(), 48.0F);
    EXPECT_EQ(Amount(), 9.0F);
    Key("bracketright");
    Key("x");
    EXPECT_GT(Extent(), 48.0F);
    const float fChanged = Extent();
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    ASSERT_NO_FATAL_FAILURE(Choose("Terraces"));
    ASSERT_NO_FATAL_FAILURE(OpenHills());
    EXPECT_EQ(Extent(), 70.0F) << "as the rule made it, also while it is at hand";
    Key("4");
    EXPECT_EQ(Extent(), fChanged);
}

// A key and the context menu give a height, which the next stroke does not pick anew.
void CReadyBrushes::GiveAHeight()
{
    Key("3");
    MoveTo(GetView(1), {0.5, 0.5});
    EXPECT_TRUE(Picks());
    Key("p");
    EXPECT_FALSE(Picks());
    SToolSizes sizes;
    ASSERT_TRUE(Tools().GetToolSizes("SetHeightFunction", sizes));
    sizes.bPicksHeight = true;
    sizes.fAmount = 1.0F;
    Tools().SetToolSizes("SetHeightFunction", sizes);
    Answer<QMenu>([this] { Click(GetView(1), "3"); },
                  [this](QMenu& menu)
                  {
                      const QRect at = menu.actionGeometry(menu.actions().front());
                      MoveTo(menu.mapToGlobal(at.center()) * menu.devicePixelRatioF());
                      Do({"click", "1"});
                  });
    EXPECT_FALSE(Picks());
    EXPECT_GT(Amount(), 1.0F);
}

TEST_F(CReadyBrushes, OfTheButtonsFitTheLevelUntilSomebodyChangesThemAndAreKept)
{
    ASSERT_NO_FATAL_FAILURE(WorkWithButtons());
    const float fChanged = Extent();
    ASSERT_NO_FATAL_FAILURE(GiveAHeight());
    const float fGiven = Amount();
    Stop();

    ASSERT_NO_FATAL_FAILURE(Start(false));
    EXPECT_TRUE(Tools().GetFunctionName().empty());
    EXPECT_FALSE(Tools().IsTerraforming());
    ASSERT_NO_FATAL_FAILURE(OpenFlat());
    Key("4");
    EXPECT_EQ(Extent(), fChanged);
    EXPECT_EQ(Amount(), -9.0F);
    Key("3");
    EXPECT_EQ(Amount(), fGiven);
    Key("5");
    EXPECT_EQ(Extent(), 56.0F) << "the ready brush, for this level";
    const SVec3 size = GetTerrain()->GetSizeVector();
    ASSERT_TRUE(GetHost().GetGround().Do(
        {.eKind = EGround::Size, .size = {2.0F * size.x, size.y, 2.0F * size.z}}));
    EXPECT_EQ(Extent(), 112.0F);
    EXPECT_EQ(GetHost().GetUndoStack().GetDetail(0), "brushes fitted anew");
    Key("4");
    EXPECT_EQ(Extent(), fChanged) << "typed over";
    GetHost().Undo();
    Stop();

    const std::string strFile = m_Folder.Path("config/tellur/tools.brushes");
    std::string strKept = ReadBytes(strFile);
    // One brush that cannot be used; the others are there.
    strKept.replace(strKept.find("round.png"), 9, "gone!.png");
    // Another one without its mask.
    strKept.insert(strKept.rfind("extent( "), "mask( \"gone.png\" )\n");
    WriteBytes(strFile, strKept);
    ASSERT_NO_FATAL_FAILURE(Start(false));
    EXPECT_TRUE(m_Window->GetMessages().GetText().contains("tools.brushes, line "));
    EXPECT_TRUE(m_Window->GetMessages().GetText().contains("the mask gone.png is not there"));
    EXPECT_EQ(ReadBytes(strFile + ".bak"), strKept);
    ASSERT_NO_FATAL_FAILURE(OpenFlat());
    Key("4");
    EXPECT_EQ(Extent(), fChanged);
    Stop();
    WriteBytes(strFile, "tool_brush( {");
    ASSERT_NO_FATAL_FAILURE(Start(false));
    EXPECT_TRUE(m_Window->GetMessages().GetText().contains("tools.brushes: cannot be read"));
    EXPECT_EQ(ReadBytes(strFile + ".bak2"), "tool_brush( {");
    ASSERT_NO_FATAL_FAILURE(OpenHills());
    Key("4");
    EXPECT_EQ(Extent(), 60.0F);
}

TEST_F(CReadyBrushes, ComeWhereALibraryCannotBeReadAndItsFileIsKept)
{
    const std::string strLibrary = m_Folder.Path("root/PredefinedBrushes.ini");
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    const int nReady = Item<QListWidget>(2113).count();
    Click(Item(2120)); // save
    Stop();
    const std::string strWhole = ReadBytes(strLibrary);
    const std::string strCut = strWhole.substr(0, strWhole.size() / 2);
    WriteBytes(strLibrary, strCut);
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(Item<QListWidget>(2113).count(), nReady);
    EXPECT_TRUE(m_Window->GetMessages().GetText().contains("The ready brushes are listed instead"));
    EXPECT_EQ(ReadBytes(strLibrary), strCut) << "nothing was saved yet";
    Click(Item(2120));
    EXPECT_EQ(ReadBytes(strLibrary), strWhole);
    EXPECT_EQ(ReadBytes(strLibrary + ".bak"), strCut);
    EXPECT_FALSE(fs::exists((strLibrary + ".bak2").c_str()));
    Stop();

    // An empty one is a person's wish.
    WriteBytes(strLibrary, strWhole.substr(0, strWhole.find("\nbrush()") + 1));
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(Item<QListWidget>(2113).count(), 0);
    EXPECT_FALSE(fs::exists((strLibrary + ".bak2").c_str()));
}

TEST_F(CReadyBrushes, APersonsOwnOfTheSameNameStaysAsItIs)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_NO_FATAL_FAILURE(OpenHills());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    ASSERT_NO_FATAL_FAILURE(Choose("Soft hill"));
    Tools().SetBrushValue(EBrushValue::Amount, 77.0F);
    AddBrush("Soft hill");
    Click(Item(2120)); // save
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_NO_FATAL_FAILURE(OpenFlat());
    EXPECT_EQ(Item<QListWidget>(2113).findItems("Soft hill", Qt::MatchExactly).size(), 2)
        << "the library is the person's now, and nothing is added to it";
    ASSERT_NO_FATAL_FAILURE(Choose("Soft hill")); // the last one
    EXPECT_EQ(Extent(), 60.0F);
    EXPECT_EQ(Amount(), 77.0F);
    ASSERT_NO_FATAL_FAILURE(Choose("Crater")); // saved as it came
    EXPECT_EQ(Extent(), 36.0F);

    // A script has the brush as the file has it.
    const std::string strScript = m_Folder.Path("take.tellur");
    WriteBytes(strScript, "!use_brush( s )\nuse_brush( \"Crater\" )\n");
    std::string strFault;
    EXPECT_EQ(m_Window->GetScripts().Play(strScript, strFault), EScriptEnd::Played) << strFault;
    EXPECT_EQ(Extent(), 448.785F);
    ASSERT_NO_FATAL_FAILURE(OpenHills());
    EXPECT_EQ(Extent(), 448.785F);
}
