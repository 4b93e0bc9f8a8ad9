#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modification/CVertDataSet.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CNumbers.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{

constexpr const char* MASK = "mask.png";

// What the mask makes of one vertex inside the box, straight from the rule: columns and rows are
// weighed crosswise. The far border takes the last texel.
float GetPlainSample(const CFakeTexture& mask, const SExtents& box, float fX, float fZ)
{
    const auto iWidth = static_cast<int>(mask.uWidth);
    const auto iHeight = static_cast<int>(mask.uHeight);
    const float px = static_cast<float>(iWidth) / (box.max.x - box.min.x) * fX;
    const float pz = static_cast<float>(iHeight) / (box.max.z - box.min.z) * fZ;
    const float fx = px - std::floor(px);
    const float fz = pz - std::floor(pz);
    const int i0 = std::min(static_cast<int>(px), iWidth - 1);
    const int j0 = std::min(static_cast<int>(pz), iHeight - 1);
    const int i1 = i0 < iWidth - 1 ? i0 + 1 : i0;
    const int j1 = j0 < iHeight - 1 ? j0 + 1 : j0;
    const auto p = [&](int i, int j)
    {
        return static_cast<float>(mask.texels[static_cast<size_t>(j * iWidth + i)]);
    };
    return ((p(i1, j0) * fz + p(i0, j0) * (1 - fz)) * (1 - fx) +
            (p(i1, j1) * fz + p(i0, j1) * (1 - fz)) * fx) *
           0.003921569F;
}

SExtents GetTerrainBox(const CFakeTerrain& terrain)
{
    return {{0, 0, 0}, terrain.GetSize()};
}

void FillSet(CVertDataSet& set, CFakeTerrain& terrain, float fWeight)
{
    ASSERT_TRUE(set.Initialize(&terrain, GetTerrainBox(terrain)));
    set.SetData(terrain.heights.data(),
                static_cast<int>(terrain.uCellsX) + 1,
                static_cast<int>(terrain.uCellsZ) + 1);
    std::fill_n(set.GetVerts().GetWeights(), set.GetVerts().GetCount(), fWeight);
}

} // namespace

TEST(CTellurBrush, MaskIsLoadedRegisteredAndGivenBackInOrder)
{
    CFakeContext context;
    CFakeTexture& first = context.textures.Put("a.png", 1, 1, {255});
    context.textures.Put("b.png", 1, 1, {255});
    auto pBrush = std::make_unique<CTellurBrush>();
    pBrush->SetMask("a.png");
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Textures.Load(a.png, 1)",
                         "World.RegisterTerrainTexture(a.png, tellur_edit_heightmap)"}));
    EXPECT_EQ(first.uFlags, 14U);
    EXPECT_EQ(pBrush->GetMaskPath(), "a.png");
    EXPECT_EQ(pBrush->GetMaskHandle(), 101U);
    EXPECT_EQ(pBrush->GetMaskXSize(64.0F, 3), 643.0F); // the texture's own answer

    pBrush->SetMask("b.png");
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Textures.Release(a.png)",
                         "World.ReleaseTexture(101)",
                         "Textures.Load(b.png, 1)",
                         "World.RegisterTerrainTexture(b.png, tellur_edit_heightmap)"}));
    // No path and no texture manager leave everything.
    pBrush->SetMask(nullptr);
    context.host.pTextureManager = nullptr;
    pBrush->SetMask("a.png");
    context.host.pTextureManager = &context.textures;
    EXPECT_EQ(context.TakeCalls(), FakeCalls{});
    EXPECT_EQ(pBrush->GetMaskPath(), "b.png");
    EXPECT_EQ(pBrush->GetMaskHandle(), 102U);

    // One that cannot be loaded leaves none.
    pBrush->SetMask("missing.png");
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Textures.Release(b.png)",
                         "World.ReleaseTexture(102)",
                         "Textures.Load(missing.png, 1)"}));
    EXPECT_EQ(pBrush->GetMaskPath(), "");
    EXPECT_EQ(pBrush->GetMaskHandle(), 0U);

    pBrush->SetMask("a.png");
    pBrush->SetMask(pBrush->GetMaskPath().c_str()); // its own text
    EXPECT_EQ(pBrush->GetMaskPath(), "a.png");
    context.TakeCalls();
    pBrush.reset();
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Textures.Release(a.png)", "World.ReleaseTexture(104)"}));
    EXPECT_EQ(first.nUsers, 0);
    EXPECT_TRUE(context.world.shown.empty());
}

