// The two files of a level: what a save keeps, what it would replace, and what a fault leaves.

#include "editor/core/LevelRecovery.h"
#include "editor/core/SLevelText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "tests/editor/CLevelDocumentTest.h"
#include "tests/support/CLogCatcher.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

namespace
{

class CLevelFilesTest : public CLevelDocumentTest
{
protected:
    // Names of the files that a save would replace; a '!' before the level's own.
    std::string GetReplaced(const char* pszPath = nullptr, bool bConfirmed = false)
    {
        std::string strNames;
        for (const SReplacedFile& file : pszPath == nullptr
                                             ? m_Document.FindReplaced()
                                             : m_Document.FindReplaced(pszPath, bConfirmed))
        {
            strNames += strNames.empty() ? "" : " ";
            strNames += file.bOwn ? "!" : "";
            strNames += std::filesystem::path(file.strPath).filename().string();
        }
        return strNames;
    }

    struct SHand
    {
        const char* pszName;
        std::function<void()> before; // the level is opened
        std::function<void()> change;
        const char* pszReplaced;
    };

    std::vector<SHand> GetHands(const std::string& strLevel, const std::string& strHeights);
};

void SetTime(const std::string& strPath, time_t iSeconds, long iNanoseconds)
{
    const timespec times[] = {{iSeconds, iNanoseconds}, {iSeconds, iNanoseconds}};
    ASSERT_EQ(::utimensat(AT_FDCWD, strPath.c_str(), times, 0), 0);
}

// Changes a byte in the file itself, as a program does that writes in place.
void Poke(const std::string& strPath, long iPlace)
{
    FILE* pFile = std::fopen(strPath.c_str(), "r+b");
    ASSERT_NE(pFile, nullptr);
    std::fseek(pFile, iPlace, SEEK_SET);
    const int iByte = std::fgetc(pFile);
    std::fseek(pFile, iPlace, SEEK_SET);
    std::fputc(iByte ^ 1, pFile);
    std::fclose(pFile);
}

std::vector<CLevelFilesTest::SHand> CLevelFilesTest::GetHands(const std::string& strLevel,
                                                              const std::string& strHeights)
{
    const time_t iNow = ::time(nullptr);
    const time_t iYoung = iNow + 1000; // however long the machine takes to open it
    return {
        {"nothing", [] {}, [] {}, ""},
        {"another editor saves",
         [] {},
         [=, this]
         {
             CEditorHost host(m_Face);
             CLevelDocument other(host);
             ASSERT_TRUE(other.Open(strLevel.c_str()));
             other.SetMaterial("x.mat");
             const SBlockEntry entry = {1.0F, 0.0F, 1.0F};
             host.GetEngine().GetCWorld().GetCTerrain()->SetBlockHeights(0, 0, &entry, 1);
             ASSERT_TRUE(other.Save());
         },
         "!l.level !l.height"},
        {"heights in place, a whole second, the same size and time",
         [=, this] { SetTime(strHeights, iYoung, 0); },
         [=, this]
         {
             Poke(strHeights, 1000);
             SetTime(strHeights, iYoung, 0);
         },
         "!l.height"},
        {"the time alone of a file that was young",
         [=, this] { SetTime(strHeights, iYoung, 0); },
         [=, this] { SetTime(strHeights, iYoung + 5, 0); },
         ""},
        {"heights in place, long after",
         [=, this] { SetTime(strHeights, iNow - 1000, 5); },
         [=, this] { Poke(strHeights, 1000); },
         "!l.height"},
        {"the text, in place",
         [=, this] { SetTime(strLevel, iNow - 1000, 5); },
         [=, this] { Poke(strLevel, 3); },
         "!l.level"},
        {"files that have gone",
         [] {},
         [=, this]
         {
             std::filesystem::remove(strLevel);
             std::filesystem::remove(strHeights);
         },
         ""},
        {"heights that the plug-in writes",
         [] {},
         [=, this]
         {
             SetAll(9.0F);
             ASSERT_TRUE(GetTerrain()->SaveHeightMap(strHeights.c_str(), nullptr, 0, 0));
         },
         ""},
    };
}

struct SKeptCase
{
    const char* pszName;
    const char* pszBefore;
    const char* pszMaterial; // that is chosen; null: none
    const char* pszAfter;    // null: as before
};

constexpr SKeptCase KEPT[] = {
    {"nothing that is said changes",
     "// hand-made\r\n!NOTE( s )\r\n!height_map(string)\r\n!cells( i,i ) $far( f, 9 )\r\n"
     "note(\"a \\\"b\\\"\") { note( \"cells( 1, 1 )\" ) }\r\n"
     "Height_Map( /* here */ \"./l.height\" ) // and not there\r\ncells(16,16);\r\n"
     "!terrain_size( v3 ) terrain_size([ 160, 50.00, 160.0 ])\r\n",
     nullptr,
     nullptr},
    {"values change where they stand, in the last call of their name",
     "!height_map( s, f )\n!cells( i, i )\n!material( s )\n!terrain_size( v3 )\n"
     "$m( s, \"old.mat\" )\nmaterial( \"first.mat\" ) material( m ) // ground\n"
     "cells( 4, 16 ) height_map( \"l.height\", 2.50 ) terrain_size( [160.0, 50.0, 160.0] )",
     "new.mat",
     "!height_map( s, f )\n!cells( i, i )\n!material( s )\n!terrain_size( v3 )\n"
     "$m( s, \"old.mat\" )\nmaterial( \"first.mat\" ) material( \"new.mat\" ) // ground\n"
     "cells( 16, 16 ) height_map( \"l.height\", 2.50 ) terrain_size( [160.0, 50.0, 160.0] )"},
    {"what was not said comes at the end, with the file's line ends",
     "!height_map( s )\r\nheight_map( \"l.height\" ) // end",
     "new.mat",
     "!height_map( s )\r\nheight_map( \"l.height\" ) // end\r\n"
     "!terrain_size( v3 )\r\nterrain_size( [160.0, 50.0, 160.0] )\r\n"
     "!cells( i, i )\r\ncells( 16, 16 )\r\n!material( s )\r\nmaterial( \"new.mat\" )\r\n"},
    {"behind a comment and blocks that the end of the file closes",
     "!cells( i )\n!height_map( s )\n!x()\n!terrain_size( v3 )\n"
     "terrain_size( [160.0, 50.0, 160.0] ) height_map( \"l.height\" )\ncells( 3 )\nx() { x() { "
     "/* open *",
     nullptr,
     "!cells( i )\n!height_map( s )\n!x()\n!terrain_size( v3 )\n"
     "terrain_size( [160.0, 50.0, 160.0] ) height_map( \"l.height\" )\ncells( 3 )\nx() { x() { "
     "/* open **/\n}}\n!cells( i, i )\ncells( 16, 16 )\n"},
    {"before a name that its file does not end",
     "!height_map( s )\nheight_map( \"l.height\" ) !include( \"sub/common.txt )\n",
     "new.mat",
     "!height_map( s )\nheight_map( \"l.height\" ) \n!terrain_size( v3 )\n"
     "terrain_size( [160.0, 50.0, 160.0] )\n!cells( i, i )\ncells( 16, 16 )\n"
     "!material( s )\nmaterial( \"new.mat\" )\n!include( \"sub/common.txt )\n"},
    {"an included file is left alone",
     "!include( \"sub/common.txt\" )\nheight_map( \"l.height\" )\n",
     "new.mat",
     "!include( \"sub/common.txt\" )\nheight_map( \"l.height\" )\nmaterial( \"new.mat\" )\n"},
};

} // namespace

