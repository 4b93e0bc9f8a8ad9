// What must hold for any stroke, tried with random ones.

#include "engine/terrain/HeightFile.h"
#include "tests/support/CNumbers.h"
#include "tests/support/TestPaths.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{

constexpr uint32_t SIDE = 65; // vertices
constexpr float STEP = 10.0F;
constexpr float LIMIT = 1000.0F;

template <typename... TArguments> std::string Format(const char* pszFormat, TArguments... arguments)
{
    char szText[256];
    std::snprintf(szText, sizeof(szText), pszFormat, arguments...);
    return szText;
}

// Relief with steep and flat places and some vertices that cannot be edited. Heights near 0 have so
// fine steps that strokes make differences that count as no change.
void WriteRelief(const std::string& strPath, CNumbers& numbers, float fScale = 1.0F)
{
    std::vector<float> heights(size_t{SIDE} * SIDE);
    const float fWave = numbers.Float(0.05F, 0.4F);
    for (uint32_t i = 0; i < heights.size(); ++i)
    {
        const float fX = static_cast<float>(i % SIDE);
        const float fZ = static_cast<float>(i / SIDE);
        heights[i] = 400.0F + 300.0F * std::sin(fX * fWave) * std::cos(fZ * 0.1F) +
                     numbers.Float(0.0F, 50.0F);
        heights[i] = numbers.Int(0, 49) == 0 ? -1.0F : heights[i] * fScale;
    }
    const float fSize = STEP * (SIDE - 1);
    ASSERT_TRUE(
        WriteHeightFile(strPath.c_str(), heights.data(), SIDE, SIDE, {fSize, LIMIT, fSize}));
}

std::vector<float> ReadHeights(const std::string& strPath)
{
    SHeightField field;
    EXPECT_TRUE(ReadHeightFile(strPath.c_str(), field));
    return {field.pHeights.get(), field.pHeights.get() + field.GetCount()};
}

// A brush block of any function with any parameters.
std::string MakeBrush(CNumbers& numbers)
{
    const char* functions[] = {"PointHeightFunction",
                               "RelativeHeightFunction",
                               "BlurFunction",
                               "SetHeightFunction",
                               "RampFunction",
                               "PosterizeFunction"};
    const char* modes[] = {"mode_default", "mode_min", "mode_max"};
    std::string strText = "brush()\n{\n bitmap() { path( \"white.png\" ) }\n";
    strText += Format(" function( \"%s\" )\n {\n", functions[numbers.Int(0, 5)]);
    // Fields that a function lacks are passed over.
    strText += Format("  attrib( \"m_Mode\", \"%s\" )\n", modes[numbers.Int(0, 2)]);
    strText += Format("  attrib( \"m_Height\", \"%g\" )\n", numbers.Float(-200.0F, 1200.0F));
    strText += Format("  attrib( \"m_NeighbourhoodSize\", \"%d\" )\n", numbers.Int(0, 3));
    strText += Format("  attrib( \"m_NumHeightDivisions\", \"%d\" )\n", numbers.Int(1, 9));
    strText += Format("  attrib( \"m_UseOnlyDestBuffer\", \"%d\" )\n", numbers.Int(0, 1));
    strText += Format("  attrib( \"m_SideInterpolation\", \"%g\" )\n", numbers.Float(0.0F, 1.0F));
    strText +=
        Format("  attrib( \"m_FrontBackInterpolation\", \"%g\" )\n }\n", numbers.Float(0.0F, 1.0F));
    strText += Format(" power_modifier( %g )\n hardness( %g )\n extent( %g )\n",
                      numbers.Float(0.1F, 1.0F),
                      numbers.Float(0.0F, 0.5F),
                      numbers.Float(20.0F, 300.0F));
    strText += numbers.Int(0, 2) == 0
                   ? Format(" vertical_distance( %g )\n", numbers.Float(20.0F, 300.0F))
                   : "";
    strText +=
        numbers.Int(0, 2) == 0 ? Format(" fade_factor( %g )\n", numbers.Float(50.0F, 500.0F)) : "";
    return strText +
           (numbers.Int(0, 2) == 0 ? " mask( \"mask.png\" )\n mask_enabled( 1 )\n}\n" : "}\n");
}

std::string MakeStroke(CNumbers& numbers)
{
    const char* keys[] = {"", "", "ctrl", "alt", "ctrl+alt"};
    const auto position = [&numbers]
    {
        return numbers.Float(-20.0F, STEP * SIDE);
    };
    std::string strText = Format("keys( \"%s\" )\n", keys[numbers.Int(0, 4)]);
    strText += Format("press( %g, %g )\n", position(), position());
    for (int i = numbers.Int(0, 5); i > 0; --i)
    {
        strText += Format("move( %g, %g, %d )\n", position(), position(), numbers.Int(0, 40) - 20);
    }
    return strText + Format("release( %g, %g )\n", position(), position());
}

} // namespace

