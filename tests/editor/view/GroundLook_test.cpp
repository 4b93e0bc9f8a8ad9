// Natural ground, light, sky and lines, pixel by pixel.

#include "editor/view/CSmoothTarget.h"
#include "engine/terrain/GroundLook.h"
#include "tests/editor/view/RenderFixture.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>

namespace
{

constexpr float RADIANS = 0.017453293F;
constexpr SColor MAGENTA = {1.0F, 0.0F, 1.0F, 1.0F}; // that no ground has

// Ground that rises to the east, steeper from row to row of the table.
constexpr float SLOPES[] = {0.5F, 12.0F, 22.0F, 30.0F, 45.0F}; // degrees

float GetPlateau(float /*fX*/, float /*fZ*/)
{
    return 50.0F;
}

std::string ToText(const QColor& color)
{
    return color.name().toStdString();
}

int ToByte(float fSquare)
{
    return static_cast<int>(std::lround(255.0F * std::sqrt(std::min(1.0F, fSquare))));
}

class CGroundLookTest : public CRenderFixture
{
protected:
    // What a picture without a card has at this height on a plane of this slope.
    QColor GetExpected(float fHeight, float fHighest, float fDegrees, float fRough)
    {
        float fLow = 0.0F;
        float fHigh = 0.0F;
        GetTintRange(0.0F, fHighest, 640.0F, fLow, fHigh);
        const SVec3 normal = {-std::sin(fDegrees * RADIANS), std::cos(fDegrees * RADIANS), 0.0F};
        const SDayLight day =
            GetDayLight(m_Settings.fSunYaw, m_Settings.fSunPitch, m_Settings.fAmbient);
        const SColor tint = GetGroundTint({}, (fHeight - fLow) / (fHigh - fLow), normal.y, fRough);
        const SVec3 lit = GetLitSquares(tint, day, normal, 1.0F, 1.0F);
        return {ToByte(lit.x), ToByte(lit.y), ToByte(lit.z)};
    }

    void ExpectTheTable(int iTolerance)
    {
        for (const float fDegrees : SLOPES)
        {
            const float fTangent = std::tan(fDegrees * RADIANS);
            MakeTerrain(64, [fTangent](float fX, float) { return fX * fTangent; });
            const SViewProjection view = LookDown();
            const auto pRenderer = MakeRenderer();
            const QImage whole = Draw(view, pRenderer.get());
            for (float fX = 45.0F; fX < 620.0F; fX += 50.0F)
            {
                const float fZ = 200.0F + fX * 0.3F;
                float fRough = 0.0F;
                QColor is = GetPixel(whole, view, fX, fZ);
                if (m_Settings.bPatches)
                {
                    // So near that the finest of them are there.
                    SViewProjection near = view;
                    near.position = {fX, 5000.0F, fZ};
                    near.fHalfHeight = 2.0F;
                    fRough = GetRoughness(fX * PATCHES / 640.0F, fZ * PATCHES / 640.0F);
                    is = GetPixel(Draw(near, pRenderer.get()), near, fX, fZ);
                }
                const QColor should =
                    GetExpected(fX * fTangent, 640.0F * fTangent, fDegrees, fRough);
                EXPECT_TRUE(std::abs(is.red() - should.red()) <= iTolerance &&
                            std::abs(is.green() - should.green()) <= iTolerance &&
                            std::abs(is.blue() - should.blue()) <= iTolerance)
                    << fDegrees << " degrees, x " << fX << ": " << ToText(is) << ", not "
                    << ToText(should);
            }
        }
    }

    QColor GetLook(float fTangent, float fX)
    {
        MakeTerrain(64, [fTangent](float fToEast, float) { return fToEast * fTangent; });
        const SViewProjection view = LookDown();
        return GetPixel(Draw(view), view, fX, 320.0F);
    }

