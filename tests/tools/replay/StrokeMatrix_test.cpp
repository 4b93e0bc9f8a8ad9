// Every function in every mode, with and without mask, fade and vertical distance, against a plain
// second computation of one drag.

#include "engine/terrain/HeightFile.h"
#include "host/Image.h"
#include "tests/support/CNumbers.h"
#include "tests/tools/replay/CReplayRunner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

namespace
{

constexpr int SIDE = 33; // vertices
constexpr double STEP = 10.0;
constexpr double LIMIT = 1000.0;
constexpr double EXTENT = 74.0; // no vertex on the footprint's border
constexpr double POWER = 0.75;
constexpr double HEIGHT = 450.0; // m_Height
constexpr int RADIUS = 2;        // m_NeighbourhoodSize
constexpr int LEVELS = 6;        // m_NumHeightDivisions

struct SPlace
{
    int iX;
    int iZ;
    int iStep; // vertical mouse step
};

constexpr SPlace PRESS = {9, 12, 0};
constexpr SPlace MOVES[] = {{11, 12, -40}, {14, 15, 25}, {12, 13, -90}};
constexpr SPlace RELEASE = {16, 18, 0};

struct SCase
{
    const char* pszFunction;
    int iMode;
    bool bDest;   // m_UseOnlyDestBuffer
    double dMask; // 1: no mask
    double dFade; // 0: none
    double dBand; // vertical distance, 0: none
};

using Heights = std::vector<double>;

class CDragModel
{
public:
    CDragModel(const SCase& test, const Heights& heights)
        : m_Case(test)
        , m_Source(heights)
        , m_Dest(heights)
    {
    }

    Heights Play()
    {
        const std::string strFunction = m_Case.pszFunction;
        if (strFunction == "RampFunction")
        {
            PlayRamp();
            return m_Dest;
        }
        double dX = PRESS.iX * STEP;
        double dY = At(m_Dest, PRESS);
        double dZ = PRESS.iZ * STEP;
        double dLength = 0.0;
        for (const SPlace& place : MOVES)
        {
            if (strFunction == "PointHeightFunction")
            {
                Dab(PRESS, At(m_Dest, PRESS), -place.iStep);
                continue;
            }
            const double dNewY = At(m_Dest, place);
            dLength += std::sqrt(std::pow(place.iX * STEP - dX, 2) + std::pow(dNewY - dY, 2) +
                                 std::pow(place.iZ * STEP - dZ, 2));
            dX = place.iX * STEP;
            dY = dNewY;
            dZ = place.iZ * STEP;
            Dab(place, dY, m_Case.dFade > 0 ? std::max(0.0, 1.0 - dLength / m_Case.dFade) : 1.0);
        }
        return m_Dest;
    }

private:
    static double At(const Heights& heights, const SPlace& place)
    {
        return heights[static_cast<size_t>(place.iZ * SIDE + place.iX)];
    }

    // Whether the mode lets a vertex change by that much.
    bool Allows(double dChange) const
    {
        return m_Case.iMode == 0 || (m_Case.iMode == 1 ? dChange >= 0 : dChange <= 0);
    }

    double Band(double dDistance) const
    {
        return m_Case.dBand > 0
                   ? std::max(0.0, (m_Case.dBand - std::fabs(dDistance)) / m_Case.dBand)
                   : 1.0;
    }

    double Mean(const Heights& heights, int iX, int iZ) const
    {
        double dSum = 0;
        int iCount = 0;
        for (int z = std::max(iZ - RADIUS, 0); z <= std::min(iZ + RADIUS, SIDE - 1); ++z)
        {
            for (int x = std::max(iX - RADIUS, 0); x <= std::min(iX + RADIUS, SIDE - 1); ++x)
            {
                dSum += heights[static_cast<size_t>(z * SIDE + x)];
                ++iCount;
            }
        }
        return dSum / iCount;
    }

    // How far the function would move a vertex at full weight; dStroke scales it.
    double GetPull(int iX, int iZ, double dHeight, double dStroke) const
    {
        const std::string strFunction = m_Case.pszFunction;
        if (strFunction == "SetHeightFunction")
        {
            return (HEIGHT - dHeight) * dStroke;
        }
        if (strFunction == "BlurFunction")
        {
            return (Mean(m_Case.bDest ? m_Dest : m_Source, iX, iZ) - dHeight) * dStroke;
        }
        if (strFunction == "PosterizeFunction")
        {
            const double dLevel = std::max(1.0, std::ceil(dHeight * LEVELS / LIMIT - 0.5));
            return (std::min<double>(dLevel, LEVELS) * LIMIT / LEVELS - dHeight) * dStroke;
        }
        return strFunction == "PointHeightFunction" ? dStroke : HEIGHT * dStroke;
    }

