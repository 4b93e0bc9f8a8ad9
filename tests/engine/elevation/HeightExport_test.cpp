#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/HeightExport.h"
#include "engine/elevation/HeightImport.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>

namespace
{

// Four different corners, and no two rows, columns or flips alike; whole numbers from 1 to 30001.
std::vector<float> MakeMap(uint32_t uColumns, uint32_t uRows)
{
    std::vector<float> heights;
    for (uint32_t z = 0; z < uRows; ++z)
    {
        for (uint32_t x = 0; x < uColumns; ++x)
        {
            heights.push_back(static_cast<float>(1 + (x * x * 7 + z * z * z * 53 + x * z) % 30000));
        }
    }
    return heights;
}

class HeightExport : public testing::Test
{
protected:
    std::string Path(const char* pszExtension) const
    {
        return m_Folder.Path((std::string("map") + pszExtension).c_str());
    }

    bool Export(const std::string& strPath,
                const std::vector<float>& heights,
                uint32_t uColumns,
                const SVec3& size,
                const SExportOptions& options)
    {
        const SSampleView view{
            heights.data(), uColumns, static_cast<uint32_t>(heights.size()) / uColumns};
        return PlanExport(strPath.c_str(), view, size, options, m_Plan) &&
               ExportHeights(strPath.c_str(), view, size, m_Plan);
    }

    bool HasLine(const std::string& strLine) const
    {
        return std::find(m_Plan.lines.begin(), m_Plan.lines.end(), strLine) != m_Plan.lines.end();
    }

