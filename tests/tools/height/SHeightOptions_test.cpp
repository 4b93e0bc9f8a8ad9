#include "engine/elevation/ElevationFormats.h"
#include "tools/height/SHeightOptions.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <tuple>

namespace
{

// Reads the words behind the program's name; whether it could, with the fault if not.
bool ReadOptions(const std::string& strWords, SHeightOptions& options, std::string& strFault)
{
    std::istringstream stream(strWords);
    const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    std::vector<const char*> line{"tellur-height"};
    for (const std::string& strWord : words)
    {
        line.push_back(strWord.c_str());
    }
    return options.Read(static_cast<int>(line.size()), line.data(), strFault);
}

TEST(SHeightOptions, ReadsWhatTheUsageSays)
{
    SHeightOptions options;
    std::string strFault;
    ASSERT_TRUE(ReadOptions("--size=513 convert in.r16 --spacing-x 74 --depth 92.5 out.tif "
                            "--max-height 2e3 --fit crop --crop-z 0 --unit 0.1 --rows 600 "
                            "--columns 800 --byte-order big --out-white 80 --out-byte-order little "
                            "--rotate 270 --flip xz --spacing auto --latitude -46.5 --base -12.5 "
                            "--out-base 3 --out-bits 16",
                            options,
                            strFault))
        << strFault;
    EXPECT_EQ(options.inputs, std::vector<std::string>{"in.r16"});
    EXPECT_EQ(options.strOutput, "out.tif");
    EXPECT_EQ(options.import.uSize, 513U);
    EXPECT_EQ(options.import.fSpacingX, 74.0F);
    EXPECT_EQ(options.import.fDepth, 92.5F);
    EXPECT_EQ(options.import.fMaxHeight, 2000.0F);
    EXPECT_EQ(options.import.eFit, EFit::Crop);
    EXPECT_EQ(options.import.cropX, std::nullopt);
    EXPECT_EQ(options.import.cropZ, 0U);
    EXPECT_EQ(options.import.dUnit, 0.1);
    EXPECT_EQ(options.import.uColumns, 800U);
    EXPECT_EQ(options.import.uRows, 600U);
    EXPECT_EQ(options.import.eByteOrder, EByteOrder::Big);
    EXPECT_EQ(options.import.orientation.eTurn, ETurn::Left);
    EXPECT_EQ(options.import.orientation.eFlip, EFlip::Both);
    EXPECT_EQ(options.import.eSpacing, ESpacing::Auto);
    EXPECT_EQ(options.import.latitude, -46.5);
    EXPECT_EQ(options.output.dWhite, 80.0);
    EXPECT_EQ(options.output.eByteOrder, EByteOrder::Little);
    EXPECT_EQ(options.import.dBase, -12.5);
    EXPECT_EQ(options.output.dBase, 3.0);
    EXPECT_EQ(options.output.uBits, 16U);

    // The word that a camera has for a point names a row of the table here.
    SHeightOptions target;
    ASSERT_TRUE(ReadOptions("convert a.asc b.png --tiles 3 --target ours", target, strFault));
    EXPECT_EQ(target.strTarget, "ours");
    EXPECT_EQ(target.uTiles, 3U);
    EXPECT_FALSE(target.target);

    SHeightOptions picture;
    ASSERT_TRUE(ReadOptions("picture a b c.png --pixels 300", picture, strFault));
    EXPECT_EQ(picture.inputs, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(picture.uPixels, 300U);
    EXPECT_FALSE(picture.eye);
    SHeightOptions view;
    ASSERT_TRUE(ReadOptions("picture a c.png --eye 1,-2.5,3 --target 4,5,6e2", view, strFault));
    EXPECT_EQ(view.eye->y, -2.5F);
    EXPECT_EQ(view.target->z, 600.0F);
    SHeightOptions info;
    ASSERT_TRUE(ReadOptions("info a b --columns 3", info, strFault));
    EXPECT_EQ(info.inputs, (std::vector<std::string>{"a", "b"}));
}

TEST(SHeightOptions, RefusesEachWrongLineWithItsReason)
{
    const std::tuple<const char*, std::string> aCases[] = {
        {"", "no command given"},
        {"export", "unknown command export"},
        {"info", "info needs files"},
        {"info a --size 9", "unknown option --size"},
        {"convert", "convert needs one input and one output"},
        {"picture a", "picture needs inputs and an output"},
        {"convert a b.png --sise 9", "unknown option --sise"},
        {"convert a b.png --pixels 9", "unknown option --pixels"},
        {"convert a b.png --size", "--size needs a value"},
        {"convert a b.png --size 1", "--size needs a whole number from 2 to 16385"},
        {"convert a b.png --size 16386", "--size needs a whole number from 2 to 16385"},
        {"convert a b.png --size 33x", "--size needs a whole number from 2 to 16385"},
        {"convert a b.png --crop-x -1", "--crop-x needs a whole number from 0 to 65535"},
        {"convert a b.png --width -3", "--width needs a number above 0"},
        {"convert a b.png --depth inf", "--depth needs a number above 0"},
        {"convert a b.png --white nan", "--white needs a number above 0"},
        {"convert a b.png --byte-order middle", "--byte-order needs little or big"},
        {"convert a b.png --fit both", "--fit needs resample or crop"},
        {"convert a b.png --rotate 45", "--rotate needs 90, 180 or 270"},
        {"convert a b.png --flip y", "--flip needs x, z or xz"},
        {"convert a b.png --spacing 30", "--spacing needs auto"},
        {"convert a b.png --latitude 90.5", "--latitude needs degrees from -90 to 90"},
        {"convert a b.png --crop-x 3", "--crop-x and --crop-z need --fit crop"},
        {"convert a b.png --width 1 --spacing-x 1",
         "--width and --spacing-x say the same, give one of them"},
        {"convert a b.png --depth 1 --spacing-z 1",
         "--depth and --spacing-z say the same, give one of them"},
        {"convert a b.png --eye 1,2,3", "unknown option --eye"},
        {"picture a b.png --eye 1,2", "--eye needs three numbers X,Y,Z"},
        {"picture a b.png --eye 1,2,3,4", "--eye needs three numbers X,Y,Z"},
        {"picture a b.png --target 1,2,1e10", "--target needs three numbers X,Y,Z"},
        {"picture a b.png --eye 1,2,3", "--eye and --target need each other"},
        {"picture a b.png --eye 1,2,3 --target 1,9,3",
         "--eye must not be straight above or below --target"},
        {"picture a b.png --eye 1,2,3 --target 4,5,6 --pixels 8193",
         "--pixels of a camera are at most 8192"},
        {"convert a b.png --base inf", "--base needs a number"},
        {"convert a b.png --tiles 2", "--tiles needs --target"},
        {"convert a b.png --tiles 65 --target c", "--tiles needs a whole number from 1 to 64"},
        {"convert a b.png --target c --out-bits 16",
         "--target and an option --out-... say the same, give one of them"},
        {"info a --target c", "unknown option --target"},
        {"convert a b.png --white 1 --unit 1", "--white and --unit say the same, give one of them"},
        {"convert a b.dem",
         "the extension of b.dem names no format (" + ListElevationFormats(true) + ")"},
    };
    for (const auto& [pszWords, strExpected] : aCases)
    {
        SHeightOptions options;
        std::string strFault;
        EXPECT_FALSE(ReadOptions(pszWords, options, strFault)) << pszWords;
        EXPECT_EQ(strFault, strExpected);
    }
}

} // namespace
