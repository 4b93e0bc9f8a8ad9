#include "tellur/brushes/TurnedShape.h"

#include "host/IPluginStrokes.h"
#include "host/Image.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace
{

// Places are offsets from the pixel that footprints put under the cursor, in pixels; see
// GetPixelPair.
struct SSource
{
    const uint8_t* pPixels;
    int iSide;

    float Get(int iX, int iY) const
    {
        const int iColumn = std::clamp(iX, 0, iSide - 1);
        const int iRow = std::clamp(iY, 0, iSide - 1);
        return static_cast<float>(pPixels[static_cast<size_t>(iRow) * iSide + iColumn]);
    }

    // How much of the image is there, along one axis: all as far as a footprint has it, which is
    // half a side to either hand, and nothing from one pixel further on.
    float GetShare(float fOffset) const
    {
        const float fBeyond = std::fabs(fOffset) - static_cast<float>(iSide) * 0.5F;
        return std::clamp(1.0F - fBeyond, 0.0F, 1.0F);
    }

    uint8_t Sample(float fX, float fY) const
    {
        const float fShare = GetShare(fX) * GetShare(fY);
        if (!(fShare > 0.0F))
        {
            return 0;
        }
        const float fColumn = std::floor(fX);
        const float fRow = std::floor(fY);
        const int iX = static_cast<int>(fColumn) + iSide / 2;
        const int iY = static_cast<int>(fRow) + iSide / 2;
        const float fRight = fX - fColumn;
        const float fDown = fY - fRow;
        const float fUpper = Get(iX, iY) * (1.0F - fRight) + Get(iX + 1, iY) * fRight;
        const float fLower = Get(iX, iY + 1) * (1.0F - fRight) + Get(iX + 1, iY + 1) * fRight;
        const float fValue = (fUpper * (1.0F - fDown) + fLower * fDown) * fShare;
        return static_cast<uint8_t>(std::clamp(fValue + 0.5F, 0.0F, 255.0F));
    }
};

} // namespace

void TurnShape(const IImage& source, const SPointForm& form, IImage& dest)
{
    const SSource from = {source.GetRawData(), static_cast<int>(source.GetWidth())};
    uint8_t* pDest = dest.GetRawData();
    const int iMiddle = from.iSide / 2;
    for (int iY = 0; iY < from.iSide; ++iY)
    {
        const auto fZ = static_cast<float>(iY - iMiddle);
        for (int iX = 0; iX < from.iSide; ++iX, ++pDest)
        {
            const auto fX = static_cast<float>(iX - iMiddle);
            *pDest = from.Sample(form.fXX * fX + form.fXZ * fZ, form.fZX * fX + form.fZZ * fZ);
        }
    }
}