    CTempFolder m_Folder;
    CLogCatcher m_Log;
    SExportPlan m_Plan;
};

const struct
{
    const char* pszExtension;
    bool bFloat;
    EByteOrder eByteOrder;
    double dWhite; // of export and import alike
    double dUnit;
    bool bSquare;
    bool bSpacing;
} FORMATS[] = {
    {".height", true, EByteOrder::None, 0, 0, false, true},
    {".png", false, EByteOrder::None, 65535, 0, false, false},
    {".png", false, EByteOrder::None, 32767.5, 0, false, false},
    {".r16", false, EByteOrder::None, 0, 1, false, false},
    {".r16", false, EByteOrder::Little, 0, 0.5, false, false},
    {".R16", false, EByteOrder::Big, 65535, 0, false, false},
    {".r32", true, EByteOrder::None, 0, 0, false, false},
    {".r32", true, EByteOrder::Big, 0, 0, false, false},
    {".r32", true, EByteOrder::Big, 65536, 0, false, false},
    {".npy", true, EByteOrder::None, 0, 0, false, false},
    {".hgt", false, EByteOrder::None, 0, 0, true, false},
    {".tif", true, EByteOrder::None, 0, 0, false, true},
    {".TIFF", true, EByteOrder::None, 0, 0.5, false, true},
    {".asc", true, EByteOrder::None, 0, 0, false, true},
    {".exr", true, EByteOrder::None, 0, 0, false, false},
    {".exr", true, EByteOrder::None, 65536, 0, false, false},
};

TEST_F(HeightExport, AMapGoesThroughEveryFormatUnturned)
{
    constexpr uint32_t COLUMNS = 37;
    const SVec3 size{72.0F, 40000.0F, 30.0F}; // steps of 2 x 1.5, where it has 21 rows

    for (const auto& c : FORMATS)
    {
        SCOPED_TRACE(testing::Message() << c.pszExtension << ", white " << c.dWhite << ", unit "
                                        << c.dUnit << ", order " << static_cast<int>(c.eByteOrder));
        const uint32_t uRows = c.bSquare ? COLUMNS : 21;
        std::vector<float> heights = MakeMap(COLUMNS, uRows);
        if (c.bFloat)
        {
            heights[5] = 0.1F;
            heights[6] = -1.0F / 3.0F;
            heights[7] = 1.17549435e-38F;
            heights[8] = -0.0F;
            heights[9] = 16777217.5F;
        }
        if (c.dWhite == 65536) // a float of 0 to 1
        {
            heights[6] = heights[7] = heights[9] = 65536.0F;
        }
        const SExportOptions out{c.dWhite, c.dUnit, c.eByteOrder};
        ASSERT_TRUE(Export(Path(c.pszExtension), heights, COLUMNS, size, out));
        EXPECT_EQ(m_Plan.nBelow + m_Plan.nAbove + m_Plan.nVoids, 0U);

        SImportOptions in;
        in.dWhite = c.dWhite;
        in.dUnit = c.dUnit;
        in.eByteOrder = c.eByteOrder;
        in.uColumns = c.bSquare ? 0 : COLUMNS;
        in.eFit = EFit::Keep;
        SHeightField field;
        SImportReport report;
        ASSERT_TRUE(ImportHeights(Path(c.pszExtension).c_str(), in, field, report));
        ASSERT_EQ(field.uSizeX, COLUMNS);
        ASSERT_EQ(field.uSizeZ, uRows);
        EXPECT_EQ(std::memcmp(field.pHeights.get(), heights.data(), heights.size() * 4), 0);
        EXPECT_EQ(field.size.x, c.bSpacing ? 72.0F : 36.0F);
        EXPECT_EQ(field.size.z, c.bSpacing ? 30.0F : static_cast<float>(uRows - 1));
    }
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(HeightExport, EveryFormatThatIsWrittenHasItsRow)
{
    std::set<const SElevationFormat*> tried;
    for (const auto& c : FORMATS)
    {
        tried.insert(FindFormatByName(Path(c.pszExtension).c_str()));
    }
    for (const SElevationFormat& format : GetElevationFormats())
    {
        EXPECT_EQ(tried.contains(&format), IsWritten(&format)) << format.pszName;
    }
    EXPECT_EQ(ListElevationFormats(true).find("height, png, r16, r32, npy, hgt, tif, asc, exr"),
              0U);
}

// The samples of a file that may be damaged: a whole grid, or none and a fault.
std::vector<float> DecodeAny(const SElevationFormat& format, const std::string& strFile)
{
    const std::vector<uint8_t> bytes(strFile.begin(), strFile.end()); // ends where its memory does
    SSampleGrid grid;
    std::string strFault;
    const bool bRead = format.pDecode(bytes, {}, grid, strFault);
    EXPECT_EQ(bRead, strFault.empty());
    EXPECT_EQ(strFault.find('\n'), std::string::npos) << strFault;
    EXPECT_EQ(bRead, !grid.samples.empty());
    EXPECT_EQ(grid.samples.size(), size_t{grid.uColumns} * grid.uRows);
    return grid.samples;
}

TEST_F(HeightExport, AFileThatIsCutOrHasAFlippedByteIsRefusedOrGivesAWholeGrid)
{
    for (const SElevationFormat& format : GetElevationFormats())
    {
        SCOPED_TRACE(format.pszName);
        const std::string strPath = m_Folder.Path("whole.") + format.extensions[0];
        ASSERT_TRUE(!IsWritten(&format) || Export(strPath, MakeMap(5, 5), 5, {8, 300, 12}, {}));
        const std::string strWhole = format.pDecode != nullptr ? ReadBytes(strPath) : "";
        const std::vector<float> whole =
            strWhole.empty() ? std::vector<float>() : DecodeAny(format, strWhole);
        ASSERT_TRUE(format.pDecode == nullptr || !whole.empty());
        // The start of bare samples may be a smaller grid, and the last number of a text another.
        const bool bSame = format.pRecognise != nullptr && format.eByteOrder != EByteOrder::None;
        for (size_t nAt = 0; nAt < strWhole.size(); ++nAt)
        {
            const std::vector<float> cut = DecodeAny(format, strWhole.substr(0, nAt));
            EXPECT_TRUE(cut.empty() || cut == whole || !bSame) << nAt;
            for (const int iFlip : {0x01, 0x20, 0x80, 0xFF})
            {
                std::string strFlipped = strWhole;
                strFlipped[nAt] = static_cast<char>(strFlipped[nAt] ^ iFlip);
                DecodeAny(format, strFlipped);
            }
        }
    }
}

TEST_F(HeightExport, BytesLieInTheOrderAskedFor)
{
    const std::vector<float> heights{1, 2, 3, 256, 0, 65535};
    const std::string strLittle("\1\0\2\0\3\0\0\1\0\0\xFF\xFF", 12);
    const std::string strBig("\0\1\0\2\0\3\1\0\0\0\xFF\xFF", 12);
    ASSERT_TRUE(Export(Path(".r16"), heights, 3, {2, 65535, 1}, {}));
    EXPECT_EQ(ReadBytes(Path(".r16")), strLittle);
    ASSERT_TRUE(Export(Path(".r16"), heights, 3, {2, -65535, 1}, {0, 1, EByteOrder::Big}));
    EXPECT_EQ(ReadBytes(Path(".r16")), strBig);
    ASSERT_TRUE(Export(Path(".asc"), {0.1F, -2, 3e20F, 4, 5, 6}, 3, {2, 1, 1.5F}, {}));
    EXPECT_EQ(ReadBytes(Path(".asc")),
              "ncols 3\nnrows 2\nxllcenter 0\nyllcenter 0\ndx 1\ndy 1.5\n"
              "0.1 -2 3e+20\n4 5 6\n");
}

TEST_F(HeightExport, WhatDoesNotFitIsClampedCountedAndSaid)
{
    const std::vector<float> heights{-5, -0.01F, 0, 49.6F, 100, 250, 99.9F, NAN};
    ASSERT_TRUE(Export(Path(".r16"), heights, 4, {3, 500, 1}, {100, 0, EByteOrder::Big}));
    // 100 is white: 49.6 is 32505.36 steps of 100 / 65535, 99.9 is 65469.47.
    EXPECT_EQ(ReadBytes(Path(".r16")),
              std::string("\0\0\0\0\0\0\x7E\xF9\xFF\xFF\xFF\xFF\xFF\xBD\0\0", 16));
    EXPECT_TRUE(HasLine("warning: 2 heights below 0 do not fit and are clamped"));
    EXPECT_TRUE(HasLine("warning: 1 heights above 100 do not fit and are clamped"));
    EXPECT_TRUE(
        HasLine("warning: 1 heights that are no finite numbers do not fit and are clamped"));
    EXPECT_TRUE(HasLine("scale: one step of the file is 0.001525902 in terrain units, heights are "
                        "rounded to whole steps"));

    // White by default: the maximum height, or the highest height above it.
    ASSERT_TRUE(Export(Path(".png"), heights, 4, {3, -500, 1}, {}));
    EXPECT_TRUE(HasLine("assumed: full white is the maximum height 500"));
    ASSERT_TRUE(Export(Path(".png"), heights, 4, {3, 200, 1}, {}));
    EXPECT_TRUE(HasLine("assumed: full white is the highest height 250"));
    EXPECT_EQ(m_Plan.nAbove, 0U);

    // A tile's own lowest number means void, so it is none.
    ASSERT_TRUE(Export(Path(".hgt"), {-40000, -32768, 2.5F, 32767.4F}, 2, {1, 1, 1}, {}));
    EXPECT_EQ(ReadBytes(Path(".hgt")), std::string("\x80\1\x80\1\0\3\x7F\xFF", 8));
    EXPECT_EQ(m_Plan.nBelow, 2U);
    EXPECT_EQ(m_Plan.nAbove, 0U);
}

TEST_F(HeightExport, AFaultIsOneLineAndLeavesTheOldFile)
{
    const std::vector<float> heights{1, 2, 3, 4, 5, 6};
    const SExportOptions white{10, 0, EByteOrder::None};
    const std::tuple<const char*, SExportOptions, std::string> aPlans[] = {
        {".dem", {}, "the extension names no format (" + ListElevationFormats(true) + ")"},
        {".tif", white, "holds heights, no codes: it has no white, give a unit"},
        {".r16",
         {10, 2, EByteOrder::None},
         "a height of white and a unit are given, only one can hold"},
        {".hgt", {}, "3 x 2 heights: an HGT tile is square"},
    };
    for (const auto& [pszExtension, options, strFault] : aPlans)
    {
        EXPECT_FALSE(Export(Path(pszExtension), heights, 3, {1, 1, 1}, options));
        EXPECT_EQ(m_Log.TakeLines(),
                  std::vector<std::string>{"[PlanExport] " + Path(pszExtension) + ": " + strFault});
    }
    const std::vector<float> square(9, 1.0F); // which every format takes
    for (const SElevationFormat& format : GetElevationFormats())
    {
        const std::string strExtension = std::string(".") + format.extensions[0];
        SCOPED_TRACE(strExtension);
        const auto expectFailedWrite = [&](const std::string& strPath)
        {
            EXPECT_FALSE(Export(strPath, square, 3, {1, 1, 1}, {}));
            const std::vector<std::string> lines = m_Log.TakeLines();
            ASSERT_EQ(lines.size(), 1U);
            EXPECT_EQ(lines[0].find("[PlanExport]"), std::string::npos) << lines[0];
        };
        // A folder of that name cannot be replaced.
        const std::string strFolder = Path((".folder" + strExtension).c_str());
        WriteBytes(strFolder + "/old", "old");
        expectFailedWrite(strFolder);
        EXPECT_EQ(ReadBytes(strFolder + "/old"), "old");
        // The full device takes nothing.
        const std::string strLink = Path((".full" + strExtension).c_str());
        std::filesystem::create_symlink("/dev/full", strLink);
        expectFailedWrite(strLink);
    }
}

} // namespace