TEST_F(CLevelFilesTest, WhatTheEditorDoesNotKnowStays)
{
    MakeLevel("l.level", 12.0F);
    const std::string strLevel = m_Folder.Path("l.level");
    const std::string strCommon =
        "!height_map( s ) !material( s ) !cells( n, n )\ncells( 16, 16 )\n"
        "!terrain_size( v3 ) terrain_size( [160, 50, 160] )\n"
        "!owner( s ) owner( \"both\" ) material( \"common.mat\" )\n";
    WriteBytes(m_Folder.Path("sub/common.txt"), strCommon);
    for (const SKeptCase& kept : KEPT)
    {
        SCOPED_TRACE(kept.pszName);
        WriteBytes(strLevel, kept.pszBefore);
        CLogCatcher log; // of a stray ';'
        ASSERT_TRUE(m_Document.Open(strLevel.c_str()));
        if (kept.pszMaterial != nullptr)
        {
            m_Document.SetMaterial(kept.pszMaterial);
        }
        ASSERT_TRUE(m_Document.Save());
        EXPECT_EQ(ReadBytes(strLevel), kept.pszAfter != nullptr ? kept.pszAfter : kept.pszBefore);
        ASSERT_TRUE(m_Document.Open(strLevel.c_str()));
        EXPECT_EQ(m_Document.GetMaterial(), kept.pszMaterial != nullptr ? kept.pszMaterial : "");
    }
    EXPECT_EQ(ReadBytes(m_Folder.Path("sub/common.txt")), strCommon);

    // In another folder the included file is still the same one; without it nothing would open.
    std::filesystem::create_directories(m_Folder.Path("far/away"));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("far/away/m.level").c_str()));
    EXPECT_EQ(ReadBytes(m_Folder.Path("far/away/m.level")),
              "!include( \"./../../sub/common.txt\" )\nheight_map( \"m.height\" )\n"
              "material( \"new.mat\" )\n");
    EXPECT_TRUE(m_Document.Open(m_Folder.Path("far/away/m.level").c_str()));
}

