#include "framework/core/CMenu.h"
#include "framework/core/CToolBar.h"
#include "framework/core/Cursor.h"
#include "framework/core/ResourceModule.h"
#include "resources/PluginResources.h"

#include <png.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <sstream>
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

TEST_F(CPluginResources, MenuAndCommandsHaveTheirTexts)
{
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(2116));
    ASSERT_EQ(menu.GetItemCount(), 1U);
    EXPECT_EQ(menu.GetItemText(0), "Terrain");
    const CMenu* pTerrain = menu.GetSubMenu(0);
    std::string strTexts;
    for (size_t i = 0; i < pTerrain->GetItemCount(); ++i)
    {
        strTexts += std::to_string(pTerrain->GetItemId(i)) + " " + pTerrain->GetItemText(i) + "|";
    }
    for (const uint32_t uId : {2102U, 32796U, 32797U, 32800U, 32801U})
    {
        std::string strText = "-";
        LoadStringResource(uId, strText);
        strTexts += strText + "|";
    }
    EXPECT_EQ(strTexts,
              "32796 Save height map...|32800 Edit bitmap on terrain|"
              "32801 Export terrain extent to STL|"
              "Terrain|Save height map|-|Edit bitmap on terrain|Brush fade distance|");
}

TEST_F(CPluginResources, TheToolBarIsOneButtonWithItsPicture)
{
    CToolBar bar;
    ASSERT_TRUE(bar.LoadToolBar(2100));
    uint32_t uId = 0;
    uint32_t uStyle = 0;
    int iImage = -1;
    ASSERT_TRUE(bar.GetButtonInfo(0, uId, uStyle, iImage));
    EXPECT_EQ(bar.GetButtonCount(), 1U);
    EXPECT_EQ(uId, 2102U);
    EXPECT_EQ(iImage, 0);
    const SBitmapResource* pBitmap = FindBitmapResource(bar.GetBitmapId());
    ASSERT_NE(pBitmap, nullptr);
    EXPECT_EQ(pBitmap->uId, 2100U);
    for (const SPixels& pixels : DecodeBoth(pBitmap->picture, 16, 15))
    {
        const auto [least, most] = std::minmax_element(pixels.colors.begin(), pixels.colors.end());
        EXPECT_LT(*least, 0x01000000U); // clear ground
        EXPECT_GE(*most, 0xFF000000U);
    }
}

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