    // How much darker than the ground a row of the picture is by its lines, in whole lines of a
    // pixel each.
    static double GetLines(const QImage& lined, const QImage& ground, double dLineDarkness)
    {
        double dSum = 0.0;
        for (int x = 0; x < lined.width(); ++x)
        {
            dSum += qGreen(ground.pixel(x, HEIGHT / 2)) - qGreen(lined.pixel(x, HEIGHT / 2));
        }
        return dSum / dLineDarkness;
    }
};

TEST_F(CGroundLookTest, IsThatOfPicturesWithoutACardAtAnyTimeOfDay)
{
    for (const SDayTime& time : DAY_TIMES)
    {
        SCOPED_TRACE(time.pszName);
        m_Settings.SetTime(time);
        m_Settings.bPatches = false;
        ExpectTheTable(3);
        if (&time == DAY_TIMES)
        {
            m_Settings.bPatches = true;
            ExpectTheTable(3);
        }
    }
}

TEST_F(CGroundLookTest, TintsFollowHeightAndSlope)
{
    m_Settings.fAmbient = 1.0F; // no sun, which slopes have different shares of
    const QColor low = GetLook(0.2F, 20.0F);
    const QColor high = GetLook(0.2F, 450.0F);
    const QColor snow = GetLook(0.2F, 630.0F);
    const QColor steep = GetLook(1.0F, 20.0F);
    const QColor steepTop = GetLook(1.0F, 630.0F);
    EXPECT_GT(low.green(), low.red()) << "grass";
    EXPECT_GT(high.red(), high.green()) << "soil";
    EXPECT_GT(snow.blue(), high.blue() + 60);
    EXPECT_LT(low.green() - low.blue(), 60) << "what is painted stands out";
    EXPECT_NE(ToText(steep), ToText(low));
    EXPECT_LT(steepTop.blue(), snow.blue() - 40) << "no snow stays there";
    // The first strokes on flat ground raise no mountain.
    EXPECT_EQ(ToText(GetLook(0.0002F, 630.0F)), ToText(GetLook(0.0F, 630.0F)));
}

TEST_F(CGroundLookTest, LightComesFromSunAndSky)
{
    // A roof along z: its west side, then its east side.
    MakeTerrain(64, [](float fX, float) { return 200.0F - 0.6F * std::fabs(fX - 320.0F); });
    const SViewProjection view = LookDown();
    const auto look = [&](const char* pszTime, float fX)
    {
        const auto* pTime = std::find_if(std::begin(DAY_TIMES),
                                         std::end(DAY_TIMES),
                                         [&](const SDayTime& time)
                                         { return time.pszName == std::string(pszTime); });
        m_Settings.SetTime(*pTime);
        return GetPixel(Draw(view), view, fX, 320.0F);
    };
    EXPECT_GT(look("Dawn", 480.0F).red(), look("Dawn", 160.0F).red() + 40) << "the sun is east";
    EXPECT_GT(look("Evening", 160.0F).red(), look("Evening", 480.0F).red() + 40);
    EXPECT_LT(std::abs(look("Overcast", 160.0F).red() - look("Overcast", 480.0F).red()), 40);
    const QColor evening = look("Evening", 160.0F);
    const QColor shade = look("Evening", 480.0F);
    EXPECT_GT(evening.redF() / evening.blueF(), 1.2F * shade.redF() / shade.blueF())
        << "the sun is warm, the sky is not";
    EXPECT_GT(shade.green(), 40) << "the sky lights what the sun does not";
}

TEST_F(CGroundLookTest, TheSkyHasNoBands)
{
    MakeTerrain(16, GetPlateau);
    // Above the horizon, nearly level, so that a colour stays the same over many rows.
    SViewProjection view = Look({80.0F, 60.0F, 80.0F}, 0.7F, 0.24F);
    view.fTanHalfFov = 0.22F;
    const QImage picture = Draw(view);
    double dAbove = 0.0;
    int nMixed = 0;
    for (int y = 0; y < HEIGHT; ++y)
    {
        std::set<int> reds;
        double dMean = 0.0;
        for (int x = WIDTH / 2 - 32; x < WIDTH / 2 + 32; ++x)
        {
            const int iRed = qRed(picture.pixel(x, y));
            reds.insert(iRed);
            dMean += iRed / 64.0;
        }
        nMixed += reds.size() > 1 ? 1 : 0;
        EXPECT_LE(*reds.rbegin() - *reds.begin(), 2) << "row " << y;
        EXPECT_GE(dMean, dAbove - 0.05) << "row " << y << ": the horizon is the lightest";
        dAbove = dMean;
    }
    EXPECT_GT(nMixed, HEIGHT / 2) << "steps between bytes lie in all rows";
    // A colour that is a byte has no dither.
    m_Settings.skyTop = m_Settings.skyBottom = SColor{200.0F / 255.0F, 0.0F, 77.0F / 255.0F, 1.0F};
    QImage even(WIDTH, HEIGHT, QImage::Format_RGB32);
    even.fill(QColor(200, 0, 77));
    EXPECT_EQ(CountDifferent(Draw(view), even), 0);
}

TEST_F(CGroundLookTest, LinesAreAPixelWideAtAnyDistanceAndGoWhereTheyWouldTouch)
{
    const CTempFolder folder;
    const auto write = [&](const char* pszName, const char* pszLines)
    {
        WriteBytes(folder.Path(pszName),
                   "!kind( s )\n!color( v4 )\n!step( f )\nkind( \"contours\" )\n"
                   "color( [0.8, 0.8, 0.8, 1] )\n" +
                       std::string(pszLines) + "step( 20 )\n");
        return folder.Path(pszName);
    };
    // Without the stronger ones; black lines, and none.
    const std::string strLined =
        write("lined.mat", "color( [0, 0, 0, 1] )\ncolor( [0, 0, 0, 0] )\n");
    const std::string strGround =
        write("ground.mat", "color( [0, 0, 0, 0] )\ncolor( [0, 0, 0, 0] )\n");
    MakeTerrain(256,
                [](float fX, float) { return fX; }); // lines 20 units apart, as the cells are 10
    SViewProjection view = LookDown();
    view.position.z += 5.0F; // between two lines of the grid
    // Half of the height of the picture, terrain units, and how wide it is then.
    for (const float fHalf : {60.0F, 150.0F, 330.0F})
    {
        SCOPED_TRACE(fHalf);
        view.fHalfHeight = fHalf;
        const double dWide = 2.0 * static_cast<double>(fHalf) * WIDTH / HEIGHT;
        m_Settings.strDefaultMaterial = strGround;
        m_Settings.bGrid = false;
        const QImage ground = Draw(view);
        const int iGround = qGreen(ground.pixel(WIDTH / 2, HEIGHT / 2));
        m_Settings.strDefaultMaterial = strLined;
        EXPECT_NEAR(GetLines(Draw(view), ground, iGround), dWide / 20.0, dWide / 20.0 * 0.12);
        m_Settings.strDefaultMaterial = strGround;
        m_Settings.bGrid = true;
        // Cells, which are too close in the last picture, and every 32nd.
        if (fHalf < 200.0F)
        {
            EXPECT_NEAR(GetLines(Draw(view), ground, 0.45 * (iGround - 15)),
                        dWide / 10.0,
                        dWide / 10.0 * 0.25);
        }
    }
    view.fHalfHeight = 1280.0F; // lines 1.9 pixels apart
    m_Settings.bGrid = false;
    m_Settings.strDefaultMaterial = strGround;
    const QImage ground = Draw(view);
    m_Settings.strDefaultMaterial = strLined;
    EXPECT_EQ(CountDifferent(Draw(view), ground), 0);
    // Flat ground at the height of a line is no line.
    MakeTerrain(16, [](float, float) { return 40.0F; });
    const SViewProjection flat = LookDown();
    EXPECT_GT(GetPixel(Draw(flat), flat, 80.0F, 80.0F).green(), 150);
}

TEST_F(CGroundLookTest, SmoothEdgesMixWhatMeetsAndLeaveTheRest)
{
    MakeTerrain(64,
                [](float fX, float fZ) { return 200.0F - std::hypot(fX - 320.0F, fZ - 320.0F); });
    m_Settings.skyTop = m_Settings.skyBottom = MAGENTA;
    const SViewProjection view = Look({320.0F, 120.0F, -200.0F}, 1.5708F, -0.1F);
    const auto pRenderer = MakeRenderer();
    const QImage plain = Draw(view, pRenderer.get());
    m_Settings.bSmoothEdges = true;
    const QImage smooth = Draw(view, pRenderer.get());
    int nEdge = 0;
    for (int x = 1; x < WIDTH - 1; ++x)
    {
        int y = 0;
        while (y < HEIGHT - 1 && plain.pixel(x, y) == 0xFFFF00FF)
        {
            ++y;
        }
        // Where sky meets ground: a share of both, in fewer columns without.
        for (int iNear = std::max(0, y - 1); iNear <= y; ++iNear)
        {
            const QColor color = smooth.pixelColor(x, iNear);
            nEdge += color.green() > 10 && color.red() - color.green() > 60 ? 1 : 0;
        }
    }
    EXPECT_GT(nEdge, WIDTH / 3);
    const int nDifferent = CountDifferent(smooth, plain, 6);
    EXPECT_GT(nDifferent, WIDTH / 3);
    EXPECT_LT(nDifferent, WIDTH * HEIGHT / 25) << "inside of the ground nothing changes";
    m_Settings.bSmoothEdges = false;
    EXPECT_EQ(CountDifferent(Draw(view, pRenderer.get()), plain), 0) << "switched off at once";
}

TEST_F(CGroundLookTest, ACardWithoutRoomForSmoothEdgesIsSpokenOfOnce)
{
    constexpr int TOO_WIDE = 1 << 20;
    OpenGl gl;
    ASSERT_TRUE(gl.initializeOpenGLFunctions());
    CSmoothTarget target;
    CLogCatcher log;
    EXPECT_FALSE(target.Begin(gl, TOO_WIDE, 4));
    EXPECT_FALSE(target.Begin(gl, TOO_WIDE, 4));
    EXPECT_FALSE(target.Begin(gl, TOO_WIDE + 1, 4));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_TRUE(target.Begin(gl, WIDTH, HEIGHT)) << "a smaller one may fit";
    target.End(gl);
    target.Release(gl);
    m_Buffer->bind();
}

} // namespace
