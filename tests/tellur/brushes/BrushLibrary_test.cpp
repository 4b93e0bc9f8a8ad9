// The file of the predefined brushes.

#include "host/IPluginBrushes.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/brushes/CFunctionContainer.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/functions/CPointHeightFunction.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tests/support/CNumbers.h"
#include "tests/tellur/brushes/BrushParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>

namespace
{

constexpr const char* DECLARATIONS = "!brush()\n"
                                     "!brush_name( s )\n"
                                     "!bitmap()\n"
                                     "!path( s )\n"
                                     "!function( s )\n"
                                     "!power_modifier( f )\n"
                                     "!usage_density( f )\n"
                                     "!fade_factor( f )\n"
                                     "!hardness( f )\n"
                                     "!vertical_distance( f )\n"
                                     "!extent( f )\n"
                                     "!mask( s )\n"
                                     "!attrib( s, s )\n"
                                     "\n";

// Names of the predefined brushes, "-" for one without.
std::string GetNames(const CBrushContainer& brushes)
{
    std::string strNames;
    for (const auto& pBrush : brushes.GetPredefined())
    {
        strNames += std::string(pBrush->GetName() != nullptr ? pBrush->GetName() : "-") + " ";
    }
    return strNames;
}

// A folder with a brush image, the real functions and a context that knows them.
class CBrushFileTest : public CPluginFixture
{
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(m_Folder.Path("a/b"));
        for (const char* pszFile : {"soft.png", "m.png", "a/b/c.png"})
        {
            WriteGrey(pszFile, 1, 1, {9});
        }
        CFunctionContainer& functions = *m_Plugin->GetFunctionContainer();
        ASSERT_TRUE(functions.AddFunction(new CRelativeHeightFunction));
        ASSERT_TRUE(functions.AddFunction(new CPointHeightFunction));
    }

    // Adds a brush with an image.
    void Add(const char* pszName, ITellurFunction* pFunction, const char* pszMask = nullptr)
    {
        CTellurBrush brush;
        brush.SetName(pszName);
        ASSERT_TRUE(brush.LoadBitmap("soft.png"));
        brush.SetFunction(pFunction);
        brush.SetMask(pszMask);
        m_Brushes.AddBrush(&brush, false);
    }

    size_t CountFiles() const
    {
        const std::filesystem::directory_iterator files(m_Folder.GetFolder());
        return static_cast<size_t>(std::distance(begin(files), end(files)));
    }

    CBrushContainer m_Brushes;
};

} // namespace

TEST_F(CBrushFileTest, WritesTheWholeFileAndReadsItBack)
{
    Add("Brush000", new CRelativeHeightFunction, "m.png");
    Add("Dot", new CPointHeightFunction);
    ASSERT_TRUE(m_Brushes.SavePredefinedBrushesToFile("b.ini"));
    const std::string strNumbers = "  power_modifier( 1.00000 )\n"
                                   "  usage_density( 1.00000 )\n"
                                   "  fade_factor( 0.00000 )\n"
                                   "  hardness( 0.00000 )\n"
                                   "  extent( 3200.00000 )\n"
                                   "  vertical_distance( 0.00000 )\n";
    const std::string strImage = "  bitmap()\n  {\n    path( \"soft.png\" )\n  }\n";
    const std::string strFile =
        DECLARATIONS + ("brush()\n{\n  brush_name( \"Brush000\")\n" + strImage) +
        "  function( \"RelativeHeightFunction\" )\n  {\n"
        "    attrib( \"m_Height\", \"500\" )\n  }\n" +
        strNumbers + "  mask( \"m.png\" )\n}\n\n" + "brush()\n{\n  brush_name( \"Dot\")\n" +
        strImage + "  function( \"PointHeightFunction\" )\n  {\n  }\n" + strNumbers + "}\n\n" +
        "\n";
    EXPECT_EQ(ReadBytes(m_Folder.Path("b.ini")), strFile);

    CBrushContainer again;
    again.LoadPredefinedBrushes("b.ini");
    EXPECT_EQ(GetNames(again), "Brush000 Dot ");
    ASSERT_TRUE(again.SavePredefinedBrushesToFile("again.ini"));
    EXPECT_EQ(ReadBytes(m_Folder.Path("again.ini")), strFile);
    again.LoadPredefinedBrushes("b.ini"); // appends
    EXPECT_EQ(GetNames(again), "Brush000 Dot Brush000 Dot ");
    EXPECT_EQ(m_Log.GetText(), "");

    again.GetPredefined()[0]->SetMask("a\\\\b\\c.png"); // goes out as it is
    ASSERT_TRUE(again.SavePredefinedBrushesToFile("again.ini"));
    EXPECT_NE(ReadBytes(m_Folder.Path("again.ini")).find("  mask( \"a\\\\b\\c.png\" )\n"),
              std::string::npos);
}

