#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modification/CVertDataSet.h"
#include "tests/support/CNumbers.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{

constexpr const char* MASK = "mask.png";

// What the mask makes of one vertex inside the box, straight from the rule: columns and rows are
// weighed crosswise. The far border takes the last texel.
float GetPlainSample(const ITexture& mask,
                     const std::vector<uint8_t>& texels,
                     const SExtents& box,
                     float fX,
                     float fZ)
{
    const auto iWidth = static_cast<int>(mask.GetWidth());
    const auto iHeight = static_cast<int>(mask.GetHeight());
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
        return static_cast<float>(texels[static_cast<size_t>(j * iWidth + i)]);
    };
    return ((p(i1, j0) * fz + p(i0, j0) * (1 - fz)) * (1 - fx) +
            (p(i1, j1) * fz + p(i0, j1) * (1 - fz)) * fx) *
           0.003921569F;
}

class CBrushMask : public CPluginFixture
{
protected:
    SExtents GetBox() { return {{0, 0, 0}, m_Host.GetTerrain().GetSize()}; }

    // All vertices of the terrain.
    void FillSet(CVertDataSet& set, float fWeight)
    {
        CTerrain& terrain = m_Host.GetTerrain();
        ASSERT_TRUE(set.Initialize(&terrain, GetBox()));
        set.SetData(terrain.GetHeightData(),
                    static_cast<int>(terrain.GetVerticesX()),
                    static_cast<int>(terrain.GetVerticesZ()));
        std::fill_n(set.GetVerts().GetWeights(), set.GetVerts().GetCount(), fWeight);
    }

    CTextureManager& m_Textures = m_Host.GetEngine().GetTextures();
};

} // namespace

TEST_F(CBrushMask, IsLoadedRegisteredAndGivenBack)
{
    CWorld& world = m_Host.GetWorld();
    WriteGrey("a.png", 1, 1, {255});
    WriteGrey("b.png", 1, 1, {255});
    auto pBrush = std::make_unique<CTellurBrush>();
    pBrush->SetMask("a.png");
    EXPECT_EQ(pBrush->GetMaskPath(), "a.png");
    EXPECT_EQ(m_Textures.GetCount(), 1U);
    const uint32_t uFirst = pBrush->GetMaskHandle();
    ASSERT_NE(world.FindTerrainTexture(uFirst), nullptr);
    EXPECT_EQ(world.FindTerrainTexture(uFirst)->GetFlags(), 14U);
    EXPECT_EQ(pBrush->GetMaskXSize(64.0F, 4), 16.0F) << "the texture's own answer";

    pBrush->SetMask("b.png");
    EXPECT_EQ(m_Textures.GetCount(), 1U) << "the other one is given back";
    EXPECT_EQ(world.FindTerrainTexture(uFirst), nullptr);
    EXPECT_EQ(world.GetRegistrationCount(), 1U);
    pBrush->SetMask(nullptr);
    EXPECT_EQ(pBrush->GetMaskPath(), "b.png") << "no path leaves everything";
    pBrush->SetMask(pBrush->GetMaskPath().c_str()); // its own text
    EXPECT_EQ(m_Textures.GetCount(), 1U);
    EXPECT_EQ(m_Log.GetText(), "");

    pBrush->SetMask("missing.png"); // one that cannot be loaded leaves none
    EXPECT_EQ(m_Log.TakeLines().size(), 1U) << "the engine's own";
    EXPECT_EQ(pBrush->GetMaskPath(), "");
    EXPECT_EQ(pBrush->GetMaskHandle(), 0U);
    EXPECT_EQ(m_Textures.GetCount(), 0U);
    pBrush->SetMask("a.png");
    pBrush.reset();
    EXPECT_EQ(m_Textures.GetCount(), 0U);
    EXPECT_EQ(world.GetRegistrationCount(), 0U);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CBrushMask, MultipliesEveryWeightByItsSample)
{
    CNumbers numbers(5);
    constexpr uint32_t SIZES[][2] = {{1, 1}, {2, 2}, {5, 3}, {16, 16}, {64, 7}};
    for (int iRound = 0; iRound < 60; ++iRound)
    {
        SCOPED_TRACE(iRound);
        const uint32_t* pSize = SIZES[iRound % 5];
        // Cells of whole units, so that the last grid line lies on the border.
        m_Host.GetWorld().CreateTerrain(12, 9, {12.0F * 8, 500, 9.0F * 4});
        for (uint32_t i = 0; i < 13 * 10; ++i)
        {
            const int iKind = numbers.Int(0, 9); // some above the limit, some not editable
            m_Host.SetHeight(i % 13,
                             i / 13,
                             iKind == 0   ? 500.5F
                             : iKind == 1 ? -1.0F
                                          : numbers.Float(0.0F, 500.0F));
        }
        std::vector<uint8_t> texels(size_t{pSize[0]} * pSize[1]);
        for (uint8_t& texel : texels)
        {
            texel = static_cast<uint8_t>(numbers.Int(0, 255));
        }
        WriteGrey(MASK, pSize[0], pSize[1], texels);
        CTellurBrush brush;
        brush.SetMask(MASK);
        CVertDataSet set;
        FillSet(set, 0.75F);
        const SExtents box = GetBox();
        const ITexture& mask = *m_Host.GetWorld().FindTerrainTexture(brush.GetMaskHandle());
        brush.ApplyMask(set, box); // not enabled
        ASSERT_EQ(set.GetVerts().GetVert(5).weight, 0.75F);
        brush.SetMaskEnabled(true);
        brush.ApplyMask(set, box);
        bool bSawBorder = false;
        for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
        {
            const SVert vert = set.GetVerts().GetVert(i);
            const float fSample =
                vert.y > 500.0F ? 1.0F : GetPlainSample(mask, texels, box, vert.x, vert.z);
            ASSERT_NEAR(vert.weight, 0.75F * fSample, 1.0e-6F) << vert.ix << "," << vert.iz;
            bSawBorder = bSawBorder || vert.ix == 12;
        }
        EXPECT_TRUE(bSawBorder);
    }
}

TEST_F(CBrushMask, LeavesWhatItCannotCover)
{
    m_Host.NewLevel(4, {40, 500, 40});
    WriteGrey(MASK, 1, 1, {0});
    CTellurBrush brush;
    brush.SetMaskEnabled(true);
    CVertDataSet set;
    FillSet(set, 1.0F);
    brush.ApplyMask(set, GetBox()); // no mask is loaded
    EXPECT_EQ(set.GetVerts().GetVert(0).weight, 1.0F);

    // Vertices outside the box keep their weight; its borders belong to it.
    brush.SetMask(MASK);
    brush.ApplyMask(set, {{0, 0, 0}, {20, 500, 10}});
    for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
    {
        const SVert vert = set.GetVerts().GetVert(i);
        EXPECT_EQ(vert.weight, vert.ix <= 2 && vert.iz <= 1 ? 0.0F : 1.0F);
    }
}
