#include "framework/drawing/CImageList.h"
#include "tests/framework/drawing/Canvas.h"

#include <utility>

TEST(CImageList, CutsABitmapIntoImagesAndLeavesOutTheKeyColor)
{
    for (const int nBits : DEPTHS)
    {
        SCOPED_TRACE(nBits);
        // A key that 16 bits cannot hold exactly matches there all the same.
        const ColorRef uKey = MakeColor(3, 5, 250);
        SCanvas strip(5, 3, nBits);
        strip.context.FillRect({0, 0, 5, 3}, uKey);
        strip.context.FillRect({1, 0, 4, 1}, RED);
        strip.context.SetPixel(4, 0, 0);
        CBitmap bitmap;
        ASSERT_TRUE(bitmap.SetPixels(std::move(strip.buffer)));

        CImageList list;
        EXPECT_EQ(list.Add(bitmap, uKey), -1);
        ASSERT_TRUE(list.Create(2, 2, 3, 3));
        EXPECT_EQ(list.Add(bitmap, uKey), 0); // the fifth column is left
        EXPECT_EQ(list.Add(bitmap, RED), 2);
        EXPECT_EQ(list.GetImageCount(), 4);

        SCanvas canvas(6, 3, nBits);
        EXPECT_TRUE(list.Draw(canvas.context, 0, {0, 0}));
        EXPECT_TRUE(list.Draw(canvas.context, 1, {2, 1}));
        EXPECT_TRUE(list.Draw(canvas.context, 3, {5, -1}));
        EXPECT_FALSE(list.Draw(canvas.context, 4, {0, 0}));
        EXPECT_FALSE(list.Draw(canvas.context, -1, {0, 0}));
        EXPECT_EQ(Show(canvas.context, {{'.', WHITE}, {'R', RED}, {'k', uKey}}),
                  ".R...k/..RR../......");

        CPixelBuffer image;
        EXPECT_FALSE(list.GetImage(4, image));
        ASSERT_TRUE(list.GetImage(0, image));
        EXPECT_EQ(image.GetRow(0)[3], 0);
        EXPECT_EQ(image.GetRow(0)[7], 255);
        EXPECT_EQ(image.GetPixel(1, 0), RED);
    }
}

TEST(CImageList, RefusesWhatIsNoImageAndKeepsTheBitmapsOpacity)
{
    CImageList list;
    EXPECT_FALSE(list.Create(0, 2, 0, 1) || list.Create(2, -1, 0, 1) ||
                 list.Create(2, 40000, 0, 1));
    EXPECT_FALSE(list.Create(2, 2, -1, 1) || list.Create(2, 2, 0, -1));
    EXPECT_EQ(list.GetImageSize(), SSize());
    ASSERT_TRUE(list.Create(2, 2, 1 << 30, 1 << 30));
    CPixelBuffer pixels;
    ASSERT_TRUE(pixels.Create(2, 2, 32));
    pixels.GetRow(1)[3] = 77;
    CBitmap bitmap;
    EXPECT_EQ(list.Add(bitmap, RED), -1);
    ASSERT_TRUE(bitmap.CreateBitmap(2, 1, 1, 32, nullptr));
    EXPECT_EQ(list.Add(bitmap, RED), -1);
    ASSERT_TRUE(bitmap.SetAlphaPixels(std::move(pixels)));
    EXPECT_EQ(list.Add(bitmap, RED), 0);
    CPixelBuffer image;
    ASSERT_TRUE(list.GetImage(0, image));
    EXPECT_EQ(image.GetRow(1)[3], 77);
    ASSERT_TRUE(list.Create(3, 3, 0, 0));
    EXPECT_EQ(list.GetImageCount(), 0);
}
