// Which corner of a file becomes which corner of the terrain, how far its samples are apart, and
// where on a map they lie.

#include "engine/elevation/DegreeLength.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightExport.h"
#include "engine/elevation/ImportPlan.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

namespace
{

constexpr uint32_t WIDE = 37;
constexpr uint32_t DEEP = 21;
using Corners = std::array<float, 4>; // north-west, north-east, south-west, south-east

class HeightPlace : public testing::Test
{
protected:
    // A file whose corners are 100, 200, 300 and 400, and flat between them.
    void WriteCorners(const std::string& strName, uint32_t uRows, const SExportOptions& options)
    {
        m_Path = m_Folder.Path(strName.c_str());
        std::vector<float> heights(size_t{WIDE} * uRows, 50.0F);
        heights[0] = 100.0F;
        heights[WIDE - 1] = 200.0F;
        heights[size_t{WIDE} * (uRows - 1)] = 300.0F;
        heights.back() = 400.0F;
        const SSampleView view{heights.data(), WIDE, uRows};
        const SVec3 size{36.0F, 1000.0F, 20.0F};
        SExportPlan plan;
        ASSERT_TRUE(PlanExport(m_Path.c_str(), view, size, options, plan));
        ASSERT_TRUE(ExportHeights(m_Path.c_str(), view, size, plan));
    }

    // Cells of 30 x 20 in the map's unit, the first sample at that place.
    static SGeoTags MakeTags(double dX, double dY, double dCellX, double dCellY, bool bDegrees)
    {
        SGeoTags geo;
        geo.bKnown = true;
        geo.bDegrees = bDegrees;
        geo.first = {dX, dY};
        geo.lastX = {dX + dCellX * (WIDE - 1), dY};
        geo.lastZ = {dX, dY - dCellY * (DEEP - 1)};
        return geo;
    }

    bool Import() { return ImportHeights(m_Path.c_str(), m_Options, m_Field, m_Report); }

    Corners GetCorners() const
    {
        const size_t nLastRow = size_t{m_Field.uSizeX} * (m_Field.uSizeZ - 1);
        return {m_Field.pHeights[0],
                m_Field.pHeights[m_Field.uSizeX - 1],
                m_Field.pHeights[nLastRow],
                m_Field.pHeights[nLastRow + m_Field.uSizeX - 1]};
    }

