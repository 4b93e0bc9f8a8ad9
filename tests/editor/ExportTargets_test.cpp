// What other programs ask of a height map, from the table to the files and back.

#include "editor/core/ExportTargets.h"
#include "engine/elevation/HeightImport.h"
#include "engine/elevation/TargetExport.h"
#include "engine/elevation/TileSet.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace
{

constexpr SVec3 SIZE = {960.0F, 2000.0F, 480.0F};

// Four different corners, and no two rows, columns or flips alike; from 3 to 1500 with fractions.
std::vector<float> MakeGround(uint32_t uColumns, uint32_t uRows)
{
    std::vector<float> heights;
    for (uint32_t z = 0; z < uRows; ++z)
    {
        for (uint32_t x = 0; x < uColumns; ++x)
        {
            const uint32_t uHeight = (x * x * 7 + z * z * z * 53 + x * z) % 30000;
            heights.push_back(3.0F + static_cast<float>(uHeight) * 0.0499F);
        }
    }
    return heights;
}

class ExportTargets : public testing::Test
{
protected:
    static std::vector<SExportTarget> ReadShipped()
    {
        return ReadExportTargets(std::string(TELLUR_SOURCE_DIR "/") + READY_EXPORTS, "");
    }

    bool Plan(const SExportTarget& target, uint32_t uTiles)
    {
        m_Path = m_Folder.Path("map.") + target.strExtension;
        return PlanTargetExport(m_Path, target, {uTiles}, GetView(), SIZE, {}, m_Made);
    }

    bool Write() { return WriteTargetExport(m_Path, GetView(), SIZE, m_Made); }

    SSampleView GetView() const
    {
        return {m_Heights.data(), m_Columns, static_cast<uint32_t>(m_Heights.size() / m_Columns)};
    }

    // What half a step of the target's format is at that height.
    double GetTolerance(float fHeight) const
    {
        const double dAbove = std::fabs(static_cast<double>(fHeight) - m_Made.form.dBase);
        const double dFloat = std::ldexp(dAbove + 1.0, m_Made.target.uBits == 16 ? -11 : -24);
        return 1e-4 + (m_Made.form.bRounded ? m_Made.form.dUnit / 2.0 : dFloat);
    }

    // Reads the first file alone with what the target says, as a person would type it.
    bool ReadBack(SHeightField& field)
    {
        const SExportForm& form = m_Made.form;
        const SExportOptions out = form.GetOptions(m_Made.target);
        SImportOptions in;
        in.uColumns = form.uTileColumns;
        in.eByteOrder = out.eByteOrder;
        in.dWhite = out.dWhite;
        in.dUnit = out.dUnit;
        in.dBase = out.dBase;
        in.orientation.eFlip = m_Made.target.bSouthFirst ? EFlip::Z : EFlip::None;
        in.eFit = EFit::Keep;
        SImportReport report;
        const std::string strFile = form.uTiles > 1 ? GetTilePath(m_Path, 0, 0) : m_Path;
        return ImportHeights(strFile.c_str(), in, field, report);
    }

    // Where the rows of a square file are doubled, every second one is the terrain's.
    void ExpectSameGround(const SHeightField& field, uint32_t uRowStep)
    {
        const SSampleView view = GetView();
        ASSERT_EQ(field.uSizeX, view.uColumns);
        ASSERT_EQ(field.uSizeZ, (view.uRows - 1) * uRowStep + 1);
        size_t nWrong = 0;
        for (size_t i = 0; i < view.GetCount(); ++i)
        {
            const size_t nRead = i / m_Columns * uRowStep * m_Columns + i % m_Columns;
            const double dOff =
                static_cast<double>(field.pHeights[nRead]) - static_cast<double>(m_Heights[i]);
            nWrong += std::fabs(dOff) <= GetTolerance(m_Heights[i]) ? 0 : 1;
        }
        EXPECT_EQ(nWrong, 0U);
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    std::string m_Path;
    std::vector<float> m_Heights;
    uint32_t m_Columns = 0;
    STargetExport m_Made;
};

TEST_F(ExportTargets, EveryRowOfTheTableComesBackUnturnedToHalfAStep)
{
    const std::vector<SExportTarget> targets = ReadShipped();
    ASSERT_GE(targets.size(), 10U);
    for (const SExportTarget& target : targets)
    {
        for (const uint32_t uTiles : {1U, 2U})
        {
            SCOPED_TRACE(target.strName + ", tiles " + std::to_string(uTiles));
            // Vertices as the target takes them, so that none is interpolated.
            SExportForm form;
            std::string strFault;
            const uint32_t uLong = target.uSideStep > 100 ? 800 : 200; // of several steps
            ASSERT_TRUE(form.Make(target, {uLong, 120, SIZE, 0.0F, 1.0F}, uTiles, strFault));
            const uint32_t uRowStep = target.bSquare ? 2 : 1;
            m_Columns = form.uColumns;
            m_Heights = MakeGround(m_Columns, (form.uRows - 1) / uRowStep + 1);
            ASSERT_NE(m_Heights.size(), size_t{m_Columns} * m_Columns);
            ASSERT_TRUE(Plan(target, uTiles) && Write()) << m_Log.GetText();
            EXPECT_EQ(m_Made.plan.nBelow + m_Made.plan.nAbove, 0U);
            SHeightField field;
            ASSERT_TRUE(ReadBack(field)) << m_Log.GetText();
            ExpectSameGround(field, uRowStep);
            // Beside it: a line for each number to type.
            const std::string strText = ReadBytes(GetTargetTextPath(m_Path));
            for (const STargetNumber& number : target.numbers)
            {
                EXPECT_NE(strText.find("\n" + number.strLabel + ": "), std::string::npos);
            }
            EXPECT_GE(target.numbers.size(), 3U);
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(ExportTargets, FloatsFromTheLowestToTheHighestHoldGroundBelowZero)
{
    SExportTarget target;
    target.eHeights = EHeightCodes::Range;
    m_Columns = 33;
    for (const char* pszExtension : {"exr", "r32"})
    {
        target.strExtension = pszExtension;
        for (const float fHighest : {-40.0F, 0.0F, 30.0F})
        {
            SCOPED_TRACE(testing::Message() << pszExtension << ", highest " << fHighest);
            m_Heights = MakeGround(33, 17);
            const float fTop = *std::max_element(m_Heights.begin(), m_Heights.end());
            for (float& fHeight : m_Heights)
            {
                fHeight += fHighest - fTop;
            }
            target.uBits = 32;
            ASSERT_TRUE(Plan(target, 1) && Write()) << m_Log.GetText();
            EXPECT_EQ(m_Made.plan.nBelow + m_Made.plan.nAbove, 0U);
            // The bare numbers lie between 0 and 1, and scale and base make the ground of them.
            SImportOptions in{.uColumns = 33, .dUnit = 1.0, .eFit = EFit::Keep};
            SImportReport report;
            SHeightField field;
            ASSERT_TRUE(ImportHeights(m_Path.c_str(), in, field, report));
            EXPECT_EQ(report.fLow, 0.0F);
            EXPECT_EQ(report.fHigh, 1.0F);
            in.dUnit = m_Made.form.dUnit;
            in.dBase = m_Made.form.dBase;
            ASSERT_TRUE(ImportHeights(m_Path.c_str(), in, field, report));
            ExpectSameGround(field, 1);
        }
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(ExportTargets, NumbersToTypeAreThoseOfTheLevel)
{
    m_Columns = 65;
    m_Heights = MakeGround(65, 33);
    const auto [pLow, pHigh] = std::minmax_element(m_Heights.begin(), m_Heights.end());
    *pLow = -20.0F;
    *pHigh = 1505.0F;
    const std::tuple<const char*, uint32_t, std::string> aRows[] = {
        {"16-bit PNG, full range",
         1,
         "Samples: 65 x 33, the first row is north, the first column is west\n"
         "Numbers in the file: 0 to 65535\nHeight of one step: 0.02327001\n"
         "Height of 0 in the file: -20\nSize: 960 x 480\nSpacing: 15 x 15\nMaximum height: 2000\n"
         "Height from black to white: 1525\nOffset, height of black: -20\n"
         "Size x: 960\nSize z: 480\n"},
        // 2000 above 32768 is 32767 steps; 64 cells are nearest to 63, 32 to none.
        {"16-bit PNG, 0 in the middle",
         1,
         "Samples: 64 x 64, the first row is north, the first column is west\n"
         "Numbers in the file: 32440 to 57425\nHeight of one step: 0.06103702\n"
         "Height of 0 in the file: -2000.061\nSize: 960 x 480\nSpacing: 15.2381 x 7.619048\n"
         "Maximum height: 2000\n"
         "The level's 65 x 33 vertices are interpolated to 64 x 64 samples.\n"
         "One unit of the level is taken for a centimetre.\n"
         "Scale z: 7.812738\nNumber of height 0: 32768\nScale x: 15.2381\nScale y: 7.619048\n"},
        {"Raw 16-bit, square, from the south",
         4,
         "Samples: 4 x 4 tiles of 17 x 17, the first row is south, the first column is west\n"
         "Numbers in the file: 0 to 49315\nHeight of one step: 0.03051804\n"
         "Height of 0 in the file: 0\nSize: 960 x 480\nSpacing: 15 x 7.5\nMaximum height: 2000\n"
         "Byte order: little\nThe level's 65 x 33 vertices are interpolated to 65 x 65 samples.\n"
         "Resolution: 17\nTerrain height: 2000\nPosition y: 0\nTerrain width: 960\n"
         "Terrain length: 480\n"},
    };
    const std::vector<SExportTarget> targets = ReadShipped();
    for (const auto& [pszName, uTiles, strText] : aRows)
    {
        const SExportTarget* pTarget = FindExportTarget(targets, pszName);
        ASSERT_NE(pTarget, nullptr);
        ASSERT_TRUE(Plan(*pTarget, uTiles) && Write()) << m_Log.GetText();
        EXPECT_EQ(ReadBytes(GetTargetTextPath(m_Path)), std::string(pszName) + "\n" + strText);
    }
    const std::vector<std::string>& lines = m_Made.plan.lines;
    EXPECT_TRUE(std::count(
        lines.begin(), lines.end(), "fit: 65 x 33 vertices interpolated to 65 x 65 samples"));
    EXPECT_EQ(m_Made.plan.nBelow, 2U); // and what lies between it and its neighbour
    // The first tile has the south-western corner first.
    const std::string strFirst = ReadBytes(GetTilePath(m_Path, 0, 0));
    const auto uSample = static_cast<uint32_t>(static_cast<uint8_t>(strFirst[0]) +
                                               256 * static_cast<uint8_t>(strFirst[1]));
    EXPECT_EQ(uSample, std::lround(m_Heights[size_t{32} * 65] / 2000.0F * 65535.0F));
}

TEST_F(ExportTargets, AProgramThatCountsMetresGoesByTheUnitOfTheLevel)
{
    m_Columns = 65;
    m_Heights = MakeGround(65, 33);
    const std::vector<SExportTarget> targets = ReadShipped();
    // Of metres a hundred times as much; a level from a map says itself what it is in.
    SGeoTags geo;
    geo.bKnown = true;
    geo.lastX = {960.0, 0.0};
    for (const auto& [dDepth, unit, strScale] :
         std::initializer_list<std::tuple<double, std::optional<ELevelUnit>, const char*>>{
             {480.0, {}, "781.2738"},
             {4.8, {}, "7.812738"},
             {480.0, ELevelUnit::Centimetre, "7.812738"}})
    {
        geo.lastZ = {0.0, -dDepth};
        STargetExport made;
        const SExportTarget* pMiddle = FindExportTarget(targets, "16-bit PNG, 0 in the middle");
        ASSERT_TRUE(PlanTargetExport(
            m_Folder.Path("a.png"), *pMiddle, {1, unit}, GetView(), SIZE, geo, made));
        EXPECT_EQ(made.form.numbers[0].second, strScale);
        EXPECT_EQ(made.form.numbers[1].second, "32768");
    }
}

TEST_F(ExportTargets, TilesTakeTheirPlacesTogetherOrNoneDoes)
{
    m_Columns = 33;
    m_Heights = MakeGround(33, 17);
    const SExportTarget target = ReadShipped().front();
    ASSERT_TRUE(Plan(target, 2));
    WriteBytes(GetTilePath(m_Path, 0, 0), "old");
    const std::string strLast = GetTilePath(m_Path, 1, 1);
    std::filesystem::create_directories(strLast + "/in the way");
    EXPECT_FALSE(Write());
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    EXPECT_EQ(ReadBytes(GetTilePath(m_Path, 0, 0)), "old");
    EXPECT_FALSE(std::filesystem::exists(GetTilePath(m_Path, 1, 0)));
    EXPECT_FALSE(std::filesystem::exists(GetTargetTextPath(m_Path)));
    std::filesystem::remove_all(strLast);
    ASSERT_TRUE(Write());

    // A smaller set would be read with tiles of this one.
    ASSERT_TRUE(Plan(target, 4) && Write());
    ASSERT_TRUE(Plan(target, 2));
    EXPECT_EQ(m_Made.replaced.size(), 5U);
    EXPECT_EQ(m_Made.removed.size(), 12U);
    ASSERT_TRUE(Write());
    SSampleGrid whole;
    SImportReport read;
    ASSERT_TRUE(ReadElevation(GetTilePath(m_Path, 0, 0).c_str(), {}, whole, read));
    EXPECT_EQ(whole.uColumns, 33U);
    EXPECT_EQ(whole.uRows, 17U);
    EXPECT_FALSE(std::filesystem::exists(GetTilePath(m_Path, 3, 3)));

    // Tiles without a common edge lie side by side, and one of another size is no part.
    WriteBytes(m_Folder.Path("side_x0_y0.asc"), "ncols 2\nnrows 2\ncellsize 1\n1 2\n3 4\n");
    WriteBytes(m_Folder.Path("side_x0_y1.asc"), "ncols 2\nnrows 2\ncellsize 1\n5 6\n7 8\n");
    SSampleGrid grid;
    SImportReport report;
    ASSERT_TRUE(ReadElevation(m_Folder.Path("side_x0_y0.asc").c_str(), {}, grid, report));
    EXPECT_EQ(grid.samples, (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8}));
    // A common edge of two tiles is chance where the next two have none.
    WriteBytes(m_Folder.Path("side_x1_y0.asc"), "ncols 2\nnrows 2\ncellsize 1\n2 8\n4 9\n");
    WriteBytes(m_Folder.Path("side_x1_y1.asc"), "ncols 2\nnrows 2\ncellsize 1\n6 8\n8 7\n");
    ASSERT_TRUE(ReadElevation(m_Folder.Path("side_x0_y0.asc").c_str(), {}, grid, report));
    EXPECT_EQ(grid.samples, (std::vector<float>{1, 2, 2, 8, 3, 4, 4, 9, 5, 6, 6, 8, 7, 8, 8, 7}));
    std::filesystem::remove(m_Folder.Path("side_x1_y0.asc"));
    WriteBytes(m_Folder.Path("side_x0_y1.asc"), "ncols 3\nnrows 2\ncellsize 1\n5 6 7\n8 9 9\n");
    EXPECT_FALSE(ReadElevation(m_Folder.Path("side_x0_y0.asc").c_str(), {}, grid, report));
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[ReadElevation] " + m_Folder.Path("side_x0_y1.asc") +
                                       ": its samples are others than those of the first tile"});
}

TEST_F(ExportTargets, RowsOfOnesOwnComeBesideThoseThatShip)
{
    const std::string strOwn = m_Folder.Path("own.ini");
    const std::string strWords =
        "!target( s )\n!file( s, i )\n!heights( s, f )\n!first_row( s )\n!zero( f )\n"
        "!number( s, s, f )\n!side( s, i )\n";
    WriteBytes(strOwn,
               strWords +
                   "target( \"EXR float\" ) { file( \"exr\", 32 ) heights( \"unit\", 2.5 ) }\n"
                   "target( \"mine\" ) { file( \"asc\", 32 ) heights( \"unit\", 1 ) }\n"
                   "target( \"a\" ) { file( \"bmp\", 16 ) }\n"
                   "target( \"b\" ) { file( \"png\", 32 ) heights( \"range\", 0 ) }\n"
                   "target( \"c\" ) { file( \"tif\", 32 ) heights( \"range\", 0 ) }\n"
                   "target( \"d\" ) { file( \"png\", 16 ) heights( \"unit\", 0 ) }\n"
                   "target( \"e\" ) { file( \"png\", 16 ) heights( \"high\", 0 ) }\n"
                   "target( \"f\" ) { file( \"asc\", 32 ) first_row( \"south\" ) }\n"
                   "target( \"g\" ) { file( \"png\", 16 ) zero( 65535 ) }\n"
                   "target( \"h\" ) { file( \"png\", 16 ) side( \"multiple\", 0 ) }\n"
                   "target( \"\" ) { file( \"png\", 16 ) }\n");
    const std::string strReady = std::string(TELLUR_SOURCE_DIR "/") + READY_EXPORTS;
    const std::vector<SExportTarget> targets = ReadExportTargets(strReady, strOwn);
    EXPECT_EQ(targets.size(), ReadShipped().size() + 1);
    EXPECT_EQ(targets.back().strName, "mine");
    EXPECT_EQ(FindExportTarget(targets, "EXR float")->dUnit, 2.5);
    const std::string strStart = "[ReadExportTargets] " + strOwn + ": ";
    EXPECT_EQ(m_Log.TakeLines(),
              (std::vector<std::string>{
                  strStart + "\"a\": \"bmp\" is no format to export to",
                  strStart + "\"b\": the format has no samples of 32 bits",
                  strStart + "\"c\": the format has no white, give a unit",
                  strStart + "\"d\": a unit is above 0",
                  strStart + "\"e\": \"high\" is none of the words for it",
                  strStart + "\"f\": the first row of the format is north",
                  strStart + "\"g\": the number of height 0 does not fit the format",
                  strStart + "\"h\": a side is a multiple of 1 to 4096",
                  strStart + "\"\": has no name",
              }));
    EXPECT_TRUE(ReadExportTargets(m_Folder.Path("none"), m_Folder.Path("no own")).empty());
    EXPECT_EQ(m_Log.TakeLines(),
              std::vector<std::string>{"[ReadExportTargets] " + m_Folder.Path("none") +
                                       ": cannot be read, its export targets are missing"});
}

} // namespace
