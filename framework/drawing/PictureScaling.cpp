#include "framework/drawing/PictureScaling.h"

#include "framework/drawing/CPixelBuffer.h"
#include "framework/drawing/PixelFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <new>
#include <utility>

namespace
{

// Blue, green, red times opacity, and opacity, each 0 to 255.
using Texel = std::array<float, 4>;

// A tent over the source pixels around the centre of a target pixel, as wide as a pixel of the
// coarser of the two; what lies outside the source is left out and the rest weighs more.
class CTent
{
public:
    CTent(int nFrom, int nTo)
        : m_From(nFrom)
        , m_Ratio(static_cast<double>(nFrom) / nTo)
        , m_Radius(std::max(1.0, m_Ratio))
    {
    }

    // at(i): the texel i of the line of the source.
    template <class TAt> Texel Sample(int iTarget, TAt&& at) const
    {
        const double fCentre = (iTarget + 0.5) * m_Ratio - 0.5;
        const int iFirst = std::max(0, static_cast<int>(std::ceil(fCentre - m_Radius)));
        const int iLast = std::min(m_From - 1, static_cast<int>(std::floor(fCentre + m_Radius)));
        Texel sum = {};
        double fSum = 0;
        for (int i = iFirst; i <= iLast; ++i)
        {
            const double fWeight = std::max(0.0, 1.0 - std::abs(i - fCentre) / m_Radius);
            const Texel texel = at(i);
            for (size_t n = 0; n < sum.size(); ++n)
            {
                sum[n] += static_cast<float>(fWeight * texel[n]);
            }
            fSum += fWeight;
        }
        // Divided by the sum of the weights, which at the borders of the picture is less than
        // elsewhere: one colour stays exactly that colour.
        for (float& fChannel : sum)
        {
            fChannel = static_cast<float>(fChannel / fSum);
        }
        return sum;
    }

private:
    int m_From;
    double m_Ratio; // source pixels to a target pixel
    double m_Radius;
};

Texel ReadTexel(const uint8_t* pPixel)
{
    const float fOpacity = static_cast<float>(pPixel[3]) / 255.0F;
    return {static_cast<float>(pPixel[0]) * fOpacity,
            static_cast<float>(pPixel[1]) * fOpacity,
            static_cast<float>(pPixel[2]) * fOpacity,
            static_cast<float>(pPixel[3])};
}

void WriteTexel(uint8_t* pPixel, const Texel& texel)
{
    // Where nothing is seen the colour does not matter, but dividing by 0 must not give it.
    const float fOpacity = std::max(texel[3] / 255.0F, 1e-6F);
    for (size_t n = 0; n < 3; ++n)
    {
        pPixel[n] = static_cast<uint8_t>(std::clamp(texel[n] / fOpacity + 0.5F, 0.0F, 255.0F));
    }
    pPixel[3] = static_cast<uint8_t>(std::clamp(texel[3] + 0.5F, 0.0F, 255.0F));
}

} // namespace

bool ScalePicture(const CPixelBuffer& picture, int iWidth, int iHeight, CPixelBuffer& scaled)
{
    if (iWidth == picture.GetWidth() && iHeight == picture.GetHeight())
    {
        return scaled.CopyFrom(picture);
    }
    CPixelBuffer result;
    if (!result.Create(iWidth, iHeight, 32))
    {
        return false;
    }
    const auto nWide = static_cast<size_t>(iWidth);
    const auto nTexels = nWide * static_cast<size_t>(picture.GetHeight());
    // Across first, then down. A weight over both sides is the product of one along each, so the
    // result is the same, and a target pixel reads a column of texels instead of a square.
    const std::unique_ptr<Texel[]> narrowed(new (std::nothrow) Texel[nTexels]);
    if (narrowed == nullptr)
    {
        return false;
    }
    const CTent across(picture.GetWidth(), iWidth);
    for (int y = 0; y < picture.GetHeight(); ++y)
    {
        const uint8_t* pRow = picture.GetRow(y);
        for (int x = 0; x < iWidth; ++x)
        {
            narrowed[static_cast<size_t>(y) * nWide + static_cast<size_t>(x)] =
                across.Sample(x, [pRow](int i) { return ReadTexel(GetPixelOf(pRow, i, 32)); });
        }
    }
    const CTent down(picture.GetHeight(), iHeight);
    for (int y = 0; y < iHeight; ++y)
    {
        for (int x = 0; x < iWidth; ++x)
        {
            const Texel* pColumn = narrowed.get() + x;
            WriteTexel(GetPixelOf(result.GetRow(y), x, 32),
                       down.Sample(y,
                                   [pColumn, nWide](int i)
                                   { return pColumn[static_cast<size_t>(i) * nWide]; }));
        }
    }
    scaled = std::move(result);
    return true;
}
