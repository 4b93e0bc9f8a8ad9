// The file of the tools' brushes, with the real plug-in on a host without a window.

#include "editor/core/CToolBrushes.h"
#include "host/IPluginTools.h"
#include "tests/editor/script/WalkFixture.h"
#include "tests/support/CLogCatcher.h"

#include <optional>

namespace
{

constexpr char TOOL[] = "RelativeHeightFunction";

class CToolBrushesTest : public CWalkFixture
{
protected:
    ~CToolBrushesTest() override { End(); }

    // As a start of the editor: the plug-in's tools are those that it makes itself.
    void Begin()
    {
        ASSERT_TRUE(m_Loader.Load(TELLUR_BIN_DIR "/libtellur.so"));
        m_Plugin = dynamic_cast<IPluginTools*>(m_Loader.GetPlugin());
        m_Log.Clear();
        m_Tools.emplace(m_Host);
        m_Tools->Begin(m_Loader.GetPlugin(), m_File, [] { return false; });
    }

    void End()
    {
        if (m_Tools.has_value())
        {
            m_Tools->End();
            m_Tools.reset();
            m_Loader.Unload();
        }
    }

    float GetExtent(const char* pszFunction)
    {
        SToolSizes sizes;
        EXPECT_TRUE(m_Plugin->GetToolSizes(pszFunction, sizes));
        return sizes.fExtent;
    }

    void SetExtent(const char* pszFunction, float fExtent)
    {
        SToolSizes sizes;
        EXPECT_TRUE(m_Plugin->GetToolSizes(pszFunction, sizes));
        sizes.fExtent = fExtent;
        EXPECT_TRUE(m_Plugin->SetToolSizes(pszFunction, sizes));
    }

    // Leaves a file in which each tool has a size of its own.
    void MakeFile()
    {
        ASSERT_NO_FATAL_FAILURE(Begin());
        m_fSize = 20.0F;
        for (const SToolOffer& offer : m_Plugin->GetTools())
        {
            m_fFirst = GetExtent(offer.pszFunction); // one size for all of them
            SetExtent(offer.pszFunction, ++m_fSize);
        }
        End();
    }

    void StartWithCut(const std::string& strCut);

    const std::string m_File = m_Folder.Path("tools.brushes");
    CLogCatcher m_Log;
    std::optional<CToolBrushes> m_Tools;
    IPluginTools* m_Plugin = nullptr;
    float m_fFirst = 0.0F; // of the plug-in's own
    float m_fSize = 0.0F;  // the last one in the file
};

void CToolBrushesTest::StartWithCut(const std::string& strCut)
{
    SCOPED_TRACE(strCut.substr(strCut.size() - std::min<size_t>(strCut.size(), 60)));
    WriteBytes(m_File, strCut);
    ASSERT_NO_FATAL_FAILURE(Begin());
    EXPECT_EQ(ReadBytes(m_File + ".bak"), strCut);
    size_t nOwnLines = 0;
    bool bRead = true;
    for (const std::string& strLine : m_Log.TakeLines())
    {
        nOwnLines += strLine.starts_with("[LoadToolBrushes] " + m_File + ": ") ? 1 : 0;
        bRead = bRead && !strLine.starts_with("Parser: cant parse file ");
    }
    EXPECT_EQ(nOwnLines, 1U);
    float fSize = 20.0F;
    for (const SToolOffer& offer : m_Plugin->GetTools())
    {
        const size_t iTool = strCut.find("function( \"" + std::string(offer.pszFunction));
        const bool bThere = bRead && strCut.find("\n}", iTool) != std::string::npos;
        EXPECT_EQ(GetExtent(offer.pszFunction), bThere ? fSize + 1.0F : m_fFirst);
        fSize += 1.0F;
    }
    End();
    EXPECT_TRUE(ReadBytes(m_File).ends_with("\nend_of_tools()\n"));
    std::filesystem::remove(m_File + ".bak");
}

} // namespace

