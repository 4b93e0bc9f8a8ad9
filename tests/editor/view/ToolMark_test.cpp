// The mark of the tool at hand: which ground it covers, how strongly, and in which colour.

#include "editor/view/CMarkOverlay.h"
#include "tests/editor/view/RenderFixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

namespace
{

// A terrain of 640 x 640 units seen from above, two units a pixel and more, and a tool 320 units
// wide in its middle whose shape rises evenly from 0 at the lowest x to 1 at the highest.
class CToolMarkTest : public CRenderFixture
{
protected:
    static constexpr float MIDDLE = 320.0F;

    void Begin(const std::function<float(float, float)>& getHeight)
    {
        MakeTerrain(64, getHeight);
        m_View = LookDown();
        m_Renderer = MakeRenderer();
        m_Settings.mark.ePlace = EMarkPlace::None;
        m_Plain = Draw(m_View, m_Renderer.get());
        m_Settings.mark.ePlace = EMarkPlace::Cursor;
        m_Settings.mark.at = {MIDDLE, GetTerrain().GetHeightAt(MIDDLE, MIDDLE), MIDDLE};
        m_Settings.mark.bTool = true;
        m_Settings.mark.fSignPixels = 0.0F;
        m_Settings.mark.pShape =
            MakeTexture(64, [](uint32_t uX, uint32_t) { return static_cast<uint8_t>(uX * 4); });
        Tool().eKind = EToolKind::Add;
        Tool().eSign = EToolSign::Raise;
        Tool().fExtent = 320.0F;
    }

    SToolMark& Tool() { return m_Settings.mark.tool; }

    void Look() { m_Marked = Draw(m_View, m_Renderer.get()); }

    // The weight that the colour on the ground tells of.
    float GetWeight(float fX, float fZ)
    {
        const QColor from = GetPixel(m_Plain, m_View, fX, fZ);
        const QColor to = GetPixel(m_Marked, m_View, fX, fZ);
        const SColor color = GetMarkColor(Tool().eSign);
        const bool bRed = Tool().eSign == EToolSign::Neutral; // the channel that tells most
        const auto fFrom = static_cast<float>(bRed ? from.redF() : from.blueF());
        const auto fTo = static_cast<float>(bRed ? to.redF() : to.blueF());
        return (fTo - fFrom) / ((bRed ? color.r : color.b) - fFrom) / m_Settings.fMarkTint;
    }

    SViewProjection m_View;
    std::unique_ptr<CTerrainRenderer> m_Renderer;
    QImage m_Plain;
    QImage m_Marked;
};

// How a colour is seen where one kind of cones is missing: the matrices of Machado, Oliveira and
// Fernandes (2009) for linear light, at their full severity; then as CIE L*a*b*.
using SeenColor = std::array<double, 3>;

constexpr std::array<std::array<double, 9>, 4> EYES = {
    {{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0},
     {0.152286, 1.052583, -0.204868, 0.114503, 0.786281, 0.099216, -0.003882, -0.048116, 1.051998},
     {0.367322, 0.860646, -0.227968, 0.280085, 0.672501, 0.047413, -0.011820, 0.042940, 0.968881},
     {1.255528,
      -0.076749,
      -0.178779,
      -0.078411,
      0.930809,
      0.147602,
      0.004733,
      0.691367,
      0.303900}}};
constexpr std::array<double, 9> XYZ_OF_RGB = {
    0.4339, 0.3762, 0.1899, 0.2126, 0.7152, 0.0722, 0.0177, 0.1095, 0.8728}; // white is 1, 1, 1

SeenColor Multiply(const std::array<double, 9>& m, const SeenColor& v)
{
    SeenColor to = {};
    for (size_t i = 0; i < 3; ++i)
    {
        to[i] = m[3 * i] * v[0] + m[3 * i + 1] * v[1] + m[3 * i + 2] * v[2];
    }
    return to;
}

SeenColor See(const SColor& color, const std::array<double, 9>& eye)
{
    SeenColor light = {color.r, color.g, color.b};
    for (double& fChannel : light)
    {
        fChannel =
            fChannel <= 0.04045 ? fChannel / 12.92 : std::pow((fChannel + 0.055) / 1.055, 2.4);
    }
    light = Multiply(eye, light);
    for (double& fChannel : light)
    {
        fChannel = std::clamp(fChannel, 0.0, 1.0);
    }
    SeenColor f = Multiply(XYZ_OF_RGB, light);
    for (double& fPart : f)
    {
        fPart = fPart > 0.008856 ? std::cbrt(fPart) : 7.787 * fPart + 16.0 / 116.0;
    }
    return {116.0 * f[1] - 16.0, 500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])};
}

