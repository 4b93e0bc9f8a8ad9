#include "parser/TCParseFile.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CNumbers.h"
#include "tests/support/ParseNodes.h"
#include "tests/tellur/brushes/BrushParts.h"

#include <gtest/gtest.h>

namespace
{

std::vector<uint8_t> GetNoise(size_t nBytes)
{
    CNumbers numbers(static_cast<uint32_t>(nBytes));
    std::vector<uint8_t> bytes(nBytes);
    for (uint8_t& byte : bytes)
    {
        byte = static_cast<uint8_t>(numbers.Int(0, 255));
    }
    return bytes;
}

std::string GetSaved(const CTellurBitmap& bitmap, int iIndent)
{
    return GetWritten([&](fs::ifile& file) { EXPECT_TRUE(bitmap.Save(file, iIndent)); });
}

} // namespace

TEST(CTellurBitmap, KeepsTheFirstChannelOfASquareReadWithItsOwnRowLength)
{
    struct SCase
    {
        const char* pszName;
        uint32_t uWidth;
        uint32_t uHeight;
        uint32_t uBits;
    };

    const SCase cases[] = {{"grey square", 64, 64, 8},
                           {"one pixel", 1, 1, 8},
                           {"wide grey", 64, 32, 8},
                           {"tall grey", 5, 9, 8},
                           {"colour square", 7, 7, 24},
                           {"wide colour", 9, 4, 24},
                           {"tall colour with alpha", 3, 8, 32}};
    const CUserFolder folder;
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        const uint32_t uBytes = test.uBits / 8;
        const std::vector<uint8_t> pixels = GetNoise(size_t{test.uWidth} * test.uHeight * uBytes);
        WritePicture(folder.Path("a.png"), test.uWidth, test.uHeight, test.uBits, pixels);
        CTellurBitmap bitmap;
        ASSERT_TRUE(bitmap.Load("a.png"));
        const int iSide = static_cast<int>(std::min(test.uWidth, test.uHeight));
        EXPECT_STREQ(bitmap.GetPath(), "a.png");
        ASSERT_EQ(bitmap.GetXSize(), iSide);
        ASSERT_EQ(bitmap.GetYSize(), iSide);
        ASSERT_EQ(bitmap.GetImage()->GetBitsPerPixel(), 8U);
        for (int y = 0; y < iSide; ++y)
        {
            for (int x = 0; x < iSide; ++x)
            {
                const auto nPixel = static_cast<size_t>(y * iSide + x);
                ASSERT_EQ(bitmap.GetPoint(x, y), pixels[nPixel * uBytes]) << x << "," << y;
            }
        }
    }
}

TEST(CTellurBitmap, SaysWhatIsMissingInWholeLines)
{
    const CUserFolder folder;
    CLogCatcher log;
    CTellurBitmap bitmap;
    const std::string strNoImage = "[CTellurBitmap::GetXSize()] no current image";
    EXPECT_EQ(bitmap.GetXSize(), 0);
    EXPECT_EQ(bitmap.GetYSize(), 0);
    EXPECT_EQ(bitmap.GetPoint(0, 0), 0);
    EXPECT_EQ(bitmap.GetImage(), nullptr);
    EXPECT_EQ(bitmap.GetPath(), nullptr);
    const std::string strWritten =
        GetWritten([&](fs::ifile& file) { EXPECT_FALSE(bitmap.Save(file, 4)); });
    EXPECT_EQ(strWritten, "");
    EXPECT_FALSE(bitmap.LoadIni(nullptr));
    EXPECT_EQ(log.TakeLines(),
              (Lines{strNoImage, // the same text for both sides
                     strNoImage,
                     "[CTellurBitmap::GetPoint] no current image",
                     "[CTellurBitmap::Save] no bitmap file path",
                     "[CTellurBitmap::LoadIni] no key"}));

    // A failed load leaves the bitmap empty; no path leaves it alone.
    WritePicture(folder.Path("a.png"), 2, 2, 8, {1, 2, 3, 4});
    WriteBytes(folder.Path("bad.png"), "no picture");
    for (const char* pszPath : {"missing.png", "bad.png"})
    {
        ASSERT_TRUE(bitmap.Load("a.png"));
        EXPECT_FALSE(bitmap.Load(nullptr));
        EXPECT_EQ(log.TakeLines(), Lines{"[CTellurBitmap::Load] pszFilePath == NULL"});
        EXPECT_EQ(bitmap.GetXSize(), 2);
        EXPECT_FALSE(bitmap.Load(pszPath));
        const Lines lines = log.TakeLines();
        ASSERT_EQ(lines.size(), 2U); // the image library's own line first
        EXPECT_EQ(lines[1],
                  std::string("[CTellurBitmap::Load] unable to load bitmap file ") + pszPath);
        EXPECT_EQ(bitmap.GetPath(), nullptr);
        EXPECT_EQ(bitmap.GetImage(), nullptr);
    }
    // Its own path may be loaded again.
    ASSERT_TRUE(bitmap.Load("a.png"));
    EXPECT_TRUE(bitmap.Load(bitmap.GetPath()));
    EXPECT_STREQ(bitmap.GetPath(), "a.png");
    EXPECT_EQ(bitmap.GetPoint(1, 1), 4);
}

