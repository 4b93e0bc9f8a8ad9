#include "engine/terrain/CTerrain.h"
#include "tests/support/CTempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

// What two mesh programs of other makers find in a file: admesh and gtscheck.
namespace
{

constexpr uint32_t SIZE_X = 41; // cells of 10 x 5 units
constexpr uint32_t SIZE_Z = 23;

CTerrain MakeTerrain()
{
    SHeightField field;
    field.Allocate(SIZE_X, SIZE_Z);
    field.size = {400, 100, 110};
    for (uint32_t i = 0; i < SIZE_X * SIZE_Z; ++i)
    {
        field.pHeights[i] = static_cast<float>(i * 7919 % 251) * 0.375F + 3.0F;
    }
    return CTerrain(std::move(field));
}

// The program's output. Fails the test when it is not there or returns something else than 0.
std::string RunTool(const std::string& strCommand, const std::string& strOutput)
{
    const std::string strLine = strCommand + " >" + strOutput + " 2>&1";
    const int iStatus = system(strLine.c_str()); // NOLINT(cert-env33-c): the test's own text
    EXPECT_EQ(iStatus, 0) << strLine;
    return ReadBytes(strOutput);
}

// The number after a label of a report, wherever it stands.
double GetNumber(const std::string& strReport, const std::string& strLabel)
{
    const size_t iLabel = strReport.find(strLabel);
    if (iLabel == std::string::npos)
    {
        ADD_FAILURE() << "no \"" << strLabel << "\" in\n" << strReport;
        return -1e30;
    }
    const size_t iNumber = strReport.find_first_of("-0123456789", iLabel + strLabel.size());
    return std::strtod(strReport.c_str() + std::min(iNumber, strReport.size()), nullptr);
}

TEST(StlForeign, MeshProgramsFindOneSheetWithOneBorderThatFacesUp)
{
    const CTempFolder folder;
    const std::string strStl = folder.Path("a.stl");
    const std::string strText = folder.Path("a.txt");
    CTerrain terrain = MakeTerrain();
    const SExtents box = {{33, 0, 11}, {251, 0, 77}}; // not on vertices: cells 4 to 24, 3 to 14
    const std::tuple<const SExtents*, SVertexRect> aCases[] = {
        {nullptr, {0, 0, SIZE_X - 1, SIZE_Z - 1}},
        {&box, {4, 3, 25, 15}},
    };
    for (const auto& [pBox, cells] : aCases)
    {
        SCOPED_TRACE(pBox != nullptr ? "box" : "whole");
        ASSERT_TRUE(terrain.ExportToSTL(strStl.c_str(), pBox));
        const double dCellsX = cells.uEndX - cells.uMinX;
        const double dCellsZ = cells.uEndZ - cells.uMinZ;
        float fLow = 1e9F;
        float fHigh = 0.0F;
        for (uint32_t z = cells.uMinZ; z <= cells.uEndZ; ++z)
        {
            const float* const pRow = terrain.GetHeightData() + z * SIZE_X;
            fLow = std::min(fLow, *std::min_element(pRow + cells.uMinX, pRow + cells.uEndX + 1));
            fHigh = std::max(fHigh, *std::max_element(pRow + cells.uMinX, pRow + cells.uEndX + 1));
        }
        const std::string strReport =
            RunTool("admesh -e -d -v -a " + strText + " " + strStl, folder.Path("log")) +
            RunTool("stl2gts <" + strStl + " 2>&1 | gtscheck -v", folder.Path("log"));
        const std::pair<const char*, double> aFound[] = {
            {"Number of facets", 2 * dCellsX * dCellsZ},
            {"Min X =", cells.uMinX * 10.0},
            {"Max X =", cells.uEndX * 10.0},
            {"Min Y =", cells.uEndZ * -5.0},
            {"Max Y =", cells.uMinZ * -5.0},
            {"Min Z =", fLow},
            {"Max Z =", fHigh},
            {"Number of parts", 1},
            {"Degenerate facets", 0},
            {"Facets reversed", 0},
            {"Backwards edges", 0},
            {"Normals fixed", 0}, // each agrees with the order of its corners
            {"boundary edges:", 2 * (dCellsX + dCellsZ)},
            {"non-manifold edges:", 0},
            {"incompatible faces:", 0},
        };
        for (const auto& [pszLabel, dValue] : aFound)
        {
            EXPECT_EQ(GetNumber(strReport, pszLabel), dValue) << pszLabel;
        }
        // A connected sheet with b borders and g handles has 2 - 2g - b here: one and none.
        EXPECT_EQ(GetNumber(strReport, "# vertices:") - GetNumber(strReport, " edges:") +
                      GetNumber(strReport, " faces:"),
                  1);
        std::istringstream facets(ReadBytes(strText));
        double dUp = 0;
        for (std::string strLine; std::getline(facets, strLine);)
        {
            float fZ = 0.0F;
            dUp += std::sscanf(strLine.c_str(), " facet normal %*f %*f %f", &fZ) == 1 && fZ > 0.0F;
        }
        EXPECT_EQ(dUp, 2 * dCellsX * dCellsZ);
    }
}

} // namespace