TEST_F(CToolBrushesTest, AFileThatIsCutIsKeptAndEveryToolThatItHasIsThere)
{
    ASSERT_NO_FATAL_FAILURE(MakeFile());
    const std::string strWhole = ReadBytes(m_File);
    const size_t iEnd = strWhole.rfind("end_of_tools()");
    int nLines = 0;
    for (size_t iLine = 0; iLine <= iEnd; iLine = strWhole.find('\n', iLine) + 1)
    {
        const size_t nMore = ++nLines % 2 == 0 || iLine == iEnd ? 0 : 4; // into the line
        ASSERT_NO_FATAL_FAILURE(StartWithCut(strWhole.substr(0, iLine + nMore)));
    }
    // One from before there was a last line.
    std::string strBefore = strWhole.substr(0, iEnd);
    strBefore.erase(strBefore.find("!end_of_tools()\n"), 16);
    for (const std::string& strText : {strWhole, strBefore})
    {
        WriteBytes(m_File, strText);
        ASSERT_NO_FATAL_FAILURE(Begin());
        EXPECT_EQ(m_Log.GetText(), "");
        EXPECT_EQ(GetExtent("RampFunction"), m_fSize);
        End();
        EXPECT_EQ(ReadBytes(m_File), strWhole);
        EXPECT_FALSE(std::filesystem::exists(m_File + ".bak"));
    }
    ASSERT_NO_FATAL_FAILURE(StartWithCut(strBefore.substr(0, strBefore.rfind("tool_brush"))));
    ASSERT_NO_FATAL_FAILURE(StartWithCut(strBefore.substr(0, strBefore.rfind('}'))));
}

TEST_F(CToolBrushesTest, AreWrittenWhileAPersonWorksAndOnlyWhenTheyHaveChanged)
{
    ASSERT_NO_FATAL_FAILURE(Begin());
    ASSERT_TRUE(m_Host.NewLevel(48, {WIDTH, 200.0F, WIDTH}));
    ReplaceTerrain();
    m_Tools->Keep(); // they fit the level now
    std::filesystem::remove(m_File);
    ASSERT_TRUE(m_Plugin->TakeTool("SetHeightFunction"));
    SToolSizes sizes;
    ASSERT_TRUE(m_Plugin->GetToolSizes("SetHeightFunction", sizes));
    ASSERT_TRUE(sizes.bPicksHeight);
    const float fAmount = sizes.fAmount;
    m_Face.cursor.PointAtPosition(100.0F, 100.0F);
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.GetInput().SendButtonUp(1, 0, {});
    ASSERT_TRUE(m_Plugin->GetToolSizes("SetHeightFunction", sizes));
    const float fPicked = sizes.fAmount;
    ASSERT_NE(fPicked, fAmount);
    m_Tools->Keep();
    EXPECT_FALSE(std::filesystem::exists(m_File)) << "what a stroke picks is no change";
    ASSERT_TRUE(m_Plugin->GetToolSizes("SetHeightFunction", sizes));
    EXPECT_EQ(sizes.fAmount, fPicked) << "it is left alone";
    SetExtent(TOOL, 77.0F);
    m_Tools->Keep();
    const std::string strText = ReadBytes(m_File);
    EXPECT_TRUE(strText.find("extent( 77.00000 )") != std::string::npos);
    std::filesystem::remove(m_File);
    m_Tools->Keep();
    EXPECT_FALSE(std::filesystem::exists(m_File));
    End();
    EXPECT_EQ(ReadBytes(m_File), strText);
}

TEST_F(CToolBrushesTest, AMaskThatIsGoneIsOnAgainWhenItsPictureIsBack)
{
    ASSERT_NO_FATAL_FAILURE(MakeFile());
    const std::string strMask = m_Folder.Path("mask.png");
    std::string strText = ReadBytes(m_File);
    strText.replace(strText.find("mask_enabled( 0 )", strText.find(TOOL)),
                    17,
                    "mask( \"mask.png\" )\n  mask_enabled( 1 )");
    WriteBytes(m_File, strText);
    for (const char* pszStart : {"without", "again"})
    {
        SCOPED_TRACE(pszStart);
        ASSERT_NO_FATAL_FAILURE(Begin());
        EXPECT_TRUE(m_Log.GetText().find(": the mask mask.png is not there\n") !=
                    std::string::npos);
        ASSERT_TRUE(m_Plugin->TakeTool(TOOL));
        EXPECT_EQ(m_Plugin->GetMaskPath(), "");
        SetExtent(TOOL, 60.0F);
        End();
        EXPECT_TRUE(ReadBytes(m_File).find("\n  mask( ") == std::string::npos);
        EXPECT_FALSE(std::filesystem::exists(m_File + ".bak"));
    }
    std::filesystem::copy_file(TELLUR_SOURCE_DIR "/data/samples/stripes.png", strMask);
    ASSERT_NO_FATAL_FAILURE(Begin());
    EXPECT_EQ(m_Log.GetText(), "");
    ASSERT_TRUE(m_Plugin->TakeTool(TOOL));
    EXPECT_EQ(m_Plugin->GetMaskPath(), "mask.png");
    EXPECT_TRUE(m_Plugin->IsMaskActing());
    EXPECT_EQ(GetExtent(TOOL), 60.0F);
    End();
    EXPECT_TRUE(ReadBytes(m_File).find("lost_mask( \"") == std::string::npos);
}