float GetFlat(float /*fX*/, float /*fZ*/)
{
    return 50.0F;
}

TEST_F(CToolMarkTest, FollowsTheShapeWithPowerAndHardnessAndTheMask)
{
    Begin(GetFlat);
    for (const auto& [fPower, fHardness] :
         {std::pair(1.0F, 0.0F), {0.5F, 0.0F}, {1.0F, 0.4F}, {0.75F, -0.3F}, {-1.0F, 0.0F}})
    {
        Tool().fPower = fPower;
        Tool().fHardness = fHardness;
        Look();
        for (float fX = 190.0F; fX < 470.0F; fX += 20.0F)
        {
            const float fShape = (fX - 160.0F) / 320.0F * 64.0F * 4.0F / 255.0F;
            const float fWanted = std::fabs(fPower) * std::clamp(fShape + fHardness, 0.0F, 1.0F);
            const float fLine = std::fabs(fShape - 0.04F + fHardness); // the outline
            EXPECT_TRUE(fLine < 0.05F || std::fabs(GetWeight(fX, 300.0F) - fWanted) < 0.04F)
                << fPower << ", " << fHardness << " at " << fX << ": " << GetWeight(fX, 300.0F);
        }
        EXPECT_NEAR(GetWeight(490.0F, 300.0F), 0.0F, 0.01F) << "beyond the footprint";
    }
    // Half of the terrain is masked, along z.
    Tool().fPower = 1.0F;
    Tool().fHardness = 1.0F;
    CWorld& world = m_Engine->GetCWorld();
    ITexture* pMask = MakeTexture(64, [](uint32_t, uint32_t uY) { return uY < 32 ? 0 : 255; });
    SMatrix4 transform = {};
    world.MakeOverlayTransform(&transform.m[2], 640.0F);
    GetTerrain().SetEditOverlay(world.RegisterTerrainTexture(pMask, "mask"));
    GetTerrain().SetEditOverlayTransform(transform);
    m_Settings.mark.ePlace = EMarkPlace::None;
    m_Plain = Draw(m_View, m_Renderer.get());
    m_Settings.mark.ePlace = EMarkPlace::Cursor;
    Look();
    EXPECT_NEAR(GetWeight(400.0F, 280.0F), 0.0F, 0.02F);
    EXPECT_NEAR(GetWeight(400.0F, 360.0F), 1.0F, 0.04F);
}

TEST_F(CToolMarkTest, IsCutByTheBandAndByAHeightThatIsOnlyReachedFromOneSide)
{
    Begin([](float fX, float) { return fX; }); // a slope along x
    Tool().fHardness = 1.0F;
    Tool().fBand = 80.0F;
    Look();
    for (float fX = 180.0F; fX < 470.0F; fX += 20.0F)
    {
        const float fWanted = std::max(0.0F, 1.0F - std::fabs(fX - MIDDLE) / 80.0F);
        EXPECT_NEAR(GetWeight(fX, 250.0F), fWanted, 0.05F) << fX;
    }
    Tool().fBand = 0.0F;
    Tool().eSign = EToolSign::RaiseOnly;
    Tool().eTarget = EToolTarget::Height;
    Tool().fHeight = 260.0F;
    Look();
    EXPECT_NEAR(GetWeight(240.0F, 250.0F), 1.0F, 0.05F);
    EXPECT_NEAR(GetWeight(280.0F, 250.0F), 0.0F, 0.05F) << "is higher already";
    Tool().eSign = EToolSign::LowerOnly;
    Tool().eTarget = EToolTarget::Picked; // 320
    Look();
    EXPECT_NEAR(GetWeight(280.0F, 250.0F), 0.0F, 0.05F);
    EXPECT_NEAR(GetWeight(360.0F, 250.0F), 1.0F, 0.05F);
}

