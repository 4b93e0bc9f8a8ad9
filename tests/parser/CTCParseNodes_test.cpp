#include "parser/CTCParse.h"
#include "tests/parser/CParserTest.h"

#include <bit>

class CTCParseNodes : public CParserTest
{
protected:
    std::unique_ptr<CTCPARSE_KEYWORD> Read(const std::string& strText)
    {
        Write("t.txt", strText);
        return std::unique_ptr<CTCPARSE_KEYWORD>(TCParseFile("t.txt"));
    }

    std::string Save(const CTCPARSE_KEYWORD& tree)
    {
        const std::string strPath = m_Folder.Path("tree.bin");
        FILE* pFile = fopen(strPath.c_str(), "wb");
        EXPECT_TRUE(tree.Save(pFile));
        fclose(pFile);
        return ReadBytes(strPath);
    }

    static std::string Number(uint32_t uValue)
    {
        std::string strBytes;
        for (int i = 0; i < 4; ++i, uValue /= 256)
        {
            strBytes += static_cast<char>(uValue % 256);
        }
        return strBytes;
    }

    static std::string Number(float fValue) { return Number(std::bit_cast<uint32_t>(fValue)); }

    static std::string Text(const std::string& strText)
    {
        return Number(static_cast<uint32_t>(strText.size())) + strText;
    }
};

static constexpr const char* ALL_TYPES =
    "!all(i,f,s,v3,v4)!n() n() { all(-2,1.5,\"ab\",[1,2,3],[4,5,6,7]) n() } n()";

TEST_F(CTCParseNodes, SavesItsBinaryForm)
{
    const auto pTree = Read(ALL_TYPES);
    pTree->block->params->SetRefName("host");
    const std::string strEnd = Number(0xFFFFFFFFU);
    std::string strAll = Number(16U) + Text("all");
    strAll += Number(0U) + Number(0xFFFFFFFEU) + Text("host");
    strAll += Number(1U) + Number(1.5F) + Text("");
    strAll += Number(2U) + Text("ab") + Text("");
    strAll += Number(3U) + Number(1.0F) + Number(2.0F) + Number(3.0F) + Text("");
    strAll += Number(4U) + Number(4.0F) + Number(5.0F) + Number(6.0F) + Number(7.0F) + Text("");
    const std::string strNode = Number(16U) + Text("n");
    EXPECT_EQ(Save(*pTree), strNode + Number(32U) + strAll + strNode + strEnd + strNode + strEnd);
}

TEST_F(CTCParseNodes, SayWhenSavingFailed)
{
    const auto pTree = Read(ALL_TYPES);
    FILE* pFile = fopen("/dev/full", "wb");
    ASSERT_NE(pFile, nullptr);
    CLogCatcher log;
    EXPECT_FALSE(pTree->Save(pFile));
    EXPECT_EQ(log.GetText(), "[CTCPARSE_KEYWORD::Save] the tree could not be written\n");
    fclose(pFile);
}

TEST_F(CTCParseNodes, CopiesStandAlone)
{
    auto pTree = Read(ALL_TYPES);
    pTree->block->params->SetRefName("host");
    pTree->params = new CTCPARSE_PARAM(tcparse_vec4); // as a declaration has them
    const CTCPARSE_KEYWORD copy(*pTree);
    EXPECT_EQ(copy.params->type, tcparse_vec4);
    EXPECT_NE(copy.block->params->refName, pTree->block->params->refName);
    const std::string strSaved = Save(*pTree);
    pTree.reset();
    EXPECT_EQ(Save(copy), strSaved);

    const CTCPARSE_VEC4 vector;
    EXPECT_EQ(vector.w, 1.0F);
    EXPECT_EQ(vector.x + vector.y + vector.z, 0.0F);
}

TEST_F(CTCParseNodes, SurvivesDeepAndLongTrees)
{
    constexpr size_t DEEP = 300'000;
    constexpr size_t LONG = 1'000'000;
    std::string strText = "!n()";
    for (size_t i = 0; i < DEEP; ++i)
    {
        strText += "n(){n()";
    }
    strText.append(DEEP, '}');
    for (size_t i = 0; i < LONG; ++i)
    {
        strText += "n()";
    }
    auto pTree = Read(strText);
    ASSERT_NE(pTree, nullptr);
    CTCPARSE_KEYWORD copy(*pTree);
    pTree.reset();
    size_t nDepth = 0;
    for (const CTCPARSE_KEYWORD* p = &copy; p->block != nullptr; p = p->block->next)
    {
        ++nDepth;
        if (p->block->next == nullptr)
        {
            break;
        }
    }
    EXPECT_EQ(nDepth, DEEP);
    // A node takes 4 + 4 + 1 bytes, a block 4, the end of each chain 4.
    EXPECT_EQ(Save(copy).size(), (2 * DEEP + LONG) * 9 + DEEP * 4 + (DEEP + 1) * 4);
}

TEST_F(CTCParseNodes, LimitsTheDepthOfBlocks)
{
    std::string strText = "!n()";
    for (size_t i = 0; i < CTCParse::BLOCK_DEPTH_LIMIT; ++i)
    {
        strText += "n(){";
    }
    EXPECT_NE(Read(strText + "\nn()"), nullptr);
    CLogCatcher log;
    EXPECT_EQ(Read(strText + "\nn(){"), nullptr);
    EXPECT_EQ(log.GetText(), Message("block depth limit exceeded", "t.txt", 2, "n(){") + REFUSED);
}

TEST_F(CTCParseNodes, FindsTheNewestOfManyNames)
{
    std::string strText;
    std::string strTree;
    for (const char* pszType : {"(s)", "(i)"})
    {
        for (int i = 0; i < 3000; ++i)
        {
            strText += "!k" + std::to_string(i) + pszType + "$c" + std::to_string(i) + "(i," +
                       std::to_string(i + (pszType[1] == 'i' ? 5 : 0)) + ")";
        }
    }
    for (int i = 0; i < 3000; ++i)
    {
        strText += "k" + std::to_string(i) + "(C" + std::to_string(i) + ")";
        strTree += " k" + std::to_string(i) + "(i" + std::to_string(i + 5) + ")";
    }
    EXPECT_EQ(Parse(strText).strTree, strTree.substr(1));
}