TEST(CTellurBrush, MaskMultipliesEveryWeightByItsSample)
{
    CNumbers numbers(5);
    constexpr uint32_t SIZES[][2] = {{1, 1}, {2, 2}, {5, 3}, {16, 16}, {64, 7}};
    for (int iRound = 0; iRound < 60; ++iRound)
    {
        SCOPED_TRACE(iRound);
        const uint32_t* pSize = SIZES[iRound % 5];
        // Cells of whole units, so that the last grid line lies on the border.
        CFakeContext context(12, 9, {12.0F * 8, 500, 9.0F * 4});
        for (float& fHeight : context.terrain.heights)
        {
            const int iKind = numbers.Int(0, 9); // some above the limit, some not editable
            fHeight = iKind == 0 ? 500.5F : iKind == 1 ? -1.0F : numbers.Float(0.0F, 500.0F);
        }
        std::vector<uint8_t> texels(size_t{pSize[0]} * pSize[1]);
        for (uint8_t& texel : texels)
        {
            texel = static_cast<uint8_t>(numbers.Int(0, 255));
        }
        const CFakeTexture& mask = context.textures.Put(MASK, pSize[0], pSize[1], texels);
        CTellurBrush brush;
        brush.SetMask(MASK);
        CVertDataSet set;
        FillSet(set, context.terrain, 0.75F);
        const SExtents box = GetTerrainBox(context.terrain);
        brush.ApplyMask(set, box); // not enabled
        ASSERT_EQ(set.GetVerts().GetVert(5).weight, 0.75F);
        brush.SetMaskEnabled(true);
        brush.ApplyMask(set, box);
        EXPECT_EQ(mask.nLocks, 0);
        bool bSawBorder = false;
        for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
        {
            const SVert vert = set.GetVerts().GetVert(i);
            const float fSample =
                vert.y > 500.0F ? 1.0F : GetPlainSample(mask, box, vert.x, vert.z);
            ASSERT_NEAR(vert.weight, 0.75F * fSample, 1.0e-6F) << vert.ix << "," << vert.iz;
            bSawBorder = bSawBorder || vert.ix == 12;
        }
        EXPECT_TRUE(bSawBorder);
    }
}

TEST(CTellurBrush, MaskLeavesWhatItCannotCover)
{
    CFakeContext context(4, 4, {40, 500, 40});
    CFakeTexture& mask = context.textures.Put(MASK, 1, 1, {0});
    CTellurBrush brush;
    brush.SetMaskEnabled(true);
    CVertDataSet set;
    FillSet(set, context.terrain, 1.0F);
    brush.ApplyMask(set, GetTerrainBox(context.terrain)); // no mask is loaded
    EXPECT_EQ(set.GetVerts().GetVert(0).weight, 1.0F);

    brush.SetMask(MASK);
    mask.texels.clear(); // the texture has no pixels
    brush.ApplyMask(set, GetTerrainBox(context.terrain));
    EXPECT_EQ(set.GetVerts().GetVert(0).weight, 1.0F);
    EXPECT_EQ(mask.nLocks, 0);

    // Vertices outside the box keep their weight; its borders belong to it.
    mask.texels = {0};
    brush.ApplyMask(set, {{0, 0, 0}, {20, 500, 10}});
    for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
    {
        const SVert vert = set.GetVerts().GetVert(i);
        EXPECT_EQ(vert.weight, vert.ix <= 2 && vert.iz <= 1 ? 0.0F : 1.0F);
    }
}