TEST_F(CBrushFileTest, ReadsBackEveryBitThatItWroteAndWritesTheSameBytesAgain)
{
    // Numbers of all sizes, rounded to what five decimals carry.
    CNumbers numbers(7);
    const auto next = [&numbers]
    {
        const float fScale = std::pow(10.0F, numbers.Float(-6.0F, 37.0F));
        char szText[80];
        std::snprintf(szText, sizeof(szText), "%6.5f", numbers.Float(-1.0F, 1.0F) * fScale);
        return std::strtof(szText, nullptr);
    };
    const char* names[] = {
        "say \"when\"", "C:\\hills\\", "two\nlines", "\\\"", "H\xC3\xBCgel {7} // no"};
    std::vector<std::unique_ptr<CTellurBrush>> brushes;
    for (int i = 0; i < 200; ++i)
    {
        brushes.push_back(std::make_unique<CTellurBrush>());
        CTellurBrush& brush = *brushes.back();
        brush.SetName(names[i % 5]);
        ASSERT_TRUE(brush.LoadBitmap("soft.png"));
        auto* pFunction = new CRelativeHeightFunction;
        pFunction->GetRTTIObject()
            ->FindField("m_Height")
            ->FromString(pFunction->GetRTTIObject(), std::to_string(next()).c_str());
        brush.SetFunction(pFunction);
        brush.SetPowerModifier(next());
        brush.SetUsageDensity(next());
        brush.SetFadeFactor(next());
        brush.SetHardness(next());
        brush.SetExtent(next());
        brush.SetVerticalDistance(next());
        m_Brushes.AddBrush(&brush, false);
    }
    ASSERT_TRUE(m_Brushes.SavePredefinedBrushesToFile("b.ini"));
    CBrushContainer again;
    again.LoadPredefinedBrushes("b.ini");
    ASSERT_EQ(again.GetPredefined().size(), brushes.size()) << m_Log.GetText();
    for (size_t i = 0; i < brushes.size(); ++i)
    {
        SCOPED_TRACE(i);
        const CTellurBrush& read = *again.GetPredefined()[i];
        const CTellurBrush& wrote = *brushes[i];
        EXPECT_STREQ(read.GetName(), wrote.GetName());
        EXPECT_EQ(read.GetPowerModifier(), wrote.GetPowerModifier());
        EXPECT_EQ(read.GetUsageDensity(), wrote.GetUsageDensity());
        EXPECT_EQ(read.GetFadeFactor(), wrote.GetFadeFactor());
        EXPECT_EQ(read.GetHardness(), wrote.GetHardness());
        EXPECT_EQ(read.GetExtent(), wrote.GetExtent());
        EXPECT_EQ(read.GetVerticalDistance(), wrote.GetVerticalDistance());
        const CRTTIField* pHeight = wrote.GetRTTIObject()->FindField("m_Height");
        EXPECT_EQ(pHeight->ToString(read.GetRTTIObject()),
                  pHeight->ToString(wrote.GetRTTIObject()));
    }
    ASSERT_TRUE(again.SavePredefinedBrushesToFile("again.ini"));
    EXPECT_TRUE(ReadBytes(m_Folder.Path("again.ini")) == ReadBytes(m_Folder.Path("b.ini")));
}