TEST(CTellurBitmap, EscapesThePathSoThatTheParserGivesItBack)
{
    struct SCase
    {
        const char* pszPath; // separators as they stand in file names
        const char* pszEscaped;
        const char* pszRead; // by the parser
    };

    // clang-format off
    const SCase cases[] = {
        {R"(rock.png)", R"(rock.png)", R"(rock.png)"},
        {R"(maps\rock.png)", R"(maps\\rock.png)", R"(maps\rock.png)"},
        {R"(.\a\b.png)", R"(.\\a\\b.png)", R"(.\a\b.png)"},
        {R"(maps\\rock.png)", R"(maps\\rock.png)", R"(maps\rock.png)"},
        {R"(maps\\\rock.png)", R"(maps\\\\rock.png)", R"(maps\\rock.png)"},
        {R"(maps/rock.png)", R"(maps/rock.png)", R"(maps/rock.png)"},
    };
    // clang-format on
    const CUserFolder folder;
    for (const char* pszFile : {"rock.png", "maps/rock.png", "a/b.png"})
    {
        WriteBytes(folder.Path(pszFile), ""); // makes the folder
        WritePicture(folder.Path(pszFile), 1, 1, 8, {200});
    }
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszPath);
        CTellurBitmap bitmap;
        ASSERT_TRUE(bitmap.Load(test.pszPath));
        const std::string strLine = std::string("path( \"") + test.pszEscaped + "\" )\n";
        EXPECT_EQ(GetSaved(bitmap, 3), "   " + strLine);

        WriteBytes(folder.Path("read.ini"), "!path( s )\n" + strLine);
        const NodeOwner pTree(TCParseFile("read.ini"));
        ASSERT_NE(pTree, nullptr);
        CTellurBitmap read;
        EXPECT_TRUE(read.LoadIni(pTree.get()));
        EXPECT_STREQ(read.GetPath(), test.pszRead);
        EXPECT_EQ(read.GetPoint(0, 0), 200);
    }
}

TEST(CTellurBitmap, LoadsTheLastPathOfABlock)
{
    const CUserFolder folder;
    WritePicture(folder.Path("a.png"), 1, 1, 8, {10});
    WritePicture(folder.Path("b.png"), 1, 1, 8, {20});
    CLogCatcher log;
    const auto load = [](CTellurBitmap& bitmap, const NodeOwner& pBlock)
    {
        return bitmap.LoadIni(pBlock.get());
    };

    CTellurBitmap bitmap;
    EXPECT_TRUE(load(bitmap,
                     Block({Node("path", {Text("missing.png")}),
                            Node("other", {Text("a.png")}),
                            Node("PATH", {Text("b.png")})})));
    EXPECT_STREQ(bitmap.GetPath(), "b.png");

    // Without a path nothing is loaded, and what is there stays.
    EXPECT_TRUE(load(bitmap, Block({Node("other", {Text("a.png")})})));
    EXPECT_TRUE(load(bitmap, Block({Node("path")})));
    EXPECT_TRUE(load(bitmap, Block({Node("path", {Text("a.png")}), Node("path", {Int(3)})})));
    EXPECT_STREQ(bitmap.GetPath(), "b.png");
    EXPECT_EQ(log.GetText(), "");

    EXPECT_FALSE(load(bitmap, Block({Node("path", {Text("missing.png")})})));
    EXPECT_EQ(bitmap.GetPath(), nullptr);
    log.Clear();

    // Paths end after 259 bytes.
    const std::string strLong(300, 'x');
    EXPECT_FALSE(load(bitmap, Block({Node("path", {Text(strLong.c_str())})})));
    EXPECT_EQ(log.TakeLines().back(),
              "[CTellurBitmap::Load] unable to load bitmap file " + std::string(259, 'x'));
}