TEST_F(CToolMarkTest, HasAColourForEachDirectionAndASignForEachTool)
{
    Begin(GetFlat);
    Tool().fHardness = 1.0F;
    std::set<QRgb> colors;
    std::set<std::vector<bool>> signs;
    m_Settings.mark.fSignPixels = 2.0F;
    const auto look = [&]
    {
        Look();
        colors.insert(GetPixel(m_Marked, m_View, 400.0F, 280.0F).rgb());
        // The square of the sign lies to the left of the middle and below it.
        std::vector<bool> sign;
        const QImage square = m_Marked.copy(WIDTH / 2 - 38, HEIGHT / 2 + 12, 26, 26);
        for (int i = 0; i < 26 * 26; ++i)
        {
            sign.push_back(square.pixelColor(i % 26, i / 26).lightness() > 80);
        }
        signs.insert(sign);
    };
    for (const EToolSign eSign :
         {EToolSign::Raise, EToolSign::Lower, EToolSign::RaiseOnly, EToolSign::LowerOnly})
    {
        Tool().eSign = eSign;
        look();
    }
    EXPECT_EQ(colors.size(), 4U);
    Tool().eSign = EToolSign::Neutral;
    for (const EToolKind eKind : {EToolKind::Smooth,
                                  EToolKind::Level,
                                  EToolKind::Terrace,
                                  EToolKind::Point,
                                  EToolKind::Other})
    {
        Tool().eKind = eKind;
        look();
    }
    EXPECT_EQ(colors.size(), 5U) << "what is neutral has one colour";
    EXPECT_EQ(signs.size(), 9U);
    // A view whose picture begins a little before the ground has the sign, too.
    m_View = CRenderFixture::Look({MIDDLE, 550.0F, 820.0F}, -1.5707964F, -0.7853982F);
    m_View.fNear = 600.0F;
    const QImage without = Draw(m_View, m_Renderer.get());
    Tool().eKind = EToolKind::Level;
    EXPECT_EQ(CountDifferent(Draw(m_View, m_Renderer.get()), without), 26 * 26);
}

// Turned and mirrored as a stroke in another place is.
TEST_F(CToolMarkTest, IsShownInOtherPlacesToo)
{
    Begin(GetFlat);
    Tool().fExtent = 160.0F;
    m_Settings.mark.images[0] = {.at = {120.0F, 50.0F, 480.0F}, .bFlip = true};
    m_Settings.mark.images[1] = {.at = {520.0F, 50.0F, 160.0F}, .fTurn = 1.5707964F};
    m_Settings.mark.nImages = 2;
    Look();
    const float fHigh = GetWeight(MIDDLE + 60.0F, MIDDLE);
    EXPECT_GT(fHigh, 0.8F);
    EXPECT_NEAR(GetWeight(120.0F - 60.0F, 480.0F), fHigh, 0.05F) << "mirrored";
    EXPECT_LT(GetWeight(120.0F + 60.0F, 480.0F), 0.4F);
    EXPECT_NEAR(GetWeight(520.0F, 160.0F + 60.0F), fHigh, 0.05F) << "x has become z";
    EXPECT_LT(GetWeight(520.0F, 160.0F - 60.0F), 0.4F);
}

