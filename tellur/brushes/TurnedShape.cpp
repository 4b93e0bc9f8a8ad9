#include "tellur/brushes/TurnedShape.h"

#include "host/IPluginStrokes.h"
#include "host/Image.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace
{

struct SSource
{
    const uint8_t* pPixels;
    int iSide;

    float Get(int iX, int iY) const
    {
        // The last pixels lie from iSide - 1 to iSide, see GetPixelPair.
        const bool bInside = iX >= 0 && iY >= 0 && iX <= iSide && iY <= iSide;
        const int iColumn = std::min(iX, iSide - 1);
        const int iRow = std::min(iY, iSide - 1);
        return bInside ? static_cast<float>(pPixels[static_cast<size_t>(iRow) * iSide + iColumn])
                       : 0.0F;
    }

    // fX, fY: as footprints are sampled, iSide / 2 under the cursor.
    uint8_t Sample(float fX, float fY) const
    {
        const float fColumn = std::floor(fX);
        const float fRow = std::floor(fY);
        const auto iX = static_cast<int>(fColumn);
        const auto iY = static_cast<int>(fRow);
        const float fRight = fX - fColumn;
        const float fDown = fY - fRow;
        const float fUpper = Get(iX, iY) * (1.0F - fRight) + Get(iX + 1, iY) * fRight;
        const float fLower = Get(iX, iY + 1) * (1.0F - fRight) + Get(iX + 1, iY + 1) * fRight;
        const float fValue = fUpper * (1.0F - fDown) + fLower * fDown;
        return static_cast<uint8_t>(std::clamp(fValue + 0.5F, 0.0F, 255.0F));
    }
};

} // namespace

void TurnShape(const IImage& source, const SPointForm& form, IImage& dest)
{
    const SSource from = {source.GetRawData(), static_cast<int>(source.GetWidth())};
    uint8_t* pDest = dest.GetRawData();
    const float fMiddle = static_cast<float>(from.iSide) * 0.5F;
    for (int iY = 0; iY < from.iSide; ++iY)
    {
        const float fZ = static_cast<float>(iY) - fMiddle;
        for (int iX = 0; iX < from.iSide; ++iX, ++pDest)
        {
            const float fX = static_cast<float>(iX) - fMiddle;
            *pDest = from.Sample(form.fXX * fX + form.fXZ * fZ + fMiddle,
                                 form.fZX * fX + form.fZZ * fZ + fMiddle);
        }
    }
}