TEST_F(CBrushFileTest, ANumberThatIsNoneDoesNotMakeTheOthersUnreadable)
{
    Add("Odd", new CRelativeHeightFunction);
    Add("Even", new CRelativeHeightFunction);
    CTellurBrush& odd = *m_Brushes.GetPredefined()[0];
    odd.SetExtent(std::numeric_limits<float>::quiet_NaN());
    odd.SetFadeFactor(-std::numeric_limits<float>::infinity()); // its text stops the parser
    ASSERT_TRUE(m_Brushes.SavePredefinedBrushesToFile("odd.ini"));
    m_Brushes.LoadPredefinedBrushes("odd.ini");
    ASSERT_EQ(m_Brushes.GetPredefined().size(), 4U) << m_Log.GetText();
    EXPECT_EQ(m_Brushes.GetPredefined()[2]->GetExtent(), 0.0F);
    EXPECT_EQ(m_Brushes.GetPredefined()[2]->GetFadeFactor(), 0.0F);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CBrushFileTest, AFailedSaveLeavesTheOldFile)
{
    for (const char* pszPath : {static_cast<const char*>(nullptr), ""})
    {
        EXPECT_FALSE(m_Brushes.SavePredefinedBrushesToFile(pszPath));
        EXPECT_EQ(m_Log.TakeLines(),
                  Lines{"[CBrushContainer::SavePredefinedBrushesToFile] no file path"});
    }
    Add("Good", new CRelativeHeightFunction);
    ASSERT_TRUE(m_Brushes.SavePredefinedBrushesToFile("b.ini"));
    const std::string strOld = ReadBytes(m_Folder.Path("b.ini"));
    const size_t nFiles = CountFiles();

    // The disk is full: written out when the file is closed.
    EXPECT_FALSE(m_Brushes.SavePredefinedBrushesToFile("/dev/full"));
    EXPECT_EQ(m_Log.TakeLines(),
              Lines{"[CBrushContainer::SavePredefinedBrushesToFile] /dev/full: No space left on "
                    "device"});
    // A folder is no file.
    EXPECT_FALSE(m_Brushes.SavePredefinedBrushesToFile(m_Folder.GetFolder().c_str()));
    ASSERT_EQ(m_Log.GetText().rfind("[CBrushContainer::SavePredefinedBrushesToFile] /", 0), 0U);
    EXPECT_NE(m_Log.GetText().find(m_Folder.GetFolder()), std::string::npos);
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);

    // A brush that cannot be saved ends the whole save; one without a name is named by nothing.
    CTellurBrush noImage;
    noImage.SetName("Bare");
    m_Brushes.AddBrush(&noImage, false);
    Add("Behind", new CRelativeHeightFunction);
    EXPECT_FALSE(m_Brushes.SavePredefinedBrushesToFile("b.ini"));
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTellurBrush::Save] no bitmap",
                     "[CBrushContainer::SavePredefinedBrushesToFile] failed to save brush Bare"}));
    EXPECT_EQ(ReadBytes(m_Folder.Path("b.ini")), strOld);
    EXPECT_EQ(CountFiles(), nFiles);
}

TEST_F(CBrushFileTest, LoadsWhatItCanAndNamesTheNameless)
{
    const std::string strHead = std::string(DECLARATIONS) + "!Other( i )\n";
    WriteBytes(m_Folder.Path("b.ini"),
               strHead + "brush() { extent( 5 ) }\n"
                         "other( 3 )\n"
                         "BRUSH()\n{ Brush_Name( \"Hill\" ) /* a comment */ }\n"
                         "brush() { function( \"NoSuchFunction\" ) }\n"
                         "brush()\n"
                         "brush() { function( \"RelativeHeightFunction\" ) hardness( 0.5 ) }\n");
    m_Brushes.LoadPredefinedBrushes("b.ini");
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTellurBrush::Load] unrecognized function NoSuchFunction",
                     "[CTellurBrush::Load] no key"}));
    EXPECT_EQ(GetNames(m_Brushes), "Brush000 Hill Brush001 ");
    EXPECT_EQ(m_Brushes.GetPredefined()[0]->GetExtent(), 5.0F);
    EXPECT_EQ(m_Brushes.GetPredefined()[0]->GetPowerModifier(), 1.0F); // missing keys: defaults
    EXPECT_EQ(m_Brushes.GetPredefined()[2]->GetHardness(), 0.5F);

    // A missing file and one with an error add nothing.
    m_Brushes.LoadPredefinedBrushes("missing.ini");
    WriteBytes(m_Folder.Path("bad.ini"), strHead + "brush() { extent( 5 ) }\nbrush( 7 ) {\n");
    m_Brushes.LoadPredefinedBrushes("bad.ini");
    EXPECT_EQ(m_Brushes.GetPredefined().size(), 3U);
    m_Brushes.ClearPredefined();
    EXPECT_EQ(GetNames(m_Brushes), "");
}