TEST_F(CToolMarkTest, EndsAtTheSquareOfTheToolHoweverTheShapeIsTurned)
{
    Begin(GetFlat);
    Tool().fExtent = 160.0F;
    Tool().fHardness = 1.0F;
    m_Settings.mark.pShape = MakeTexture(64, [](uint32_t, uint32_t) { return uint8_t{255}; });
    m_Settings.mark.fTurn = 0.7853982F;
    m_Settings.mark.images[0] = {.at = {120.0F, 50.0F, 480.0F}, .fTurn = -0.7853982F};
    m_Settings.mark.nImages = 1;
    Look();
    for (const auto& [fX, fZ] : {std::pair(MIDDLE, MIDDLE), {120.0F, 480.0F}})
    {
        for (const float fSign : {-1.0F, 1.0F})
        {
            EXPECT_NEAR(GetWeight(fX + fSign * 70.0F, fZ), 1.0F, 0.05F) << fX;
            EXPECT_NEAR(GetWeight(fX, fZ + fSign * 70.0F), 1.0F, 0.05F) << fX;
            EXPECT_NEAR(GetWeight(fX + fSign * 95.0F, fZ), 0.0F, 0.01F) << "a corner sticks out";
            EXPECT_NEAR(GetWeight(fX, fZ + fSign * 95.0F), 0.0F, 0.01F) << "a corner sticks out";
            EXPECT_NEAR(GetWeight(fX + 70.0F, fZ + fSign * 70.0F), 0.0F, 0.01F) << "turned away";
        }
    }
}

TEST_F(CToolMarkTest, OfARampIsItsStripAndBeforeThatItsWidth)
{
    Begin([](float, float fZ) { return fZ < MIDDLE ? 50.0F : 150.0F; });
    Tool() = {};
    Tool().eKind = EToolKind::Ramp;
    Tool().fExtent = 100.0F;
    Tool().fPower = 0.8F;
    Tool().fSideShare = 0.5F;
    Tool().fEndShare = 0.25F;
    Look();
    EXPECT_NEAR(GetWeight(MIDDLE + 30.0F, 310.0F), 0.8F, 0.05F);
    EXPECT_NEAR(GetWeight(MIDDLE, MIDDLE - 75.0F), 0.8F * 0.5F, 0.05F);
    EXPECT_NEAR(GetWeight(MIDDLE + 110.0F, 310.0F), 0.0F, 0.05F);
    Tool().bLaid = true;
    Tool().first = {80.0F, 100.0F, 330.0F};
    Tool().second = {560.0F, 100.0F, 330.0F};
    Look();
    EXPECT_NEAR(GetWeight(70.0F, 310.0F), 0.0F, 0.05F);
    EXPECT_NEAR(GetWeight(140.0F, 310.0F), 0.8F * 0.5F, 0.05F) << "the end blends in";
    EXPECT_NEAR(GetWeight(MIDDLE, 310.0F), 0.8F, 0.05F);
    EXPECT_NEAR(GetWeight(MIDDLE, 330.0F + 75.0F), 0.8F * 0.5F, 0.05F) << "and the side";
    EXPECT_NEAR(GetWeight(MIDDLE, 330.0F + 110.0F), 0.0F, 0.05F);
    Tool().eSign = EToolSign::RaiseOnly; // to 100
    Look();
    EXPECT_NEAR(GetWeight(MIDDLE, 310.0F), 0.8F, 0.05F);
    EXPECT_NEAR(GetWeight(MIDDLE, 370.0F), 0.0F, 0.05F);
    Tool().eSign = EToolSign::Neutral;
    Tool().fBand = 40.0F; // both grounds are 50 away from the ramp
    Look();
    EXPECT_NEAR(GetWeight(MIDDLE, 310.0F), 0.0F, 0.05F);
}

} // namespace

TEST(ToolMarkColors, DifferForEveryKindOfColourBlindness)
{
    constexpr double LEAST = 20.0; // 2.3 can just be told apart side by side
    const std::array<EToolSign, 5> signs = {EToolSign::Raise,
                                            EToolSign::RaiseOnly,
                                            EToolSign::Lower,
                                            EToolSign::LowerOnly,
                                            EToolSign::Neutral};
    for (size_t iEye = 0; iEye < EYES.size(); ++iEye)
    {
        for (size_t i = 0; i < signs.size(); ++i)
        {
            for (size_t j = 0; j < i; ++j)
            {
                const SeenColor one = See(GetMarkColor(signs[i]), EYES[iEye]);
                const SeenColor other = See(GetMarkColor(signs[j]), EYES[iEye]);
                EXPECT_GE(std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]),
                          LEAST)
                    << "eye " << iEye << ", colours " << i << " and " << j;
            }
        }
    }
}
