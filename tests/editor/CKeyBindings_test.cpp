// The user's own files: keys and recent levels.

#include "editor/core/CKeyBindings.h"
#include "editor/core/CRecentFiles.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

namespace
{

CKeyBindings MakeKeys()
{
    CKeyBindings keys;
    keys.Add({"edit.undo", "Undo", "", {'Z', KEY_CONTROL}, {}, -1});
    keys.Add({"view.frame", "Frame", "view", {'F', 0}, {}, -1});
    keys.Add({"panel.fill", "Fill", "panel", {'F', 0}, {}, -1});
    keys.AddActions({{7, 0, "Toggle terrain modification mode", 'T', 8},
                     {7, 1, "Increase Tellur brush size", 0, 0},
                     {7, 2, "Decrease Tellur brush size", 0, 0},
                     {7, 3, "Another action", 0, 0}},
                    "view");
    return keys;
}

} // namespace

TEST(CKeyBindings, KeysMeanOneCommandInEachContext)
{
    CKeyBindings keys = MakeKeys();
    EXPECT_EQ(keys.FindById("action.7.0")->key, (SKeyChord{'T', KEY_CONTROL}));
    EXPECT_EQ(keys.FindById("action.7.3")->key.uKey, 0U);
    EXPECT_FALSE(keys.FindClash().has_value()) << "other contexts, and no key at all, do not clash";

    ASSERT_TRUE(keys.Set("action.7.3", {'Z', KEY_CONTROL})); // Undo counts everywhere
    ASSERT_TRUE(keys.FindClash().has_value());
    EXPECT_EQ(keys.GetCommands()[keys.FindClash()->first].strId, "edit.undo");
    EXPECT_EQ(keys.GetCommands()[keys.FindClash()->second].strId, "action.7.3");
    keys.Reset();
    EXPECT_FALSE(keys.FindClash().has_value());
    EXPECT_FALSE(keys.Set("nothing", {'A', 0}));
}

TEST(CKeyBindings, ACommandOfTheProgramTakesADefaultKeyOverButNotAUsersOwn)
{
    const CTempFolder folder;
    const std::string strFile = folder.Path("keys.txt");
    const SKeyChord key{'T', KEY_CONTROL};
    for (const bool bOwn : {false, true})
    {
        CKeyBindings keys;
        keys.Load(strFile);
        keys.AddActions({{7, 0, "Toggle terrain modification mode", 'T', 8}}, "");
        keys.Add({"tool.toggle", "Toggle", "", key, {}, -1});
        EXPECT_EQ(keys.FindById("tool.toggle")->key, key);
        EXPECT_EQ(keys.FindById("action.7.0")->key, (bOwn ? SKeyChord{'Y', 0} : SKeyChord()));
        if (bOwn) // a command that came to the program later
        {
            keys.Add({"brush.larger", "Larger", "", {'Y', 0}, {}, -1});
            EXPECT_EQ(keys.FindById("brush.larger")->key, SKeyChord());
        }
        EXPECT_FALSE(keys.FindClash().has_value());
        keys.Set("action.7.0", {'Y', 0});
        ASSERT_TRUE(keys.Save(strFile));
        keys.Reset();
        EXPECT_EQ(keys.FindById("action.7.0")->key, SKeyChord());
    }
}

TEST(CKeyBindings, ChangesAreKeptAndThoseOfUnknownCommandsToo)
{
    const CTempFolder folder;
    const std::string strFile = folder.Path("config/keys.txt");
    CKeyBindings keys = MakeKeys();
    keys.Set("edit.undo", {0x01000003, KEY_ALT | KEY_SHIFT});
    keys.Set("action.7.0", {});
    ASSERT_TRUE(keys.Save(strFile));
    {
        CKeyBindings without; // a run with another plug-in
        ASSERT_TRUE(without.Load(strFile));
        without.Add({"edit.undo", "Undo", "", {'Z', KEY_CONTROL}, {}, -1});
        ASSERT_TRUE(without.Save(strFile));
    }
    CKeyBindings again;
    ASSERT_TRUE(again.Load(strFile)); // before the commands are known
    const CKeyBindings all = MakeKeys();
    for (const SKeyCommand& command : all.GetCommands())
    {
        again.Add(command);
    }
    EXPECT_EQ(again.FindById("edit.undo")->key, (SKeyChord{0x01000003, KEY_ALT | KEY_SHIFT}));
    EXPECT_EQ(again.FindById("action.7.0")->key, SKeyChord());
    EXPECT_EQ(again.FindById("view.frame")->key, (SKeyChord{'F', 0}));

    WriteBytes(strFile, "!key( s, i, i )\nkey( \"edit.undo\", ");
    CLogCatcher log;
    CKeyBindings damaged = MakeKeys();
    EXPECT_FALSE(damaged.Load(strFile));
    EXPECT_FALSE(log.TakeLines().empty());
    EXPECT_EQ(damaged.FindById("edit.undo")->key, (SKeyChord{'Z', KEY_CONTROL}));
    ASSERT_TRUE(damaged.Save(strFile));
    const std::string strKept = ReadBytes(strFile + ".bak");
    EXPECT_NE(strKept.find("edit.undo"), std::string::npos);
    WriteBytes(strFile, "!key(");
    EXPECT_FALSE(damaged.Load(strFile));
    ASSERT_TRUE(damaged.Save(strFile));
    EXPECT_EQ(ReadBytes(strFile + ".bak"), strKept);
    EXPECT_EQ(ReadBytes(strFile + ".bak2"), "!key(");
}

TEST(CRecentFiles, TheLastTenAreKeptNewestFirst)
{
    const CTempFolder folder;
    const std::string strFile = folder.Path("config/recent.txt");
    {
        CRecentFiles files(strFile);
        EXPECT_TRUE(files.GetPaths().empty());
        for (int i = 0; i < 12; ++i)
        {
            ASSERT_TRUE(files.Add("/levels/" + std::to_string(i) + " \"x\\y\".level"));
        }
        ASSERT_TRUE(files.Add("/levels/5 \"x\\y\".level"));
    }
    CRecentFiles files(strFile);
    ASSERT_EQ(files.GetPaths().size(), 10U);
    EXPECT_EQ(files.GetPaths()[0], "/levels/5 \"x\\y\".level");
    EXPECT_EQ(files.GetPaths()[1], "/levels/11 \"x\\y\".level");
    EXPECT_EQ(files.GetPaths()[9], "/levels/2 \"x\\y\".level");
    ASSERT_TRUE(files.Remove("/levels/11 \"x\\y\".level"));
    EXPECT_EQ(CRecentFiles(strFile).GetPaths().size(), 9U);

    CLogCatcher log;
    WriteBytes(folder.Path("file"), "");
    CRecentFiles nowhere(folder.Path("file/recent.txt"));
    EXPECT_FALSE(nowhere.Add("/a.level"));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_EQ(nowhere.GetPaths().size(), 1U);
}