TEST_F(CPluginResources, DialogsHaveEachControlOnceWithItsTextAndATooltip)
{
    using enum EControlKind;

    struct SCase
    {
        uint32_t uDialog;
        std::map<EControlKind, std::multiset<uint32_t>> controls;
        const char* pszTexts; // some of them: captions, and texts of controls after the id
    };

    const SCase cases[] = {
        {2101,
         {{OwnerDraw, {2106}},
          {Edit, {2198, 2128, 2199, 2201, 2121, 2204, 2196, 2192, 2205}},
          {Slider, {2115, 2200, 2136, 2203, 2195}},
          {Spin, {2109, 2122, 2187, 2197}},
          {PushCheck, {2130, 2131, 2133, 2132, 2160, 2137}},
          {ListView, {2123}},
          {CheckBox, {2194, 2139}},
          {PushButton, {2193, 2119, 2120, 2127, 2129, 2206}},
          {ListBox, {2113}},
          {DropDownList, {2138}}},
         "[Current brush]|[Tool]|[Defined brushes]|[Height map]|[Terrain normals]|"
         "[Terrain material]|2106 Bitmap|2130 B|2131 P|2133 S|2132 R|2160 Ps|2137 Ra|0 Power :|"
         "0 Fade :|0 Hardness :|0 Vert. dist. :|0 Mask :|2119 Add to defined brushes|"
         "2120 Save brushes|2127 Save as...|2139 enable auto-update|2129 Update now|2193 ...|"
         "2206 ..."},
        {2111,
         {{OwnerDraw, {2157, 2147, 2148, 2149, 2150, 2151, 2152, 2153, 2154, 2155}},
          {Edit, {2140, 2180, 2158, 2108, 2186}},
          {Slider, {2145, 2146, 2134, 2185}},
          {Spin, {2109, 2187}},
          {CheckBox, {2191, 2184, 2161, 2162, 2163, 2164, 2165, 2166, 2167, 2168, 2169, 2170}},
          {PushCheck, {2143, 2171, 2176}},
          {PushButton, {2141, 2181, 2156, 2117, 2118}}},
         "[Edit bitmap on terrain]|2141 ...|2181 ...|2156 Save|2157 Brush|2184 cm|2171 Set|"
         "2176 Mul|2117 Undo|2118 Redo|2143 Edit"},
        {2114, {{PushButton, {1, 2}}}, "[Choose color]|1 OK|2 Cancel"},
    };
    for (const SCase& expected : cases)
    {
        SCOPED_TRACE(expected.uDialog);
        const SDialogResource* pDialog = FindDialogResource(expected.uDialog);
        ASSERT_NE(pDialog, nullptr);
        std::map<EControlKind, std::multiset<uint32_t>> controls;
        std::set<std::string> texts = {"[" + std::string(pDialog->pszCaption) + "]"};
        const auto Visit = [&](const SControlResource& control)
        {
            texts.insert(std::to_string(control.uId) + " " +
                         (control.pszText == nullptr ? "" : control.pszText));
            if (control.eKind != Label && control.eKind != Space)
            {
                controls[control.eKind].insert(control.uId);
                std::string strToolTip;
                LoadStringResource(control.uId, strToolTip);
                EXPECT_TRUE(!strToolTip.empty() && strToolTip.size() <= 79) << control.uId;
                EXPECT_EQ((control.uStyle & CONTROL_READ_ONLY) != 0,
                          control.uId == 2192 || control.uId == 2205);
            }
        };
        for (const SGroupResource& group : pDialog->groups)
        {
            texts.insert("[" + std::string(group.pszTitle == nullptr ? "" : group.pszTitle) + "]");
            for (const SRowResource& row : group.rows)
            {
                std::for_each(row.controls.begin(), row.controls.end(), Visit);
            }
        }
        EXPECT_EQ(controls, expected.controls);
        std::istringstream expectedTexts(expected.pszTexts);
        for (std::string strText; std::getline(expectedTexts, strText, '|');)
        {
            EXPECT_TRUE(texts.contains(strText)) << strText;
        }
    }
}

TEST_F(CPluginResources, TooltipsReadAsUsersKnowThem)
{
    std::string strTexts;
    for (const uint32_t uId :
         {2106, 2198, 2128, 2199, 2115, 2130, 2131, 2133, 2132, 2160, 2137, 2123, 2200, 2201,
          2109, 2136, 2121, 2122, 2203, 2204, 2187, 2195, 2196, 2197, 2192, 2194, 2193, 2119,
          2113, 2120, 2138, 2127, 2139, 2129, 2205, 2206, 2145, 2158, 2184, 2191})
    {
        std::string strText;
        LoadStringResource(uId, strText);
        strTexts += strText + "|";
    }
    EXPECT_EQ(strTexts,
              "Brush shape|Min extent size|Current extent size|Max extent size|Current extent size|"
              "Blur|Point height|Set height|Relative height|Posterize|Ramp|Tool properties|"
              "Brush power|Brush power|Brush power|"
              "Brush fade distance|Brush fade distance|Brush fade distance|"
              "Brush hardness|Brush hardness|Brush hardness|Brush vertical distance|"
              "Brush vertical distance|Brush vertical distance|Brush mask file name|"
              "Enable brush mask|Browse|Add brush to predefined brushes list|Predefined brushes|"
              "Save predefined brushes|Terrain resolution (in vertices)|Export height map to file|"
              "Enable auto update terrain normals while editing|Update terrain normals|"
              "Terrain material used while editing|Browse|Blending with terrain color map factor|"
              "Extent size|Switches between display in cm (enabled) and pixels (disabled)|"
              "Mapping mode|");
}