    void Dab(const SPlace& place, double dPicked, double dStroke)
    {
        const std::string strFunction = m_Case.pszFunction;
        const bool bAlways = strFunction == "PointHeightFunction" || m_Case.bDest;
        const bool bModes =
            strFunction != "PointHeightFunction" && strFunction != "RelativeHeightFunction";
        const Heights before = m_Dest;
        Heights after = m_Dest;
        for (int i = 0; i < SIDE * SIDE; ++i)
        {
            const int iX = i % SIDE;
            const int iZ = i / SIDE;
            const auto n = static_cast<size_t>(i);
            const double dHeight = bAlways ? before[n] : m_Source[n];
            if (std::max(std::abs(iX - place.iX), std::abs(iZ - place.iZ)) * STEP > EXTENT / 2 ||
                before[n] < 0)
            {
                continue;
            }
            const double dPull = GetPull(iX, iZ, dHeight, dStroke);
            const double dNew = dHeight + dPull * POWER * m_Case.dMask * Band(dHeight - dPicked);
            const bool bStronger =
                std::fabs(dNew - m_Source[n]) >= std::fabs(before[n] - m_Source[n]) - 1e-4;
            if ((!bModes || Allows(dPull)) && (bAlways || bStronger))
            {
                after[n] = std::clamp(dNew, 0.0, LIMIT);
            }
        }
        m_Dest = after;
    }

    // Side interpolation 0.5, front-back interpolation 0.5.
    void PlayRamp()
    {
        const double dAX = PRESS.iX * STEP;
        const double dAZ = PRESS.iZ * STEP;
        const double dX = RELEASE.iX * STEP - dAX;
        const double dZ = RELEASE.iZ * STEP - dAZ;
        const double dLength = std::hypot(dX, dZ);
        for (int i = 0; i < SIDE * SIDE; ++i)
        {
            const auto n = static_cast<size_t>(i);
            const double dVX = (i % SIDE) * STEP - dAX;
            const double dVZ = (i / SIDE) * STEP - dAZ;
            const double dT = (dVX * dX + dVZ * dZ) / (dLength * dLength);
            const double dSide = std::fabs(dVX * dZ - dVZ * dX) / dLength;
            if (dT < 0 || dT > 1 || dSide >= EXTENT || m_Source[n] < 0)
            {
                continue;
            }
            double dWeight = POWER * m_Case.dMask * std::min(1.0, (EXTENT - dSide) / (EXTENT / 2));
            dWeight *= std::min(1.0, std::min(dT, 1 - dT) / 0.25);
            const double dTarget =
                At(m_Source, PRESS) + (At(m_Source, RELEASE) - At(m_Source, PRESS)) * dT;
            const double dDelta = dTarget - m_Source[n];
            if (Allows(dDelta))
            {
                m_Dest[n] = std::clamp(m_Source[n] + dDelta * Band(dDelta) * dWeight, 0.0, LIMIT);
            }
        }
    }