TEST_F(CLevelFilesTest, WhatASaveWouldReplaceIsKnown)
{
    MakeLevel("other.level", 1.0F);
    MakeLevel("l.level", 2.0F);
    EXPECT_EQ(GetReplaced(), "");
    const std::string strOther = m_Folder.Path("other.level");
    EXPECT_EQ(GetReplaced(strOther.c_str()), "other.level other.height");
    EXPECT_EQ(GetReplaced(strOther.c_str(), true), "other.height");
    // The dialog has asked about "other", which is not there.
    EXPECT_EQ(GetReplaced(m_Folder.Path("other").c_str(), true), "other.level other.height");
    EXPECT_EQ(GetReplaced(m_Folder.Path("OTHER.level").c_str(), true), "other.level other.height")
        << "the file library finds it in that spelling, too";
    EXPECT_EQ(GetReplaced(m_Folder.Path("new.level").c_str(), true), "");
    ASSERT_TRUE(m_Document.Open(m_Folder.Path("other.height").c_str()));
    EXPECT_EQ(GetReplaced(strOther.c_str()), "other.level") << "its own heights, another's text";
}

TEST_F(CLevelFilesTest, ChangesByAnotherHandAreSeen)
{
    MakeLevel("l.level", 3.0F, 1024); // heights that are too large to be read at each save
    const std::string strLevel = m_Folder.Path("l.level");
    const std::string strHeights = m_Folder.Path("l.height");
    const std::string strText = ReadBytes(strLevel);
    const std::string strBytes = ReadBytes(strHeights);
    for (const SHand& hand : GetHands(strLevel, strHeights))
    {
        SCOPED_TRACE(hand.pszName);
        WriteBytes(strLevel, strText);
        WriteBytes(strHeights, strBytes);
        hand.before();
        ASSERT_TRUE(m_Document.Open(strLevel.c_str()));
        hand.change();
        EXPECT_EQ(GetReplaced(), hand.pszReplaced);
        ASSERT_TRUE(m_Document.Save());
        EXPECT_EQ(GetReplaced(), "") << "what was saved is ours";
    }
}