    // What the terrain that was just made has, exported again.
    std::string Export(const char* pszName, SExportPlan& plan)
    {
        const std::string strPath = m_Folder.Path(pszName);
        const SSampleView view{m_Field.pHeights.get(), m_Field.uSizeX, m_Field.uSizeZ};
        SExportOptions options;
        options.geo = m_Field.geo;
        EXPECT_TRUE(PlanExport(strPath.c_str(), view, m_Field.size, options, plan));
        EXPECT_TRUE(ExportHeights(strPath.c_str(), view, m_Field.size, plan));
        return strPath;
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    std::string m_Path;
    SImportOptions m_Options;
    SHeightField m_Field;
    SImportReport m_Report;
};

// On paper: a sheet with four corners is turned, then mirrored.
Corners TurnCorners(Corners c, const SOrientation& orientation)
{
    for (int i = 0; i < static_cast<int>(orientation.eTurn); ++i)
    {
        c = {c[2], c[0], c[3], c[1]};
    }
    const int iFlip = static_cast<int>(orientation.eFlip);
    c = (iFlip & 1) != 0 ? Corners{c[1], c[0], c[3], c[2]} : c;
    return (iFlip & 2) != 0 ? Corners{c[2], c[3], c[0], c[1]} : c;
}

float GetHeightOfName(const std::string& strName)
{
    return strName == "north-west"   ? 100.0F
           : strName == "north-east" ? 200.0F
           : strName == "south-west" ? 300.0F
                                     : 400.0F;
}

TEST_F(HeightPlace, EachCornerOfEveryFormatEndsWhereItWasPromisedInEveryOrientation)
{
    for (const SElevationFormat& format : GetElevationFormats())
    {
        const bool bSquare = format.pszSquareFile != nullptr;
        const double dUnit = format.bTerrain ? 0.0 : 1.0;
        ASSERT_NO_FATAL_FAILURE(WriteCorners(std::string("corners.") + format.extensions[0],
                                             bSquare ? WIDE : DEEP,
                                             {.dUnit = dUnit}));
        for (int i = 0; i < 32; ++i)
        {
            SCOPED_TRACE(testing::Message() << m_Path << ", orientation " << i);
            m_Options = {.uColumns = bSquare ? 0 : WIDE, .dUnit = dUnit};
            m_Options.orientation = {static_cast<ETurn>(i % 4), static_cast<EFlip>(i / 4 % 4)};
            m_Options.eFit = i < 16 ? EFit::Keep : EFit::Resample;
            ASSERT_TRUE(Import());
            const bool bSideways = i % 2 == 1;
            if (i < 16)
            {
                EXPECT_EQ(m_Field.uSizeX, bSideways && !bSquare ? DEEP : WIDE);
            }
            const Corners corners = GetCorners();
            EXPECT_EQ(corners, TurnCorners({100, 200, 300, 400}, m_Options.orientation));
            const auto names = m_Options.orientation.GetCornerNames();
            const auto samples = m_Options.orientation.GetCorners(2, 2);
            for (size_t n = 0; n < corners.size(); ++n)
            {
                EXPECT_EQ(GetHeightOfName(names[n]), corners[n]) << "as a person is told";
                EXPECT_EQ(static_cast<float>(samples[n] + 1) * 100.0F, corners[n]);
            }
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

// The usual series for the length of a degree, good to a tenth of a metre.
double GetEast(double dLatitude)
{
    const double d = dLatitude * std::numbers::pi / 180.0;
    return 111412.84 * std::cos(d) - 93.5 * std::cos(3 * d) + 0.118 * std::cos(5 * d);
}

double GetNorth(double dLatitude)
{
    const double d = dLatitude * std::numbers::pi / 180.0;
    return 111132.92 - 559.82 * std::cos(2 * d) + 1.175 * std::cos(4 * d);
}

TEST_F(HeightPlace, DegreesBecomeMetresByTheLatitudeOfTheTile)
{
    m_Options.eFit = EFit::Keep;
    m_Options.eSpacing = ESpacing::Auto;
    const std::pair<const char*, double> aTiles[] = {
        {"N46E007.hgt", 46.5}, {"dem_s33w071.SRTMGL1.hgt", -32.5}, {"n00E099-old.hgt", 0.5}};
    for (const auto& [pszName, dLatitude] : aTiles)
    {
        SCOPED_TRACE(pszName);
        ASSERT_NO_FATAL_FAILURE(WriteCorners(pszName, WIDE, {}));
        ASSERT_TRUE(Import());
        EXPECT_NEAR(m_Field.size.x / GetEast(dLatitude), 1.0, 1e-4);
        EXPECT_NEAR(m_Field.size.z / GetNorth(dLatitude), 1.0, 1e-4);
        EXPECT_EQ(m_Field.geo.GetMiddleY(), dLatitude);
    }
    m_Options.dUnit = 100.0; // centimetres
    m_Options.orientation.eTurn = ETurn::Left;
    ASSERT_TRUE(Import());
    EXPECT_NEAR(m_Field.size.x / GetNorth(0.5), 100.0, 1e-2);
    EXPECT_NEAR(m_Field.size.z / GetEast(0.5), 100.0, 1e-2);

    for (const char* pszName : {"white.hgt", "xN46E007.hgt", "N46E0071.hgt", "N90E007.hgt"})
    {
        SCOPED_TRACE(pszName);
        m_Options = {.eFit = EFit::Keep, .eSpacing = ESpacing::Auto};
        ASSERT_NO_FATAL_FAILURE(WriteCorners(pszName, WIDE, {}));
        EXPECT_FALSE(Import());
        EXPECT_EQ(m_Log.TakeLines(),
                  std::vector<std::string>{
                      "[ImportHeights] " + m_Path +
                      ": its spacing is in degrees, and neither its tags nor its name say a "
                      "latitude (as N46E007 does): give the latitude or the spacing"});
        m_Options.latitude = 60.0;
        ASSERT_TRUE(Import());
        EXPECT_NEAR(m_Field.size.x / GetEast(60.0), 1.0, 1e-4);
        EXPECT_FALSE(m_Field.geo.bKnown);
        m_Options = {
            .eFit = EFit::Keep, .fDepth = 9.0F, .fSpacingX = 2.0F, .eSpacing = ESpacing::Auto};
        ASSERT_TRUE(Import());
        EXPECT_EQ(m_Field.size.x, 72.0F);
        EXPECT_EQ(m_Field.size.z, 9.0F);
    }
}

TEST_F(HeightPlace, AGeoTiffSaysInItsTagsWhetherItsSpacingIsALength)
{
    m_Options.eFit = EFit::Keep;
    SExportOptions options;
    options.geo = MakeTags(-70.5, 51.0, 0.01, 0.02, true); // the middle is 50.8 north
    ASSERT_NO_FATAL_FAILURE(WriteCorners("degrees.tif", DEEP, options));
    ASSERT_TRUE(Import());
    EXPECT_NEAR(m_Field.size.x / (0.36 * GetEast(50.8)), 1.0, 1e-4);
    EXPECT_NEAR(m_Field.size.z / (0.40 * GetNorth(50.8)), 1.0, 1e-4);
    // A window has its own middle, and rows that run north their own length.
    m_Options.eFit = EFit::Crop;
    m_Options.uSize = 11;
    m_Options.cropX = 5;
    m_Options.cropZ = 10;
    ASSERT_TRUE(Import());
    EXPECT_NEAR(m_Field.geo.first.dX, -70.45, 1e-9);
    EXPECT_NEAR(m_Field.geo.first.dY, 50.8, 1e-9);
    EXPECT_NEAR(m_Field.size.x / (0.1 * GetEast(50.7)), 1.0, 1e-4);
    m_Options = {.eFit = EFit::Keep};
    m_Options.orientation.eTurn = ETurn::Right;
    ASSERT_TRUE(Import());
    SExportPlan plan;
    m_Path = Export("turned.tif", plan);
    m_Options = {.eFit = EFit::Keep};
    ASSERT_TRUE(Import());
    EXPECT_NEAR(m_Field.size.x / (0.40 * GetNorth(50.8)), 1.0, 1e-4);
    EXPECT_NEAR(m_Field.size.z / (0.36 * GetEast(50.8)), 1.0, 1e-4);
    EXPECT_NEAR(m_Field.geo.first.dY, 50.6, 1e-9) << "the south-west";

    options.geo = MakeTags(376328.66, 3807902.83, 30.0, 20.0, false);
    ASSERT_NO_FATAL_FAILURE(WriteCorners("metres.tif", DEEP, options));
    ASSERT_TRUE(Import());
    EXPECT_EQ(m_Field.size.x, 36 * 30.0F);
    EXPECT_EQ(m_Field.size.z, 20 * 20.0F);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(HeightPlace, ThePlaceOfATextGridGoesThroughAGeoTiffAndBack)
{
    const std::string strHeader = "ncols 3\nnrows 2\nxllcorner 500000.25\nyllcorner 4000000.5\n"
                                  "cellsize 10\nNODATA_value -9999\n";
    m_Path = m_Folder.Path("a.asc");
    WriteBytes(m_Path, strHeader + "100 50 200\n300 50 400\n");
    m_Options.eFit = EFit::Keep;
    ASSERT_TRUE(Import());
    SExportPlan plan;
    m_Path = Export("b.tif", plan);
    ASSERT_TRUE(Import());
    EXPECT_EQ(m_Field.geo.first.dX, 500005.25) << "the sample, not the corner of its cell";
    EXPECT_EQ(m_Field.geo.first.dY, 4000015.5);
    EXPECT_EQ(ReadBytes(Export("c.asc", plan)).substr(0, strHeader.size()), strHeader);

    // Samples in other rows than those that run east are more than the format can say.
    m_Options.orientation.eTurn = ETurn::Right;
    ASSERT_TRUE(Import());
    const std::string strTurned = ReadBytes(Export("d.asc", plan));
    EXPECT_TRUE(strTurned.starts_with("ncols 2\nnrows 3\nxllcenter 0\nyllcenter 0\n")) << strTurned;
    EXPECT_EQ(std::count(plan.lines.begin(),
                         plan.lines.end(),
                         "note: the place on the map is not written: its rows must run from west "
                         "to east, from the north on"),
              1);
    m_Path = Export("e.tif", plan);
    m_Options.orientation = {ETurn::Left, EFlip::None}; // and back again
    ASSERT_TRUE(Import());
    EXPECT_EQ(ReadBytes(Export("f.asc", plan)).substr(0, strHeader.size()), strHeader);

    // A height that is the number for voids would become one.
    m_Field.pHeights[4] = -9999.0F;
    const std::string strText = ReadBytes(Export("g.asc", plan));
    EXPECT_EQ(strText.find("NODATA"), std::string::npos) << strText;
}

TEST_F(HeightPlace, GroundWithoutAPlaceGetsNoneByWayOfAFile)
{
    m_Options.eFit = EFit::Keep;
    for (const char* pszName : {"flat.asc", "flat.tif"})
    {
        for (const float fWidth : {36.0F, 1.8F}) // cells like lengths, and like degrees
        {
            SCOPED_TRACE(testing::Message() << pszName << ", width " << fWidth);
            ASSERT_TRUE(m_Field.Allocate(WIDE, DEEP));
            std::fill_n(m_Field.pHeights.get(), m_Field.GetCount(), 5.0F);
            m_Field.size = {fWidth, 1000.0F, fWidth};
            m_Field.geo = {};
            SExportPlan plan;
            m_Path = Export(pszName, plan);
            ASSERT_TRUE(Import());
            EXPECT_FALSE(m_Field.geo.bKnown);
            EXPECT_EQ(m_Field.size.x, fWidth);
            EXPECT_EQ(std::count_if(m_Report.lines.begin(),
                                    m_Report.lines.end(),
                                    [](const std::string& s) { return s.starts_with("warning"); }),
                      0);
        }
    }
    // A tile at the equator and Greenwich is a place.
    m_Path = m_Folder.Path("greenwich.asc");
    WriteBytes(m_Path, "ncols 2 nrows 2 xllcorner 0 yllcorner 0 cellsize 0.01 1 2 3 4");
    ASSERT_TRUE(Import());
    EXPECT_TRUE(m_Field.geo.bKnown && m_Field.geo.bDegrees);
}

TEST_F(HeightPlace, APlaceThatCannotBeIsOneLineAndNothingIsMadeOfIt)
{
    m_Options.eFit = EFit::Keep;
    const auto expectNoPlace = [this]
    {
        SCOPED_TRACE(m_Path);
        ASSERT_TRUE(Import());
        EXPECT_FALSE(m_Field.geo.bKnown);
        EXPECT_EQ(std::count(m_Report.lines.begin(),
                             m_Report.lines.end(),
                             "warning: the place that the file says cannot be, and is not used"),
                  1);
    };
    for (const char* pszCorner : {"inf", "nan", "-1.7e308"})
    {
        m_Path = m_Folder.Path(pszCorner) + ".asc";
        WriteBytes(m_Path,
                   "ncols 3 nrows 2 xllcorner " + std::string(pszCorner) +
                       " yllcorner 1.7e308 cellsize 2e307 1 2 3 4 5 6");
        m_Options.fSpacingX = m_Options.fSpacingZ = 1.0F;
        expectNoPlace();
    }
    SExportOptions options;
    options.geo = MakeTags(376328.625, 3807902.75, 30.0, 20.0, false);
    options.geo.bCells = false;
    for (const double dBad : {HUGE_VAL, std::nan("")})
    {
        ASSERT_NO_FATAL_FAILURE(WriteCorners("bad.tif", DEEP, options));
        std::string strBytes = ReadBytes(m_Path);
        const auto toBytes = [](double d)
        {
            return std::string(reinterpret_cast<const char*>(&d), sizeof(d));
        };
        const size_t nAt = strBytes.find(toBytes(options.geo.first.dX));
        ASSERT_NE(nAt, std::string::npos);
        WriteBytes(m_Path, strBytes.replace(nAt, sizeof(double), toBytes(dBad)));
        expectNoPlace();
    }
    // At a pole a degree to the east is no length.
    options.geo = MakeTags(10.0, 90.0 + 0.005 * (DEEP - 1), 0.01, 0.01, true);
    ASSERT_NO_FATAL_FAILURE(WriteCorners("pole.tif", DEEP, options));
    m_Options = {.eFit = EFit::Keep};
    EXPECT_FALSE(Import());
    ASSERT_NO_FATAL_FAILURE(WriteCorners("some.hgt", WIDE, {}));
    m_Options.latitude = -90.0;
    EXPECT_FALSE(Import());
    const std::string strEnd = ": a degree to the east has no length at latitude ";
    EXPECT_EQ(m_Log.TakeLines(),
              (std::vector<std::string>{
                  "[ImportHeights] " + m_Folder.Path("pole.tif") + strEnd + "90: give the spacing",
                  "[ImportHeights] " + m_Path + strEnd + "-90: give the spacing"}));
    m_Options.fSpacingX = m_Options.fSpacingZ = 30.0F;
    EXPECT_TRUE(Import());
}

} // namespace
