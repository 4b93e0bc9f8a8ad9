#include "framework/core/CMenu.h"
#include "framework/core/CToolBar.h"
#include "framework/core/Cursor.h"
#include "framework/core/ResourceModule.h"
#include "resources/PluginResources.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace
{

class CPluginResources : public testing::Test
{
protected:
    CResourceScope m_Scope{&GetPluginResources()};
};

uint32_t ReadBigEndian(const uint8_t* pBytes)
{
    return (uint32_t{pBytes[0]} << 24U) | (uint32_t{pBytes[1]} << 16U) |
           (uint32_t{pBytes[2]} << 8U) | pBytes[3];
}

// Width times 1000 plus height of a whole PNG picture, 0 for anything else.
uint32_t GetPngSize(const uint8_t* pPng, size_t nBytes)
{
    constexpr size_t SIZE_AT = 16;
    const std::string strBytes(reinterpret_cast<const char*>(pPng), nBytes);
    const bool bWhole = strBytes.compare(0, 8, "\x89PNG\r\n\x1a\n") == 0 && nBytes > 44 &&
                        strBytes.compare(nBytes - 8, 4, "IEND") == 0;
    return bWhole ? ReadBigEndian(pPng + SIZE_AT) * 1000 + ReadBigEndian(pPng + SIZE_AT + 4) : 0;
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
    EXPECT_EQ(GetPngSize(pBitmap->pPng, pBitmap->nBytes), 16015U);
}

TEST_F(CPluginResources, CursorsAreDistinctPicturesAndTheArrowIsMissing)
{
    std::set<std::string> pictures;
    for (const uint32_t uId : {2106U, 2107U, 2108U, 2109U, 2110U, 2113U, 2115U})
    {
        SCOPED_TRACE(uId);
        const CursorHandle pCursor = LoadCursorResource(uId);
        ASSERT_NE(pCursor, nullptr);
        EXPECT_EQ(GetPngSize(pCursor->pPng, pCursor->nBytes), 32032U);
        EXPECT_TRUE(pCursor->iHotX >= 0 && pCursor->iHotX < 32);
        EXPECT_TRUE(pCursor->iHotY >= 0 && pCursor->iHotY < 32);
        pictures.emplace(reinterpret_cast<const char*>(pCursor->pPng), pCursor->nBytes);
    }
    EXPECT_EQ(pictures.size(), 7U);
    EXPECT_EQ(LoadCursorResource(32512), nullptr); // the standard arrow
}