TEST_F(CLevelFilesTest, ChangesUnderARecoveredLevelAndBehindALinkAreSeen)
{
    MakeLevel("l.level", 3.0F);
    const std::string strLevel = m_Folder.Path("l.level");
    const std::string strHeights = m_Folder.Path("l.height");
    const std::string strLink = m_Folder.Path("link.level");
    // Files of which the run that died knew nothing.
    SLevelText text;
    text.strPath = strLevel;
    text.strHeightMap = strHeights;
    for (const bool bSavedSince : {false, true})
    {
        ASSERT_TRUE(OpenRecoveredLevel(m_Host, m_Document, text, strHeights.c_str(), bSavedSince));
        EXPECT_EQ(GetReplaced(), bSavedSince ? "!l.level !l.height" : "");
    }
    // The file behind a link counts, and the link stays one.
    std::filesystem::create_symlink("l.level", strLink);
    ASSERT_TRUE(m_Document.Open(strLink.c_str()));
    EXPECT_EQ(GetReplaced(), "");
    WriteBytes(strLevel, ReadBytes(strLevel) + "// mine\n");
    EXPECT_EQ(GetReplaced(), "!link.level");
    ASSERT_TRUE(m_Document.Save());
    EXPECT_TRUE(std::filesystem::is_symlink(strLink));
}

TEST_F(CLevelFilesTest, ARefusedSaveSaysWhyAndLeavesBothFiles)
{
    const std::string strLong(249, 'n'); // with ".level" a name of 255 bytes
    const std::string strFolder = m_Folder.GetFolder() + "/";

    struct SCase
    {
        const char* pszName;
        std::function<void()> before;
        std::string strSaveAs; // empty: Save
        std::string strLine;
    };

    const SCase cases[] = {
        {"text",
         [&] { ::chmod((strFolder + "l.level").c_str(), 0444); },
         "",
         "[CLevelDocument::Save] " + strFolder + "l.level: is read-only"},
        {"heights",
         [&] { ::chmod((strFolder + "l.height").c_str(), 0444); },
         "",
         "[WriteHeightFile] " + strFolder + "l.height: is read-only"},
        {"a name too long",
         [] {},
         strFolder + strLong + ".level",
         "[WriteHeightFile] " + strFolder + strLong + ".height: File name too long"},
        {"a folder",
         [&] { std::filesystem::create_directories(strFolder + "f.level"); },
         strFolder + "f.level",
         "[CLevelDocument::Save] " + strFolder + "f.level: is a folder"},
        {"heights elsewhere, where there is nothing any longer",
         [&]
         {
             WriteBytes(strFolder + "far/h.height", ReadBytes(strFolder + "l.height"));
             WriteBytes(strFolder + "l.level",
                        "!height_map( s )\nheight_map( \"" + strFolder + "far/h.height\" )\n");
             ASSERT_TRUE(m_Document.Open((strFolder + "l.level").c_str()));
             std::filesystem::remove_all(strFolder + "far");
         },
         "",
         "[WriteHeightFile] " + strFolder + "far/h.height: No such file or directory"},
    };
    for (const SCase& refused : cases)
    {
        SCOPED_TRACE(refused.pszName);
        ::unlink((strFolder + "l.level").c_str());
        ::unlink((strFolder + "l.height").c_str());
        MakeLevel("l.level", 4.0F);
        refused.before();
        Change(5.0F);
        const std::string strText = ReadBytes(strFolder + "l.level");
        const std::string strHeights = ReadBytes(strFolder + "l.height");
        CLogCatcher log;
        EXPECT_FALSE(refused.strSaveAs.empty() ? m_Document.Save()
                                               : m_Document.SaveAs(refused.strSaveAs.c_str()));
        EXPECT_EQ(log.TakeLines(), std::vector<std::string>{refused.strLine});
        EXPECT_EQ(m_Document.GetSaveOutcome(), "Nothing was written.");
        EXPECT_TRUE(ReadBytes(strFolder + "l.level") == strText);
        EXPECT_TRUE(ReadBytes(strFolder + "l.height") == strHeights);
        EXPECT_TRUE(m_Document.IsModified());
        EXPECT_EQ(m_Document.GetPath(), strFolder + "l.level");
    }
}
