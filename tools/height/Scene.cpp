#include "tools/height/Scene.h"

#include "tools/height/SceneGround.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr uint32_t SAMPLES = 2;  // a pixel is drawn as so many by so many
constexpr float NEAREST = 1e-5F; // shares of the haze's depth; what is nearer is not drawn
constexpr float DEGREES = 57.29578F;
constexpr float MOST_HAZE = 0.6F;
constexpr float VIEW_WIDTH = 0.84F; // of what is seen at a distance of 1: 45.6 degrees

SVec3 Subtract(const SVec3& a, const SVec3& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

float Dot(const SVec3& a, const SVec3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

SVec3 Cross(const SVec3& a, const SVec3& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

SVec3 Normalize(const SVec3& v)
{
    const float fScale = 1.0F / std::sqrt(Dot(v, v));
    return {v.x * fScale, v.y * fScale, v.z * fScale};
}

SVec3 Mix(const SVec3& a, const SVec3& b, float fShare)
{
    return {a.x + (b.x - a.x) * fShare, a.y + (b.y - a.y) * fShare, a.z + (b.z - a.z) * fShare};
}

SVec3 GetSquares(const SColor& color)
{
    return {color.r * color.r, color.g * color.g, color.b * color.b};
}

// A point on the screen: samples from the left and the top, and 1 over the distance along the view;
// not above 0 for what lies beside or behind the eye.
struct SSpot
{
    float fX = 0.0F;
    float fY = 0.0F;
    float fNear = 0.0F;
    SVec3 color;
};

class CScene
{
public:
    CScene(const SHeightField& field, const SSceneOptions& options)
        : m_Options(options)
        , m_Width(options.uWidth * SAMPLES)
        , m_Height(options.uHeight * SAMPLES)
        , m_Forward(Normalize(Subtract(options.target, options.eye)))
        , m_Right(Normalize(Cross(m_Forward, {0.0F, 1.0F, 0.0F})))
        , m_Up(Cross(m_Right, m_Forward))
        , m_Haze(1.25F * std::max(std::fabs(field.size.x), std::fabs(field.size.z)))
        , m_Near(size_t{m_Width} * m_Height)
        , m_Colors(m_Near.size())
        , m_Day(GetDay())
        , m_Ground(MakeSceneGround(
              field, m_Day, {options.fLow, options.fHigh}, std::max(1024U, options.uWidth * 8 / 3)))
    {
    }

    SReliefPicture Draw()
    {
        // Two rows of projected points are kept at a time; a triangle needs no others.
        std::vector<SSpot> above(m_Ground.uSizeX);
        std::vector<SSpot> below(m_Ground.uSizeX);
        for (uint32_t z = 0; z < m_Ground.uSizeZ; ++z)
        {
            for (uint32_t x = 0; x < m_Ground.uSizeX; ++x)
            {
                below[x] = Project(x, z);
            }
            for (uint32_t x = 0; z > 0 && x + 1 < m_Ground.uSizeX; ++x)
            {
                DrawTriangle(above[x], above[x + 1], below[x]);
                DrawTriangle(above[x + 1], below[x + 1], below[x]);
            }
            above.swap(below);
        }
        return Develop();
    }

private:
    // The sun shines over the left shoulder, low enough for long shadows.
    SDayLight GetDay() const
    {
        constexpr float BEHIND = 98.5F; // degrees to the left of where the camera looks
        constexpr float PITCH = 27.0F;
        constexpr float AMBIENT = 0.24F;
        const float fAhead = std::atan2(m_Forward.z, m_Forward.x) * DEGREES;
        return GetDayLight(fAhead - BEHIND, PITCH, AMBIENT);
    }

    SSpot Project(uint32_t uX, uint32_t uZ) const
    {
        const SVec3 way = Subtract(m_Ground.GetPoint(uX, uZ), m_Options.eye);
        const float fDistance = Dot(way, m_Forward);
        if (!(fDistance > NEAREST * m_Haze))
        {
            return {};
        }
        const float fNear = 1.0F / fDistance;
        const float fScale = static_cast<float>(m_Width) / VIEW_WIDTH * fNear;
        return {static_cast<float>(m_Width) / 2 + Dot(way, m_Right) * fScale,
                static_cast<float>(m_Height) / 2 - Dot(way, m_Up) * fScale,
                fNear,
                m_Ground.colors[size_t{uZ} * m_Ground.uSizeX + uX]};
    }

    // The samples of an axis whose centres lie between two places: the first, and the one behind
    // the last. The order of the arguments of min and max makes 0 of what is no number.
    static std::pair<uint32_t, uint32_t> GetSpan(float fFrom, float fTo, uint32_t uCount)
    {
        const auto fCount = static_cast<float>(uCount);
        return {static_cast<uint32_t>(std::min(fCount, std::max(0.0F, std::ceil(fFrom - 0.5F)))),
                static_cast<uint32_t>(std::min(fCount, std::max(0.0F, std::floor(fTo + 0.5F))))};
    }

    void DrawTriangle(const SSpot& a, const SSpot& b, const SSpot& c)
    {
        // A triangle that reaches behind the eye is left out as a whole.
        if (!(a.fNear > 0.0F && b.fNear > 0.0F && c.fNear > 0.0F))
        {
            return;
        }
        const auto [uLeft, uRight] =
            GetSpan(std::min({a.fX, b.fX, c.fX}), std::max({a.fX, b.fX, c.fX}), m_Width);
        const auto [uTop, uBottom] =
            GetSpan(std::min({a.fY, b.fY, c.fY}), std::max({a.fY, b.fY, c.fY}), m_Height);
        const float fArea = (b.fX - a.fX) * (c.fY - a.fY) - (b.fY - a.fY) * (c.fX - a.fX);
        if (uLeft >= uRight || uTop >= uBottom || fArea == 0.0F)
        {
            return;
        }
        for (uint32_t y = uTop; y < uBottom; ++y)
        {
            for (uint32_t x = uLeft; x < uRight; ++x)
            {
                const float fX = static_cast<float>(x) + 0.5F;
                const float fY = static_cast<float>(y) + 0.5F;
                // Shares of the three corners: divided by the area with its sign they are positive
                // inside, whichever way the triangle turns. 1 over the distance is mixed by them
                // exactly, colours nearly.
                const float fB =
                    ((fX - a.fX) * (c.fY - a.fY) - (fY - a.fY) * (c.fX - a.fX)) / fArea;
                const float fC =
                    ((b.fX - a.fX) * (fY - a.fY) - (b.fY - a.fY) * (fX - a.fX)) / fArea;
                const float fA = 1.0F - fB - fC;
                const float fNear = fA * a.fNear + fB * b.fNear + fC * c.fNear;
                const size_t n = size_t{y} * m_Width + x;
                if (fA >= 0.0F && fB >= 0.0F && fC >= 0.0F && fNear > m_Near[n])
                {
                    m_Near[n] = fNear;
                    m_Colors[n] = {fA * a.color.x + fB * b.color.x + fC * c.color.x,
                                   fA * a.color.y + fB * b.color.y + fC * c.color.y,
                                   fA * a.color.z + fB * b.color.z + fC * c.color.z};
                }
            }
        }
    }

    // What one sample shows, haze or sky included.
    SVec3 GetSample(uint32_t uX, uint32_t uY) const
    {
        const float fScale = VIEW_WIDTH / static_cast<float>(m_Width);
        const float fRight =
            (static_cast<float>(uX) + 0.5F - static_cast<float>(m_Width) / 2) * fScale;
        const float fUp =
            (static_cast<float>(m_Height) / 2 - static_cast<float>(uY) - 0.5F) * fScale;
        const float fLength = std::sqrt(1.0F + fRight * fRight + fUp * fUp);
        const float fRise = (m_Forward.y + m_Right.y * fRight + m_Up.y * fUp) / fLength;
        const SVec3 sky = GetSquares(GetSkyColor(m_Day.skyTop, m_Day.skyBottom, fRise));
        const size_t n = size_t{uY} * m_Width + uX;
        if (!(m_Near[n] > 0.0F))
        {
            return sky;
        }
        // Along the ray, which is longer than the distance along the view except in the middle.
        const float fFar = fLength / m_Near[n] / m_Haze;
        const float fThick = 1.0F - std::exp(-fFar * fFar);
        return Mix(m_Colors[n], GetSquares(m_Day.skyBottom), MOST_HAZE * fThick);
    }

    // What is shown of light, with the dither of its pixel.
    static uint8_t Expose(float fLight, float fDither)
    {
        const float fShown = std::sqrt(std::max(0.0F, fLight)) + fDither;
        return static_cast<uint8_t>(std::min(255.0F, std::max(0.0F, fShown * 255.0F + 0.5F)));
    }

    SReliefPicture Develop() const
    {
        SReliefPicture picture{m_Options.uWidth, m_Options.uHeight, {}};
        picture.rgb.reserve(size_t{picture.uWidth} * picture.uHeight * 3);
        // The mean is taken of light; of what is shown it would darken bright edges.
        constexpr float SHARE = 1.0F / (SAMPLES * SAMPLES);
        for (uint32_t y = 0; y < picture.uHeight; ++y)
        {
            for (uint32_t x = 0; x < picture.uWidth; ++x)
            {
                SVec3 sum;
                for (uint32_t i = 0; i < SAMPLES * SAMPLES; ++i)
                {
                    const SVec3 one =
                        GetSample(x * SAMPLES + i % SAMPLES, y * SAMPLES + i / SAMPLES);
                    sum = {sum.x + one.x * SHARE, sum.y + one.y * SHARE, sum.z + one.z * SHARE};
                }
                const float fDither = GetDither(x, y);
                picture.rgb.insert(
                    picture.rgb.end(),
                    {Expose(sum.x, fDither), Expose(sum.y, fDither), Expose(sum.z, fDither)});
            }
        }
        return picture;
    }

    // The order of these is that of their making: each uses what stands above it.
    const SSceneOptions m_Options;
    const uint32_t m_Width; // in samples
    const uint32_t m_Height;
    const SVec3 m_Forward;
    const SVec3 m_Right;
    const SVec3 m_Up;
    const float m_Haze;        // distance at which it is thick
    std::vector<float> m_Near; // of every sample, 0 for the sky
    std::vector<SVec3> m_Colors;
    const SDayLight m_Day;
    const SSceneGround m_Ground;
};

} // namespace

SReliefPicture RenderScene(const SHeightField& field, const SSceneOptions& options)
{
    return CScene(field, options).Draw();
}