TEST_F(CBrushFileTest, WhatIsNotTakenIsNamedWithBrushAndLine)
{
    const auto load = [this](const std::string& strText)
    {
        WriteBytes(m_Folder.Path("b.ini"), DECLARATIONS + strText);
        std::vector<SBrushFault> faults;
        m_Brushes.LoadPredefinedBrushes("b.ini", &faults);
        Lines lines;
        for (const SBrushFault& fault : faults)
        {
            lines.push_back(std::to_string(fault.iLine) + " " + fault.strBrush + ": " +
                            fault.strFault);
        }
        return lines;
    };
    const std::string strImage = "bitmap() { path( \"soft.png\" ) }\n";
    const std::string strGood = strImage + "function( \"PointHeightFunction\" )\n";
    EXPECT_EQ(load("brush() { brush_name( \"A\" )\n" + strGood + "mask( \"m.png\" ) }\n"), Lines{});
    EXPECT_EQ(m_Log.GetText(), "");
    EXPECT_EQ(load("brush() { brush_name( \"A\" )\n" + strGood +
                   "mask( \"no.png\" ) }\n"
                   "brush() { brush_name( \"B\" )\nfunction( \"Other\" ) }\n"
                   "brush()\n{ brush_name( \"C\" )\n"
                   "bitmap() {\n path( \"none.png\" ) }\n}\n"
                   "brush()\n"),
              (Lines{"18 A: mask( \"no.png\" ) cannot be loaded, it has no mask",
                     "20 B: function( \"Other\" ) is unknown, the brush is left out",
                     "21 C: it has no function, so the brushes cannot be saved",
                     "24 C: path( \"none.png\" ) cannot be loaded: it has no image, so the brushes "
                     "cannot be saved",
                     "26 : it is empty and left out"}));
    WriteGrey("a\"b.png", 1, 1, {9});
    EXPECT_EQ(load("brush() { brush_name( \"A\" ) function( \"PointHeightFunction\" )\n"
                   "bitmap() { path( \"a\\\"b.png\" ) } }\n"),
              (Lines{"16 A: a path with a quotation mark makes the saved brushes unreadable"}));
    // What the log says of the whole file or of one key that another one made good again.
    EXPECT_EQ(load("brush() { brush_name( A ) "),
              (Lines{"0 : not every value is as written, the "
                     "parser says where",
                     "15 ???parser error???: it has no "
                     "function, so the brushes cannot be saved",
                     "15 ???parser error???: it has no image, "
                     "so the brushes cannot be saved"}));
    EXPECT_EQ(load("brush() { " + strGood + "bitmap() { path( \"none.png\" ) } }\n"),
              Lines{"15 : not all of it could be used"});
    EXPECT_EQ(load("brush( ) { brush_name( 7 }\n"),
              Lines{"0 : cannot be read, none of its brushes is there"});
    std::vector<SBrushFault> none;
    EXPECT_FALSE(m_Brushes.LoadPredefinedBrushes("missing.ini", &none));
    EXPECT_TRUE(none.empty());
    m_Log.Clear();
}

TEST_F(CBrushFileTest, OfACutFileNoHalfValueIsRead)
{
    Add("Ridge", new CRelativeHeightFunction, "m.png");
    m_Brushes.GetPredefined()[0]->SetPowerModifier(7.25F);
    m_Brushes.GetPredefined()[0]->SetExtent(777.25F);
    ASSERT_TRUE(m_Brushes.SavePredefinedBrushesToFile("b.ini"));
    const std::string strFile = ReadBytes(m_Folder.Path("b.ini"));
    size_t nWhole = 0;
    for (size_t nBytes = 0; nBytes <= strFile.size(); ++nBytes)
    {
        SCOPED_TRACE(nBytes);
        WriteBytes(m_Folder.Path("cut.ini"), strFile.substr(0, nBytes));
        CBrushContainer cut;
        cut.LoadPredefinedBrushes("cut.ini");
        ASSERT_LE(cut.GetPredefined().size(), 1U);
        for (const auto& pBrush : cut.GetPredefined()) // a block may end with the file
        {
            const std::string strName = pBrush->GetName();
            EXPECT_TRUE(strName == "Ridge" || strName == "Brush000") << strName;
            const float fPower = pBrush->GetPowerModifier();
            const float fExtent = pBrush->GetExtent();
            EXPECT_TRUE(fPower == 7.25F || fPower == 1.0F) << fPower;
            EXPECT_TRUE(fExtent == 777.25F || fExtent == 3200.0F) << fExtent;
            nWhole += pBrush->GetMaskPath() == "m.png" ? 1U : 0U;
        }
    }
    EXPECT_GE(nWhole, 4U); // the cuts in and behind the last lines
    m_Log.Clear();
}
