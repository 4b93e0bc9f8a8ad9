#include "framework/core/Cursor.h"
#include "framework/core/ResourceModule.h"
#include "tellur/resources/PluginResources.h"

#include <png.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace
{

class CPluginResources : public testing::Test
{
protected:
    CResourceScope m_Scope{&GetPluginResources()};
};

// Pixels as 0xAABBGGRR; nothing for bytes that are no whole picture.
struct SPixels
{
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    std::vector<uint32_t> colors;
};

SPixels Decode(const uint8_t* pPng, size_t nBytes)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    SPixels pixels;
    if (png_image_begin_read_from_memory(&image, pPng, nBytes) != 0)
    {
        image.format = PNG_FORMAT_RGBA;
        pixels.colors.resize(size_t{image.width} * image.height);
        if (png_image_finish_read(&image, nullptr, pixels.colors.data(), 0, nullptr) != 0)
        {
            return {image.width, image.height, pixels.colors};
        }
    }
    return {};
}

// Both scales, the first one of the given size and the other one twice as large.
std::array<SPixels, 2>
DecodeBoth(const SPictureResource& picture, uint32_t uWidth, uint32_t uHeight)
{
    std::array<SPixels, 2> both = {Decode(picture.pPng, picture.nBytes),
                                   Decode(picture.pPngDouble, picture.nBytesDouble)};
    for (uint32_t uScale = 1; uScale <= 2; ++uScale)
    {
        EXPECT_EQ(both[uScale - 1].uWidth, uWidth * uScale);
        EXPECT_EQ(both[uScale - 1].uHeight, uHeight * uScale);
    }
    return both;
}

// Relative luminance, 0 to 1.
double GetLuminance(uint32_t uColor)
{
    const auto GetLight = [uColor](unsigned uShift)
    {
        return std::pow(((uColor >> uShift) & 0xFFU) / 255.0, 2.2);
    };
    return 0.2126 * GetLight(0) + 0.7152 * GetLight(8) + 0.0722 * GetLight(16);
}

// The ground and the two other greys that are replaced, all else opaque inks on either ground.
void CheckColors(const std::vector<uint32_t>& colors)
{
    std::set<uint32_t> inks(colors.begin(), colors.end());
    EXPECT_EQ(colors.front(), 0xFFC0C0C0U);
    EXPECT_EQ(colors.back(), 0xFFC0C0C0U);
    for (const uint32_t uGrey : {0xFFC0C0C0U, 0xFF808080U, 0xFFDFDFDFU})
    {
        EXPECT_EQ(inks.erase(uGrey), 1U) << uGrey;
    }
    EXPECT_FALSE(inks.empty());
    for (const uint32_t uInk : inks)
    {
        EXPECT_EQ(uInk >> 24U, 0xFFU);
        const double fLuminance = GetLuminance(uInk) + 0.05;
        EXPECT_GE((GetLuminance(0xF0F0F0) + 0.05) / fLuminance, 3) << uInk;
        EXPECT_GE(fLuminance / (GetLuminance(0x353535) + 0.05), 3) << uInk;
    }
}

// Pixels of two pictures of one size that differ; all of them when the sizes differ.
size_t CountDifferences(const SPixels& first, const SPixels& second)
{
    size_t nCount = 0;
    for (size_t i = 0; i < first.colors.size(); ++i)
    {
        nCount += first.uWidth != second.uWidth || first.colors[i] != second.colors[i] ? 1 : 0;
    }
    return nCount;
}

} // namespace

TEST_F(CPluginResources, CursorsAreDistinctPicturesAndTheArrowIsMissing)
{
    std::set<std::vector<uint32_t>> pictures;
    for (const uint32_t uId : {2106U, 2107U, 2108U, 2109U, 2110U, 2113U, 2115U})
    {
        SCOPED_TRACE(uId);
        const CursorHandle pCursor = LoadCursorResource(uId);
        ASSERT_NE(pCursor, nullptr);
        for (const SPixels& pixels : DecodeBoth(pCursor->picture, 32, 32))
        {
            pictures.insert(pixels.colors);
        }
        EXPECT_TRUE(pCursor->iHotX >= 0 && pCursor->iHotX < 32);
        EXPECT_TRUE(pCursor->iHotY >= 0 && pCursor->iHotY < 32);
    }
    EXPECT_EQ(pictures.size(), 14U);
    EXPECT_EQ(LoadCursorResource(32512), nullptr); // the standard arrow
}

TEST_F(CPluginResources, FunctionPicturesAreMadeOfTheThreeGreysAndOfInksThatShowOnLightAndDark)
{
    std::vector<SPixels> seen;
    for (uint32_t uId = 2125; uId <= 2130; ++uId)
    {
        const SBitmapResource* pBitmap = FindBitmapResource(uId);
        ASSERT_NE(pBitmap, nullptr) << uId;
        for (const SPixels& pixels : DecodeBoth(pBitmap->picture, 24, 24))
        {
            SCOPED_TRACE(testing::Message() << uId << ", " << pixels.uWidth << " wide");
            ASSERT_FALSE(pixels.colors.empty());
            CheckColors(pixels.colors);
            for (const SPixels& other : seen)
            {
                EXPECT_GT(CountDifferences(pixels, other), pixels.colors.size() / 10); // told apart
            }
            seen.push_back(pixels);
        }
    }
}

TEST_F(CPluginResources, EveryControlOfADialogHasAnIdOfItsOwnAndATooltip)
{
    for (const uint32_t uDialog : {2101U, 2111U, 2114U})
    {
        const SDialogResource* pDialog = FindDialogResource(uDialog);
        ASSERT_NE(pDialog, nullptr);
        std::set<uint32_t> ids;
        const auto Visit = [&](const SControlResource& control)
        {
            if (control.eKind != EControlKind::Label && control.eKind != EControlKind::Space)
            {
                EXPECT_TRUE(ids.insert(control.uId).second) << control.uId;
                std::string strToolTip;
                LoadStringResource(control.uId, strToolTip);
                EXPECT_TRUE(!strToolTip.empty() && strToolTip.size() <= 79) << control.uId;
            }
        };
        for (const SGroupResource& group : pDialog->groups)
        {
            for (const SRowResource& row : group.rows)
            {
                std::for_each(row.controls.begin(), row.controls.end(), Visit);
            }
        }
        EXPECT_FALSE(ids.empty());
    }
}
