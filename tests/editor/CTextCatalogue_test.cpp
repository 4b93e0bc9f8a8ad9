// The texts of another language: what a file of them gives, and what is said of lines that give
// nothing.

#include "editor/core/CTextCatalogue.h"
#include "editor/core/Words.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

namespace
{

constexpr char DIFFERENT[] = "the lines differ in what is filled in, such as %1, or in *.NAME";

class CTextCatalogues : public testing::Test
{
protected:
    ~CTextCatalogues() override { SetCatalogue(nullptr); }

    bool Read(const std::string& strText)
    {
        WriteBytes(m_File, strText);
        m_Log.Clear();
        return m_Catalogue.Read(m_File);
    }

    CTempFolder m_Folder;
    std::string m_File = m_Folder.Path("de.texts");
    CLogCatcher m_Log;
    CTextCatalogue m_Catalogue;
};

} // namespace

TEST_F(CTextCatalogues, GiveTheOtherTextOrTheEnglishOne)
{
    ASSERT_TRUE(Read("\xEF\xBB\xBF# a note\n&Undo\n&R\xC3\xBC"
                     "ckg\xC3\xA4ngig\n\n"
                     "%1 of %2\r\nvon %2 sind %1 da\r\n\r\n"
                     "  \n\\sis there\n\\sist da\\s\n\n"
                     "two\\nlines \\\\\nzwei\\nZeilen \\\\\n\n\\# sign\n\\# Zeichen\n\n"
                     "not translated yet\n\n\nLast\nLetzte"));
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_STREQ(Words("&Undo"), "&Undo") << "before it is chosen";
    SetCatalogue(&m_Catalogue);
    const std::pair<const char*, const char*> rows[] = {
        {"&Undo",
         "&R\xC3\xBC"
         "ckg\xC3\xA4ngig"},
        {"%1 of %2", "von %2 sind %1 da"},
        {" is there", " ist da "},
        {"two\nlines \\", "zwei\nZeilen \\"},
        {"# sign", "# Zeichen"},
        {"not translated yet", "not translated yet"},
        {"nowhere", "nowhere"},
        {"Last", "Letzte"}};
    for (const auto& [pszEnglish, pszOther] : rows)
    {
        EXPECT_STREQ(Words(pszEnglish), pszOther);
    }
    EXPECT_EQ(Words(nullptr), nullptr);
    EXPECT_EQ(GetCatalogueFile("pt_BR"), "data/texts/pt_BR.texts");
    EXPECT_EQ(GetCatalogueFile("../de"), "");
    EXPECT_EQ(GetCatalogueFile(""), "");
}

TEST_F(CTextCatalogues, NameTheLineThatIsDamagedAndKeepTheRest)
{
    const std::tuple<const char*, int, const char*> rows[] = {
        {"bad\nschlecht\nzu viel\nnoch mehr\n", 3, "a third line, a pair ends with an empty one"},
        {"bad\nschlecht \xC3\n", 2, "is no UTF-8"},
        {"b\xFF"
         "ad\nschlecht\n",
         1,
         "is no UTF-8"},
        {"bad \xED\xA0\nschlecht\n", 1, "is no UTF-8"},
        {"bad\nschlecht\\t\n", 2, R"(a \ stands before n, s, # or \ only)"},
        {"bad\nschlecht\\", 2, R"(a \ stands before n, s, # or \ only)"},
        {"bad %1 of %2\nschlecht %1\n", 2, DIFFERENT},
        {"bad\nschlecht %1\n", 2, DIFFERENT},
        {"Levels (*.level)\nEbenen\n", 2, DIFFERENT},
        {"good\nbesser\n", 1, "stands there twice, the first one counts"}};
    for (const auto& [pszLines, iLine, pszFault] : rows)
    {
        SCOPED_TRACE(pszLines);
        CTextCatalogue catalogue;
        WriteBytes(m_File, std::string("good\ngut\n\n") + pszLines + "\n\nlast\nletzter\n");
        m_Log.Clear();
        EXPECT_TRUE(catalogue.Read(m_File));
        EXPECT_EQ(m_Log.GetText(),
                  "[CTextCatalogue::Read] " + m_File + ", line " + std::to_string(iLine + 3) +
                      ": " + pszFault + "\n");
        EXPECT_EQ(catalogue.GetCount(), 2U);
        EXPECT_STREQ(catalogue.Find("good"), "gut");
        EXPECT_STREQ(catalogue.Find("last"), "letzter");
    }
    m_File = m_Folder.Path("none.texts");
    m_Log.Clear();
    EXPECT_FALSE(m_Catalogue.Read(m_File));
    const std::vector<std::string> lines = m_Log.TakeLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find(m_File), std::string::npos) << lines[0];
}