TEST(RandomStrokes, UndoAllRestoresEveryBitAndRedoAllBringsItBack)
{
    constexpr int SCRIPTS = 40;
    constexpr int STROKES = 12;
    size_t nChanged = 0;
    for (int iScript = 0; iScript < SCRIPTS; ++iScript)
    {
        SCOPED_TRACE(iScript);
        const CReplayRunner runner;
        std::filesystem::copy(TELLUR_SOURCE_DIR "/tests/scripts/images/right-half.png",
                              runner.Path("mask.png"));
        CNumbers numbers(static_cast<uint32_t>(iScript));
        WriteRelief(runner.Path("first.height"), numbers, iScript % 2 == 0 ? 1.0F : 0.005F);
        std::string strBody =
            "open( \"first.height\" )\n" + MakeBrush(numbers) + "mode( \"terraforming\" )\n";
        std::string strBack;
        std::string strAgain;
        for (int i = 0; i < STROKES; ++i)
        {
            strBody += (numbers.Int(0, 1) == 0 ? MakeBrush(numbers) : "") + MakeStroke(numbers);
            strBack += "undo() ";
            strAgain += "redo() ";
        }
        strBody += "save( \"last.height\" )\n" + strBack + "save( \"undone.height\" )\n" +
                   strAgain + "save( \"redone.height\" )\n";
        const SRunResult result = runner.Play(strBody);
        ASSERT_EQ(result.iExitCode, 0) << result.strErr;
        const std::string strFirst = ReadBytes(runner.Path("first.height"));
        const std::string strLast = ReadBytes(runner.Path("last.height"));
        EXPECT_TRUE(ReadBytes(runner.Path("undone.height")) == strFirst);
        EXPECT_TRUE(ReadBytes(runner.Path("redone.height")) == strLast);
        nChanged += strLast != strFirst ? 1 : 0;
        ASSERT_EQ(runner.Play(strBody, {"--plain-terrain"}).iExitCode, 0);
        EXPECT_TRUE(ReadBytes(runner.Path("last.height")) == strLast) << "without direct access";

        for (const float fHeight : ReadHeights(runner.Path("last.height")))
        {
            ASSERT_TRUE(fHeight == -1.0F || (fHeight >= 0.0F && fHeight <= LIMIT)) << fHeight;
        }
    }
    EXPECT_GT(nChanged, size_t{SCRIPTS} * 9 / 10);
}

TEST(RandomStrokes, ABlurStaysInTheRangeOfItsNeighbourhoodAndSetHeightLandsExactly)
{
    for (int iScript = 0; iScript < 12; ++iScript)
    {
        SCOPED_TRACE(iScript);
        const CReplayRunner runner;
        CNumbers numbers(static_cast<uint32_t>(1000 + iScript));
        WriteRelief(runner.Path("first.height"), numbers);
        const int iRadius = numbers.Int(1, 4);
        const float fTarget = std::floor(numbers.Float(0.0F, LIMIT));
        const SRunResult result = runner.Play(
            "open( \"first.height\" )\nbrush()\n{\n bitmap() { path( \"white.png\" ) }\n"
            " function( \"BlurFunction\" ) { attrib( \"m_NeighbourhoodSize\", \"" +
            std::to_string(iRadius) +
            Format("\" ) }\n power_modifier( %g )\n extent( 2000 )\n}\n",
                   numbers.Float(0.2F, 1.0F)) +
            "mode( \"terraforming\" )\npress( 320, 320 ) move( 320, 320, 0 ) release( 320, 320 )\n"
            "save( \"blurred.height\" )\nundo()\nbrush()\n{\n bitmap() { path( \"white.png\" ) }\n"
            " function( \"SetHeightFunction\" ) { attrib( \"m_Height\", \"" +
            Format("%g", fTarget) +
            "\" ) }\n extent( 2000 )\n}\npress( 320, 320 ) move( 320, 320, 0 ) release( 320, 320 "
            ")\n"
            "save( \"set.height\" )\n");
        ASSERT_EQ(result.iExitCode, 0) << result.strErr;
        const std::vector<float> first = ReadHeights(runner.Path("first.height"));
        const std::vector<float> blurred = ReadHeights(runner.Path("blurred.height"));
        const std::vector<float> set = ReadHeights(runner.Path("set.height"));
        size_t nBlurred = 0;
        for (int i = 0; i < static_cast<int>(first.size()); ++i)
        {
            const auto n = static_cast<size_t>(i);
            ASSERT_EQ(set[n], first[n] < 0.0F ? first[n] : fTarget) << i;
            constexpr int iSide = SIDE;
            float fLow = first[n];
            float fHigh = first[n];
            for (int z = std::max(i / iSide - iRadius, 0);
                 z <= std::min(i / iSide + iRadius, iSide - 1);
                 ++z)
            {
                const int iFrom = z * iSide + std::max(i % iSide - iRadius, 0);
                const int iTo = z * iSide + std::min(i % iSide + iRadius, iSide - 1);
                const auto [low, high] =
                    std::minmax_element(first.begin() + iFrom, first.begin() + iTo + 1);
                fLow = std::min(fLow, *low);
                fHigh = std::max(fHigh, *high);
            }
            ASSERT_GE(blurred[n], fLow - 1e-3F) << i;
            ASSERT_LE(blurred[n], fHigh + 1e-3F) << i;
            nBlurred += blurred[n] != first[n] ? 1 : 0;
        }
        EXPECT_GT(nBlurred, first.size() * 8 / 10);
    }
}