    SCase m_Case;
    Heights m_Source;
    Heights m_Dest;
};

std::string Format(const char* pszFormat, double dValue)
{
    char szText[128];
    std::snprintf(szText, sizeof(szText), pszFormat, dValue);
    return szText;
}

std::string MakeScript(const SCase& test)
{
    static const char* const s_Modes[] = {"mode_default", "mode_min", "mode_max"};
    std::string strText =
        "open( \"first.height\" )\nbrush()\n{\n bitmap() { path( \"white.png\" ) }\n";
    strText += std::string(" function( \"") + test.pszFunction + "\" )\n {\n";
    strText += std::string("  attrib( \"m_Mode\", \"") + s_Modes[test.iMode] + "\" )\n";
    strText += Format("  attrib( \"m_Height\", \"%g\" )\n", HEIGHT);
    strText += Format("  attrib( \"m_NeighbourhoodSize\", \"%g\" )\n", RADIUS);
    strText += Format("  attrib( \"m_NumHeightDivisions\", \"%g\" )\n", LEVELS);
    strText += Format("  attrib( \"m_UseOnlyDestBuffer\", \"%g\" )\n", test.bDest ? 1 : 0);
    strText += "  attrib( \"m_SideInterpolation\", \"0.5\" )\n"
               "  attrib( \"m_FrontBackInterpolation\", \"0.5\" )\n }\n";
    strText += Format(" power_modifier( %g )\n", POWER) + Format(" extent( %g )\n", EXTENT);
    strText += Format(" fade_factor( %g )\n", test.dFade);
    strText += Format(" vertical_distance( %g )\n", test.dBand);
    strText += test.dMask < 1 ? " mask( \"mask.png\" )\n mask_enabled( 1 )\n}\n" : "}\n";
    strText += "mode( \"terraforming\" )\n";
    char szLine[96];
    std::snprintf(szLine, sizeof(szLine), "press( %g, %g )\n", PRESS.iX * STEP, PRESS.iZ * STEP);
    strText += szLine;
    for (const SPlace& place : MOVES)
    {
        std::snprintf(szLine,
                      sizeof(szLine),
                      "move( %g, %g, %d )\n",
                      place.iX * STEP,
                      place.iZ * STEP,
                      place.iStep);
        strText += szLine;
    }
    std::snprintf(
        szLine, sizeof(szLine), "release( %g, %g )\n", RELEASE.iX * STEP, RELEASE.iZ * STEP);
    return strText + szLine + "save( \"last.height\" )\n";
}

class CStrokeMatrix : public testing::TestWithParam<const char*>
{
};

} // namespace

TEST_P(CStrokeMatrix, GivesTheHeightsOfAPlainSecondComputation)
{
    const CReplayRunner runner;
    CNumbers numbers(5);
    std::vector<float> heights(size_t{SIDE} * SIDE);
    for (float& fHeight : heights)
    {
        fHeight = numbers.Int(0, 40) == 0 ? -1.0F : numbers.Float(0.0F, 900.0F);
    }
    for (const SPlace& place : {PRESS, MOVES[0], MOVES[1], MOVES[2], RELEASE})
    {
        heights[static_cast<size_t>(place.iZ * SIDE + place.iX)] = numbers.Float(300.0F, 600.0F);
    }
    constexpr float SIZE = static_cast<float>(STEP) * (SIDE - 1);
    ASSERT_TRUE(WriteHeightFile(runner.Path("first.height").c_str(),
                                heights.data(),
                                SIDE,
                                SIDE,
                                {SIZE, static_cast<float>(LIMIT), SIZE}));
    const std::vector<uint8_t> grey(16, 102); // 0.4
    const std::unique_ptr<IImage> pMask(
        IL_CreateImageFromBufferFormat(4, 4, EImageFormat::Indexed8, grey.data()));
    ASSERT_TRUE(IL_SaveImage(runner.Path("mask.png").c_str(), pMask.get(), nullptr));
    const Heights first(heights.begin(), heights.end());

    for (int i = 0; i < 3 * 2 * 2 * 2 * 2; ++i)
    {
        const SCase test = {GetParam(),
                            i % 3,
                            i / 3 % 2 != 0,
                            i / 6 % 2 != 0 ? 0.4 : 1.0,
                            i / 12 % 2 != 0 ? 2000.0 : 0.0,
                            i / 24 % 2 != 0 ? 350.0 : 0.0};
        const bool bHasDest = *GetParam() == 'B' || std::string(GetParam()) == "PosterizeFunction";
        if (test.bDest && !bHasDest)
        {
            continue;
        }
        SCOPED_TRACE(testing::Message()
                     << "mode " << test.iMode << " dest " << test.bDest << " mask " << test.dMask
                     << " fade " << test.dFade << " band " << test.dBand);
        const SRunResult result = runner.Play(MakeScript(test));
        ASSERT_EQ(result.iExitCode, 0) << result.strErr;
        SHeightField field;
        ASSERT_TRUE(ReadHeightFile(runner.Path("last.height").c_str(), field));
        const Heights want = CDragModel(test, first).Play();
        EXPECT_NE(want, first);
        for (size_t n = 0; n < want.size(); ++n)
        {
            ASSERT_NEAR(field.pHeights[n], want[n], 2e-3) << n % SIDE << ", " << n / SIDE;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Functions,
                         CStrokeMatrix,
                         testing::Values("PointHeightFunction",
                                         "RelativeHeightFunction",
                                         "BlurFunction",
                                         "SetHeightFunction",
                                         "RampFunction",
                                         "PosterizeFunction"),
                         [](const auto& test) { return std::string(test.param); });
